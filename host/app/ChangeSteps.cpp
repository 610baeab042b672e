#include "app/ChangeSteps.h"

#include <algorithm>

#include <Corrade/Containers/StringView.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "app/ChangeName.h"
#include "localization/LastRun.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/* By LocalizationRun::Kind. A check changes nothing and names the group of an import. */
constexpr Containers::StringView KindNames[]{
    "gathering of terms"_s, "export of terms"_s, "import of terms"_s, "import of terms"_s};

}

void ChangeSteps::update(const QuorvaneEditor& editor) {
    learnRun(editor);
    _changes = &editor.changeManager();
    const Containers::ArrayView<const Change> log = _changes->changes();
    const Int revision = editor.project().revision();
    if(revision == _revision && log.size() == _logSize) return;
    const std::size_t kept = unchanged(revision, log.size());
    while(!_ends.empty() && std::size_t(_ends.back()) > kept) _ends.pop_back();
    _names.resize(_ends.size());
    for(std::size_t i = _ends.empty() ? 0 : std::size_t(_ends.back()); i != log.size(); ++i) {
        const bool continues = i && log[i].group >= 0 && log[i].group == log[i - 1].group;
        if(continues) _ends.back() = Int(i) + 1;
        else _ends.push_back(Int(i) + 1);
        if(continues && _names.size() == _ends.size()) _names.pop_back();
    }
    _names.resize(_ends.size());
    _revision = revision;
    _logSize = log.size();
    _applied = std::size_t(_changes->lastChangeIndex()) + 1;
    // The step of the last applied change counts as a whole.
    _present = std::size_t(std::lower_bound(_ends.begin(), _ends.end(), Int(_applied)) - _ends.begin());
    if(_applied) ++_present;
}

std::size_t ChangeSteps::unchanged(const Int revision, const std::size_t logSize) const {
    if(_revision == -1) return 0;
    // Whatever is done to the log counts a revision, so it has not been left behind further than that, and a log that was emptied
    // has not become longer.
    const auto done = std::size_t(revision - _revision);
    return logSize > done && _applied > done ? _applied - done : 0;
}

bool ChangeSteps::Name::isOf(const Change& change) const {
    return !text.isEmpty() && path == change.path && hasOld == bool(change.oldValue) && hasNew == bool(change.newValue);
}

void ChangeSteps::learnRun(const QuorvaneEditor& editor) {
    const LocalizationRun* const run = editor.lastRun.get();
    if(run == _lastRun) return;
    _lastRun = run;
    // A project that is opened has none yet.
    if(!run) _runs.clear();
    else if(run->group >= 0) _runs.push_back(Run{run->group, KindNames[std::size_t(run->kind)]});
    // What may have its name already gets another.
    _revision = -1;
}

Containers::StringView ChangeSteps::name(const std::size_t step) {
    Name& name = _names[step];
    const std::size_t begin = step ? std::size_t(_ends[step - 1]) : 0;
    const Containers::ArrayView<const Change> changes = _changes->changes().slice(begin, std::size_t(_ends[step]));
    const Change& first = changes.front();
    if(name.isOf(first)) return name.text;
    name = Name{{}, first.path, bool(first.oldValue), bool(first.newValue)};
    for(const Run& run: _runs)
        if(run.group == first.group) name.text = Containers::String{run.name};
    if(name.text.isEmpty()) name.text = changeName(changes);
    return name.text;
}

}
