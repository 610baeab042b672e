#include "MemberIndex.h"

#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include <gtest/gtest.h>

#include "AllocationCounter.h"
#include "PathTokens.h"
#include "TestDocument.h"

namespace QuorvaneEngine {

namespace {

/** Keys that lie inside the member array, and longer ones that do not. */
std::string keyNumber(unsigned number) {
    return number % 3 ? "k" + std::to_string(number) : "a key of more than thirteen bytes " + std::to_string(number);
}

void add(rapidjson::Value& object, const std::string& key, int value, rapidjson::Document& document) {
    object.AddMember(rapidjson::Value{key.data(), rapidjson::SizeType(key.size()), document.GetAllocator()},
        rapidjson::Value{value}, document.GetAllocator());
}

rapidjson::Document withMembers(unsigned count) {
    rapidjson::Document document{rapidjson::kObjectType};
    for(unsigned i = 0; i != count; ++i) add(document, keyNumber(i), int(i), document);
    return document;
}

}

TEST(MemberIndex, FindsEveryMemberAndNoOther) {
    for(const unsigned count: {0u, 1u, 31u, 32u, 33u, 34u, 1000u}) {
        rapidjson::Document document = withMembers(count);
        MemberIndex index;
        for(unsigned i = 0; i != count; ++i)
            ASSERT_EQ(index.find(document, view(keyNumber(i))), &(document.MemberBegin() + i)->value)
                << count << " " << i;
        EXPECT_EQ(index.find(document, view(keyNumber(count))), nullptr);
        EXPECT_EQ(index.find(document, ""), nullptr);
    }
}

TEST(MemberIndex, WhatIsNoObjectHasNoMembers) {
    MemberIndex index;
    for(const char* json: {"null", "true", "1", R"("a")", "[1]"}) {
        rapidjson::Document document = parsed(json);
        EXPECT_EQ(index.find(document, "a"), nullptr) << json;
        EXPECT_EQ(index.noteRemoval(document, "a"), nullptr) << json;
    }
}

TEST(MemberIndex, KeysMayBeEmptyOrHoldAnything) {
    rapidjson::Document document = withMembers(100);
    const std::string keys[]{"", std::string{"a\0b", 3}, "/", "~", std::string(10240, 'x'), "\xff"};
    for(const std::string& key: keys) add(document, key, 1, document);
    MemberIndex index;
    for(const std::string& key: keys) EXPECT_EQ(index.find(document, view(key)), scanMembers(document, view(key)));
    EXPECT_NE(index.find(document, ""), nullptr);
    EXPECT_EQ(index.find(document, "a"), nullptr);
}

TEST(MemberIndex, OfMembersWithOneKeyTheFirstIsFound) {
    rapidjson::Document document = withMembers(100);
    add(document, keyNumber(50), -1, document);
    add(document, "twice", -2, document);
    add(document, "twice", -3, document);
    MemberIndex index;
    EXPECT_EQ(printed(index.find(document, view(keyNumber(50)))), "50");
    EXPECT_EQ(printed(index.find(document, "twice")), "-2");
    document.EraseMember("twice");
    EXPECT_EQ(printed(index.noteRemoval(document, "twice")), "-3");
    document.EraseMember("twice");
    EXPECT_EQ(printed(index.noteRemoval(document, "twice")), "nothing");
}

TEST(MemberIndex, RemovingTheFirstOfTwoBringsTheSecond) {
    rapidjson::Document document = withMembers(100);
    add(document, keyNumber(50), -1, document);
    add(document, "last", -2, document);
    MemberIndex index;
    EXPECT_EQ(printed(index.find(document, view(keyNumber(50)))), "50");
    document.EraseMember(document.MemberBegin() + 50);
    EXPECT_EQ(printed(index.noteRemoval(document, view(keyNumber(50)))), "-1");
}

TEST(MemberIndex, KeysWithOneHashAreToldApart) {
    std::unordered_map<std::uint32_t, std::string> seen;
    std::string first, second;
    for(unsigned i = 0; i != 2000000 && first.empty(); ++i) {
        second = std::to_string(i);
        const auto [other, isNew] = seen.try_emplace(HashIndex::hash(view(second)), second);
        if(!isNew) first = other->second;
    }
    ASSERT_FALSE(first.empty());

    MemberIndex index;
    for(const bool isFirst: {true, false}) {
        rapidjson::Document document = withMembers(100);
        add(document, first, 1, document);
        add(document, "between", 0, document);
        EXPECT_EQ(index.find(document, view(second)), nullptr);
        add(document, second, 2, document);
        add(document, "last", 0, document);
        EXPECT_EQ(printed(index.find(document, view(first))), "1");
        EXPECT_EQ(printed(index.find(document, view(second))), "2");
        const std::string& removed = isFirst ? first : second;
        document.EraseMember(removed.data());
        EXPECT_EQ(index.noteRemoval(document, view(removed)), nullptr);
        EXPECT_EQ(index.find(document, view(first)), scanMembers(document, view(first)));
        EXPECT_EQ(index.find(document, view(second)), scanMembers(document, view(second)));
        index.clear();
    }
}

TEST(MemberIndex, NoteOfAnotherMemberDoesNotHideARemoval) {
    rapidjson::Document document = withMembers(100);
    MemberIndex index;
    index.find(document, "");
    document.EraseMember(document.MemberBegin() + 10);
    EXPECT_EQ(printed(index.noteRemoval(document, view(keyNumber(50)))), "50");
    EXPECT_EQ(index.find(document, view(keyNumber(10))), nullptr);
}

TEST(MemberIndex, ObjectThatWasSmallInBetweenIsIndexedAnew) {
    rapidjson::Document document = withMembers(40);
    MemberIndex index;
    index.find(document, "");
    for(unsigned i = 0; i != 40; ++i) {
        if(i >= 10 && i < 30) continue;
        document.EraseMember(keyNumber(i).data());
        index.noteRemoval(document, view(keyNumber(i)));
    }
    // Now the 33rd member is again the one that it was when the object was last large.
    for(unsigned i = 100; i != 112; ++i) add(document, keyNumber(i), int(i), document);
    add(document, keyNumber(39), 39, document);
    ASSERT_EQ(document.MemberCount(), 33u);
    for(const unsigned i: {0u, 10u, 29u, 30u, 39u, 100u, 111u})
        EXPECT_EQ(index.find(document, view(keyNumber(i))), scanMembers(document, view(keyNumber(i)))) << i;
}

TEST(MemberIndex, ManyMembersWithOneKeyCostNoMoreThanOthers) {
    rapidjson::Document document{rapidjson::kObjectType};
    for(int i = 0; i != 100000; ++i) add(document, "same", i, document);
    MemberIndex index;
    EXPECT_EQ(printed(index.find(document, "same")), "0");
    EXPECT_EQ(index.find(document, "other"), nullptr);
    EXPECT_EQ(index.indexedMembers(), 100000u);
}

TEST(MemberIndex, CreationsAreNotQuadratic) {
    rapidjson::Document document{rapidjson::kObjectType};
    MemberIndex index;
    for(unsigned i = 0; i != 30000; ++i) {
        ASSERT_EQ(index.find(document, view(keyNumber(i))), nullptr);
        add(document, keyNumber(i), int(i), document);
        ASSERT_NE(index.noteRemoval(document, view(keyNumber(i))), nullptr);
    }
    // Growing by half moves the array about twice as many members as there are in the end, and each is read once on its own.
    EXPECT_LT(index.indexedMembers(), 5 * 30000u);
}

TEST(MemberIndex, NotedRemovalsIndexNothingAnew) {
    rapidjson::Document document = withMembers(5000);
    MemberIndex index;
    index.find(document, "");
    std::mt19937 random{2};
    while(document.MemberCount() > 1000) {
        const auto member = document.MemberBegin() + std::ptrdiff_t(random() % document.MemberCount());
        const std::string key{member->name.GetString(), member->name.GetStringLength()};
        document.EraseMember(member);
        ASSERT_EQ(index.noteRemoval(document, view(key)), nullptr);
    }
    EXPECT_EQ(index.indexedMembers(), 5000u);
    for(unsigned i = 0; i != 5000; ++i)
        ASSERT_EQ(index.find(document, view(keyNumber(i))), scanMembers(document, view(keyNumber(i)))) << i;
    EXPECT_EQ(index.indexedMembers(), 5000u);
}

TEST(MemberIndex, LookUpsAllocateNothing) {
    rapidjson::Document document = withMembers(1000);
    MemberIndex index;
    index.find(document, "");
    const std::string present = keyNumber(999);
    const std::size_t before = allocationCount();
    const bool isFound = index.find(document, view(present));
    const bool isOtherFound = index.find(document, "missing");
    EXPECT_EQ(allocationCount(), before);
    EXPECT_TRUE(isFound);
    EXPECT_FALSE(isOtherFound);
}

namespace {

/** A random walk over changes of a large object among siblings, each answer compared with a plain scan. */
struct Walk {
    explicit Walk(unsigned seed): random{seed} {
        for(const char* name: {"first", "second", "third"})
            document.AddMember(
                rapidjson::StringRef(name), rapidjson::Value{rapidjson::kObjectType}, document.GetAllocator());
    }

    rapidjson::Value* large() { return scanMembers(document, "third"); }

    void compare(unsigned count) {
        rapidjson::Value& object = *large();
        for(unsigned i = 0; i != count; ++i) {
            const std::string key = keyNumber(random() % 300);
            ASSERT_EQ(index.find(object, view(key)), scanMembers(object, view(key))) << key;
        }
        if(!object.MemberCount()) return;
        const auto last = object.MemberEnd() - 1;
        const std::string key{last->name.GetString(), last->name.GetStringLength()};
        ASSERT_EQ(index.find(object, view(key)), scanMembers(object, view(key))) << key;
    }

    void addMissing(unsigned count) {
        for(unsigned i = 0; i != count; ++i) {
            const std::string key = keyNumber(random() % 300);
            rapidjson::Value& object = *large();
            if(!scanMembers(object, view(key))) add(object, key, ++values, document);
            compare(random() % 2);
            if(isNoted) index.noteRemoval(object, view(key));
        }
    }

    void removeOne(bool isOrdered) {
        rapidjson::Value& object = *large();
        if(!object.MemberCount()) return;
        const auto member = object.MemberBegin() + std::ptrdiff_t(random() % object.MemberCount());
        const std::string key{member->name.GetString(), member->name.GetStringLength()};
        if(isOrdered) object.EraseMember(member);
        else object.RemoveMember(member);
        // At most one of two removals may be unknown to the index, and this is it.
        if(isNoted && random() % 8) index.noteRemoval(object, view(key));
        compare(2);
    }

    void copyAll() {
        rapidjson::Value copy{*large(), document.GetAllocator()};
        *large() = copy;
    }

    /** Moves the large object to another place in its parent. */
    void moveSibling() {
        if(scanMembers(document, "first")) document.EraseMember("first");
        else {
            document.AddMember("first", rapidjson::Value{rapidjson::kObjectType}, document.GetAllocator());
            std::swap(document.MemberBegin()[0].name, (document.MemberEnd() - 1)->name);
            std::swap(document.MemberBegin()[0].value, (document.MemberEnd() - 1)->value);
        }
    }

    void replaceDocument() {
        rapidjson::Document other;
        other.CopyFrom(document, other.GetAllocator());
        document = std::move(other);
        index.clear();
    }

    void step() {
        switch(random() % 100) {
        case 0: return copyAll();
        case 1: return moveSibling();
        case 2: return random() % 10 ? void() : replaceDocument();
        case 3: return large()->MemberCount() && random() % 20 == 0 ? large()->RemoveAllMembers() : void();
        case 4: return removeOne(false);
        case 5: return addMissing(1 + random() % 40);
        default:
            if(random() % 2) addMissing(1);
            else removeOne(true);
        }
    }

    std::mt19937 random;
    rapidjson::Document document{rapidjson::kObjectType};
    MemberIndex index;
    int values = 0;
    bool isNoted = true;
};

}

class MemberIndexWalk: public testing::TestWithParam<unsigned> {};

TEST_P(MemberIndexWalk, AgreesWithAScanAfterEveryChange) {
    Walk walk{GetParam()};
    std::size_t large = 0;
    for(unsigned i = 0; i != 20000; ++i) {
        walk.step();
        walk.compare(3);
        if(HasFatalFailure()) FAIL() << "step " << i;
        large += walk.large()->MemberCount() > MemberIndex::ScannedMembers;
    }
    EXPECT_GT(large, 5000u);
}

TEST_P(MemberIndexWalk, AgreesWithAScanWhenNothingIsNoted) {
    Walk walk{GetParam() + 100};
    walk.isNoted = false;
    for(unsigned i = 0; i != 10000; ++i) {
        walk.step();
        walk.compare(3);
        if(HasFatalFailure()) FAIL() << "step " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, MemberIndexWalk, testing::Range(1u, 6u));

}
