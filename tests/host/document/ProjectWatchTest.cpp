#include "QuorvaneEditor/ProjectWatch.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "Change.h"
#include "ChangeManager.h"
#include "EditorSession.h"
#include "QuorvaneEditor/ResourceIndexMap.h"
#include "support/Abort.h"

namespace QuorvaneEngine {
namespace {

using Components = Containers::ArrayView<Containers::StringView>;

/** A project with a watch, and what is told, in order, as "<listener> <path>". */
class ProjectWatchTest: public testing::Test {
protected:
    ProjectWatch::Callback listener(const char* name) {
        return [this, name](
                   const Change& change, Components) { told.push_back(std::string{name} + " " + change.path.data()); };
    }

    ProjectWatch::Subscription subscribe(const char* name, const char* member) {
        return watch().subscribe(nullptr, member, listener(name));
    }

    void push(const char* path, int value = 1) { session.changes().pushChange(path, rapidjson::Value{value}, false); }

    ProjectWatch& watch() { return session.watch(); }

    /** What was told since the last call. */
    std::vector<std::string> takeTold() { return std::exchange(told, {}); }

    std::vector<std::string> told;
    EditorSession session;

    /** Of the session itself. */
    std::size_t own = session.watch().subscriptionCount();
};

using Told = std::vector<std::string>;

TEST_F(ProjectWatchTest, TwoWhoWatchOneMemberAreBothToldInTheOrderOfTheirSubscriptions) {
    const ProjectWatch::Subscription first = subscribe("first", "objects");
    const ProjectWatch::Subscription second = subscribe("second", "objects");
    push("/objects/door");
    EXPECT_EQ(takeTold(), (Told{"first /objects/door", "second /objects/door"}));
}

TEST_F(ProjectWatchTest, OneIsToldOfItsOwnMemberOnly) {
    const ProjectWatch::Subscription objects = subscribe("objects", "objects");
    const ProjectWatch::Subscription terms = subscribe("terms", "terms");
    push("/objects/terms/x");
    EXPECT_EQ(takeTold(), Told{"objects /objects/terms/x"});
    push("/other/objects");
    EXPECT_EQ(takeTold(), Told{});
}

TEST_F(ProjectWatchTest, AChangeIsToldOnceHoweverOftenItsPathNamesTheMember) {
    const ProjectWatch::Subscription subscription = subscribe("a", "a");
    push("/a/b/a");
    EXPECT_EQ(takeTold(), Told{"a /a/b/a"});
    push("/a/a/a/a");
    push("/a/a/a/a", 2);
    EXPECT_EQ(takeTold(), (Told{"a /a/a/a/a", "a /a/a/a/a"}));
    push("/a");
    EXPECT_EQ(takeTold(), Told{"a /a"});
}

TEST_F(ProjectWatchTest, TheCallbackGetsTheChangeAndThePiecesOfItsPath) {
    std::string pieces;
    int value = 0;
    const ProjectWatch::Subscription subscription =
        watch().subscribe(nullptr, "objects", [&](const Change& change, Components components) {
            for(Containers::StringView piece: components) pieces += std::string{piece.data(), piece.size()} + "|";
            value = change.newValue->GetInt();
        });
    push("/objects/a~1b//x", 7);
    EXPECT_EQ(pieces, "|objects|a~1b||x|");
    EXPECT_EQ(value, 7);
}

TEST_F(ProjectWatchTest, AMemberThatIsMadeLaterIsWatchedToo) {
    const ProjectWatch::Subscription subscription = subscribe("new", "later");
    push("/later/x");
    EXPECT_EQ(takeTold(), Told{"new /later/x"});
    session.undo();
    session.redo();
    EXPECT_EQ(takeTold(), (Told{"new /later/x", "new /later/x"}));
}

TEST_F(ProjectWatchTest, AMemberWhoseNameIsEscapedInPathsIsWatchedByItsName) {
    const ProjectWatch::Subscription subscription = subscribe("escaped", "a/b~c");
    push("/a~1b~0c/x");
    push("/a/b~0c");
    EXPECT_EQ(takeTold(), Told{"escaped /a~1b~0c/x"});
}

TEST_F(ProjectWatchTest, ChangesOfAGroupAreToldWhenItIsCommitted) {
    const ProjectWatch::Subscription subscription = subscribe("group", "objects");
    session.changes().openGroup();
    push("/objects/objects");
    push("/objects/b");
    EXPECT_EQ(takeTold(), Told{});
    session.changes().commit();
    EXPECT_EQ(takeTold(), (Told{"group /objects/objects", "group /objects/b"}));
}

TEST_F(ProjectWatchTest, AnUndoTellsTheReverseOfTheChange) {
    push("/objects/a", 1);
    bool removed = false;
    const ProjectWatch::Subscription subscription = watch().subscribe(nullptr, "objects",
        [&removed](const Change& change, Components) { removed = change.oldValue && !change.newValue; });
    session.undo();
    EXPECT_TRUE(removed);
}

TEST_F(ProjectWatchTest, NothingIsToldOnceTheGuardIsGone) {
    { const ProjectWatch::Subscription subscription = subscribe("gone", "objects"); }
    push("/objects/a");
    EXPECT_EQ(takeTold(), Told{});
    EXPECT_EQ(watch().subscriptionCount(), own);
}

TEST_F(ProjectWatchTest, AGuardIsMovedWithItsSubscriptionAndEndsTheOneItHadBefore) {
    ProjectWatch::Subscription first = subscribe("first", "objects");
    ProjectWatch::Subscription second = subscribe("second", "objects");
    second = std::move(first);
    EXPECT_TRUE(second.isActive());
    EXPECT_EQ(watch().subscriptionCount(), own + 1);
    push("/objects/a");
    EXPECT_EQ(takeTold(), Told{"first /objects/a"});
    ProjectWatch::Subscription third{std::move(second)};
    third.end();
    EXPECT_FALSE(third.isActive());
    EXPECT_EQ(watch().subscriptionCount(), own);
    push("/objects/b");
    EXPECT_EQ(takeTold(), Told{});
    third.end();
}

TEST_F(ProjectWatchTest, AnEmptyGuardIsOfNothing) {
    ProjectWatch::Subscription none;
    EXPECT_FALSE(none.isActive());
    none.end();
    none = subscribe("some", "objects");
    EXPECT_TRUE(none.isActive());
}

TEST_F(ProjectWatchTest, ACallbackMayEndItsOwnSubscription) {
    ProjectWatch::Subscription subscription;
    // What the callable owns is there until it returns.
    const auto name = std::make_shared<std::string>("once");
    const std::weak_ptr<std::string> kept = name;
    subscription = watch().subscribe(nullptr, "objects", [this, &subscription, name = name](const Change&, Components) {
        subscription.end();
        told.push_back(*name);
    });
    push("/objects/a");
    push("/objects/b");
    EXPECT_EQ(takeTold(), Told{"once"});
    EXPECT_EQ(kept.use_count(), 1);
    EXPECT_EQ(watch().subscriptionCount(), own);
}

TEST_F(ProjectWatchTest, OneWhomAnotherCallbackEndsIsNotToldOfTheSameChange) {
    ProjectWatch::Subscription second;
    const ProjectWatch::Subscription first =
        watch().subscribe(nullptr, "objects", [this, &second](const Change&, Components) {
            told.emplace_back("first");
            second.end();
        });
    second = subscribe("second", "objects");
    const ProjectWatch::Subscription third = subscribe("third", "objects");
    push("/objects/a");
    EXPECT_EQ(takeTold(), (Told{"first", "third /objects/a"}));
}

TEST_F(ProjectWatchTest, OneWhoSubscribesInACallbackIsToldFromTheNextChangeOn) {
    std::vector<ProjectWatch::Subscription> added;
    const ProjectWatch::Subscription first =
        watch().subscribe(nullptr, "objects", [this, &added](const Change&, Components) {
            if(added.empty()) {
                added.push_back(subscribe("same", "objects"));
                // Members that the change manager has not heard of yet, one of them in the path that is being told.
                for(const char* member: {"door", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k", "l", "m", "n", "o"})
                    added.push_back(subscribe("other", member));
            }
        });
    push("/objects/door/objects");
    EXPECT_EQ(takeTold(), Told{});
    push("/objects/door");
    push("/door/x");
    push("/o/x");
    EXPECT_EQ(takeTold(), (Told{"same /objects/door", "other /door/x", "other /o/x"}));
}

TEST_F(ProjectWatchTest, SubscriptionsStayWhenAnotherProjectIsLoaded) {
    const ProjectWatch::Subscription subscription = subscribe("stays", "objects");
    { const ProjectWatch::Subscription ended = subscribe("ended", "terms"); }
    rapidjson::Document document{rapidjson::kObjectType};
    session.replaceDocument(std::move(document));
    EXPECT_EQ(takeTold(), Told{});
    push("/objects/a");
    push("/terms/a");
    EXPECT_EQ(takeTold(), Told{"stays /objects/a"});
    const ProjectWatch::Subscription again = subscribe("again", "terms");
    session.forgetHandlers();
    push("/objects/objects");
    push("/terms/a");
    EXPECT_EQ(takeTold(), (Told{"stays /objects/objects", "again /terms/a"}));
}

TEST_F(ProjectWatchTest, TheSubscriptionsOfOneOwnerEndTogether) {
    // Never looked into.
    const auto* const one = reinterpret_cast<const AbstractModule*>(&told);
    const auto* const other = reinterpret_cast<const AbstractModule*>(&session);
    ProjectWatch::Subscription first = watch().subscribe(one, "objects", listener("one"));
    const ProjectWatch::Subscription second = watch().subscribe(one, "terms", listener("one"));
    const ProjectWatch::Subscription third = watch().subscribe(other, "objects", listener("other"));
    const ProjectWatch::Subscription host = watch().subscribe(nullptr, "objects", listener("host"));
    watch().endAll(*one);
    EXPECT_FALSE(first.isActive());
    EXPECT_FALSE(second.isActive());
    EXPECT_EQ(watch().subscriptionCount(), own + 2);
    first.end();
    push("/objects/a");
    push("/terms/a");
    EXPECT_EQ(takeTold(), (Told{"other /objects/a", "host /objects/a"}));
}

TEST_F(ProjectWatchTest, AGuardMayOutliveTheWatchAndTheWatchItsHandlers) {
    ProjectFile project;
    ChangeManager changes{project};
    ProjectWatch::Subscription subscription;
    {
        ProjectWatch watch{changes};
        subscription = watch.subscribe(nullptr, "objects", listener("late"));
    }
    EXPECT_FALSE(subscription.isActive());
    changes.pushChange("/objects/a", rapidjson::Value{1}, false);
    EXPECT_EQ(takeTold(), Told{});
    subscription.end();
}

TEST_F(ProjectWatchTest, TheSessionHasNumberedResourcesBeforeOthersAreTold) {
    std::size_t images = 0;
    const ProjectWatch::Subscription subscription = watch().subscribe(
        nullptr, "images", [this, &images](const Change&, Components) { images = session.data().imageIndices.size(); });
    push("/images/a");
    EXPECT_EQ(images, 1u);
    push("/images/b");
    EXPECT_EQ(images, 2u);
}

TEST_F(ProjectWatchTest, AnEmptyNameIsABrokenPrecondition) {
    QUORVANE_EXPECT_ABORT(subscribe("nobody", ""), "ProjectWatch::subscribe(): the member's name is empty");
}

TEST_F(ProjectWatchTest, AnEmptyCallbackIsABrokenPrecondition) {
    QUORVANE_EXPECT_ABORT(static_cast<void>(watch().subscribe(nullptr, "objects", {})),
        "ProjectWatch::subscribe(): the callback of \"objects\" is empty");
}

}
}
