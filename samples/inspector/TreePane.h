#pragma once

#include <cstddef>
#include <map>
#include <string>

#include <Corrade/Containers/Array.h>

#include "DocumentTree.h"

namespace InspectorPlugin {

/** The left side: a search bar, and below it the tree of the document. */
class TreePane {
public:
    TreePane();

    /** Draws into the current window.
        @param selected     the path that is shown as selected; set to what the user clicks */
    void draw(ProjectFile& project, std::string& selected);

    /** Unfolds and scrolls so that a value can be seen, with the next frame. */
    void reveal(const std::string& path);

private:
    const DocumentTree::Row& row(std::size_t index);
    void drawRow(const DocumentTree::Row& row, std::string& selected);

    Containers::Array<char> _search;
    DocumentTree _tree;

    /** Rows that were shown since the tree was read, so that a frame makes only those that come into view. */
    std::map<std::size_t, DocumentTree::Row> _rows;

    std::string _revealed;
};

}
