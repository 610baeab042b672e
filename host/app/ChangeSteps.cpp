#include "app/ChangeSteps.h"

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
    _revision = revision;
    _logSize = log.size();
    _ends.clear();
    _present = 0;
    for(std::size_t i = 0; i != log.size(); ++i) {
        const bool continues = i && log[i].group >= 0 && log[i].group == log[i - 1].group;
        if(continues) _ends.back() = Int(i) + 1;
        else _ends.push_back(Int(i) + 1);
        if(Int(i) == _changes->lastChangeIndex()) _present = _ends.size();
    }
    _names.clear();
    _names.resize(_ends.size());
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
    Containers::String& name = _names[step];
    if(!name.isEmpty()) return name;
    const std::size_t begin = step ? std::size_t(_ends[step - 1]) : 0;
    const Containers::ArrayView<const Change> changes = _changes->changes().slice(begin, std::size_t(_ends[step]));
    for(const Run& run: _runs)
        if(run.group == changes.front().group) name = Containers::String{run.name};
    if(name.isEmpty()) name = changeName(changes);
    return name;
}

}
