#include "Utils/Uuid.h"

#include <set>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

using Corrade::Containers::String;

std::string newOne() {
    const String uuid = generateUUID();
    return {uuid.data(), uuid.size()};
}

TEST(GenerateUUID, HasThirtySixCharactersInGroupsWithoutBraces) {
    const std::string uuid = newOne();
    ASSERT_EQ(uuid.size(), 36u);
    for(std::size_t i = 0; i != uuid.size(); ++i) {
        const bool isDash = i == 8 || i == 13 || i == 18 || i == 23;
        EXPECT_EQ(uuid[i] == '-', isDash) << uuid;
    }
}

TEST(GenerateUUID, HasUpperCaseDigitsAlone) {
    for(int i = 0; i != 100; ++i) {
        const std::string uuid = newOne();
        EXPECT_EQ(uuid.find_first_not_of("0123456789ABCDEF-"), std::string::npos) << uuid;
    }
}

TEST(GenerateUUID, IsRandomByItsVersionAndVariant) {
    for(int i = 0; i != 100; ++i) {
        const std::string uuid = newOne();
        EXPECT_EQ(uuid[14], '4') << uuid;
        EXPECT_NE(std::string{"89AB"}.find(uuid[19]), std::string::npos) << uuid;
    }
}

TEST(GenerateUUID, EndsWithAZeroByte) {
    const String uuid = generateUUID();
    EXPECT_EQ(uuid.data()[36], '\0');
}

TEST(GenerateUUID, NeverRepeatsItself) {
    std::set<std::string> seen;
    for(int i = 0; i != 10000; ++i) EXPECT_TRUE(seen.insert(newOne()).second);
}

TEST(GenerateUUID, NeverRepeatsItselfOnSeveralThreads) {
    std::vector<std::vector<std::string>> made(4);
    std::vector<std::thread> threads;
    for(std::vector<std::string>& list: made)
        threads.emplace_back([&list] {
            for(int i = 0; i != 1000; ++i) list.push_back(newOne());
        });
    for(std::thread& thread: threads) thread.join();
    std::set<std::string> seen;
    for(const std::vector<std::string>& list: made) seen.insert(list.begin(), list.end());
    EXPECT_EQ(seen.size(), 4000u);
}

}
}
