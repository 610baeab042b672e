#include "I18NextWriter.h"

#include <initializer_list>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Catalogue.h"
#include "I18NextReader.h"
#include "JsonReader.h"
#include "TermKey.h"
#include "TermTree.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

Catalogue catalogueOf(const std::initializer_list<std::pair<const char*, const char*>> entries) {
    Catalogue catalogue;
    for(const auto& [key, text]: entries) catalogue.add(key, text);
    return catalogue;
}

std::string written(const Catalogue& catalogue, const Catalogue* const order = nullptr) {
    TermTree tree;
    std::vector<Containers::StringView> texts;
    std::vector<const rapidjson::Value*> values;
    Int other = -1;
    for(const CatalogueEntry& entry: catalogue.entries()) {
        EXPECT_EQ(tree.insert(entry.key, Int(texts.size()), other), TermConflict::None) << copied(entry.key);
        texts.push_back(entry.text);
        values.push_back(entry.value);
    }
    return copied(writeI18Next(tree, {{texts.data(), texts.size()}, {values.data(), values.size()}}, order));
}

std::string writtenOver(const Catalogue& catalogue, const Catalogue& order) { return written(catalogue, &order); }

Catalogue readBack(const std::string& bytes) {
    Catalogue catalogue;
    JsonError error;
    EXPECT_TRUE(readI18Next(viewed(bytes), catalogue, error)) << copied(error.reason) << bytes;
    return catalogue;
}

}

TEST(I18NextWriter, NestsByTwoSpacesWithOneFinalNewline) {
    EXPECT_EQ(written(catalogueOf({{"menu.file.open", "Open"}, {"title", "T"}, {"menu.edit", "Edit"}})),
        "{\n"
        "  \"menu\": {\n"
        "    \"file\": {\n"
        "      \"open\": \"Open\"\n"
        "    },\n"
        "    \"edit\": \"Edit\"\n"
        "  },\n"
        "  \"title\": \"T\"\n"
        "}\n");
}

TEST(I18NextWriter, NoTextIsAnEmptyObject) {
    EXPECT_EQ(written({}), "{}\n");
    EXPECT_EQ(written(catalogueOf({{"a.b", ""}})), "{}\n");
}

TEST(I18NextWriter, UntranslatedTermsAreLeftOut) {
    EXPECT_EQ(written(catalogueOf({{"a", ""}, {"b", "B"}, {"c.d", ""}})), "{\n  \"b\": \"B\"\n}\n");
}

TEST(I18NextWriter, CharactersStayAsTheyAreButForControls) {
    Catalogue catalogue;
    catalogue.add("ä/日", Containers::StringView{"\"q\" \\ / ä日😀 \u2028 \x7f\n\t\x01\0", 27});
    EXPECT_EQ(written(catalogue), "{\n  \"ä/日\": \"\\\"q\\\" \\\\ / ä日😀 \u2028 \x7f\\n\\t\\u0001\\u0000\"\n}\n");
}

TEST(I18NextWriter, ElementsMakeArraysWithNullForWhatIsMissing) {
    EXPECT_EQ(written(catalogueOf({{"list.[2]", "c"}, {"list.[0].x", "a"}})),
        "{\n"
        "  \"list\": [\n"
        "    {\n"
        "      \"x\": \"a\"\n"
        "    },\n"
        "    null,\n"
        "    \"c\"\n"
        "  ]\n"
        "}\n");
}

TEST(I18NextWriter, NamesAreUnescaped) {
    EXPECT_EQ(written(catalogueOf({{"a%2Eb%3A", "1"}, {"%5B0]", "2"}, {"", "3"}, {"123", "4"}})),
        "{\n  \"a.b:\": \"1\",\n  \"[0]\": \"2\",\n  \"\": \"3\",\n  \"123\": \"4\"\n}\n");
}

TEST(I18NextWriter, OrderOfTheExistingFileIsKept) {
    const Catalogue order = catalogueOf({{"z", ""}, {"menu.b", ""}, {"menu.a", ""}, {"a", ""}});
    EXPECT_EQ(writtenOver(catalogueOf({{"a", "1"}, {"menu.a", "2"}, {"menu.b", "3"}, {"z", "4"}}), order),
        written(catalogueOf({{"z", "4"}, {"menu.b", "3"}, {"menu.a", "2"}, {"a", "1"}})));
}

TEST(I18NextWriter, NewKeysComeAfterTheirNearestNeighbour) {
    const Catalogue order = catalogueOf({{"d", ""}, {"b", ""}, {"gone", ""}});
    EXPECT_EQ(
        writtenOver(catalogueOf({{"a", "1"}, {"b", "2"}, {"c1", "3"}, {"c2", "4"}, {"d", "5"}, {"e", "6"}}), order),
        written(catalogueOf({{"a", "1"}, {"d", "5"}, {"e", "6"}, {"b", "2"}, {"c1", "3"}, {"c2", "4"}})));
}

TEST(I18NextWriter, NewKeysInsideAnObjectComeAfterTheirNearestNeighbourThere) {
    const Catalogue order = catalogueOf({{"o.y", ""}, {"o.x", ""}, {"p", ""}});
    EXPECT_EQ(writtenOver(catalogueOf({{"o.x", "1"}, {"o.new", "2"}, {"o.y", "3"}, {"q.r", "4"}, {"p", "5"}}), order),
        written(catalogueOf({{"o.y", "3"}, {"o.x", "1"}, {"o.new", "2"}, {"q.r", "4"}, {"p", "5"}})));
}

TEST(I18NextWriter, ValuesAreWrittenAsTheyAre) {
    const std::string bytes = "{\n"
                              "  \"number\": -1.5,\n"
                              "  \"list\": [\n"
                              "    true,\n"
                              "    [],\n"
                              "    {}\n"
                              "  ],\n"
                              "  \"text\": \"1\"\n"
                              "}\n";
    EXPECT_EQ(written(readBack(bytes)), bytes);
}

TEST(I18NextWriter, BranchThatWasALeafIsInItsPlace) {
    EXPECT_EQ(writtenOver(catalogueOf({{"a", "1"}, {"b.c", "2"}}), catalogueOf({{"b", ""}, {"a", ""}})),
        written(catalogueOf({{"b.c", "2"}, {"a", "1"}})));
}

TEST(I18NextWriter, RandomCataloguesComeBackTheSame) {
    std::mt19937 random{1};
    const char* const names[]{"a", "b", "menu", "[0]", "[1]", "x.y", "50%", "", "ns:k", "123", "日本", "~/#", "\n"};
    const char* const texts[]{"text", "", "ä\n\"", "{{name}}", "日本語", "\\"};
    for(int i = 0; i != 2000; ++i) {
        Catalogue catalogue;
        TermTree tree;
        // The tree views keys.
        std::vector<std::string> keys;
        keys.reserve(40);
        for(unsigned count = random() % 40; count != 0; --count) {
            std::string key;
            for(unsigned depth = 0; depth == 0 || random() % 2; ++depth) {
                const char* const name = names[random() % std::size(names)];
                if(depth) key += '.';
                key += TermKey::elementIndex(name) >= 0 && depth && random() % 2 ? name
                                                                                 : copied(TermKey::memberSegment(name));
            }
            keys.push_back(key);
            Int other = 0;
            if(tree.insert(viewed(keys.back()), 0, other) == TermConflict::None)
                catalogue.add(viewed(key), texts[random() % std::size(texts)]);
        }
        const std::string bytes = written(catalogue);
        const Catalogue back = readBack(bytes);
        for(const CatalogueEntry& entry: catalogue.entries()) {
            const Int found = back.find(entry.key);
            const Containers::StringView text = found == -1 ? "" : Containers::StringView{back.entries()[found].text};
            ASSERT_EQ(text, entry.text) << copied(entry.key) << '\n' << bytes;
        }
        for(const CatalogueEntry& entry: back.entries())
            ASSERT_TRUE(entry.text.isEmpty() || catalogue.find(entry.key) != -1) << copied(entry.key);
        // A second export over the first changes nothing.
        EXPECT_EQ(writtenOver(catalogue, back), bytes);
    }
}

TEST(I18NextWriter, AnotherNumberIsNotSpelledAsInTheFileThatIsThere) {
    const std::pair<const char*, const char*> cases[]{{"-1", "18446744073709551615"}, {"18446744073709551615", "-1"},
        {"0", "-0.0"}, {"0.0", "-0.0"}, {"1e0", "1"}, {"1", "1.0"}};
    for(const auto& [before, number]: cases)
        EXPECT_EQ(writtenOver(readBack(R"({"a": )" + std::string{number} + '}'),
                      readBack(R"({"a": )" + std::string{before} + '}')),
            "{\n  \"a\": " + std::string{number} + "\n}\n");
}

}
