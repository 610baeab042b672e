#pragma once

#include <cstdint>
#include <memory>

#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class FileSystem;
struct Progress;

/** An import that shows what it would do before it does it. Files are read and checked, and compared with the project, beside
    the GUI thread, which looks after it between frames.

    From the begin of the comparison to its end the project must not change; then it may: what is applied is always what was shown,
    because a project that has changed by then is compared once more, with what was read of the files. */
class QUORVANE_API ImportPreview {
public:
    enum class State : std::uint8_t {
        /** There is no preview. */
        None,
        /** Files are being read. */
        Reading,
        /** Texts are being compared with the project. */
        Comparing,
        /** @ref run() has the report and can be applied. */
        Ready
    };

    /** What has just happened. */
    enum class Event : std::uint8_t {
        None,
        /** The report is there. */
        Ready,
        /** The report is there, and is not that of what was to be applied: other lines, or other texts that would be replaced. */
        Outdated,
        /** The files or the project cannot be taken; the last run of the editor has the reasons. */
        Refused,
        Cancelled,
        /** The project was changed, and the last run of the editor has the report. */
        Applied
    };

    /** @param editor       must outlive the preview, as must the others */
    explicit ImportPreview(QuorvaneEditor& editor, JobSystem& jobs, FileSystem& fileSystem);

    /** Waits for the end of what runs. */
    ~ImportPreview();

    ImportPreview(const ImportPreview&) = delete;
    ImportPreview& operator=(const ImportPreview&) = delete;

    /** Begins a preview in place of any other; nothing may run.
        @param path             folder or archive, absolute
        @param defaultLanguage  index into @ref AllLanguages */
    void start(Containers::StringView path, UnsignedInt defaultLanguage);

    /** Goes on with what has ended beside the GUI thread. Between two frames. */
    Event update();

    /** Changes the project as one step, if it is still the one that was compared; else compares once more, and does so where that
        comes to the same. The preview must be ready, and no group of changes open. Between two frames. */
    Event apply();

    /** Lets what runs end soon, and the preview with it. */
    void cancel();

    /** Forgets the preview; what runs is cancelled, and waited for. */
    void discard();

    State state() const { return _state; }
    bool isRunning() const { return _state == State::Reading || _state == State::Comparing; }

    /** Whether another thread reads the project now. */
    bool readsProject() const;

    /** Of what runs; there is something that runs. */
    const Progress& progress() const;

    /** Whether what runs was asked for by @ref apply() . */
    bool isApplying() const { return _shown != nullptr; }

    /** What the import would do, while the preview is ready. */
    const std::shared_ptr<LocalizationRun>& run() const { return _run; }

    /** Folder or archive, as it was given. */
    Containers::StringView path() const { return _path; }

private:
    struct Work;

    void dispatch(State state);
    Event refuse();
    Event finish();
    Event end(Event event);

    QuorvaneEditor* _editor;
    JobSystem* _jobs;
    FileSystem* _fileSystem;
    State _state = State::None;
    Containers::Pointer<Work> _work;
    int _job = -1;
    std::shared_ptr<LocalizationRun> _run;
    /** What the comparison must come to, for the import to be applied. */
    std::shared_ptr<LocalizationRun> _shown;
    Containers::String _path;
    Int _revision = -1;
};

}
