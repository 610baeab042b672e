#include "LastRun.h"

#include <utility>

#include "ChangeManager.h"
#include "QuorvaneEditor/QuorvaneEditor.h"

namespace QuorvaneEngine {

const LocalizationRun* lastRun(const QuorvaneEditor& editor) { return editor.lastRun.get(); }

void setLastRun(QuorvaneEditor& editor, LocalizationRun&& run) {
    editor.lastRun = std::make_shared<const LocalizationRun>(std::move(run));
}

bool canUndo(const QuorvaneEditor& editor, const LocalizationRun& run) {
    const ChangeManager& changes = editor.changeManager();
    return run.group > 0 && !changes.isGroupOpen() && changes.canUndo() &&
        changes.changes()[std::size_t(changes.lastChangeIndex())].group == run.group;
}

}
