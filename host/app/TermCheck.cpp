#include "app/TermCheck.h"

#include <atomic>
#include <utility>

#include <rapidjson/document.h>

#include "QuorvaneEditor/JobSystem.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "localization/LanguageLookup.h"
#include "localization/LastRun.h"
#include "localization/LocalizationChecks.h"
#include "localization/Progress.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

/** What the job works on, which the GUI thread leaves alone meanwhile. */
struct TermCheck::Work {
    Progress progress;
    LocalizationRun run{LocalizationRun::Kind::Check, {}, {}, {}};
    std::atomic<bool> hasEnded{false};
};

TermCheck::TermCheck(QuorvaneEditor& editor, JobSystem& jobs): _editor{&editor}, _jobs{&jobs} {}

TermCheck::~TermCheck() { discard(); }

void TermCheck::start(const UnsignedInt defaultLanguage) {
    _work.emplace();
    for(const UnsignedInt language: languagesOf(_editor->project())) _work->run.report.addLanguage(language);
    _job = _jobs->dispatch(
        [work = _work.get(), root = &std::as_const(_editor->project().document()), defaultLanguage] {
            if(!work->progress.isCancelled)
                checkLocalization(*root, {defaultLanguage, {}, &work->progress}).addTo(work->run.report);
            work->hasEnded = true;
            work->hasEnded.notify_all();
        },
        {}, {});
}

void TermCheck::update() {
    if(!_work || !_jobs->isDone(_job)) return;
    if(!_work->progress.isCancelled) {
        // Who checks what an import has brought may want to take it back for what is found.
        const LocalizationRun* const last = lastRun(*_editor);
        if(last && last->kind != LocalizationRun::Kind::Gathering && canUndo(*_editor, *last))
            _work->run.group = last->group;
        setLastRun(*_editor, std::move(_work->run));
    }
    _work = nullptr;
}

void TermCheck::cancel() {
    if(_work) _work->progress.isCancelled = true;
}

void TermCheck::discard() {
    if(!_work) return;
    cancel();
    // Waiting for a job runs jobs of the GUI thread, which could change what another thread reads.
    if(_jobs->threadCount()) _work->hasEnded.wait(false);
    _jobs->wait(_job);
    _work = nullptr;
}

bool TermCheck::readsProject() const { return _work && _jobs->threadCount() && !_jobs->isDone(_job); }

const Progress& TermCheck::progress() const { return _work->progress; }

}
