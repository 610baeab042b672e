#pragma once

#include <memory>

#include <Corrade/Containers/Pointer.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

struct Progress;

/** The checks of a project's terms, beside the GUI thread, which looks after them between frames. From the begin to the end of them the
    project must not change. */
class QUORVANE_API TermCheck {
public:
    /** @param editor   must outlive this object, as @p jobs must */
    explicit TermCheck(QuorvaneEditor& editor, JobSystem& jobs);

    /** Waits for the end of what runs. */
    ~TermCheck();

    TermCheck(const TermCheck&) = delete;
    TermCheck& operator=(const TermCheck&) = delete;

    /** Begins to check all languages; nothing may run.
        @param defaultLanguage  index into @ref AllLanguages */
    void start(UnsignedInt defaultLanguage);

    /** Makes the last run of the editor of what has ended beside the GUI thread. Between two frames. */
    void update();

    /** Lets what runs end soon, without a trace. */
    void cancel();

    /** The same, and waits for it. */
    void discard();

    bool isRunning() const { return _work != nullptr; }

    /** Whether another thread reads the project now. */
    bool readsProject() const;

    /** Of what runs; there is something that runs. */
    const Progress& progress() const;

private:
    struct Work;

    QuorvaneEditor* _editor;
    JobSystem* _jobs;
    Containers::Pointer<Work> _work;
    int _job = -1;
};

}
