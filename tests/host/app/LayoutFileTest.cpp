#include "app/LayoutFile.h"

#include <random>
#include <string>
#include <vector>

#include <Corrade/Containers/StringStl.h>
#include <gtest/gtest.h>

#include "app/DockLayout.h"
#include "support/GuiTest.h"

namespace QuorvaneEngine {
namespace {

using Test::GuiTest;

constexpr UnsignedInt Space = 0x0000abcd;

/** A layout that can be loaded: windows, a table, a dock space in three parts, a panel that floats. */
const std::string Whole = R"([Window][##MainMenuBar]
Pos=0,0
Size=1280,19
Collapsed=0
LastUsed=20260102

[Window][Localization]
Pos=-12,19
Size=640,480
Collapsed=0
DockId=0x00000003,0
ClassId=0x12345678

[Window][Localization/##child]
IsChild=1
Size=100,200

[Table][0x76A8FCB9,3]
RefScale=13.5
Column 0  Weight=1.5000 Sort=0v
Column 1  Width=120 Visible=1 Order=2 ID=0x00000007
Column 2

[Docking][Data]
DockSpace       ID=0x0000ABCD Window=0x1BBC0F80 Pos=0,19 Size=1280,679 Split=Y
  DockNode      ID=0x00000001 Parent=0x0000ABCD SizeRef=1280,446 Split=X
    DockNode    ID=0x00000003 Parent=0x00000001 SizeRef=640,446 CentralNode=1 NoCloseButton=1 Selected=0x48C9B1FA
    DockNode    ID=0x00000004 Parent=0x00000001 SizeRef=640,446
  DockNode      ID=0x00000002 Parent=0x0000ABCD SizeRef=1280,231 NoTabBar=1 HiddenTabBar=1
DockNode        ID=0x00000009 Pos=60,60 Size=100,100

)";

std::string problem(const std::string& text) { return layoutProblem({text.data(), text.size()}, Space); }

/** The layout with one text in it replaced. */
std::string with(const std::string& before, const std::string& after) {
    std::string text = Whole;
    const std::size_t at = text.find(before);
    EXPECT_NE(at, std::string::npos) << before;
    if(at != std::string::npos) text.replace(at, before.size(), after);
    return text;
}

TEST(LayoutProblem, AWholeLayoutHasNone) {
    EXPECT_EQ(problem(Whole), "");
    EXPECT_EQ(problem("; mine\n" + Whole), "");
    EXPECT_EQ(problem(with("[Window][Loc", "[Somebody][else]\n  anything at all = {}\n[Window][Loc")), "");
}

TEST(LayoutProblem, LinesMayEndAsOnOtherSystems) {
    std::string text;
    for(const char letter: Whole) text += letter == '\n' ? std::string{"\r\n"} : std::string(1, letter);
    EXPECT_EQ(problem(text), "");
}

TEST(LayoutProblem, AnEmptyFileIsEmpty) {
    for(const char* const text: {"", "\n", " \r\n\n "}) EXPECT_EQ(problem(text), "is empty");
    EXPECT_EQ(layoutProblem({}, Space), "is empty");
}

TEST(LayoutProblem, GarbageIsNoText) {
    EXPECT_EQ(problem(std::string{"[Window][\0]\n", 12}), "is no text");
    EXPECT_EQ(problem("\x7f"
                      "ELF\x02\x01\n"),
        "is no text");
    EXPECT_EQ(problem(with("Localization", "\xff")), "is no text");
}

TEST(LayoutProblem, OtherTextIsNoLayout) {
    EXPECT_EQ(problem("{\"name\": 1}\n"), "1: this is no layout");
    EXPECT_EQ(problem("\n; a comment\nhello\n"), "3: this is no layout");
    EXPECT_EQ(problem("[Window]\n"), "1: this is no heading of a section");
    EXPECT_EQ(problem("[Window][Localization\n"), "1: this is no heading of a section");
}

TEST(LayoutProblem, ALayoutWithoutItsEndIsTold) {
    EXPECT_EQ(problem(Whole.substr(0, Whole.find(",480"))), "ends in the middle of a line");
    EXPECT_EQ(problem(Whole.substr(0, Whole.find("[Table]"))), "has no dock space of the editor");
    EXPECT_EQ(
        problem(Whole.substr(0, Whole.find("    DockNode    ID=0x00000004"))), "has a panel that is not split in two");
}

TEST(LayoutProblem, ALayoutThatIsCutAnywhereIsToldOrMissesNothingOfTheDocking) {
    const std::size_t complete = Whole.find("DockNode        ID=0x00000009");
    for(std::size_t size = 0; size != Whole.size(); ++size) {
        const bool isFine = problem(Whole.substr(0, size)).empty();
        EXPECT_EQ(isFine, size == complete || size == Whole.size() - 1) << size;
    }
}

TEST(LayoutProblem, TheDockSpaceMustBeTheEditors) {
    EXPECT_EQ(std::string{layoutProblem(Whole.c_str(), Space + 1)}, "has no dock space of the editor");
    EXPECT_EQ(problem(with("DockSpace ", "DockNode  ")), "has no dock space of the editor");
    EXPECT_EQ(problem(with(" CentralNode=1", "")), "has no dock space of the editor");
}

TEST(LayoutProblem, PanelsMakeATree) {
    EXPECT_EQ(problem(with("ID=0x00000004", "ID=0x00000003")), "28: this panel is there twice");
    EXPECT_EQ(problem(with("ID=0x00000009 Pos=60,60 Size=100,100", "ID=0x00000009 Parent=0x00000009 SizeRef=1,1")),
        "30: this panel lies in one that is not there");
    EXPECT_EQ(problem(with("ID=0x00000001 Parent=0x0000ABCD", "ID=0x00000001 Parent=0x00000002")),
        "26: this panel lies in one that is not there");
    EXPECT_EQ(problem(with("  DockNode      ID=0x00000002", "  DockSpace     ID=0x00000002")),
        "29: a dock space lies in a panel");
    EXPECT_EQ(problem(with("Size=100,100", "Size=100,100 CentralNode=1")), "");
    EXPECT_EQ(problem(with("NoTabBar=1 H", "CentralNode=1 NoTabBar=1 H")), "29: there are two panels in the centre");
    EXPECT_EQ(problem(with("Split=Y", "Split=Y CentralNode=1")), "27: there are two panels in the centre");
}

TEST(LayoutProblem, APanelIsSplitInTwoOrNotAtAll) {
    for(const char* const change: {" Split=Y", " Split=X"})
        EXPECT_EQ(problem(with(change, "")), "has a panel that is not split in two") << change;
    EXPECT_EQ(problem(with("ID=0x00000009 Pos=60,60 Size=100,100", "ID=0x00000009 Parent=0x00000001 SizeRef=1,1")),
        "has a panel that is not split in two");
    EXPECT_EQ(problem(with("SizeRef=640,446\n", "SizeRef=640,446 Split=X\n")), "has a panel that is not split in two");
}

TEST(LayoutProblem, TheCentreIsNotSplit) {
    std::string text = with(" CentralNode=1", "");
    const std::string panel = "SizeRef=1280,446 Split=X";
    text.insert(text.find(panel) + panel.size(), " CentralNode=1");
    EXPECT_EQ(problem(text), "has a centre that is split");
}

TEST(LayoutProblem, WindowsLieInPanelsThatCanHoldThem) {
    for(const char* const panel: {"0x00000007", "0x00000001", "0x0000ABCD"})
        EXPECT_EQ(problem(with("DockId=0x00000003", std::string{"DockId="} + panel)),
            "has a window in a panel that cannot hold it")
            << panel;
    for(const char* const panel: {"0x00000002", "0x00000009", "0x00000000"})
        EXPECT_EQ(problem(with("DockId=0x00000003", std::string{"DockId="} + panel)), "") << panel;
}

TEST(LayoutProblem, PanelsMustNotBeTooManyNorTooDeep) {
    std::string deep = Whole + "DockNode ID=0x00001000 Pos=0,0 Size=1,1 Split=X\n";
    std::string many = Whole;
    for(int i = 1; i != 2000; ++i) {
        char line[100];
        std::snprintf(
            line, sizeof line, "DockNode ID=0x%08X Parent=0x%08X SizeRef=1,1 Split=X\n", 0x1000 + i, 0xfff + i);
        deep += line;
        std::snprintf(line, sizeof line, "DockNode ID=0x%08X Pos=0,0 Size=1,1\n", 0x1000 + i);
        many += line;
    }
    EXPECT_EQ(problem(deep), "97: panels lie in each other too deep");
    EXPECT_EQ(problem(many), "1026: there are too many panels");
}

TEST(LayoutProblem, ALineThatTheLibraryWouldNotHaveWrittenIsTold) {
    constexpr const char* Panel = "30: this is no panel of a layout";
    const std::vector<std::pair<const char*, const char*>> panels{{"ID=0x00000009", "ID=0"},
        {"ID=0x00000009", "ID=0x0"}, {"ID=0x00000009", "ID=0x123456789"}, {"ID=0x00000009", "ID=0xghij"},
        {" Pos=60,60", ""}, {"Pos=60,60", "Pos=60,"}, {"Pos=60,60", "Pos=60000,60"}, {"Size=100,100", "Size=-1,100"},
        {"Size=100,100", "Size=100,0"}, {"Size=100,100", "Size=99999999999999999999,100"},
        {"Size=100,100", "Size=100,100 Split=Z"}, {"Size=100,100", "Size=100,100 NoResize=2"},
        {"Size=100,100", "Size=100,100 Selected=7"}, {"Size=100,100", "Size=100,100 more"},
        {"DockNode        ID=0x00000009", "Dock ID=0x00000009"}};
    for(const auto& [before, after]: panels) EXPECT_EQ(problem(with(before, after)), Panel) << after;

    for(const char* const line: {"Pos", "=1", "Pos=", "Pos=a b", "P s=1", "Pos=1,2%n", "Pos=%n", "{}", "DockId=3",
            "DockId=0x000000003", "DockId=0x3,", "DockId=0x3x"})
        EXPECT_EQ(problem(with("Pos=-12,19", line)), "8: this is no property of a window") << line;

    for(const char* const line: {"RefScale=nan", "RefScale=-1", "RefScale=1e30", "RefScale=", "Column", "Column 3",
            "Column -1", "Column 0 Weight=inf", "Column 0 Weight=1.5x", "Column 0 Width=-5", "Column 0 Order=512",
            "Column 0 Visible=2", "Column 0 Sort=0?", "Column 0 Other=1", "Column 0 ID=1"})
        EXPECT_EQ(problem(with("RefScale=13.5", line)), "19: this is no property of a table") << line;

    for(const char* const heading:
        {"0x76A8FCB9,0", "0x76A8FCB9,-1", "0x76A8FCB9,512", "0x76A8FCB9", "3", "0x76A8FCB9,3x"})
        EXPECT_EQ(problem(with("0x76A8FCB9,3", heading)), "18: this is no heading of a table") << heading;
}

/** An editor's windows in a dock space, with a table. */
class DockedGui {
public:
    void draw() {
        if(!ImGui::DockBuilderGetNode(DockLayout::space())) build();
        ImGui::DockSpaceOverViewport(DockLayout::space(), ImGui::GetMainViewport());
        for(const char* const title: {"One", "Two", "Three", "Four"}) {
            if(ImGui::Begin(title) &&
                ImGui::BeginTable("table", 3,
                    ImGuiTableFlags_Resizable | ImGuiTableFlags_Reorderable | ImGuiTableFlags_Hideable |
                        ImGuiTableFlags_Sortable)) {
                for(const char* const column: {"a", "b", "c"}) ImGui::TableSetupColumn(column);
                ImGui::TableHeadersRow();
                ImGui::EndTable();
            }
            ImGui::End();
        }
    }

private:
    static void build() {
        const ImGuiID space = DockLayout::space();
        ImGui::DockBuilderAddNode(space, ImGuiDockNodeFlags_DockSpace);
        ImGui::DockBuilderSetNodeSize(space, ImGui::GetMainViewport()->WorkSize);
        ImGuiID centre = space;
        const ImGuiID bottom = ImGui::DockBuilderSplitNode(centre, ImGuiDir_Down, 0.3f, nullptr, &centre);
        const ImGuiID left = ImGui::DockBuilderSplitNode(centre, ImGuiDir_Left, 0.3f, nullptr, &centre);
        ImGui::DockBuilderDockWindow("One", centre);
        ImGui::DockBuilderDockWindow("Two", bottom);
        ImGui::DockBuilderDockWindow("Three", left);
        ImGui::DockBuilderFinish(space);
    }
};

std::string savedLayout() {
    std::size_t size = 0;
    const char* const text = ImGui::SaveIniSettingsToMemory(&size);
    return {text, size};
}

std::string problemHere(const std::string& text) {
    return layoutProblem({text.data(), text.size()}, DockLayout::space());
}

TEST(LayoutProblem, WhatTheLibraryWritesHasNone) {
    GuiTest gui;
    DockedGui windows;
    for(int i = 0; i != 5; ++i) {
        gui.frames([&] { windows.draw(); });
        EXPECT_EQ(problemHere(savedLayout()), "") << savedLayout();
    }
    // A window on its own, and two in a panel that floats.
    ImGui::DockContextQueueUndockWindow(gui.context(), ImGui::FindWindowByName("Two"));
    gui.frames([&] { windows.draw(); }, 3);
    const ImGuiID node = ImGui::DockBuilderAddNode(0, ImGuiDockNodeFlags_None);
    ImGui::DockBuilderSetNodeSize(node, {200.0f, 100.0f});
    for(const char* const title: {"Three", "Four"}) ImGui::DockBuilderDockWindow(title, node);
    gui.frames([&] { windows.draw(); }, 3);
    EXPECT_EQ(problemHere(savedLayout()), "") << savedLayout();
}

TEST(LayoutProblem, NoLayoutWithoutOneEndsTheProcess) {
    GuiTest gui;
    DockedGui windows;
    gui.frames([&] { windows.draw(); }, 3);
    const std::string whole = savedLayout();
    ASSERT_EQ(problemHere(whole), "");
    std::mt19937 random{20260731};
    const auto below = [&random](const std::size_t end) { return std::size_t(random() % end); };
    std::vector<std::string> lines;
    for(std::size_t at = 0; at < whole.size();) {
        const std::size_t end = whole.find('\n', at) + 1;
        lines.push_back(whole.substr(at, end - at));
        at = end;
    }
    int loaded = 0;
    for(int i = 0; i != 4000; ++i) {
        std::string text;
        std::vector<std::string> changed = lines;
        for(std::size_t change = below(3); change != std::size_t(-1); --change) {
            std::string& line = changed[below(changed.size())];
            switch(below(5)) {
            case 0: line = changed[below(changed.size())]; break;
            case 1: line.clear(); break;
            case 2: std::swap(line, changed[below(changed.size())]); break;
            default: line.insert(below(line.size() + 1), 1, "0123456789ABCDEFx,-=. XYv^"[below(26)]);
            }
        }
        for(const std::string& line: changed) text += line;
        if(!below(3)) {
            const std::size_t digit = text.find_first_of("0123456789", below(text.size()));
            if(digit != std::string::npos) text[digit] = char('0' + below(10));
        }
        if(!problemHere(text).empty()) continue;
        ImGui::ClearIniSettings();
        ImGui::LoadIniSettingsFromMemory(text.data(), text.size());
        gui.frames([&] { windows.draw(); }, 3);
        ++loaded;
    }
    EXPECT_GT(loaded, 500);
}

}
}
