#include "PathTokens.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "AllocationCounter.h"

namespace QuorvaneEngine {

namespace {

std::vector<std::string> tokens(const std::string& path) {
    std::vector<std::string> out;
    PathTokens tokens{{path.data(), path.size()}};
    for(Containers::StringView token; tokens.next(token);) out.emplace_back(token.data(), token.size());
    return out;
}

using Strings = std::vector<std::string>;

}

TEST(PathTokens, SplitsAtSlashesAndKeepsEmptyTokens) {
    EXPECT_EQ(tokens(""), Strings{});
    EXPECT_EQ(tokens("/"), Strings{""});
    EXPECT_EQ(tokens("/a"), Strings{"a"});
    EXPECT_EQ(tokens("/a//b/"), (Strings{"a", "", "b", ""}));
}

TEST(PathTokens, UnescapesOnceFromLeftToRight) {
    EXPECT_EQ(tokens("/a~1b/m~0n"), (Strings{"a/b", "m~n"}));
    EXPECT_EQ(tokens("/~01"), Strings{"~1"});
    EXPECT_EQ(tokens("/~0~1~0"), Strings{"~/~"});
}

TEST(PathTokens, PathThatIsNotValidHasNoTokens) {
    for(const char* path: {"a", "a/b", "/~", "/a/~2", "/~/a", "/ok/~", "~0"}) {
        EXPECT_FALSE(PathTokens{path}.isValid()) << path;
        EXPECT_EQ(tokens(path), Strings{}) << path;
    }
    EXPECT_TRUE(PathTokens{""}.isValid());
    EXPECT_TRUE(PathTokens{"/"}.isValid());
}

TEST(PathTokens, LongTokensAreReadWhole) {
    const std::string plain(10000, 'x');
    EXPECT_EQ(tokens("/" + plain + "/b"), (Strings{plain, "b"}));
    EXPECT_EQ(tokens("/" + plain + "~1/~0b"), (Strings{plain + "/", "~b"}));
}

TEST(PathTokens, TokenMayHoldZeroBytes) {
    EXPECT_EQ(tokens(std::string{"/a\0b/c", 6}), (Strings{std::string{"a\0b", 3}, "c"}));
}

TEST(PathTokens, ShortPathsAllocateNothing) {
    const std::string path = "/localization/terms/" + std::string(250, 'x') + "~1/translatable";
    PathTokens tokens{{path.data(), path.size()}};
    const std::size_t before = allocationCount();
    std::size_t count = 0;
    for(Containers::StringView token; tokens.next(token);) ++count;
    EXPECT_EQ(allocationCount(), before);
    EXPECT_EQ(count, 4u);
}

}
