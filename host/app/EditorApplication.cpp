#include "app/EditorApplication.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

#include <imgui.h>
#include <imgui_internal.h>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/Utility/Debug.h>

#include "QuorvaneEditor/EditorState.h"
#include "QuorvaneEditor/JobSystem.h"
#include "Utils/Desktop.h"
#include "Utils/Dialogs.h"
#include "app/CommandLine.h"
#include "app/DesktopOpener.h"
#include "app/DesktopWindow.h"
#include "app/EditorFrame.h"
#include "app/FontWatch.h"
#include "app/Fonts.h"
#include "app/FrameRepeat.h"
#include "app/KeyOrder.h"
#include "app/LeftOutModules.h"
#include "app/Look.h"
#include "app/MessageLog.h"
#include "app/NewView.h"
#include "app/RecentProjects.h"
#include "app/Renderer.h"
#include "app/Settings.h"
#include "app/TerminationSignals.h"
#include "app/Theme.h"
#include "app/Thumbnails.h"
#include "app/WindowMemory.h"
#include "app/WindowTitle.h"
#include "document/EditorSession.h"
#include "jobs/JobWakeUp.h"
#include "modules/ModuleLoader.h"

namespace QuorvaneEngine {

namespace {

static_assert(DesktopWindow::NoDisplay == int(ExitCode::NoDisplay));

constexpr UnsignedInt WorkerThreads = 2;

/* How long the editor sleeps while nobody touches it, in seconds, and how many frames it draws before: the GUI needs some to
   settle. */
constexpr double IdleSleep = 1.0;
constexpr int BusyFrames = 8;

/* How many frames the editor draws at most when it has to end, so that what is being typed is kept. */
constexpr int EndFrames = 3;

/* While something runs that the user watches; and for how long after the last input, for what appears with a delay. */
constexpr double WatchSleep = 0.03;
constexpr int WatchFrames = 40;

/* After a term was shown: until its mark has faded. */
constexpr int FadeFrames = 2 * WatchFrames;

Containers::String openArchiveDialog(Containers::StringView title, Containers::StringView defaultPath) {
    Containers::Array<Containers::String> files =
        openFileDialog(title, defaultPath, {"ZIP archive", "*.zip", "All files", "*"}, false);
    return files.isEmpty() ? Containers::String{} : std::move(files[0]);
}

/** The GUI's context, which must be there before anything that draws and go after it. */
class GuiContext {
public:
    GuiContext() {
        ImGui::CreateContext();
        ImGuiIO& io = ImGui::GetIO();
        // The library would write its file into the folder that the program was started from.
        io.IniFilename = nullptr;
        io.LogFilename = nullptr;
        io.ConfigFlags |= ImGuiConfigFlags_DockingEnable | ImGuiConfigFlags_NavEnableKeyboard;
        io.ConfigDockingWithShift = false;
        io.ConfigWindowsMoveFromTitleBarOnly = true;
    }
    ~GuiContext() { ImGui::DestroyContext(); }
    GuiContext(const GuiContext&) = delete;
    GuiContext& operator=(const GuiContext&) = delete;
};

/** The folder above the one that holds the program. */
std::filesystem::path prefix() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path().parent_path();
}

Containers::Array<Containers::String> moduleFolders(const CommandLine& line) {
    Containers::Array<Containers::String> folders;
    for(const Containers::String& folder: line.moreModules) arrayAppend(folders, folder);
    arrayAppend(folders,
        line.modules.isEmpty() ? Containers::String{(prefix() / QUORVANE_INSTALL_MODULES).c_str()} : line.modules);
    return folders;
}

Containers::String sharedFile(const char* const name) { return (prefix() / QUORVANE_INSTALL_SHARE / name).c_str(); }

bool takesPicture(const CommandLine& line) { return !line.screenshot.isEmpty(); }

/** Where the user's settings are; empty for a picture, which is the same for every user. */
Containers::String userFolder(const CommandLine& line) {
    return takesPicture(line) ? Containers::String{} : appDirectory();
}

Theme::Scheme schemeOf(const CommandLine& line, const Settings& settings) {
    if(line.theme.isEmpty()) return settings.scheme();
    return line.theme == "light" ? Theme::Scheme::Light : Theme::Scheme::Dark;
}

ExitCode newView(const CommandLine& line, const char* const program) {
    std::error_code error;
    const bool isInstalled = std::filesystem::exists(prefix() / QUORVANE_INSTALL_PACKAGE, error);
    const NewView view{
        line.newView, line.newViewFolder, sharedFile("view"), isInstalled ? prefix().c_str() : "", program};
    return writeNewView(view) ? ExitCode::Success : ExitCode::Failure;
}

/** Everything that lives as long as the window does, in the order in which it is made. */
class Editor {
public:
    explicit Editor(DesktopWindow& window, Fonts::Search& fonts, const CommandLine& line, MessageLog& log,
        Containers::ArrayView<const ViewCondition> conditions)
        : _window{window},
          _line{line},
          _signals{takesPicture(line) ? nullptr : new TerminationSignals},
          _renderer{window},
          _note{userFolder(line)},
          _modules{moduleFolders(line), &_note},
          _leftOut{userFolder(line), _modules},
          _settings{userFolder(line)},
          _look{_settings, displayScale(), schemeOf(line, _settings)},
          _recent{userFolder(line)},
          _memory{!line.hasSize},
          _frame{_session, _jobs, _modules, log, conditions, openFolderDialog, openArchiveDialog} {
        Fonts::load(fonts, sharedFile("icons.otf"), &_letters);
        _frame.setDesktop({DesktopOpener::showFolder, DesktopOpener::open, sharedFile("docs"), &_recent, &_look,
            &_fonts, &_leftOut, areDialogsAvailable});
        setJobWakeUp(DesktopWindow::wakeUp);
    }
    ~Editor() { setJobWakeUp(nullptr); }
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;

    ExitCode run() {
        if(!_renderer.isReady()) return ExitCode::NoDisplay;
        const bool isPicture = takesPicture(_line);
        // A picture changes nothing, whoever has the project.
        const EditorFrame::Access access = isPicture ? EditorFrame::Access::Picture : EditorFrame::Access::Write;
        if(!_line.project.isEmpty() && !_frame.open(_line.project, access) && isPicture) return ExitCode::Failure;
        if(isPicture) return takePicture();
        _window.setLossHandler([](void* const frame) { static_cast<EditorFrame*>(frame)->keepUnsaved(); }, &_frame);
        while(!_frame.isFinished()) {
            followProject();
            waitForInput();
            if(_signals->isAsked()) {
                endKeeping();
                break;
            }
            if(_window.takeCloseRequest()) _frame.requestQuit();
            if(Containers::Array<Containers::String> dropped = _window.takeDropped(); !dropped.isEmpty())
                _frame.drop(std::move(dropped));
            drawFrame();
        }
        _window.setLossHandler(nullptr, nullptr);
        if(_memory.isPending()) _memory.write();
        return ExitCode::Success;
    }

private:
    float displayScale() const {
        if(_line.scale > 0.0f) return _line.scale;
        return takesPicture(_line) ? 1.0f : _window.contentScale();
    }

    /** Draws a frame and shows it, unless it looks like the one before while nothing happens. */
    void drawFrame() {
        prepareFrame();
        // After the first frame, so that pictures do not keep the user waiting for the editor.
        if(_isShown) updateThumbnails();
        buildFrame();
        const bool isRepeated = _repeat.isRepeated(*ImGui::GetDrawData());
        const bool isDamaged = _window.takeDamage();
        if(isRepeated && !isDamaged && _busy == 0) return;
        _renderer.render();
        _window.present();
        _isShown = true;
    }

    /** Ends, as the system wants it, without waiting for anybody. */
    void endKeeping() {
        _frame.requestEnd();
        prepareFrame();
        // What is being typed becomes part of the project in a frame that nobody needs to see.
        for(int i = 0; i != EndFrames && !_frame.isFinished(); ++i) {
            buildFrame();
            prepareFrame();
        }
        // The user may have asked for something else at the same moment.
        if(!_frame.isFinished()) _frame.keepUnsaved();
    }

    void prepareFrame() {
        _look.setDisplayScale(displayScale());
        _frame.prepare();
        if(_frame.takeShownTerm()) _watch = FadeFrames;
        if(_title.update(_session.folder(), _session.hasUnsavedChanges(), _frame.isReadOnly()))
            _window.setTitle(_title.text().data());
    }

    void updateThumbnails() {
        if(!_thumbnails) _thumbnails.emplace(_session);
        _thumbnails->update();
    }

    void buildFrame() {
        _renderer.beginFrame();
        {
            const KeyOrder order;
            ImGui::NewFrame();
        }
        _frame.draw();
        ImGui::Render();
    }

    /** Puts the window where it was in the project that was just opened, and keeps where it is. */
    void followProject() {
        if(_memory.isOf(_session.folder())) {
            // Who only looks at a project writes nothing into it.
            _memory.setOurs(_session.isLocked());
            if(_memory.notice(_window.place(), ImGui::GetTime())) _memory.write();
            return;
        }
        WindowPlace place = _window.place();
        // To ask for the screens takes too long to do it in each frame.
        if(_memory.enter(_session.folder(), DesktopWindow::screens(), place)) _window.setPlace(place);
        _memory.setOurs(_session.isLocked());
    }

    ExitCode takePicture() {
        if(!openView()) return ExitCode::Failure;
        for(Int i = 0; i < std::max(_line.frames, 1); ++i) {
            _window.pollEvents(0.0);
            if(i != 0) _window.present();
            prepareFrame();
            updateThumbnails();
            buildFrame();
            _renderer.render();
            // Docked windows come into being with the first frames, and one of them to the front.
            if(!_line.view.isEmpty()) ImGui::SetWindowFocus(_line.view.data());
        }
        return _renderer.writeScreenshot(_line.screenshot) ? ExitCode::Success : ExitCode::Failure;
    }

    /** Opens the view that was asked for, if one was; an error where there is none of the title. */
    bool openView() {
        if(_line.view.isEmpty()) return true;
        EditorState& state = _session.state();
        std::string titles;
        for(UnsignedInt view = 0; view != state.viewCount(); ++view) {
            if(state.viewTitle(view) == _line.view) return state.isViewOpen(view) = true;
            titles += (titles.empty() ? "" : ", ") + std::string{state.viewTitle(view).data()};
        }
        Corrade::Utility::Error{} << "runEditor(): there is no view" << _line.view << Corrade::Utility::Error::nospace
                                  << ", but" << titles.c_str();
        return false;
    }

    void waitForInput() {
        const bool isWatched = _frame.exchange().isBusy() || _frame.isKeeping() ||
            (_thumbnails && _thumbnails->isBusy()) || _fonts.isBusy() || _watch > 0;
        _window.pollEvents(_busy > 0 ? 0.0 : isWatched ? WatchSleep : IdleSleep);
        const ImGuiContext& context = *ImGui::GetCurrentContext();
        if(context.InputEventsQueue.Size) {
            _busy = BusyFrames;
            _watch = std::max(_watch, WatchFrames);
        } else if(context.ActiveId) {
            // A text's cursor blinks, a button that is held down repeats.
            _watch = std::max(_watch, WatchFrames);
            _busy = std::max(_busy - 1, 0);
        } else if(_busy > 0) --_busy;
        else if(_watch > 0) --_watch;
    }

    DesktopWindow& _window;
    const CommandLine& _line;
    /** Before modules are loaded, which would be blamed for the end. Null for a picture, which leaves nothing to keep. */
    Containers::Pointer<TerminationSignals> _signals;
    GuiContext _context;
    Renderer _renderer;
    JobSystem _jobs{WorkerThreads};
    EditorSession _session{&_jobs};
    /** Null before the first frame was shown. */
    Containers::Pointer<Thumbnails> _thumbnails;
    LoadNote _note;
    ModuleLoader _modules;
    LeftOutModules _leftOut;
    LetterSet _letters;
    FontWatch _fonts{_letters};
    Settings _settings;
    Look _look;
    RecentProjects _recent;
    WindowMemory _memory;
    EditorFrame _frame;
    WindowTitle _title;
    FrameRepeat _repeat;
    bool _isShown = false;
    int _busy = BusyFrames;
    int _watch = 0;
};

}

ExitCode runEditor(int argc, const char* const* argv, Containers::ArrayView<const ViewCondition> conditions) {
    int usage = 0;
    const Containers::Optional<CommandLine> line = parseCommandLine(argc, argv, usage);
    if(!line) return usage ? ExitCode::Usage : ExitCode::Success;
    if(!line->newView.isEmpty() || !line->newViewFolder.isEmpty()) return newView(*line, argv[0]);

    MessageLog log;
    // Beside the making of the window.
    Fonts::Search fonts;
    DesktopWindow window;
    DesktopWindow::Options options;
    options.width = line->width;
    options.height = line->height;
    options.visible = line->screenshot.isEmpty();
    if(!window.open("Quorvane", options)) return ExitCode::NoDisplay;
    return Editor{window, fonts, *line, log, conditions}.run();
}

}
