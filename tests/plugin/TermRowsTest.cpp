/* Rows lie where drawing all of them would put them. The reference is a table that draws every row plainly. */

#include "TermRows.h"

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <imgui_internal.h>
#include <rapidjson/document.h>

#include "ImGuiText.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "Ui/Ui.h"
#include "support/GuiTest.h"

namespace QuorvaneEngine::Test {
namespace {

constexpr ImGuiSelectableFlags RowFlags =
    ImGuiSelectableFlags_SpanAllColumns | ImGuiSelectableFlags_AllowOverlap | ImGuiSelectableFlags_SpanAvailWidth;

struct Term {
    std::string key;
    std::string text;
};

void fill(ProjectFile& project, const std::vector<Term>& terms) {
    rapidjson::Document document{rapidjson::kObjectType};
    auto& allocator = document.GetAllocator();
    const auto string = [&](const std::string& text) {
        return rapidjson::Value{text.data(), rapidjson::SizeType(text.size()), allocator};
    };
    rapidjson::Value members{rapidjson::kObjectType};
    for(const Term& term: terms) {
        const std::string source = "text of " + term.key;
        rapidjson::Value value{rapidjson::kObjectType};
        value.AddMember("sourceText", string(source), allocator);
        members.AddMember(string(term.key), value, allocator);
        document.AddMember(string(source), string(term.text), allocator);
    }
    rapidjson::Value localization{rapidjson::kObjectType};
    localization.AddMember("terms", members, allocator);
    document.AddMember("localization", localization, allocator);
    project.replace(std::move(document));
}

/* Draws every row as a table would that knows nothing of heights, lays the model out in it, and compares */
void compareInFrame(TermRows& rows, const std::vector<Term>& terms, const float width) {
    ImGui::SetNextWindowPos({0.0f, 0.0f});
    ImGui::SetNextWindowSize({width, 400.0f});
    ImGui::Begin("Plain");
    ASSERT_TRUE(ImGui::BeginTable("termstable", 3, ImGuiTableFlags_Borders));
    ImGui::TableSetupColumn("Term", ImGuiTableColumnFlags_WidthStretch, 0.7f);
    ImGui::TableSetupColumn("Source Text", ImGuiTableColumnFlags_WidthStretch);
    ImGui::TableSetupColumn("Translatable?", ImGuiTableColumnFlags_WidthFixed, ImGui::CalcTextSize("Translatable?").x);
    ImGui::TableHeadersRow();
    ImGui::TableSetColumnIndex(1);
    const ImGuiStyle& style = ImGui::GetStyle();
    rows.layOut({std::max(ImGui::GetContentRegionAvail().x, 1.0f), style.CellPadding.y, style.ItemSpacing.y,
        ImGui::GetFontSize() + 2.0f * Ui::scaled(1.0f)});
    ImGui::TableEndRow(ImGui::GetCurrentTable());
    const float origin = ImGui::GetCurrentTable()->RowPosY2;

    ASSERT_EQ(rows.size(), terms.size());
    for(std::size_t i = 0; i != terms.size(); ++i) {
        const Term& term = terms[i];
        ImGui::TableNextRow();
        EXPECT_EQ(rows.top(i), ImGui::GetCurrentTable()->RowPosY1 - origin) << "top of row " << i << ", " << term.key;
        ImGui::TableNextColumn();
        const float height = ImGui::CalcTextSize(term.text.data(), term.text.data() + term.text.size()).y;
        EXPECT_EQ(rows.naturalHeight(i), height);
        ImGui::PushID(int(i));
        if(term.key.empty()) ImGui::Selectable("##empty", false, RowFlags, {0.0f, height});
        else ImGui::Selectable(term.key.c_str(), false, RowFlags, {0.0f, height});
        ImGui::TableNextColumn();
        ImGui::PushTextWrapPos(0.0f);
        ImGui::TextUnformatted(term.text.data(), term.text.data() + term.text.size());
        ImGui::PopTextWrapPos();
        ImGui::TableNextColumn();
        bool ticked = false;
        if(!term.key.empty()) Ui::checkbox("##translatable", &ticked);
        ImGui::PopID();
    }
    if(!terms.empty()) ImGui::TableEndRow(ImGui::GetCurrentTable());
    EXPECT_EQ(rows.top(terms.size()), ImGui::GetCurrentTable()->RowPosY2 - origin) << "bottom of the last row";
    ImGui::EndTable();
    ImGui::End();
}

class TermRowsTest: public testing::Test {
protected:
    void compare(const std::vector<Term>& terms, const float width) {
        fill(_project, terms);
        _rows.rebuild(_project, "");
        relayOut(terms, width);
    }

    void relayOut(const std::vector<Term>& terms, const float width) {
        _gui.frames([&] { compareInFrame(_rows, terms, width); }, 2);
    }

    GuiTest _gui{{1600.0f, 900.0f}};
    ProjectFile _project;
    TermRows _rows;
};

const std::vector<Term> OfEveryKind{
    {"one", "One line."},
    {"empty", ""},
    {"", "A row whose key is empty has no box."},
    {"lines", "First line\nsecond line\nthird line"},
    {"wrapped", "A text that is so long that a narrow column has to break it over several lines, between its words."},
    {"both", "A text with a line that is long enough to be broken\nand one more\n\nand an empty one before this."},
    {"trailing", "Ends with a line break\n"},
    {"breaks", "\n\n\n"},
    {"blanks", "      "},
    {"word", std::string(300, 'w')},
    {"tabs", "a\tb\tc\t\t\td"},
    {"carriage", "Windows\r\nline\r\nbreaks\r\n"},
    {"unicode",
        "\xc3\x9c"
        "berl\xc3\xa4nge \xe6\x97\xa5\xe6\x9c\xac\xe8\xaa\x9e \xd0\xbf\xd1\x80\xd0\xb8\xd0\xb2\xd0\xb5\xd1\x82"},
    {"key\nof\nlines", "one line beside a key of three"},
    {"##hidden", "its key is shown all the same"},
    {"a###b", "this, too"},
    {"100%", "50% of %s %d %n"},
};

TEST_F(TermRowsTest, RowsOfEveryKindLieWhereAPlainTablePutsThem) {
    for(const float width: {200.0f, 350.0f, 640.0f, 1500.0f}) compare(OfEveryKind, width);
}

TEST_F(TermRowsTest, AnEmptyKeyWithAnEmptyTextIsALineWithoutABox) {
    compare({{"a", ""}, {"", ""}, {"b", ""}}, 400.0f);
    EXPECT_LT(_rows.top(2) - _rows.top(1), _rows.top(1) - _rows.top(0));
}

TEST_F(TermRowsTest, ResizingTheWindowMovesTheRows) {
    compare(OfEveryKind, 900.0f);
    for(float width = 880.0f; width > 160.0f; width -= 37.0f) relayOut(OfEveryKind, width);
    for(float width = 160.0f; width < 900.0f; width += 53.0f) relayOut(OfEveryKind, width);
}

TEST_F(TermRowsTest, AnotherFontSizeMovesTheRows) {
    compare(OfEveryKind, 400.0f);
    const float before = _rows.top(OfEveryKind.size());
    for(const float scale: {1.25f, 1.5f, 1.75f, 2.0f, 1.0f}) {
        ImGui::GetStyle().FontScaleMain = scale;
        relayOut(OfEveryKind, 400.0f);
    }
    EXPECT_EQ(_rows.top(OfEveryKind.size()), before);
    ImGui::GetStyle().FontSizeBase = 20.0f;
    relayOut(OfEveryKind, 400.0f);
    EXPECT_GT(_rows.top(OfEveryKind.size()), before);
}

TEST_F(TermRowsTest, AnotherStyleMovesTheRows) {
    compare(OfEveryKind, 400.0f);
    ImGui::GetStyle().CellPadding.y = 7.0f;
    ImGui::GetStyle().ItemSpacing.y = 11.0f;
    relayOut(OfEveryKind, 400.0f);
}

TEST_F(TermRowsTest, LongTextsBreakIntoTheLinesOfThePlainOnes) {
    std::string words, lines;
    for(int i = 0; i != 2000; ++i) {
        words += "word" + std::to_string(i * i) + (i % 7 ? " " : "   ");
        lines += "line " + std::to_string(i) + (i % 5 ? "\n" : " \n\n");
    }
    const std::vector<Term> terms{{"words", words}, {"lines", lines}, {"no blank", std::string(5000, 'x')},
        {"blanks", std::string(5000, ' ')}, {"breaks", std::string(3000, '\n')}, {"short", "short"}};
    for(const float width: {250.0f, 900.0f}) {
        compare(terms, width);
        for(std::size_t i = 0; i != 5; ++i) EXPECT_FALSE(_rows.lineStarts(i).isEmpty()) << i;
        EXPECT_TRUE(_rows.lineStarts(5).isEmpty());
        for(std::size_t i = 0; i != 3; ++i)
            EXPECT_EQ(float(_rows.lineStarts(i).size()) * ImGui::GetStyle().FontSizeBase, _rows.wrappedHeight(i)) << i;
    }
}

TEST_F(TermRowsTest, AMegabyteOfTextLiesWhereThePlainOneDoes) {
    std::string text;
    while(text.size() < 1000000) text += "The quick brown fox jumps over the lazy dog. ";
    compare({{"before", "x"}, {"megabyte", text}, {"after", "y"}}, 1200.0f);
}

TEST_F(TermRowsTest, RandomRowsLieWhereAPlainTablePutsThem) {
    std::mt19937 random{20260719};
    const auto number = [&](const unsigned below) { return random() % below; };
    const char* const pieces[]{
        "a", "word", " ", "  ", "\n", "\t", ", ", "\xc3\xa9", "\xe6\x97\xa5", "-", "\r\n", "longerword", ".", "9"};
    for(int round = 0; round != 12; ++round) {
        std::vector<Term> terms;
        for(unsigned i = 0, count = 20 + number(60); i != count; ++i) {
            Term term{"term " + std::to_string(i), ""};
            for(unsigned j = 0, size = number(i % 9 ? 40 : 1500); j != size; ++j)
                term.text += pieces[number(std::size(pieces))];
            terms.push_back(term);
        }
        compare(terms, float(180 + number(900)));
    }
}

TEST_F(TermRowsTest, RebuildingKeepsWhatWasMeasuredRight) {
    std::vector<Term> terms = OfEveryKind;
    compare(terms, 300.0f);
    terms.insert(terms.begin() + 2, {"new", "A new row with a text that is long enough for two lines or three."});
    compare(terms, 300.0f);
    terms.erase(terms.begin() + 5);
    terms[7].text += " And a little more than it was before, which makes it longer.";
    compare(terms, 300.0f);
    std::swap(terms[1], terms[12]);
    compare(terms, 300.0f);
}

TEST_F(TermRowsTest, RowsBetweenAreThoseThatTouchThePixels) {
    compare({{"a", "one"}, {"b", "two\nlines"}, {"c", "one"}}, 400.0f);
    const float height = _rows.top(3);
    const auto between = [&](const float from, const float to) {
        const TermRows::Range range = _rows.rowsBetween(from, to);
        return std::pair{range.begin, range.end};
    };
    EXPECT_EQ(between(0.0f, height), (std::pair<std::size_t, std::size_t>{0, 3}));
    EXPECT_EQ(between(-100.0f, height + 100.0f), (std::pair<std::size_t, std::size_t>{0, 3}));
    EXPECT_EQ(between(_rows.top(1), _rows.top(2)), (std::pair<std::size_t, std::size_t>{1, 2}));
    EXPECT_EQ(between(_rows.top(1) - 1.0f, _rows.top(2) + 1.0f), (std::pair<std::size_t, std::size_t>{0, 3}));
    EXPECT_EQ(between(-100.0f, -50.0f), (std::pair<std::size_t, std::size_t>{0, 1}));
    EXPECT_EQ(between(height + 50.0f, height + 100.0f), (std::pair<std::size_t, std::size_t>{2, 3}));
}

TEST_F(TermRowsTest, NoRowsHaveNoHeight) {
    compare({}, 400.0f);
    EXPECT_EQ(_rows.size(), 0);
    EXPECT_EQ(_rows.top(0), 0.0f);
    EXPECT_EQ(_rows.rowsBetween(0.0f, 100.0f).end, 0);
}

TEST_F(TermRowsTest, TokensAreEscapedForPointers) {
    fill(_project, {{"a/b~c", "x"}, {"plain", "x"}, {"", "x"}, {"~", "x"}});
    _rows.rebuild(_project, "");
    EXPECT_EQ(_rows.token(0), "a~1b~0c");
    EXPECT_EQ(_rows.key(0), "a/b~c");
    EXPECT_EQ(_rows.token(1), "plain");
    EXPECT_EQ(_rows.token(2), "");
    EXPECT_EQ(_rows.token(3), "~0");
}

TEST_F(TermRowsTest, TextsAreCopiesOfTheirOwn) {
    fill(_project, {{"key", "text"}});
    _rows.rebuild(_project, "");
    fill(_project, {{"other", "document"}});
    EXPECT_EQ(_rows.key(0), "key");
    EXPECT_EQ(_rows.text(0), "text");
    EXPECT_EQ(_rows.text(0).data()[4], '\0');
}

TEST_F(TermRowsTest, TheSearchFindsKeysAndSources) {
    fill(_project, {{"Alpha", "one"}, {"beta", "two"}, {"gamma", "alpha"}});
    _rows.rebuild(_project, "ALPHA");
    ASSERT_EQ(_rows.size(), 1);
    EXPECT_EQ(_rows.key(0), "Alpha");
    _rows.rebuild(_project, "text of G");
    ASSERT_EQ(_rows.size(), 1);
    EXPECT_EQ(_rows.key(0), "gamma");
    _rows.rebuild(_project, "");
    EXPECT_EQ(_rows.size(), 3);
}

TEST_F(TermRowsTest, KeysThatCannotBeLabelsAreKnown) {
    fill(_project,
        {{"label", ""}, {"", ""}, {"a##b", ""}, {std::string(10000, 'k'), ""}, {std::string("n\0l", 3), ""},
            {"#", ""}});
    _rows.rebuild(_project, "");
    ASSERT_EQ(_rows.size(), 6);
    EXPECT_TRUE(_rows.isLabel(0));
    for(std::size_t i = 1; i != 5; ++i) EXPECT_FALSE(_rows.isLabel(i)) << i;
    EXPECT_TRUE(_rows.isLabel(5));
}

}
}
