/* What a frame of the view costs as a project grows: time, instructions, allocations and look-ups at 100 to 100,000 terms.

   Time and instructions are ratios to 100 terms. Times are taken in pairs, one frame of each after the other in one process, and the
   median of the pairs' ratios is printed, because a shared machine is slower from one second to the next. Instructions come from the
   processor's counter where the system hands it out, else from valgrind. */

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <linux/perf_event.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <Corrade/Containers/Pointer.h>
#include <Corrade/PluginManager/Manager.hpp>
#include <imgui.h>
#include <rapidjson/document.h>

#include "Callgrind.h"
#include "EditorView.h"
#include "Figures.h"
#include "QuorvaneEditor/AbstractModule.h"
#include "QuorvaneEditor/QuorvaneEditorApplication.h"
#include "Ui/Ui.h"
#include "document/EditorSession.h"
#include "support/Allocations.h"

namespace {

using namespace QuorvaneEngine;
using Manager = Corrade::PluginManager::Manager<AbstractModule>;

constexpr std::array<int, 4> Counts{100, 1000, 10000, 100000};
constexpr int WarmUp = 20;
constexpr int Pairs = 301;
constexpr int FramesPerSample = 5;
constexpr double MaxRatio = 1.5;

rapidjson::Document project(const int terms) {
    std::ostringstream members, texts;
    for(int i = 0; i != terms; ++i) {
        const char* const separator = i ? "," : "";
        members << separator << "\"term." << i << R"(":{"sourceText":"/texts/term.)" << i
                << R"(","translatable":true})";
        texts << separator << "\"term." << i << R"(":"The text of a term that is long enough to be broken over lines: )"
              << i << ".\"";
    }
    const std::string json = "{\"languages\":{\"en\":{\"isDefault\":true}},\"texts\":{" + texts.str() +
        "},\"localization\":{\"terms\":{" + members.str() + "}}}";
    rapidjson::Document document;
    document.Parse(json.data(), json.size());
    return document;
}

/* The view on a project in a GUI of its own, without a window */
class Frame {
public:
    Frame(Manager& manager, const int terms): _context{ImGui::CreateContext()} {
        ImGui::SetCurrentContext(_context);
        ImGuiIO& io = ImGui::GetIO();
        io.IniFilename = nullptr;
        io.DisplaySize = {1280.0f, 900.0f};
        io.DeltaTime = 1.0f / 60.0f;
        io.BackendFlags |= ImGuiBackendFlags_RendererHasTextures | ImGuiBackendFlags_RendererHasVtxOffset;
        io.Fonts->AddFontDefault();
        _session.replaceDocument(project(terms));
        _module = manager.instantiate("Localization");
        static_cast<EditorView*>(_module.get())->init(_context, &_session.data(), &_application);
        draw(WarmUp);
    }

    ~Frame() {
        _module = nullptr;
        ImGui::SetCurrentContext(_context);
        for(ImTextureData* const texture: ImGui::GetPlatformIO().Textures)
            texture->SetStatus(ImTextureStatus_Destroyed);
        ImGui::DestroyContext(_context);
    }

    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;

    void draw(const int frames) {
        ImGui::SetCurrentContext(_context);
        for(int i = 0; i != frames; ++i) {
            _session.beginFrame();
            ImGui::NewFrame();
            ImGui::SetWindowSize("Localization", {1100.0f, 800.0f}, ImGuiCond_Always);
            static_cast<EditorView*>(_module.get())->draw();
            ImGui::Render();
            for(ImTextureData* const texture: *ImGui::GetDrawData()->Textures) {
                if(texture->Status == ImTextureStatus_WantCreate) texture->SetTexID(1);
                texture->SetStatus(ImTextureStatus_OK);
            }
        }
    }

    /* A window that shows no rows would be fast, too */
    bool showsRows() const {
        ImGui::SetCurrentContext(_context);
        return ImGui::GetDrawData()->TotalVtxCount > 4 * 1000;
    }

    std::uint64_t lookUps() { return _session.project().lookupCount(); }

private:
    ImGuiContext* _context;
    EditorSession _session;
    Ui _ui{&_session.project(), &_session.changes(), &_session.data()};
    QuorvaneEditorApplication _application{_session.editor(), _ui};
    Containers::Pointer<AbstractModule> _module;
};

/* The processor's counter of instructions of this thread, less the system's */
class InstructionCounter {
public:
    InstructionCounter() {
        perf_event_attr attributes{};
        attributes.type = PERF_TYPE_HARDWARE;
        attributes.size = sizeof(attributes);
        attributes.config = PERF_COUNT_HW_INSTRUCTIONS;
        attributes.exclude_kernel = 1;
        attributes.exclude_hv = 1;
        _file = int(syscall(SYS_perf_event_open, &attributes, 0, -1, -1, 0));
    }
    ~InstructionCounter() {
        if(_file >= 0) close(_file);
    }

    InstructionCounter(const InstructionCounter&) = delete;
    InstructionCounter& operator=(const InstructionCounter&) = delete;

    /* A virtual machine may have a counter that stands still */
    bool works() const {
        const double before = value();
        volatile int sum = 0;
        for(int i = 0; i != 1000; ++i) sum = sum + i;
        return _file >= 0 && value() > before;
    }

    double value() const {
        std::uint64_t count = 0;
        return read(_file, &count, sizeof(count)) == sizeof(count) ? double(count) : 0.0;
    }

private:
    int _file;
};

std::function<double()> timeOf(Frame& frame) {
    return [&] { return secondsOf([&] { frame.draw(FramesPerSample); }); };
}

int measureInstructions(Manager& manager, const int terms) {
    Frame frame{manager, terms};
    CALLGRIND_START_INSTRUMENTATION;
    frame.draw(FramesPerSample);
    CALLGRIND_STOP_INSTRUMENTATION;
    return 0;
}

}

int main(const int argc, char** const argv) {
    /* The view says that it is initialized */
    Corrade::Utility::Debug quiet{nullptr};
    Manager manager{QUORVANE_MODULE_DIR};
    if(!(manager.load("Localization") & Corrade::PluginManager::LoadState::Loaded)) return 1;
    if(argc == 3 && !std::strcmp(argv[1], "--instructions")) return measureInstructions(manager, std::atoi(argv[2]));

    std::vector<std::unique_ptr<Frame>> frames;
    frames.reserve(Counts.size());
    for(const int terms: Counts) frames.push_back(std::make_unique<Frame>(manager, terms));
    bool met = true;
    for(const std::unique_ptr<Frame>& frame: frames) met &= frame->showsRows();
    if(!met) std::fprintf(stderr, "the view shows no rows\n");
    for(std::size_t i = 1; i != Counts.size(); ++i)
        met &= print("frame time, " + std::to_string(Counts[i]),
            medianRatio(Pairs, timeOf(*frames[i]), timeOf(*frames[0])), MaxRatio);

    const InstructionCounter counter;
    const bool counts = counter.works();
    std::fprintf(stderr, "instructions are counted by %s\n", counts ? "the processor" : "valgrind");
    double base = 0.0;
    for(std::size_t i = 0; i != Counts.size(); ++i) {
        double instructions;
        if(counts) {
            frames[i]->draw(FramesPerSample);
            const double before = counter.value();
            frames[i]->draw(FramesPerSample);
            instructions = counter.value() - before;
        } else instructions = instructionsOf(std::to_string(Counts[i]));
        if(!instructions) {
            std::fprintf(stderr, "instructions cannot be counted: there is neither a counter nor a working valgrind\n");
            met = print("instructions, " + std::to_string(Counts[i]), 1.0e9, MaxRatio);
            break;
        }
        if(i == 0) base = instructions;
        else met &= print("instructions, " + std::to_string(Counts[i]), instructions / base, MaxRatio);
    }

    for(std::size_t i = 0; i != Counts.size(); ++i) {
        const std::uint64_t lookUps = frames[i]->lookUps();
        const Test::Allocations allocations;
        frames[i]->draw(FramesPerSample);
        const double allocated = double(allocations.count()) / FramesPerSample;
        met &= print("allocations, " + std::to_string(Counts[i]), allocated, 0.0);
        met &= print(
            "look-ups, " + std::to_string(Counts[i]), double(frames[i]->lookUps() - lookUps) / FramesPerSample, 1.0);
    }
    return met ? 0 : 1;
}
