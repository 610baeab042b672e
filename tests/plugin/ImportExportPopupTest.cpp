/* The popup of the exchange: where it lies, how high it is, and which path it keeps. */

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "plugin/ImportExportPopupTest.h"

namespace QuorvaneEngine::Test {
namespace {

TEST_F(ImportExportPopup, IsAsWideAsTheViewLess100AndInItsMiddle) {
    run([](ImGuiTestContext& user) {
        open(user, "Export");
        const ImGuiWindow* const view = user.WindowInfo("//Localization").Window;
        const ImGuiWindow* const popup = user.WindowInfo("//Export Terms").Window;
        IM_CHECK(popup->Flags & ImGuiWindowFlags_Modal);
        IM_CHECK(popup->Flags & ImGuiWindowFlags_NoResize);
        IM_CHECK_EQ(popup->Size.x, view->Size.x - 100.0f);
        IM_CHECK_LE(ImAbs(popup->Rect().GetCenter().x - view->Rect().GetCenter().x), 1.0f);
        IM_CHECK_LE(ImAbs(popup->Rect().GetCenter().y - view->Rect().GetCenter().y), 1.0f);
        close(user);
    });
}

/* What a frame drew of the popup, read at its end */
struct PopupFrame {
    float height;
    float contentHeight;
};

/* The popup's frames from the click that opens it on, and no others */
std::vector<PopupFrame> framesOfOpening(ViewTest& test, ImGuiTestContext& user, const char* const mode) {
    std::vector<PopupFrame> frames;
    const std::string name = std::string{mode} + " Terms";
    user.ItemClick("//Localization/##MenuBar/File");
    test.beside = [&] {
        const ImGuiWindow* const window = ImGui::FindWindowByName(name.c_str());
        if(window && window->Active)
            frames.push_back({window->Size.y, window->DC.CursorPos.y - window->Pos.y + window->Scroll.y});
    };
    user.ItemClick((std::string{"//$FOCUSED/"} + mode).c_str());
    user.Yield(5);
    test.beside = nullptr;
    return frames;
}

TEST_F(ImportExportPopup, InEveryFrameItIsAsHighAsItsContentInTheFrameBeforeAnd4More) {
    run([&](ImGuiTestContext& user) {
        const std::vector<PopupFrame> frames = framesOfOpening(_test, user, "Import");
        IM_CHECK_GT(frames.size(), 4u);
        for(std::size_t i = 1; i != frames.size(); ++i)
            IM_CHECK_EQ(frames[i].height, frames[i - 1].contentHeight + 4.0f);
        IM_CHECK_EQ(frames.back().height, frames[1].height);
        /* Of the very first height, 0, the library makes one of its own */
        IM_CHECK_NE(frames[0].height, frames[1].height);
        const ImRect button = user.ItemInfo("//Import Terms/Import").RectFull;
        IM_CHECK_EQ(frames.back().height,
            button.Max.y + ImGui::GetStyle().ItemSpacing.y + 4.0f - user.WindowInfo("//Import Terms").Window->Pos.y);
        user.ItemClick("//Import Terms/#CLOSE");
    });
}

TEST_F(ImportExportPopup, BeginsWithTheHeightOfThePreviousOpening) {
    run([&](ImGuiTestContext& user) {
        const float height = framesOfOpening(_test, user, "Export").back().height;
        user.ItemClick("//Export Terms/#CLOSE");
        user.Yield(2);
        /* What comes now is higher */
        ImGui::GetStyle().ItemSpacing.y += 10.0f;
        const std::vector<PopupFrame> frames = framesOfOpening(_test, user, "Import");
        IM_CHECK_GT(frames.size(), 2u);
        IM_CHECK_EQ(frames[0].height, height);
        IM_CHECK_GT(frames[1].height, height);
        IM_CHECK_EQ(frames.back().height, frames[1].height);
        user.ItemClick("//Import Terms/#CLOSE");
    });
}

TEST_F(ImportExportPopup, ThePopupOfNoModeNeverOpens) {
    int frames = 0;
    int opened = 0;
    _test.beside = [&] {
        ++frames;
        if(ImGui::FindWindowByName("None")) ++opened;
    };
    run([](ImGuiTestContext& user) {
        user.Yield(3);
        IM_CHECK(!isOpen(user));
        for(const char* const mode: {"Import", "Export"}) {
            open(user, mode);
            IM_CHECK_EQ(user.UiContext->OpenPopupStack.Size, 1);
            close(user);
            open(user, mode);
            user.ItemClick(mode);
            user.Yield(3);
            IM_CHECK(!isOpen(user));
        }
    });
    EXPECT_GT(frames, 20);
    EXPECT_EQ(opened, 0);
}

TEST_F(ImportExportPopup, ControlsBeginAt80OrBehindTheirLabel) {
    run([](ImGuiTestContext& user) {
        open(user, "Export");
        const ImGuiWindow* const popup = user.WindowInfo("//Export Terms").Window;
        const ImGuiStyle& style = ImGui::GetStyle();
        const ImRect path = user.ItemInfo("##path").RectFull;
        const ImRect button = user.ItemInfo("...").RectFull;
        IM_CHECK_EQ(path.Min.x, popup->Pos.x + 80.0f);
        IM_CHECK_EQ(user.ItemInfo("##Format").RectFull.Min.x, popup->Pos.x + 80.0f);
        IM_CHECK_EQ(user.ItemInfo("##Format").RectFull.Max.x, popup->WorkRect.Max.x);
        IM_CHECK_EQ(button.GetWidth(), ImGui::CalcTextSize("...").x + 2.0f * style.FramePadding.x);
        IM_CHECK_EQ(path.GetWidth(), popup->WorkRect.Max.x - path.Min.x - button.GetWidth() - style.WindowPadding.x);
        /* "Compress to .zip" is longer than its column */
        IM_CHECK_GE(user.ItemInfo("##zip").RectFull.Min.x,
            popup->Pos.x + style.WindowPadding.x + ImGui::CalcTextSize("Compress to .zip").x);
        IM_CHECK_EQ(user.ItemInfo("Export").RectFull.GetWidth(), popup->WorkRect.GetWidth());
        close(user);
    });
}

TEST_F(ImportExportPopup, BeginsWithTheProjectsExchangeFolder) {
    run([&](ImGuiTestContext& user) {
        open(user, "Export");
        const Containers::String proposed = _test.session.editor().exchangePath() + "/";
        IM_CHECK_STR_EQ(path(user).c_str(), proposed.data());
        close(user);
    });
}

/* The field holds 255 bytes; half a path would be another path */
TEST_F(ImportExportPopup, AProposedPathThatDoesNotFitLeavesTheFieldEmpty) {
    for(const std::size_t size: {270, 256, 255}) {
        const std::string parent = _dialogs.folder().string() + "/";
        const std::string project = parent + std::string(size - parent.size() - std::strlen("/i18n/"), 'p');
        std::filesystem::create_directory(project);
        std::ofstream{project + "/project.json"} << Project;
        ASSERT_TRUE(_test.session.open(project.c_str()));
        run([](ImGuiTestContext& user) {
            open(user, "Export");
            user.ItemClick("Export");
            user.Yield(2);
            IM_CHECK(!isOpen(user));
        });
        ASSERT_FALSE(FakeTools::calls.empty());
        EXPECT_EQ(FakeTools::calls.back().path, size == 255 ? project + "/i18n/" : "");
    }
}

TEST_F(ImportExportPopup, ATypedPathEndsAt255Bytes) {
    const std::string typed = "/tmp/" + std::string(300, 'x');
    run([&](ImGuiTestContext& user) {
        open(user, "Export");
        type(user, typed.c_str());
        user.ItemClick("Export");
        user.Yield(2);
    });
    ASSERT_EQ(FakeTools::calls.size(), 1);
    EXPECT_EQ(FakeTools::calls[0].path, typed.substr(0, 255));
}

TEST_F(ImportExportPopup, AnEmptiedPathIsProposedAnewAsAWhole) {
    run([&](ImGuiTestContext& user) {
        open(user, "Export");
        const std::string proposed = path(user);
        type(user, (proposed + "and/much/longer/than/it/was/before").c_str());
        user.ItemInput("##path");
        user.KeyPress(ImGuiMod_Ctrl | ImGuiKey_A);
        user.KeyPress(ImGuiKey_Delete);
        user.KeyPress(ImGuiKey_Enter);
        user.Yield(2);
        IM_CHECK_STR_EQ(path(user).c_str(), proposed.c_str());
        close(user);
    });
}

TEST_F(ImportExportPopup, KeepsThePathForTheNextOpeningInEitherMode) {
    run([](ImGuiTestContext& user) {
        open(user, "Export");
        type(user, "/tmp/one");
        close(user);
        open(user, "Import");
        IM_CHECK_STR_EQ(path(user).c_str(), "/tmp/one");
        close(user);
        open(user, "Export");
        IM_CHECK_STR_EQ(path(user).c_str(), "/tmp/one");
        close(user);
    });
}

TEST_F(ImportExportPopup, TheCloseButtonEndsItForGood) {
    run([](ImGuiTestContext& user) {
        open(user, "Import");
        close(user);
        user.Yield(5);
        IM_CHECK(!isOpen(user));
        open(user, "Export");
        IM_CHECK(user.WindowInfo("//Export Terms").Window->Active);
        close(user);
    });
    EXPECT_TRUE(FakeTools::calls.empty());
}

TEST_F(ImportExportPopup, OpensOverTheLanguagesToo) {
    run([](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        open(user, "Export");
        IM_CHECK(user.WindowInfo("//Export Terms").Window->Active);
        close(user);
    });
}

}
}
