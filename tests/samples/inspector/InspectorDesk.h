#pragma once

#include <filesystem>
#include <string>

#include "QuorvaneEditor/JobSystem.h"
#include "app/EditorFrame.h"
#include "app/MessageLog.h"
#include "document/EditorSession.h"
#include "modules/ModuleLoader.h"

struct ImGuiWindow;

namespace QuorvaneEngine::Test {

/** A copy of the sample project in a folder for temporary files, gone with the object. */
class SampleCopy {
public:
    /** @param name     of the copy's own folder; empty for one that no other process has */
    explicit SampleCopy(const std::string& name);
    ~SampleCopy();
    SampleCopy(const SampleCopy&) = delete;
    SampleCopy& operator=(const SampleCopy&) = delete;

    std::filesystem::path folder;
};

/** The editor without its window, with the example view for its only module, on the sample project. Needs a GUI context, before whose
    frames it does what the editor does there. */
class InspectorDesk {
public:
    /** @param project  as for @ref SampleCopy() */
    explicit InspectorDesk(const std::string& project = {});

    /** The whole document as JSON text. */
    std::string document();

    /** Puts another document in place of the present one. */
    void load(const std::string& json);

    void draw() { frame.draw(); }

    SampleCopy game;
    MessageLog log;
    JobSystem jobs{0};
    EditorSession session{&jobs};
    ModuleLoader modules{QUORVANE_INSPECTOR_DIR};
    EditorFrame frame;
};

/** @{ @name Where things are in the view; null or 0 where they are not drawn */

/** The region of the tree ("##tree") or of the values ("##rows"). */
ImGuiWindow* region(const char* name);

/** A row of the tree, by the path of its value. */
unsigned treeRow(const std::string& path);

/** What the items of a value's widget lie in, on the ID stack. */
unsigned scopeOf(const std::string& path);

/** An item of the widget of a value. */
unsigned widget(const std::string& path, const char* item = "##val");

/** The region around a widget that fills one: "##lines" or "##list". */
ImGuiWindow* around(const std::string& path, const char* name);

/** @} */

}
