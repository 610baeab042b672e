#pragma once

#include <vector>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "app/ViewCondition.h"

namespace QuorvaneEngine {

class EditorView;
class ModuleLoader;

/** The views that modules contribute, for the open project. */
class QUORVANE_API ViewSet {
public:
    /** Loads all modules and binds their views to the current GUI context.
        @param modules      must outlive this object, as must the others
        @param conditions   not copied */
    explicit ViewSet(ModuleLoader& modules, QuorvaneEditorApplication& application, EditorData& data,
        Containers::ArrayView<const ViewCondition> conditions);

    /** Takes leave of the views, which their modules go on to own. */
    ~ViewSet();

    ViewSet(const ViewSet&) = delete;
    ViewSet& operator=(const ViewSet&) = delete;

    /** Destroys every view and loads its module anew, so that nothing of the project that they have seen so far is left in
        them. Nothing of the modules may be in use: no job, no handler of changes. Identifiers and open flags stay. */
    void restart();

    /** Loads every module anew as its file is now; the views take their state over. */
    void reload();

    /** Looks whether the views' conditions hold, if the published revision has changed. */
    void checkConditions();

    /** Draws the open views, each of which gets its reason and a button to repair it drawn in its place while its condition does
        not hold. Between the begin and the end of a frame. */
    void draw();

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
    };

    void start();
    void drawReason(Entry& entry);

    ModuleLoader* _modules;
    QuorvaneEditorApplication* _application;
    EditorData* _data;
    Containers::ArrayView<const ViewCondition> _conditions;
    std::vector<Entry> _entries;
    const ViewCondition* _repair = nullptr;
    Int _checkedRevision = -1;
};

}
