#pragma once

#include <vector>

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** The change log as the user sees it: what is undone at once is one step, and has a name. */
class QUORVANE_API ChangeSteps {
public:
    /** Looks at the log and at the last run of the localization tools; costs nothing where neither has changed, and else goes
        with the changes that are behind the one that was the last applied one, or were applied or undone since. To be called
        between two runs of a tool, so that both have their names.
        @param editor   the same one every time */
    void update(const QuorvaneEditor& editor);

    /** Those included that were undone and could be redone. */
    std::size_t size() const { return _ends.size(); }

    /** How many of the steps are applied. */
    std::size_t present() const { return _present; }

    /** What `ChangeManager::lastChangeIndex()` is when the first @p steps of the steps are applied. */
    Int lastChange(std::size_t steps) const { return steps ? _ends[steps - 1] - 1 : -1; }

    /** What a step does, to follow a verb. Valid until the next @ref update() ; made when it is asked for first. */
    Containers::StringView name(std::size_t step);

    /** @{ @name The step that would be undone or redone now; empty where there is none */
    Containers::StringView undoName() { return _present ? name(_present - 1) : Containers::StringView{}; }
    Containers::StringView redoName() { return _present != size() ? name(_present) : Containers::StringView{}; }
    /** @} */

private:
    struct Run {
        Int group;
        Containers::StringView name;
    };

    /** A name, and of what: an edit that merges may change places with the step of another value. */
    struct Name {
        bool isOf(const Change& change) const;

        Containers::String text;
        Containers::String path;
        bool hasOld = false;
        bool hasNew = false;
    };

    void learnRun(const QuorvaneEditor& editor);
    std::size_t unchanged(Int revision, std::size_t logSize) const;

    const ChangeManager* _changes = nullptr;
    const void* _lastRun = nullptr;
    Int _revision = -1;
    std::size_t _logSize = 0;

    /** How many changes of the log were applied. */
    std::size_t _applied = 0;
    std::size_t _present = 0;

    /** Of each step, the index behind its last change. */
    std::vector<Int> _ends;

    /** Of the steps, empty where not asked for. */
    std::vector<Name> _names;

    /** Of the tools in this project. */
    std::vector<Run> _runs;
};

}
