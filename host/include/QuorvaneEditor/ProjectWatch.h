#pragma once

#include <cstddef>
#include <memory>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"
#include "Utils/Function.h"

namespace QuorvaneEngine {

/** Tells views and tools of changes of the project: any number of subscriptions for each member of the document's root, whether
    the member is there already or not.

    The change manager has one handler for a key and forgets all of them with its log. Here is who takes the keys that are
    watched and hands on what it hears. A handler that somebody else registers with the change manager under such a key leaves
    either him or everybody here without word of it.

    Subscriptions stay when another project takes the place of the present one, which itself tells nobody: the host makes new
    views then. Belongs to the GUI thread. */
class QUORVANE_API ProjectWatch {
    struct Key;
    struct Entry;

public:
    /** Called after the change was applied, or with all changes of a group when it is committed. A change is told once to each
        subscription. The callback may read the project, subscribe, and end subscriptions, its own among them; it must neither push
        changes nor reset the change manager.
        @param change           the change, or the reverse of one that was undone
        @param pathComponents   all pieces of its path, split at "/": an empty one, the watched member, and what is below; they view
                                the path and are escaped as it is */
    using Callback = Function<void(const Change& change, Containers::ArrayView<Containers::StringView> pathComponents)>;

    /** Ends a subscription when it is destroyed. May outlive the watch. */
    class QUORVANE_API Subscription {
    public:
        /** Of nothing. */
        Subscription();
        ~Subscription();
        Subscription(Subscription&& other) noexcept;

        /** Ends its own subscription and takes over that of @p other . */
        Subscription& operator=(Subscription&& other) noexcept;

        Subscription(const Subscription&) = delete;
        Subscription& operator=(const Subscription&) = delete;

        /** No more is told from now on, not even of the change that is being told to others. */
        void end();

        /** Whether it has not ended, by itself or by the host. */
        bool isActive() const;

    private:
        friend ProjectWatch;

        explicit Subscription(std::weak_ptr<Entry> entry);

        std::weak_ptr<Entry> _entry;
    };

    /** @param changes      must outlive this object */
    explicit ProjectWatch(ChangeManager& changes);

    /** Ends all subscriptions. */
    ~ProjectWatch();

    ProjectWatch(const ProjectWatch&) = delete;
    ProjectWatch& operator=(const ProjectWatch&) = delete;

    /** Watches a member of the root and all below it, from the next change on. Those who subscribed to it before are told before.
        @param owner    the module whose code the callback is, which the host ends all subscriptions of before it unloads it; null
                        for the host's own
        @param member   its name as in the document, which must not be empty
        @param callback must not be empty */
    [[nodiscard]] Subscription subscribe(
        const AbstractModule* owner, Containers::StringView member, Callback&& callback);

    /** Ends all subscriptions of a module. */
    void endAll(const AbstractModule& owner);

    /** Registers with the change manager anew, which has to follow each of its resets. */
    void attach();

    /** How many subscriptions have not ended. */
    std::size_t subscriptionCount() const;

private:
    struct State;

    std::unique_ptr<State> _state;
};

}
