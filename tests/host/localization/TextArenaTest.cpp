#include "TextArena.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

std::string copied(const Containers::StringView text) { return {text.data(), text.size()}; }

std::string numbered(const std::size_t i) { return std::string(i % 300, char('a' + i % 26)) + std::to_string(i); }

std::vector<Containers::StringView> fill(TextArena& arena, const std::size_t count) {
    std::vector<Containers::StringView> texts;
    for(std::size_t i = 0; i != count; ++i) {
        const std::string text = numbered(i);
        texts.push_back(arena.add(Containers::StringView{text.data(), text.size()}));
    }
    return texts;
}

void expectNumbered(const std::vector<Containers::StringView>& texts) {
    for(std::size_t i = 0; i != texts.size(); ++i) EXPECT_EQ(copied(texts[i]), numbered(i));
}

}

TEST(TextArena, KeepsTextsWhereTheyAre) {
    TextArena arena;
    const std::vector<Containers::StringView> texts = fill(arena, 5000);
    expectNumbered(texts);
    const std::string large(1 << 20, 'x');
    EXPECT_EQ(copied(arena.add(Containers::StringView{large.data(), large.size()})), large);
    EXPECT_EQ(copied(arena.add("after"_s)), "after");
    expectNumbered(texts);
}

TEST(TextArena, JoinsPieces) {
    TextArena arena;
    const Containers::StringView pieces[]{"menu"_s, ""_s, ":"_s, "file"_s};
    EXPECT_EQ(copied(arena.add(pieces)), "menu:file");
    EXPECT_EQ(arena.add(Containers::ArrayView<const Containers::StringView>{}), ""_s);
    EXPECT_EQ(arena.add(Containers::StringView{}), ""_s);
    EXPECT_NE(arena.add(""_s).data(), nullptr);
}

TEST(TextArena, MovedAndAppendedTextsStay) {
    TextArena first;
    const std::vector<Containers::StringView> texts = fill(first, 100);
    TextArena second{std::move(first)};
    const std::vector<Containers::StringView> more = fill(second, 100);
    TextArena third;
    const std::vector<Containers::StringView> others = fill(third, 100);
    third.append(std::move(second));
    TextArena last;
    last = std::move(third);
    const std::vector<Containers::StringView> after = fill(last, 100);
    // An arena that was taken over begins anew.
    expectNumbered(fill(second, 100));
    for(const auto* const all: {&texts, &more, &others, &after}) expectNumbered(*all);
}

}
