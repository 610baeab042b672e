#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include <rapidjson/document.h>

#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/Utils.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "Ui/TextBuffer.h"
#include "Ui/Ui.h"

namespace QuorvaneEngine {

namespace {

bool contains(const Containers::StringView text, const Containers::StringView search) {
    return Utils::caseInsensitiveSearch(text, search) != -1;
}

/** Fills an array with the keys of the entries that match; with all keys where there is nothing to search for.
    @param matches  is asked with key and value */
template <class Matches>
void collect(const ValueAccess& collection, const Containers::StringView search,
    Containers::Array<Containers::StringView>& results, Matches&& matches) {
    std::vector<Containers::StringView> found;
    if(collection.isObject()) {
        // Members are walked once: to look each key up would ask for their values one by one.
        const rapidjson::Value::MemberIterator first = collection.value()->MemberBegin();
        for(std::size_t i = 0; i != collection.size(); ++i) {
            rapidjson::Value::Member& member = first[std::ptrdiff_t(i)];
            const Containers::StringView key{
                member.name.GetString(), member.name.GetStringLength(), Containers::StringViewFlag::NullTerminated};
            if(search.isEmpty() || matches(key, member.value)) found.push_back(key);
        }
    }
    // A growable array would keep the address of its deleter, which is gone when the view that filled it is unloaded.
    Containers::Array<Containers::StringView> filled{Corrade::ValueInit, found.size()};
    std::copy(found.begin(), found.end(), filled.begin());
    results = std::move(filled);
}

}

void Ui::performResourceSearch(const Containers::StringView collection, const Containers::StringView field,
    const Containers::Array<char>& search, Containers::Array<Containers::StringView>& results) const {
    const Containers::StringView text = bufferText(search);
    collect(project->root()[collection], text, results, [&](Containers::StringView, rapidjson::Value& entry) {
        return contains(ValueAccess{*project, &entry}.member(field).asString(), text);
    });
}

void Ui::performSearch(const Containers::StringView collection, const Containers::Array<char>& search,
    Containers::Array<Containers::StringView>& results, const SearchFlags flags) const {
    const Containers::StringView text = bufferText(search);
    const ValueAccess root = project->root();
    collect(root[collection], text, results, [&](const Containers::StringView key, rapidjson::Value& value) {
        Containers::StringView shown = JsonObject{&value}.asString();
        if((flags & SearchFlag::FollowReferences) && shown.hasPrefix('/')) {
            const ValueAccess referenced = root[shown];
            if(referenced.existsInProject()) shown = referenced.asString();
        }
        return ((flags & SearchFlag::Keys) && contains(key, text)) ||
            ((flags & SearchFlag::Values) && contains(shown, text));
    });
}

}
