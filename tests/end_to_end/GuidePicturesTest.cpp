#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

#include <gtest/gtest.h>
#include <imgui_internal.h>

#include "Picture.h"
#include "QuorvaneEditor/EditorState.h"
#include "QuorvaneEditor/JobSystem.h"
#include "app/DesktopWindow.h"
#include "app/EditorFrame.h"
#include "app/FontWatch.h"
#include "app/Fonts.h"
#include "app/Look.h"
#include "app/MessageLog.h"
#include "app/RecentProjects.h"
#include "app/Renderer.h"
#include "app/Settings.h"
#include "app/Theme.h"
#include "app/ViewConditions.h"
#include "document/EditorSession.h"
#include "modules/ModuleLoader.h"
#include "support/GuiTest.h"

namespace QuorvaneEngine::Test {
namespace {

namespace fs = std::filesystem;

/** Of the window, at scale 1. */
constexpr int Width = 960;
constexpr int Height = 600;

/** What the guide shows the editor in. */
struct Appearance {
    const char* name;
    Theme::Scheme scheme;
    int scale;
};

constexpr Appearance Appearances[]{
    {"dark", Theme::Scheme::Dark, 1},
    {"light", Theme::Scheme::Light, 1},
    {"dark-2", Theme::Scheme::Dark, 2},
    {"light-2", Theme::Scheme::Light, 2},
};

Containers::String noDialog(Containers::StringView, Containers::StringView) { return {}; }

std::chrono::system_clock::time_point clock() { return std::chrono::system_clock::time_point{std::chrono::hours{1}}; }

/** Means of the colours of a grid of cells: what is alike here is alike to somebody who looks from afar, whatever the fonts of the
    machine and the drivers do to single pixels. */
std::vector<std::array<double, 3>> cells(const Picture& picture) {
    constexpr unsigned Columns = 24;
    constexpr unsigned Rows = 15;
    std::vector<std::array<double, 3>> cells(std::size_t(Columns) * Rows);
    std::vector<unsigned> counts(cells.size());
    for(unsigned y = 0; y != picture.height; ++y)
        for(unsigned x = 0; x != picture.width; ++x) {
            const std::size_t cell = std::size_t(y * Rows / picture.height) * Columns + x * Columns / picture.width;
            const unsigned color = picture.pixels[std::size_t(y) * picture.width + x];
            for(unsigned part = 0; part != 3; ++part) cells[cell][part] += color >> (16 - 8 * part) & 0xff;
            ++counts[cell];
        }
    for(std::size_t cell = 0; cell != cells.size(); ++cell)
        for(double& part: cells[cell]) part /= counts[cell];
    return cells;
}

/** The share of cells that are of clearly another colour. */
double distance(const Picture& a, const Picture& b) {
    constexpr double Clear = 20.0;
    if(a.isEmpty() || b.isEmpty() || a.width != b.width || a.height != b.height) return 1.0;
    const auto ours = cells(a);
    const auto theirs = cells(b);
    std::size_t others = 0;
    for(std::size_t cell = 0; cell != ours.size(); ++cell)
        others += std::equal(ours[cell].begin(), ours[cell].end(), theirs[cell].begin(),
                      [](double left, double right) { return std::abs(left - right) < Clear; })
            ? 0
            : 1;
    return double(others) / double(ours.size());
}

/** The editor in a window, with fonts, colours and the sample project, used through the Test Engine. Its pictures lie in the build's
    folder `pictures`, or in the folder QUORVANE_PICTURES of the environment: then they may become the guide's, and with TMPDIR=/games the
    project is the one that they all show. Those that docs/pictures has are compared. */
class GuidePictures: public testing::TestWithParam<Appearance> {
protected:
    GuidePictures() {
        fs::create_directories(root / "settings");
        fs::create_directories(pictures);
        fs::remove_all(project);
        fs::copy(QUORVANE_SOURCE_DIR "/samples/lighthouse", project, fs::copy_options::recursive);
        fs::remove_all(project / ".editor");
        fs::create_directories(program);
        for(const char* const name: {"Localization.so", "Localization.conf"})
            fs::copy_file(fs::path{QUORVANE_MODULE_DIR} / name, program / name, fs::copy_options::overwrite_existing);
        std::ofstream{root / "settings/recent-projects.json"}
            << R"(["/games/lighthouse", "/games/harbour", "/home/ada/first steps"])";
        DesktopWindow::Options options;
        options.width = Width * GetParam().scale;
        options.height = Height * GetParam().scale;
        options.visible = false;
        isOpen = window.open("Quorvane", options);
    }

    ~GuidePictures() override {
        std::error_code error;
        fs::remove_all(root, error);
        fs::remove_all(project, error);
        fs::remove_all(program.parent_path(), error);
    }

    std::string nameOf(const char* const shot) const {
        return std::string{"guide-"} + shot + "-" + GetParam().name + ".png";
    }

    /** What is to be looked at of every picture. */
    void check(const char* const shot) const {
        const Picture picture{(pictures / nameOf(shot)).string()};
        EXPECT_EQ(picture.width, unsigned(Width * GetParam().scale)) << shot;
        EXPECT_EQ(picture.height, unsigned(Height * GetParam().scale)) << shot;
        EXPECT_GT(picture.colors(), 40u) << shot;
        const fs::path shown = fs::path{QUORVANE_SOURCE_DIR "/docs/pictures"} / nameOf(shot);
        if(isForGuide || !fs::exists(shown)) return;
        EXPECT_LT(distance(picture, Picture{shown.string()}), 0.15)
            << shown << " shows something else than the editor does: see scripts/pictures.sh";
    }

    const bool isForGuide = std::getenv("QUORVANE_PICTURES");
    fs::path root = fs::temp_directory_path() / ("quorvane-pictures-" + std::to_string(getpid()));
    fs::path project = (isForGuide ? fs::temp_directory_path() : root) / "lighthouse";
    /** Where the modules are. */
    fs::path program = (isForGuide ? fs::temp_directory_path() : root) / "editor/modules";
    fs::path pictures = isForGuide ? std::getenv("QUORVANE_PICTURES") : QUORVANE_BINARY_DIR "/pictures";
    DesktopWindow window;
    bool isOpen = false;
};

/** The editor of one case; everything in the order in which it is made. */
struct Desk {
    Desk(DesktopWindow& window, const Appearance& appearance, const fs::path& settingsFolder,
        const fs::path& moduleFolder)
        : gui{{float(Width * appearance.scale), float(Height * appearance.scale)}},
          renderer{window},
          modules{moduleFolder.c_str()},
          look{settings, float(appearance.scale), appearance.scheme},
          recent{settingsFolder.c_str()},
          frame{session, jobs, modules, log, viewConditions(), noDialog, noDialog} {
        Fonts::load(QUORVANE_ICONS, &letters);
        // Behind the harness's own.
        ImGui::GetIO().FontDefault = ImGui::GetIO().Fonts->Fonts[1];
        EditorFrame::Desktop desktop;
        desktop.recent = &recent;
        desktop.look = &look;
        desktop.fonts = &fonts;
        frame.setDesktop(desktop);
        gui.prepareFrames([this] { frame.prepare(); });
        renderer.beginFrame();
        ImGuiContextHook hook;
        hook.Type = ImGuiContextHookType_RenderPost;
        hook.UserData = this;
        hook.Callback = [](ImGuiContext*, ImGuiContextHook* own) { static_cast<Desk*>(own->UserData)->render(); };
        ImGui::AddContextHook(gui.context(), &hook);
    }

    void render() {
        ImDrawData& data = *ImGui::GetDrawData();
        // Only what is looked at is worth drawing, but the letters have to come to the textures.
        if(wanted.empty()) data.CmdLists.resize(0);
        renderer.render();
        if(wanted.empty()) return;
        EXPECT_TRUE(renderer.writeScreenshot(wanted.c_str()));
        wanted.clear();
    }

    bool play(const GuiTest::Script& script) {
        return gui.run(
            "guide", [this] { frame.draw(); }, script);
    }

    /** Takes a picture of what shows when nothing moves any more, with the mouse out of the way. */
    void take(ImGuiTestContext& user, const std::string& path) {
        user.MouseMoveToPos({2.0f, ImGui::GetIO().DisplaySize.y - 3.0f});
        user.Yield(30);
        wanted = path;
        user.Yield(2);
    }

    MessageLog log{1000, clock};
    GuiTest gui;
    Renderer renderer;
    JobSystem jobs{1};
    EditorSession session{&jobs};
    ModuleLoader modules;
    LetterSet letters;
    FontWatch fonts{letters};
    Settings settings{""};
    Look look;
    RecentProjects recent;
    EditorFrame frame;

    /** The file of a picture that is to be taken. */
    std::string wanted;
};

TEST_P(GuidePictures, ShowWhatTheGuideTellsOf) {
    ASSERT_TRUE(isOpen);
    Desk desk{window, GetParam(), root / "settings", program};
    ASSERT_TRUE(desk.renderer.isReady());
    const auto path = [this](const char* shot) { return (pictures / nameOf(shot)).string(); };
    EXPECT_TRUE(desk.play([&](ImGuiTestContext& user) { desk.take(user, path("start")); }));
    ASSERT_TRUE(desk.frame.open(project.c_str()));
    EXPECT_TRUE(desk.play([&](ImGuiTestContext& user) {
        desk.take(user, path("terms"));

        user.SetRef("Localization");
        user.ItemClick("localizationtabs/Languages");
        user.ItemClick("**/Add Language");
        user.KeyChars("port");
        desk.take(user, path("languages"));
        user.PopupCloseAll();

        user.ItemClick("localizationtabs/Terms");
        user.MenuClick("File/Export");
        desk.take(user, path("export"));
        user.PopupCloseAll();

        user.SetRef("##MainMenuBar");
        user.MenuClick("View/Messages");
        desk.take(user, path("messages"));
        user.SetRef("##MainMenuBar");
        user.MenuClick("View/Messages");
        user.MenuClick("View/Plug-ins");
        desk.take(user, path("plug-ins"));
    }));
    for(const char* const shot: {"start", "terms", "languages", "export", "messages", "plug-ins"}) check(shot);
    // What a panel adds, and the other theme, are not the same picture once more.
    const Picture terms{path("terms")};
    for(const char* const shot: {"start", "languages", "export", "messages", "plug-ins"})
        EXPECT_GT(terms.difference(Picture{path(shot)}), 0.02) << shot;
    const ImVec4& ground = Theme::color(Theme::Color::Surface, GetParam().scheme);
    const unsigned surface = unsigned(std::lround(ground.x * 255.0f)) << 16 |
        unsigned(std::lround(ground.y * 255.0f)) << 8 | unsigned(std::lround(ground.z * 255.0f));
    std::size_t count = 0;
    for(unsigned y = 0; y != terms.height; ++y)
        for(unsigned x = 0; x != terms.width; ++x) count += terms.has(x, y, surface) ? 1 : 0;
    EXPECT_GT(double(count), 0.3 * terms.width * terms.height);
}

INSTANTIATE_TEST_SUITE_P(
    Looks, GuidePictures, testing::ValuesIn(Appearances), [](const testing::TestParamInfo<Appearance>& info) {
        std::string name = info.param.name;
        std::replace(name.begin(), name.end(), '-', '_');
        return name;
    });

}
}
