#include "ChangeManager.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "QuorvaneEditor/ProjectFile.h"
#include "support/Abort.h"
#include "support/Allocations.h"
#include "support/Json.h"

/* Who hears about a change, and when. */

namespace QuorvaneEngine {
namespace {

using Test::Allocations;
using Test::load;

class ChangeManagerHandlers: public testing::Test {
protected:
    using Calls = std::vector<std::string>;

    ChangeManagerHandlers() { load(project, R"({"a":{"b":{"a":0,"c":0}},"d":0})"); }

    /** Notes each call as "key path: pieces joined by |". */
    void listen(const std::string& key) {
        changes.addChangeHandler(
            key.c_str(),
            [this, key](const Change& change, Containers::ArrayView<Containers::StringView> pieces, void*) {
                std::string call = key + " " + std::string{change.path.data(), change.path.size()} + ": ";
                for(std::size_t i = 0; i != pieces.size(); ++i)
                    call += (i ? "|" : "") + std::string{pieces[i].data(), pieces[i].size()};
                calls.push_back(call);
            },
            nullptr);
    }

    void push(const char* path, int value, bool merge = false) {
        changes.pushChange(path, rapidjson::Value{value}, merge);
    }

    ProjectFile project;
    ChangeManager changes{project};
    Calls calls;
};

TEST_F(ChangeManagerHandlers, HearAboutAComponentAnywhereInThePath) {
    listen("b");
    push("/a/b/c", 1);
    EXPECT_EQ(calls, (Calls{"b /a/b/c: |a|b|c"}));
}

TEST_F(ChangeManagerHandlers, DoNotHearAboutOthers) {
    listen("b");
    push("/d", 1);
    push("/a/bb", 1);
    EXPECT_EQ(calls, Calls{});
}

TEST_F(ChangeManagerHandlers, AreCalledOncePerComponentInTheirOrder) {
    listen("c");
    listen("a");
    push("/a/b/c", 1);
    EXPECT_EQ(calls, (Calls{"a /a/b/c: |a|b|c", "c /a/b/c: |a|b|c"}));
}

TEST_F(ChangeManagerHandlers, AreCalledTwiceForAPathThatHasTheKeyTwice) {
    listen("a");
    push("/a/b/a", 1);
    EXPECT_EQ(calls, (Calls{"a /a/b/a: |a|b|a", "a /a/b/a: |a|b|a"}));
}

TEST_F(ChangeManagerHandlers, GetEmptyPieces) {
    listen("d");
    push("/d//", 1);
    EXPECT_EQ(calls, (Calls{"d /d//: |d||"}));
}

TEST_F(ChangeManagerHandlers, GetPiecesAsTheyStandEscaped) {
    listen("x~1y");
    push("/d/x~1y", 1);
    EXPECT_EQ(calls, (Calls{"x~1y /d/x~1y: |d|x~1y"}));
}

TEST_F(ChangeManagerHandlers, HearWhenTheDocumentHasChangedAlready) {
    Int seen = 0;
    const Int before = project.revision();
    changes.addChangeHandler(
        "d",
        [&](const Change&, Containers::ArrayView<Containers::StringView>, void*) {
            EXPECT_EQ(project.getValue("/d", false)->GetInt(), 7);
            seen = project.revision();
        },
        nullptr);
    push("/d", 7);
    EXPECT_EQ(seen, before + 1);
}

TEST_F(ChangeManagerHandlers, HearAboutUndoWithTheReverseAndAboutRedo) {
    std::vector<int> values;
    changes.addChangeHandler(
        "d",
        [&](const Change& change, Containers::ArrayView<Containers::StringView>, void*) {
            values.push_back(change.newValue ? change.newValue->GetInt() : -1);
        },
        nullptr);
    push("/d", 7);
    changes.undoLast();
    changes.redoLastUndo();
    changes.pushRemoval("/d");
    EXPECT_EQ(values, (std::vector<int>{7, 0, 7, -1}));
}

TEST_F(ChangeManagerHandlers, GetTheUserDataUnchanged) {
    int data = 0;
    void* got = nullptr;
    changes.addChangeHandler(
        "d", [&](const Change&, Containers::ArrayView<Containers::StringView>, void* userData) { got = userData; },
        &data);
    push("/d", 1);
    EXPECT_EQ(got, &data);
}

TEST_F(ChangeManagerHandlers, CanBeObjectsOfTheirOwnClass) {
    struct Handler: ChangeHandler {
        explicit Handler(int& count): calls{count} {}
        void handle(const Change&, Containers::ArrayView<Containers::StringView>) override { ++calls; }
        int& calls;
    };
    int count = 0;
    changes.addChangeHandler("d", Containers::Pointer<ChangeHandler>{new Handler{count}});
    push("/d", 1);
    EXPECT_EQ(count, 1);
}

// Groups

TEST_F(ChangeManagerHandlers, HearAboutAGroupWhenItIsCommitted) {
    listen("b");
    listen("d");
    changes.openGroup();
    push("/a/b/c", 1);
    push("/d", 1);
    EXPECT_EQ(calls, Calls{});
    changes.commit();
    EXPECT_EQ(calls, (Calls{"b /a/b/c: |a|b|c", "d /d: |d"}));
}

TEST_F(ChangeManagerHandlers, HearAboutTheChangesOfTheirGroupAlone) {
    listen("d");
    push("/d", 1);
    changes.openGroup();
    push("/d", 2);
    changes.commit();
    calls.clear();
    changes.openGroup();
    push("/d", 3);
    push("/d", 4);
    changes.commit();
    EXPECT_EQ(calls.size(), 2u);
}

TEST_F(ChangeManagerHandlers, DoNotHearAboutAnEmptyGroup) {
    listen("d");
    push("/d", 1);
    calls.clear();
    changes.openGroup();
    changes.commit();
    EXPECT_EQ(calls, Calls{});
}

TEST_F(ChangeManagerHandlers, HearAboutTheLastUngroupedChangesAgainWhenNoGroupIsOpen) {
    listen("d");
    changes.commit();
    EXPECT_EQ(calls, Calls{});
    changes.openGroup();
    push("/d", 1);
    changes.commit();
    push("/d", 2);
    push("/d", 3);
    calls.clear();
    changes.commit();
    EXPECT_EQ(calls.size(), 2u);
}

TEST_F(ChangeManagerHandlers, HearAboutTheWholeLogAgainWhereThereIsNoGroup) {
    listen("d");
    push("/d", 1);
    push("/d", 2);
    calls.clear();
    changes.commit();
    EXPECT_EQ(calls.size(), 2u);
}

TEST_F(ChangeManagerHandlers, HearAboutEachChangeOfAGroupThatIsUndoneOrRedone) {
    listen("d");
    changes.openGroup();
    push("/d", 1);
    push("/d", 2);
    changes.commit();
    calls.clear();
    changes.undoLast();
    EXPECT_EQ(calls.size(), 2u);
    changes.redoLastUndo();
    EXPECT_EQ(calls.size(), 4u);
}

// Registration

TEST_F(ChangeManagerHandlers, TheSeventeenthGrowsTheRoomAndAllKeepWorking) {
    const auto key = [](int i) { return "key" + std::to_string(i); };
    for(int i = 0; i != 17; ++i) listen(key(i));
    for(int i = 0; i != 17; ++i) {
        calls.clear();
        push(("/" + key(i)).c_str(), 1);
        ASSERT_EQ(calls.size(), 1u);
        EXPECT_EQ(calls[0].find(key(i) + " /"), 0u);
    }
}

TEST_F(ChangeManagerHandlers, TheRoomGrowsBySixteenAtATime) {
    struct Deaf: ChangeHandler {
        void handle(const Change&, Containers::ArrayView<Containers::StringView>) override {}
    };
    std::vector<int> grown;
    for(int i = 1; i <= 49; ++i) {
        const std::string key = "key" + std::to_string(i);
        Containers::Pointer<ChangeHandler> handler{new Deaf};
        const Allocations allocations;
        changes.addChangeHandler(key.c_str(), std::move(handler));
        if(allocations.count()) grown.push_back(i);
    }
    EXPECT_EQ(grown, (std::vector<int>{1, 17, 33, 49}));
}

TEST_F(ChangeManagerHandlers, OfTwoWithOneKeyOneIsCalled) {
    int first = 0;
    int second = 0;
    const auto count = [this](int& calls) {
        changes.addChangeHandler(
            "d", [&calls](const Change&, Containers::ArrayView<Containers::StringView>, void*) { ++calls; }, nullptr);
    };
    count(first);
    count(second);
    push("/d", 1);
    push("/d", 2);
    EXPECT_EQ(first + second, 2);
    EXPECT_TRUE(first == 0 || second == 0);
}

TEST_F(ChangeManagerHandlers, EndWithAReset) {
    const auto shared = std::make_shared<int>(0);
    changes.addChangeHandler(
        "d", [shared](const Change&, Containers::ArrayView<Containers::StringView>, void*) { ++*shared; }, nullptr);
    changes.reset(project);
    EXPECT_EQ(shared.use_count(), 1);
    push("/d", 1);
    EXPECT_EQ(*shared, 0);
    listen("d");
    push("/d", 2);
    EXPECT_EQ(calls.size(), 1u);
}

TEST_F(ChangeManagerHandlers, EndWithTheManager) {
    const auto shared = std::make_shared<int>(0);
    {
        ChangeManager other{project};
        other.addChangeHandler(
            "d", [shared](const Change&, Containers::ArrayView<Containers::StringView>, void*) {}, nullptr);
        EXPECT_EQ(shared.use_count(), 2);
    }
    EXPECT_EQ(shared.use_count(), 1);
}

using ChangeManagerHandlersDeathTest = ChangeManagerHandlers;

TEST_F(ChangeManagerHandlersDeathTest, ANullHandlerAborts) {
    QUORVANE_EXPECT_ABORT(changes.addChangeHandler("d", Containers::Pointer<ChangeHandler>{}),
        "ChangeManager::addChangeHandler(): the handler of \"d\" is null");
    QUORVANE_EXPECT_ABORT(changes.addChangeHandler("d", FunctionChangeHandler::Callable{}, nullptr),
        "ChangeManager::addChangeHandler(): the callable of \"d\" is empty");
}

TEST_F(ChangeManagerHandlersDeathTest, AnEmptyKeyAborts) {
    QUORVANE_EXPECT_ABORT(listen(""), "StaticMap::put(): key cannot be nullptr.");
}

}
}
