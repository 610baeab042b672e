/* The term table draws what shows, and lies and scrolls as if it drew everything. */

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <imgui_internal.h>

#include "QuorvaneEditor/ProjectFile.h"
#include "plugin/ViewTest.h"
#include "support/FrameAllocations.h"

namespace QuorvaneEngine::Test {
namespace {

std::string number(const int i) {
    std::string digits = std::to_string(i);
    return "t" + std::string(6 - std::min<std::size_t>(digits.size(), 6), '0') + digits;
}

/* Texts of a line, of several lines and of lines that are broken, mixed */
std::string textOf(const int i) {
    std::string text = "Text " + std::to_string(i);
    for(int j = 0; j < (i * 7) % 11; ++j) text += " and some more of it";
    if(i % 5 == 0) text += "\\nA second line";
    if(i % 13 == 0) text += "\\n\\nA fourth line";
    if(i % 97 == 0)
        for(int j = 0; j != 300; ++j) text += " a long one";
    return text;
}

std::string projectOf(const int count, const bool mixed) {
    std::string terms, texts;
    for(int i = 0; i != count; ++i) {
        const std::string key = number(i);
        terms += (i ? ",\"" : "\"") + key + "\":{\"sourceText\":\"/texts/" + key + "\",\"translatable\":true}";
        texts += (i ? ",\"" : "\"") + key + "\":\"" + (mixed ? textOf(i) : "A text of one line") + "\"";
    }
    return R"({"languages":{"en":{"isDefault":true}},"texts":{)" + texts + R"(},"localization":{"terms":{)" + terms +
        "}}}";
}

/* Draws all rows plainly in a window as large as the view's, and remembers where they lie */
struct PlainTable {
    ImVec2 size;
    int count;
    std::vector<float> tops;
    float scrollMax = 0.0f;
    float contentHeight = 0.0f;

    void draw() {
        tops.clear();
        ImGui::SetNextWindowPos({950.0f, 20.0f});
        ImGui::SetNextWindowSize(size);
        ImGui::PushStyleVar(ImGuiStyleVar_WindowPadding, ImVec2{0.0f, 0.0f});
        ImGui::PushStyleVar(ImGuiStyleVar_WindowBorderSize, 0.0f);
        ImGui::Begin("Plain", nullptr,
            ImGuiWindowFlags_NoTitleBar | ImGuiWindowFlags_NoResize | ImGuiWindowFlags_NoFocusOnAppearing);
        ImGui::PopStyleVar(2);
        ImGui::BeginTable("plain", 3, ImGuiTableFlags_Borders);
        ImGui::TableSetupColumn("Term", ImGuiTableColumnFlags_WidthStretch, 0.7f);
        ImGui::TableSetupColumn("Source Text", ImGuiTableColumnFlags_WidthStretch);
        ImGui::TableSetupColumn(
            "Translatable?", ImGuiTableColumnFlags_WidthFixed, ImGui::CalcTextSize("Translatable?").x);
        ImGui::TableHeadersRow();
        for(int i = 0; i != count; ++i) {
            std::string text = textOf(i);
            for(std::size_t at; (at = text.find("\\n")) != std::string::npos;) text.replace(at, 2, "\n");
            ImGui::TableNextRow();
            tops.push_back(ImGui::GetCurrentTable()->RowPosY1 - ImGui::GetWindowPos().y + ImGui::GetScrollY());
            ImGui::TableNextColumn();
            ImGui::Selectable(number(i).c_str(), false,
                ImGuiSelectableFlags_SpanAllColumns | ImGuiSelectableFlags_AllowOverlap,
                {0.0f, ImGui::CalcTextSize(text.c_str()).y});
            ImGui::TableNextColumn();
            ImGui::PushTextWrapPos(0.0f);
            ImGui::TextUnformatted(text.c_str());
            ImGui::PopTextWrapPos();
            ImGui::TableNextColumn();
            bool ticked = true;
            ImGui::PushID(i);
            Ui::checkbox("##translatable", &ticked);
            ImGui::PopID();
        }
        ImGui::EndTable();
        scrollMax = ImGui::GetScrollMaxY();
        contentHeight = ImGui::GetCurrentWindow()->ContentSize.y;
        ImGui::End();
    }
};

/* Goes through the view's table from top to bottom and compares every row that shows */
void compareLayouts(ImGuiTestContext& user, PlainTable& plain) {
    ImGuiWindow* const body = childWindow(user, "termtablebody");
    plain.size = body->Size;
    user.Yield(3);
    IM_CHECK_EQ(body->ScrollMax.y, plain.scrollMax);
    IM_CHECK_EQ(body->ContentSize.y, plain.contentHeight);
    const float padding = ImGui::GetStyle().CellPadding.y;
    std::size_t compared = 0;
    user.SetRef(body);
    for(float y = 0.0f; y <= body->ScrollMax.y; y += body->InnerRect.GetHeight() * 0.9f) {
        body->Scroll.y = float(int(y));
        user.Yield(2);
        const auto begin =
            std::size_t(std::upper_bound(plain.tops.begin(), plain.tops.end(), body->Scroll.y) - plain.tops.begin());
        for(std::size_t i = begin; i != plain.tops.size(); ++i) {
            const float top = plain.tops[i] - body->Scroll.y + body->Pos.y;
            if(top + padding >= body->InnerRect.Max.y) break;
            const ImGuiTestItemInfo box = user.ItemInfo(("termstable/" + number(int(i)) + "/##translatable").c_str());
            const ImGuiTestItemInfo key = user.ItemInfo(("termstable/" + number(int(i))).c_str());
            IM_CHECK_EQ(box.RectFull.Min.y, top + padding);
            IM_CHECK_EQ(key.RectFull.Min.y, top + padding - float(int(ImGui::GetStyle().ItemSpacing.y * 0.5f)));
            ++compared;
        }
    }
    user.SetRef("//Localization");
    IM_CHECK_GE(compared, plain.tops.size() - 1);
}

TEST(ShownRows, RowsAndScrollRangeAreThoseOfATableThatDrawsAll) {
    ViewTest test{projectOf(400, true).c_str(), {1900.0f, 900.0f}};
    PlainTable plain{{600.0f, 500.0f}, 400, {}};
    test.beside = [&] { plain.draw(); };
    test.run([&](ImGuiTestContext& user) {
        compareLayouts(user, plain);
        user.WindowResize("//Localization", {420.0f, 560.0f});
        compareLayouts(user, plain);
        ImGui::GetStyle().FontScaleMain = 1.5f;
        user.Yield(3);
        compareLayouts(user, plain);
    });
}

/* The corners of the letters that a window drew last inside of a rectangle, relative to its corner, in an order of their own */
std::vector<std::array<float, 4>> cornersIn(const ImGuiWindow& window, const ImRect& where) {
    std::vector<std::array<float, 4>> corners;
    const ImVec2 white = ImGui::GetFontTexUvWhitePixel();
    for(const ImDrawVert& corner: window.DrawList->VtxBuffer)
        if(where.Contains(corner.pos) && (corner.uv.x != white.x || corner.uv.y != white.y))
            corners.push_back({corner.pos.x - where.Min.x, corner.pos.y - where.Min.y, corner.uv.x, corner.uv.y});
    std::sort(corners.begin(), corners.end());
    return corners;
}

TEST(ShownRows, ALongTextLooksAsIfItWereDrawnAsAWhole) {
    std::string text;
    for(int i = 0; i != 4000; ++i)
        text += "word" + std::to_string(i * 37 % 1000) + (i % 41 ? " " : i % 3 ? "  \\n" : ",\\n\\n");
    ViewTest test{(R"({"languages":{"en":{"isDefault":true}},"t":")" + text +
                      R"(","localization":{"terms":{"long":{"sourceText":"t","translatable":true}}}})")
                      .c_str(),
        {1900.0f, 900.0f}};
    for(std::size_t at; (at = text.find("\\n")) != std::string::npos;) text.replace(at, 2, "\n");
    ImVec2 size{600.0f, 500.0f};
    float scroll = 0.0f;
    test.beside = [&] {
        ImGui::SetNextWindowPos({950.0f, 20.0f});
        ImGui::SetNextWindowSize(size);
        ImGui::PushStyleVar(ImGuiStyleVar_WindowPadding, ImVec2{0.0f, 0.0f});
        ImGui::PushStyleVar(ImGuiStyleVar_WindowBorderSize, 0.0f);
        ImGui::Begin("Plain", nullptr,
            ImGuiWindowFlags_NoTitleBar | ImGuiWindowFlags_NoResize | ImGuiWindowFlags_NoFocusOnAppearing);
        ImGui::PopStyleVar(2);
        ImGui::SetScrollY(scroll);
        ImGui::BeginTable("plain", 3, ImGuiTableFlags_Borders);
        ImGui::TableSetupColumn("Term", ImGuiTableColumnFlags_WidthStretch, 0.7f);
        ImGui::TableSetupColumn("Source Text", ImGuiTableColumnFlags_WidthStretch);
        ImGui::TableSetupColumn(
            "Translatable?", ImGuiTableColumnFlags_WidthFixed, ImGui::CalcTextSize("Translatable?").x);
        ImGui::TableHeadersRow();
        ImGui::TableNextRow();
        ImGui::TableNextColumn();
        ImGui::Selectable("long", false, ImGuiSelectableFlags_SpanAllColumns | ImGuiSelectableFlags_AllowOverlap,
            {0.0f, ImGui::CalcTextSize(text.c_str()).y});
        ImGui::TableNextColumn();
        ImGui::PushTextWrapPos(0.0f);
        ImGui::TextUnformatted(text.c_str());
        ImGui::PopTextWrapPos();
        ImGui::TableNextColumn();
        bool ticked = true;
        Ui::checkbox("##translatable", &ticked);
        ImGui::EndTable();
        ImGui::End();
    };
    test.run([&](ImGuiTestContext& user) {
        ImGuiWindow* const body = childWindow(user, "termtablebody");
        size = body->Size;
        user.MouseMoveToPos({10.0f, 880.0f});
        for(const float where: {0.0f, 0.31f, 0.5f, 0.99f, 1.0f}) {
            scroll = float(int(body->ScrollMax.y * where));
            body->Scroll.y = scroll;
            user.Yield(4);
            const ImGuiWindow* const plain = user.WindowInfo("//Plain").Window;
            /* A line at each edge is left out: where nothing of it shows, one may draw it and the other not */
            ImRect bodyRect = body->InnerRect, plainRect = plain->InnerRect;
            bodyRect.Expand({0.0f, -2.0f * ImGui::GetTextLineHeight()});
            plainRect.Expand({0.0f, -2.0f * ImGui::GetTextLineHeight()});
            const auto drawn = cornersIn(*body, bodyRect);
            IM_CHECK_GT(drawn.size(), std::size_t(4 * 1000));
            IM_CHECK_EQ(drawn.size(), cornersIn(*plain, plainRect).size());
            IM_CHECK(drawn == cornersIn(*plain, plainRect));
        }
    });
}

TEST(ShownRows, OnlyWhatShowsIsDrawn) {
    ViewTest test{projectOf(20000, false).c_str()};
    test.run([&](ImGuiTestContext& user) {
        ImGuiWindow* const body = childWindow(user, "termtablebody");
        for(const float where: {0.0f, 0.37f, 1.0f}) {
            body->Scroll.y = body->ScrollMax.y * where;
            user.Yield(3);
            IM_CHECK_LT(body->DrawList->VtxBuffer.Size, 40000);
            ImGuiTestItemList items;
            user.GatherItems(&items, body->ID, 3);
            const float shown = body->InnerRect.GetHeight() / (ImGui::GetFontSize() + 6.0f);
            /* A row has two items: the row and its box */
            IM_CHECK_LT(float(items.GetSize()), 2.0f * (shown + 8.0f));
            IM_CHECK_GT(float(items.GetSize()), 2.0f * (shown - 3.0f));
        }
    });
}

TEST(ShownRows, AnIdleFrameOf100000TermsAllocatesNothingAndLooksUpOneValue) {
    ViewTest test{projectOf(100000, false).c_str()};
    test.frames(10);
    const std::uint64_t lookUps = test.session.project().lookupCount();
    test.frames(20);
    EXPECT_EQ(test.session.project().lookupCount() - lookUps, 20);

    EXPECT_EQ(frameAllocations(test.gui, 20, [&] { test.draw(); }), 0);
}

TEST(ShownRows, AMegabyteInACellCostsWhatShows) {
    std::string text;
    while(text.size() < 1000000) text += "All work and no play makes a dull game. ";
    ViewTest test{(R"({"languages":{"en":{"isDefault":true}},"t":")" + text +
        R"(","localization":{"terms":{"first":{},"big":{"sourceText":"t"},"last":{}}}})")
                      .c_str()};
    test.run([&](ImGuiTestContext& user) {
        ImGuiWindow* const body = childWindow(user, "termtablebody");
        IM_CHECK_GT(body->ScrollMax.y, 10000.0f);
        for(const float where: {0.0f, 0.5f, 1.0f}) {
            body->Scroll.y = body->ScrollMax.y * where;
            user.Yield(3);
            /* Every letter that shows has four corners */
            IM_CHECK_GT(body->DrawList->VtxBuffer.Size, 4 * 1000);
            IM_CHECK_LT(body->DrawList->VtxBuffer.Size, 4 * 10000);
        }
        tick(user, "last");
    });
    EXPECT_NE(test.document().find(R"("last":{"translatable":true})"), std::string::npos);
}

/* The keyboard */

class ShownRowsKeys: public testing::Test {
protected:
    void SetUp() override { ImGui::GetIO().ConfigFlags |= ImGuiConfigFlags_NavEnableKeyboard; }

    /* The row that has the cursor, -1 for none */
    static int current(ImGuiTestContext& user) {
        user.SetRef(childWindow(user, "termtablebody"));
        int row = -1;
        for(int i = 0; i != 1000 && row == -1; ++i) {
            const std::string path = "termstable/" + number(i);
            if(user.UiContext->NavId == user.GetID(path.c_str())) row = i;
        }
        user.SetRef("//Localization");
        return row;
    }

    static void start(ImGuiTestContext& user) {
        user.ItemClick(rowItem(user, "termtablebody", number(0).c_str()).ID);
        user.Yield(2);
        IM_CHECK_EQ(current(user), 0);
    }

    static bool isInView(ImGuiTestContext& user, const int row) {
        const ImGuiWindow* const body = childWindow(user, "termtablebody");
        return body->InnerRect.Contains(rowItem(user, "termtablebody", number(row).c_str()).RectFull.GetCenter());
    }

    ViewTest _test{projectOf(1000, false).c_str()};
};

TEST_F(ShownRowsKeys, ArrowsWalkThroughAllRows) {
    _test.run([](ImGuiTestContext& user) {
        start(user);
        for(int i = 1; i <= 120; ++i) {
            user.KeyPress(ImGuiKey_DownArrow);
            IM_CHECK_EQ(current(user), i);
        }
        IM_CHECK(isInView(user, 120));
        for(int i = 119; i >= 0; --i) {
            user.KeyPress(ImGuiKey_UpArrow);
            IM_CHECK_EQ(current(user), i);
        }
        IM_CHECK(isInView(user, 0));
    });
}

TEST_F(ShownRowsKeys, EndAndHomeGoToTheLastAndTheFirstRow) {
    _test.run([](ImGuiTestContext& user) {
        start(user);
        user.KeyPress(ImGuiKey_End);
        user.Yield(3);
        IM_CHECK_EQ(current(user), 999);
        IM_CHECK(isInView(user, 999));
        /* The first item of the table is the header, as it is where all rows are drawn */
        user.KeyPress(ImGuiKey_Home);
        user.Yield(3);
        IM_CHECK(isInView(user, 0));
        user.KeyPress(ImGuiKey_DownArrow);
        IM_CHECK_EQ(current(user), 0);
    });
}

TEST_F(ShownRowsKeys, PagesGoThroughAllRows) {
    _test.run([](ImGuiTestContext& user) {
        start(user);
        int last = 0;
        for(int i = 0; i != 100 && current(user) != 999; ++i) {
            user.KeyPress(ImGuiKey_PageDown);
            user.Yield(2);
            IM_CHECK_GT(current(user), last);
            last = current(user);
        }
        IM_CHECK_EQ(last, 999);
        for(int i = 0; i != 100 && last > 0; ++i) {
            user.KeyPress(ImGuiKey_PageUp);
            user.Yield(2);
            IM_CHECK_LT(current(user), last);
            last = current(user);
        }
        IM_CHECK(isInView(user, 0));
    });
}

TEST_F(ShownRowsKeys, TheCursorIsNotLostWhereTheWheelScrollsItAway) {
    _test.run([](ImGuiTestContext& user) {
        start(user);
        user.KeyPress(ImGuiKey_DownArrow, 5);
        IM_CHECK_EQ(current(user), 5);
        ImGuiWindow* const body = childWindow(user, "termtablebody");
        user.MouseMoveToPos(body->InnerRect.GetCenter());
        user.MouseWheelY(-100.0f);
        user.Yield(5);
        IM_CHECK_GT(body->Scroll.y, 1000.0f);
        user.KeyPress(ImGuiKey_DownArrow);
        user.Yield(3);
        IM_CHECK_EQ(current(user), 6);
        IM_CHECK(isInView(user, 6));
    });
}

TEST_F(ShownRowsKeys, TheSpaceBarTicksTheBoxBesideTheRow) {
    _test.run([](ImGuiTestContext& user) {
        start(user);
        user.KeyPress(ImGuiKey_DownArrow, 60);
        user.KeyPress(ImGuiKey_RightArrow);
        user.KeyPress(ImGuiKey_Space);
        user.Yield(2);
    });
    EXPECT_NE(
        _test.document().find(R"("t000060":{"sourceText":"/texts/t000060","translatable":false})"), std::string::npos);
}

TEST(ShownRows, LoggingTakesAllRows) {
    ViewTest test{projectOf(500, false).c_str()};
    test.run([](ImGuiTestContext&) {});
    const std::string shown = test.shownText();
    EXPECT_NE(shown.find("t000000"), std::string::npos);
    EXPECT_NE(shown.find("t000499"), std::string::npos);
}

}
}
