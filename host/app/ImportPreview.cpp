#include "app/ImportPreview.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <utility>

#include <Corrade/Containers/GrowableArray.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/JobSystem.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "localization/Import.h"
#include "localization/LanguageLookup.h"
#include "localization/LastRun.h"
#include "localization/Progress.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

bool isSame(const LocalizationReport& a, const LocalizationReport& b) {
    using Line = LocalizationReport::Line;
    return std::equal(
        a.lines().begin(), a.lines().end(), b.lines().begin(), b.lines().end(), [](const Line& one, const Line& other) {
            return one.language == other.language && one.outcome == other.outcome && one.term == other.term &&
                one.reason == other.reason && one.file == other.file;
        });
}

}

/** What jobs work on, which the GUI thread leaves alone meanwhile. */
struct ImportPreview::Work {
    explicit Work(QuorvaneEditor& editor, UnsignedInt defaultLanguage)
        : import{editor, defaultLanguage, {}, &progress} {}

    Progress progress;
    Import import;
    /** Of the preview that is to be applied. */
    TextDigest shownReplaced;
    bool succeeded = false;
    std::atomic<bool> hasEnded{false};
};

ImportPreview::ImportPreview(QuorvaneEditor& editor, JobSystem& jobs, FileSystem& fileSystem)
    : _editor{&editor}, _jobs{&jobs}, _fileSystem{&fileSystem} {}

ImportPreview::~ImportPreview() { discard(); }

void ImportPreview::start(const Containers::StringView path, const UnsignedInt defaultLanguage) {
    _path = path;
    _work = {};
    _work.emplace(*_editor, defaultLanguage);
    dispatch(State::Reading);
}

void ImportPreview::dispatch(const State state) {
    _state = state;
    _revision = _editor->project().revision();
    _run = std::make_shared<LocalizationRun>(LocalizationRun{LocalizationRun::Kind::Import, _path, {}, {}});
    _work->hasEnded = false;
    _work->progress.done = _work->progress.total = 0;
    _job = _jobs->dispatch(
        [state, work = _work.get(), fileSystem = _fileSystem, path = Containers::StringView{_path},
            report = &_run->report] {
            if(!work->progress.isCancelled)
                work->succeeded =
                    state == State::Reading ? work->import.read(*fileSystem, path) : work->import.compare(*report);
            work->hasEnded = true;
            work->hasEnded.notify_all();
        },
        {}, {});
}

ImportPreview::Event ImportPreview::update() {
    if(!isRunning() || !_jobs->isDone(_job)) return Event::None;
    if(_work->progress.isCancelled) return end(Event::Cancelled);
    if(!_work->succeeded) return refuse();
    if(_state == State::Comparing) return finish();
    dispatch(State::Comparing);
    return Event::None;
}

ImportPreview::Event ImportPreview::finish() {
    _state = State::Ready;
    const std::shared_ptr<LocalizationRun> shown = std::exchange(_shown, nullptr);
    if(!shown) return Event::Ready;
    const bool isSettled = !_editor->changeManager().isGroupOpen();
    const bool isAsShown = isSame(shown->report, _run->report) && _work->import.replaced() == _work->shownReplaced;
    return isSettled && isAsShown ? apply() : Event::Outdated;
}

ImportPreview::Event ImportPreview::refuse() {
    for(const Containers::String& refusal: _work->import.refusals()) Containers::arrayAppend(_run->refusals, refusal);
    _editor->lastRun = _run;
    return end(Event::Refused);
}

ImportPreview::Event ImportPreview::apply() {
    if(_editor->project().revision() != _revision) {
        _shown = _run;
        _work->shownReplaced = _work->import.replaced();
        dispatch(State::Comparing);
        return Event::None;
    }
    Containers::Array<UnsignedInt> languages = languagesOf(_editor->project());
    _run->group = _work->import.apply(languages);
    _run->when = std::chrono::system_clock::now();
    _editor->lastRun = _run;
    return end(Event::Applied);
}

void ImportPreview::cancel() {
    if(isRunning()) _work->progress.isCancelled = true;
}

void ImportPreview::discard() {
    if(isRunning()) {
        cancel();
        // Waiting for a job runs jobs of the GUI thread, which could change what another thread reads.
        if(_jobs->threadCount()) _work->hasEnded.wait(false);
        _jobs->wait(_job);
    }
    end(Event::None);
}

ImportPreview::Event ImportPreview::end(const Event event) {
    _state = State::None;
    _work = {};
    _run = nullptr;
    _shown = nullptr;
    return event;
}

bool ImportPreview::readsProject() const {
    return _state == State::Comparing && _jobs->threadCount() && !_jobs->isDone(_job);
}

const Progress& ImportPreview::progress() const { return _work->progress; }

}
