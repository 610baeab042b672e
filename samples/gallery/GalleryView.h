#pragma once

#include <string>
#include <vector>

#include <EditorView.h>

#include "Examples.h"

namespace Gallery {

/** Shows every widget of the toolkit beside the lines that draw it. The values that they edit are the members of "/gallery" of
    the project, where they are put on demand. */
class GalleryView: public EditorView {
public:
    explicit GalleryView(Corrade::PluginManager::AbstractManager& manager,
        const Containers::StringView& plugin);

    Containers::StringView title() override { return "Gallery"; }
    void draw() override;

private:
    void drawFamily(std::size_t first, std::size_t last);
    void drawExample(const Example& example);

    /** Whether the project has a value that an example can be drawn with. */
    bool hasValue(const Example& example) const;

    /** Sets the value of an example to the one that the gallery has for it, or all where it is null, as one change. */
    void setValues(const char* key);

    ExampleState _state;

    /** The lines of the examples, in their order. */
    std::vector<std::string> _code;
};

}
