#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include <QuorvaneEditor/Host.h>

#include "Hints.h"

namespace InspectorPlugin {

/** What the right side shows: the values below the selected one, with those of unfolded sections among them.

    Read anew when the document or what is unfolded changes, and kept for the frames between. */
class ValueRows {
public:
    struct Row {
        /** JSON Pointers of the value and of that which it is in. */
        std::string path;
        std::string parent;

        /** Its own part of the path, escaped: the name of the widget. */
        std::string token;

        /** What is shown of it: the key as it is in the document, the number of an element. */
        std::string label;

        /** For values that have no widget, and what a folded section holds. */
        std::string text;

        Widget widget = Widget::None;
        const Hint* hint = nullptr;

        /** Elements of an array. */
        std::size_t size = 0;

        /** Sections around it. */
        int depth = 0;
        bool isOpen = false;
    };

    /** @param selected     JSON Pointer of an object or array
        @return whether the rows were read anew */
    bool update(ProjectFile& project, const std::string& selected);

    const std::vector<Row>& rows() const { return _rows; }

    /** Folds a section or unfolds it, with the next @ref update() . */
    void toggle(const Row& section);

private:
    void read(const rapidjson::Value& value, const std::string& path, Containers::StringView member, int depth);
    void add(const rapidjson::Value& value, const std::string& parent, const std::string& label, const Hint* hint,
        int depth);

    std::vector<Row> _rows;
    std::set<std::string> _open;
    std::string _selected;
    Int _revision = -1;
};

}
