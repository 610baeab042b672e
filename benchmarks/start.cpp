/* How long the editor takes until its user sees the sample project, and what it costs while nobody touches it.

   The time goes from the start of the program to the first frame that it has presented, as a ratio to an empty window of a program with
   the same libraries, context of OpenGL and GUI. Pairs are taken in turns, and the median of their ratios is printed, because a shared
   machine is slower from one second to the next. Runs on a virtual display with software OpenGL where there is no other. */

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include <imgui.h>
#include <unistd.h>

#include "ChildProgram.h"
#include "Figures.h"
#include "app/DesktopWindow.h"
#include "app/Renderer.h"

namespace {

using namespace QuorvaneEngine;

constexpr int Rounds = 9;
constexpr double MaxRatio = 1.5;

/* Seconds until an editor has settled, and for which it is watched then. */
constexpr unsigned Settling = 6;
constexpr unsigned Watching = 12;

/* Of one core. */
constexpr double MaxIdlePercent = 1.0;

/* What everything is compared with: one frame of a window with nothing in it. */
int showEmptyWindow() {
    DesktopWindow window;
    if(!window.open("Empty", {})) return 1;
    ImGui::CreateContext();
    ImGui::GetIO().IniFilename = nullptr;
    {
        Renderer renderer{window};
        window.pollEvents(0.0);
        renderer.beginFrame();
        ImGui::NewFrame();
        ImGui::Render();
        renderer.render();
        window.present();
    }
    ImGui::DestroyContext();
    return 1;
}

/* A project and a home of nobody's. */
class Desk {
public:
    Desk() {
        std::string pattern = (std::filesystem::temp_directory_path() / "quorvane-start-XXXXXX").string();
        if(mkdtemp(pattern.data())) _folder = pattern;
        std::filesystem::copy(QUORVANE_SOURCE_DIR "/samples/lighthouse", _folder / "lighthouse",
            std::filesystem::copy_options::recursive);
    }
    ~Desk() {
        std::error_code error;
        std::filesystem::remove_all(_folder, error);
    }
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    std::vector<std::string> editor() const { return {QUORVANE_EDITOR, (_folder / "lighthouse").string()}; }

    std::vector<std::string> environment() const {
        return {"HOME=" + _folder.string(), "XDG_DATA_HOME=" + _folder.string(), "XDG_CONFIG_HOME=" + _folder.string()};
    }

private:
    std::filesystem::path _folder;
};

struct FirstFrame {
    bool isShown = false;
    double instructions = 0.0;
};

FirstFrame showFirstFrame(const std::vector<std::string>& command, const Desk& desk) {
    std::vector<std::string> environment = desk.environment();
    environment.emplace_back("LD_PRELOAD=" QUORVANE_FIRST_FRAME);
    ChildProgram program{command, environment};
    FirstFrame frame;
    frame.isShown = program.wait();
    frame.instructions = program.instructions();
    return frame;
}

bool measureStart(const Desk& desk, const std::string& self) {
    const std::vector<std::string> empty{self, "--empty-window"};
    FirstFrame editorFrame = showFirstFrame(desk.editor(), desk);
    FirstFrame emptyFrame = showFirstFrame(empty, desk);
    bool areShown = editorFrame.isShown && emptyFrame.isShown;
    Measures measures;
    for(int i = 0; i != Rounds && areShown; ++i) {
        measures.take("start to first frame",
            {{"empty window", MaxRatio,
                [&] { return secondsOf([&] { areShown &= (emptyFrame = showFirstFrame(empty, desk)).isShown; }); }}},
            [&] { areShown &= (editorFrame = showFirstFrame(desk.editor(), desk)).isShown; });
        measures.turn();
    }
    if(!areShown) return fail("start to first frame: a program ended before it had presented one");
    bool met = measures.printAll();
    if(emptyFrame.instructions > 0.0)
        print("instructions of it to empty window", editorFrame.instructions / emptyFrame.instructions, NoTarget);
    else std::fprintf(stderr, "instructions are not counted: the processor's counter is not handed out here\n");
    return met;
}

bool measureIdle(const Desk& desk) {
    const ChildProgram editor{desk.editor(), desk.environment()};
    sleep(Settling);
    const double before = editor.processorSeconds();
    sleep(Watching);
    const double after = editor.processorSeconds();
    if(before < 0.0 || after < 0.0) return fail("idle: the editor ended");
    return print("idle, % of a core", 100.0 * (after - before) / Watching, MaxIdlePercent);
}

}

int main(const int argc, char** const argv) {
    if(!std::getenv("DISPLAY")) {
        execl(QUORVANE_SOURCE_DIR "/scripts/with-display.sh", "with-display.sh", argv[0], static_cast<char*>(nullptr));
        std::perror("with-display.sh");
        return 1;
    }
    if(argc == 2 && !std::strcmp(argv[1], "--empty-window")) return showEmptyWindow();
    const Desk desk;
    bool met = measureStart(desk, std::filesystem::read_symlink("/proc/self/exe").string());
    met &= measureIdle(desk);
    return met ? 0 : 1;
}
