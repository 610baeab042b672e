#pragma once

#include <vector>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "app/ViewCondition.h"

namespace QuorvaneEngine {

class AbstractModule;
class EditorView;
class ModuleLoader;

/** The views that modules contribute, for the open project. */
class QUORVANE_API ViewSet {
public:
    /** Loads all modules but those that are left out. Their views are made by the first @ref restart() .
        @param modules      must outlive this object, as must the others
        @param conditions   not copied */
    explicit ViewSet(ModuleLoader& modules, QuorvaneEditorApplication& application, EditorData& data,
        Containers::ArrayView<const ViewCondition> conditions);

    /** Takes leave of the views, which their modules go on to own. */
    ~ViewSet();

    ViewSet(const ViewSet&) = delete;
    ViewSet& operator=(const ViewSet&) = delete;

    /** Makes a fresh view of every module, bound to the current GUI context. Views that are there are destroyed and their modules
        loaded anew, so that nothing of the project that they have seen so far is left in them; a library that cannot be taken
        out of the process is a warning of the loader's. Their subscriptions end. Nothing else of the modules may be in use: no job,
        no handler of changes.
        Identifiers and open flags stay. */
    void restart();

    /** Makes one view afresh, under the same conditions.
        @param title    of the view; nothing happens where no view has it */
    void restart(Containers::StringView title);

    /** Loads every module anew as its file is now; the views take their state over. */
    void reload();

    /** Loads one module anew as its file is now, or for the first time where it could not be loaded before. Its view keeps its
        identifier, window and open flag, and is bound as it was; what it keeps for itself starts afresh. Nothing else of the
        module may be in use.
        @return whether it is loaded */
    bool reload(Containers::StringView module);

    /** Looks whether the views' conditions hold, if the published revision has changed. A reason that was not there before is
        printed as warnings, one for each of its lines: `project.json: <line>`. */
    void checkConditions();

    /** Draws the open views, each of which gets its reason and a button to repair it drawn in its place while its condition does
        not hold. Scopes and flags of the toolkit that a view leaves open are closed, which is a warning, once. Between the begin and
        the end of a frame. */
    void draw();

    /** Has the first view that can show a value of the project do so, opened and in front of the others from the next frame on. Views
        of modules from before they could be asked are not. Between two frames.
        @param path     JSON Pointer (RFC 6901)
        @return whether there is such a view */
    bool show(Containers::StringView path);

    /** Why a view is not drawn; empty when it is. */
    Containers::StringView reason(UnsignedInt view) const;

    std::size_t size() const { return _entries.size(); }

    /** The condition whose repair was asked for since the last call, null when there is none. */
    const ViewCondition* takeRepair();

private:
    struct Entry {
        Containers::String module;
        EditorView* view = nullptr;
        const ViewCondition* failed = nullptr;
        Containers::String reason;
        bool isLeakTold = false;

        /** Whether the view has drawn since it was made. */
        bool isProven = false;

        /** Whether the next frame brings its window to the front. */
        bool isRaised = false;
    };

    AbstractModule* load(Containers::StringView name);
    void endSubscriptions(const Entry& entry);
    void start(Entry& entry);
    void stop(Entry& entry);
    void reload(Entry& entry);
    void drawView(Entry& entry);
    void drawReason(Entry& entry);

    ModuleLoader* _modules;
    QuorvaneEditorApplication* _application;
    EditorData* _data;
    Containers::ArrayView<const ViewCondition> _conditions;
    std::vector<Entry> _entries;
    const ViewCondition* _repair = nullptr;
    Int _checkedRevision = -1;
    bool _started = false;
};

}
