#pragma once

#include <string>

#include <EditorView.h>

#include "TreePane.h"
#include "ValuePane.h"

namespace InspectorPlugin {

/** The whole document: a tree to find a value in, and every value of what is selected there with a widget to edit it. */
class InspectorView: public QuorvaneEngine::EditorView {
public:
    explicit InspectorView(Corrade::PluginManager::AbstractManager& manager, const Containers::StringView& plugin);

    Containers::StringView title() override { return "Inspector"; }
    void draw() override;

private:
    void drawPanes();
    void drawValues();
    void drawHeader();
    bool drawPicture();
    void keepSelection();

    TreePane _tree;
    ValuePane _values;

    /** JSON Pointer of what is selected; empty before anything is. */
    std::string _selected;
};

}
