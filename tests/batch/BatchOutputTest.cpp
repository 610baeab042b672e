#include "batch/BatchOutput.h"

#include <cerrno>
#include <string>

#include <gtest/gtest.h>

#include "KeptOutput.h"

namespace QuorvaneEngine {
namespace {

TEST(BatchOutput, OutputAndWarningsGoToTheirStreams) {
    KeptOutput kept;
    kept.output.print("one");
    kept.output.printText("two\nthree\n");
    kept.output.warn("four");
    kept.output.fail("five");
    EXPECT_EQ(kept.output.finish(), 0);
    EXPECT_EQ(kept.out(), "one\ntwo\nthree\n");
    EXPECT_EQ(kept.error(), "four\nfive\n");
    EXPECT_EQ(kept.output.failures(), std::vector<std::string>{"five"});
}

TEST(BatchOutput, ALineStaysOneLineAndMovesNoCursor) {
    KeptOutput kept;
    kept.output.print("a\nb");
    kept.output.fail("\x1b[31mred\r");
    EXPECT_EQ(kept.out(), "a\\nb\n");
    EXPECT_EQ(kept.error(), "\\x1b[31mred\\r\n");
    EXPECT_EQ(kept.output.failures(), std::vector<std::string>{"\\x1b[31mred\\r"});
}

TEST(BatchOutput, PathsAreShownAsTheUserTypedThem) {
    KeptOutput kept;
    kept.output.showPathAs("/home/ann/game", "../game/");
    kept.output.showPathAs("/home/ann/game/i18n/", "i18n");
    kept.output.showPathAs("/", "/");
    kept.output.fail("/home/ann/game/project.json:3:1: is no JSON");
    kept.output.fail("/home/ann/game/i18n/de.json: is that of /home/ann/game/i18n, too");
    kept.output.fail("/home/ann/game: is /home/ann/games or x/home/ann/game");
    EXPECT_EQ(kept.error(),
        "../game/project.json:3:1: is no JSON\n"
        "i18n/de.json: is that of i18n, too\n"
        "../game: is /home/ann/games or x/home/ann/game\n");
}

TEST(BatchOutput, AFullDiskIsNoticedAtTheEnd) {
    std::FILE* const full = std::fopen("/dev/full", "w");
    ASSERT_TRUE(full);
    BatchOutput output{full, {}, stderr, {}};
    output.print(std::string(100000, 'x'));
    output.print("more");
    EXPECT_EQ(output.finish(), ENOSPC);
    std::fclose(full);
}

}
}
