#include "QuorvaneEditor/ProjectWatch.h"

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>

#include "../localization/JsonPath.h"
#include "Change.h"
#include "ChangeManager.h"

namespace QuorvaneEngine {

namespace {

[[noreturn]] void fail(const char* const before, const Containers::StringView member, const char* const after) {
    using Corrade::Utility::Error;
    Error{} << "ProjectWatch::subscribe():" << before << Error::nospace << member << Error::nospace << after;
    std::abort();
}

}

struct ProjectWatch::Entry {
    Key* key;
    const AbstractModule* owner;
    Callback callback;
    bool isEnded = false;
};

struct ProjectWatch::Key {
    void tell(const Change& change, const Containers::ArrayView<Containers::StringView> components);

    /** The member's name as it stands in paths. */
    Containers::String token;

    /* A callback may end the subscription that it is called for, and others: who is called is held by the call, too. */
    std::vector<std::shared_ptr<Entry>> entries;

    /** How often the change manager is still to come with the change that was told last. */
    std::size_t repeats = 0;
};

void ProjectWatch::Key::tell(const Change& change, const Containers::ArrayView<Containers::StringView> components) {
    // The change manager comes with every place of the key in the path.
    if(components.size() < 2 || components[1] != token) return;
    if(repeats) {
        --repeats;
        return;
    }
    repeats = std::size_t(std::count(components.begin(), components.end(), Containers::StringView{token})) - 1;
    const std::vector<std::shared_ptr<Entry>> told = entries;
    for(const std::shared_ptr<Entry>& entry: told)
        if(!entry->isEnded) entry->callback(change, components);
}

struct ProjectWatch::State {
    explicit State(ChangeManager& changes): changes{changes} {}

    /** The change manager's handler keeps the key alive, so that neither has to outlive the other. */
    void attach(const std::shared_ptr<Key>& key) {
        changes.addChangeHandler(
            key->token,
            [key](const Change& change, Containers::ArrayView<Containers::StringView> components, void*) {
                key->tell(change, components);
            },
            nullptr);
    }

    ChangeManager& changes;
    std::vector<std::shared_ptr<Key>> keys;
};

ProjectWatch::ProjectWatch(ChangeManager& changes): _state{std::make_unique<State>(changes)} {}

ProjectWatch::~ProjectWatch() {
    for(const std::shared_ptr<Key>& key: _state->keys) {
        for(const std::shared_ptr<Entry>& entry: key->entries) entry->isEnded = true;
        key->entries.clear();
    }
}

ProjectWatch::Subscription ProjectWatch::subscribe(
    const AbstractModule* const owner, const Containers::StringView member, Callback&& callback) {
    if(member.isEmpty()) fail("the member's name is empty", {}, "");
    if(!callback) fail("the callback of \"", member, "\" is empty");
    const Containers::String path = jsonPath({member});
    const Containers::StringView token = Containers::StringView{path}.exceptPrefix(1);
    auto found = std::find_if(_state->keys.begin(), _state->keys.end(),
        [token](const std::shared_ptr<Key>& key) { return key->token == token; });
    if(found == _state->keys.end()) {
        const auto key = std::make_shared<Key>();
        key->token = Containers::String{token};
        _state->attach(key);
        found = _state->keys.insert(_state->keys.end(), key);
    }
    Key& key = **found;
    key.entries.push_back(std::make_shared<Entry>(Entry{&key, owner, std::move(callback)}));
    return Subscription{key.entries.back()};
}

void ProjectWatch::endAll(const AbstractModule& owner) {
    for(const std::shared_ptr<Key>& key: _state->keys)
        std::erase_if(key->entries, [&owner](const std::shared_ptr<Entry>& entry) {
            entry->isEnded = entry->isEnded || entry->owner == &owner;
            return entry->isEnded;
        });
}

void ProjectWatch::attach() {
    std::erase_if(_state->keys, [](const std::shared_ptr<Key>& key) { return key->entries.empty(); });
    for(const std::shared_ptr<Key>& key: _state->keys) {
        key->repeats = 0;
        _state->attach(key);
    }
}

std::size_t ProjectWatch::subscriptionCount() const {
    std::size_t count = 0;
    for(const std::shared_ptr<Key>& key: _state->keys) count += key->entries.size();
    return count;
}

ProjectWatch::Subscription::Subscription() = default;

ProjectWatch::Subscription::Subscription(std::weak_ptr<Entry> entry): _entry{std::move(entry)} {}

ProjectWatch::Subscription::~Subscription() { end(); }

ProjectWatch::Subscription::Subscription(Subscription&& other) noexcept: _entry{std::exchange(other._entry, {})} {}

ProjectWatch::Subscription& ProjectWatch::Subscription::operator=(Subscription&& other) noexcept {
    if(this == &other) return *this;
    end();
    _entry = std::exchange(other._entry, {});
    return *this;
}

void ProjectWatch::Subscription::end() {
    const std::shared_ptr<Entry> entry = std::exchange(_entry, {}).lock();
    if(!entry || entry->isEnded) return;
    entry->isEnded = true;
    std::erase(entry->key->entries, entry);
}

bool ProjectWatch::Subscription::isActive() const {
    const std::shared_ptr<Entry> entry = _entry.lock();
    return entry && !entry->isEnded;
}

}
