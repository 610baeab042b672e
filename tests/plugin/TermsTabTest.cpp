/* The tab of terms as a user sees it: the search, the rows, the box of a row. */

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "plugin/ViewTest.h"

namespace QuorvaneEngine::Test {
namespace {

constexpr char Project[] = R"({"languages": {"en": {"isDefault": true}},
    "hello": "Hello!", "same": "same", "objects": {"door": {"text": "A door."}},
    "localization": {"terms": {
        "zebra": {"sourceText": "hello", "translatable": false},
        "door.text": {"sourceText": "/objects/door/text", "translatable": true},
        "same": {"sourceText": "same", "translatable": true},
        "gone": {"sourceText": "/objects/window/text", "translatable": true},
        "none": {}}}})";

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

bool hasRow(ImGuiTestContext& user, const char* const term) { return rowItem(user, "termtablebody", term).ID; }

constexpr ImU32 Highlight = IM_COL32(255, 0, 255, 255);

bool isHighlighted(ImGuiTestContext& user, const char* const term) {
    ImGui::GetStyle().Colors[ImGuiCol_Header] = ImGui::ColorConvertU32ToFloat4(Highlight);
    user.MouseMoveToPos({10.0f, 10.0f});
    user.Yield(2);
    const ImGuiTestItemInfo row = rowItem(user, "termtablebody", term);
    const ImRect& rect = row.RectFull;
    return paints(Highlight, {rect.Min.x - 1.0f, rect.GetCenter().y, rect.Max.x + 1.0f, rect.Max.y + 1.0f});
}

TEST(TermsTab, ListsKeysTextsAndBoxesInTheProjectsOrder) {
    ViewTest test{Project};
    test.run([](ImGuiTestContext&) {});
    const std::string shown = test.shownText();
    EXPECT_TRUE(contains(shown, "| Term | Source Text | Translatable? |")) << shown;
    EXPECT_TRUE(
        contains(shown, "| zebra | Hello! | [ ] |\n    | door.text | A door. | [x] |\n    | same | same | [x] |"))
        << shown;
}

TEST(TermsTab, ATermWhoseSourceIsGoneShowsAnEmptyText) {
    ViewTest test{Project};
    test.run([](ImGuiTestContext&) {});
    const std::string shown = test.shownText();
    EXPECT_TRUE(contains(shown, "| gone | | [x] |") || contains(shown, "| gone |  | [x] |")) << shown;
}

TEST(TermsTab, TheSearchLooksAtKeysAndSourcesButNotAtTexts) {
    ViewTest test{Project};
    test.run([](ImGuiTestContext& user) {
        search(user, "##termsearch", "DOOR");
        IM_CHECK(hasRow(user, "door.text"));
        IM_CHECK(!hasRow(user, "zebra"));
        search(user, "##termsearch", "hell");
        IM_CHECK(hasRow(user, "zebra"));
        IM_CHECK(!hasRow(user, "door.text"));
        search(user, "##termsearch", "Hello!");
        IM_CHECK(!hasRow(user, "zebra"));
        search(user, "##termsearch", "");
        for(const char* const term: {"zebra", "door.text", "same", "gone", "none"}) IM_CHECK(hasRow(user, term));
    });
}

TEST(TermsTab, TheSearchHoldsNinetyNineBytes) {
    ViewTest test{Project};
    test.run([&](ImGuiTestContext& user) {
        search(user, "##termsearch", std::string(150, 'x').c_str());
        user.KeyPress(ImGuiKey_Enter);
    });
    const std::string shown = test.shownText();
    EXPECT_TRUE(contains(shown, std::string(99, 'x'))) << shown;
    EXPECT_FALSE(contains(shown, std::string(100, 'x')));
}

TEST(TermsTab, AProjectWithoutTermsShowsTheHeaderAloneAndIsNotSearchedAgain) {
    ViewTest test{English};
    test.run([](ImGuiTestContext&) {});
    EXPECT_TRUE(contains(test.shownText(), "Translatable?"));
    const std::uint64_t before = test.session.project().lookupCount();
    test.frames(5);
    EXPECT_EQ(test.session.project().lookupCount() - before, 5);
}

TEST(TermsTab, ChangesByOthersShowInTheNextFrame) {
    ViewTest test{Project};
    test.run([](ImGuiTestContext&) {});
    test.session.changes().pushChange("/hello", "Good day!", false);
    EXPECT_TRUE(contains(test.shownText(), "Good day!"));
    test.session.undo();
    EXPECT_TRUE(contains(test.shownText(), "Hello!"));
}

TEST(TermsTab, AClickedRowIsHighlightedOnlyWhereItsKeyIsItsText) {
    ViewTest test{Project};
    test.run([](ImGuiTestContext& user) {
        user.ItemClick(rowItem(user, "termtablebody", "same").ID);
        IM_CHECK(isHighlighted(user, "same"));
        user.ItemClick(rowItem(user, "termtablebody", "zebra").ID);
        IM_CHECK(!isHighlighted(user, "zebra"));
        IM_CHECK(!isHighlighted(user, "same"));
        user.ItemClick(rowItem(user, "termtablebody", "same").ID);
        IM_CHECK(isHighlighted(user, "same"));
        user.ItemClick(rowItem(user, "termtablebody", "gone").ID);
        IM_CHECK(!isHighlighted(user, "gone"));
        IM_CHECK(!isHighlighted(user, "same"));
    });
}

TEST(TermsTab, TheHighlightStaysWithTheTextWhereTheProjectChanges) {
    ViewTest test{Project};
    test.run([&](ImGuiTestContext& user) {
        user.ItemClick(rowItem(user, "termtablebody", "same").ID);
        test.session.changes().pushChange("/same", "another", false);
        user.Yield(2);
        IM_CHECK(isHighlighted(user, "same"));
    });
}

TEST(TermsTab, TickingIsOneStepThatCanBeUndoneAndRedone) {
    ViewTest test{Project};
    const std::string before = test.document();
    test.run([&](ImGuiTestContext& user) { tick(user, "door.text"); });
    const std::string after = test.document();
    EXPECT_NE(after, before);
    ASSERT_EQ(test.session.changes().changes().size(), 1);
    const Change& change = test.session.changes().changes()[0];
    EXPECT_EQ(change.path, "/localization/terms/door.text/translatable");
    EXPECT_TRUE(change.newValue->IsFalse());
    test.session.undo();
    EXPECT_EQ(test.document(), before);
    test.session.redo();
    EXPECT_EQ(test.document(), after);
}

TEST(TermsTab, TicksOfOneBoxAreNotMerged) {
    ViewTest test{Project};
    test.run([&](ImGuiTestContext& user) {
        for(int i = 0; i != 3; ++i) tick(user, "same");
    });
    EXPECT_EQ(test.session.changes().changes().size(), 3);
}

TEST(TermsTab, ABoxThatTheProjectDoesNotHoldIsEmptyAndIsMadeByATick) {
    ViewTest test{Project};
    test.run([&](ImGuiTestContext& user) {
        const ImGuiTestItemInfo box = rowItem(user, "termtablebody", "none/##translatable");
        IM_CHECK(!(box.StatusFlags & ImGuiItemStatusFlags_Checked));
        tick(user, "none");
    });
    EXPECT_TRUE(contains(test.document(), R"("none":{"translatable":true})"));
}

TEST(TermsTab, UndoShowsInTheBox) {
    ViewTest test{Project};
    test.run([&](ImGuiTestContext& user) {
        tick(user, "zebra");
        IM_CHECK(rowItem(user, "termtablebody", "zebra/##translatable").StatusFlags & ImGuiItemStatusFlags_Checked);
        test.session.undo();
        user.Yield(2);
        IM_CHECK(!(rowItem(user, "termtablebody", "zebra/##translatable").StatusFlags & ImGuiItemStatusFlags_Checked));
    });
}

TEST(TermsTab, ColumnsAreSevenToTenAndAsWideAsTheLastHeader) {
    ViewTest test{Project};
    test.run([](ImGuiTestContext& user) {
        user.SetRef(childWindow(user, "termtablebody"));
        const ImGuiTable* const table = ImGui::TableFindByID(user.GetID("termstable"));
        IM_CHECK(table != nullptr);
        IM_CHECK_EQ(table->ColumnsCount, 3);
        IM_CHECK_EQ(table->Flags & ImGuiTableFlags_Borders, ImGuiTableFlags_Borders);
        IM_CHECK_EQ(table->Columns[2].WidthGiven, ImGui::CalcTextSize("Translatable?").x);
        IM_CHECK_LT(ImAbs(table->Columns[0].WidthGiven / table->Columns[1].WidthGiven - 0.7f), 0.02f);
        user.SetRef("//Localization");
    });
}

TEST(TermsTab, TheRowsFillTheWindowAndScroll) {
    std::string project = R"({"languages": {"en": {"isDefault": true}}, "localization": {"terms": {"t0": {})";
    for(int i = 1; i != 100; ++i) project += ", \"t" + std::to_string(i) + "\": {}";
    ViewTest test{(project + "}}}").c_str()};
    test.run([](ImGuiTestContext& user) {
        const ImGuiWindow* const body = childWindow(user, "termtablebody");
        const ImGuiWindow* const window = user.WindowInfo("//Localization").Window;
        IM_CHECK_EQ(body->Rect().Max.y, window->WorkRect.Max.y);
        IM_CHECK_EQ(body->Size.x, window->WorkRect.GetWidth());
        IM_CHECK_GT(body->ScrollMax.y, 0.0f);
        tick(user, "t99");
    });
    EXPECT_TRUE(contains(test.document(), R"("t99":{"translatable":true})"));
}

}
}
