#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <QuorvaneEditor/Host.h>

namespace InspectorPlugin {

using namespace QuorvaneEngine;

/** The rows of the tree on the left: the objects and arrays of the document, as far as they are unfolded, or those that a search
    finds.

    A row is made when it is asked for. Unfolding a value costs a look at the types of its members, and so does a change of the
    document for each that is unfolded, whatever they hold; a search looks at the whole document, once for each change. */
class DocumentTree {
public:
    struct Row {
        /** JSON Pointer. */
        std::string path;

        /** As in the document, not escaped. */
        std::string key;

        /** The "name" of an object, empty where it has none. */
        std::string name;

        /** Members or elements. */
        std::size_t size = 0;

        int depth = 0;
        bool isOpen = false;

        /** Whether there is something to unfold. */
        bool hasChildren = false;
    };

    /** Reads the document where it, the search or what is unfolded is not what it was.
        @param project  must not change until the last row is drawn
        @param search   is looked for in keys and names without regard to case; empty for the tree
        @return whether the rows are other ones now */
    bool update(ProjectFile& project, const std::string& search);

    std::size_t size() const;

    /** Belongs to the caller; the object itself reads the document, which must be what it was at the last @ref update() . */
    Row row(std::size_t index) const;

    void setOpen(const std::string& path, bool open);

    /** Unfolds everything above a value. */
    void reveal(const std::string& path);

    /** The row of a value, or @ref size() where it has none. A value is found below values that are unfolded. */
    std::size_t rowOf(const std::string& path) const;

private:
    /** What is unfolded, by token. */
    struct Open {
        std::map<std::string, Open> children;
    };

    struct Node;

    static std::unique_ptr<Node> read(
        ProjectFile& project, const rapidjson::Value& value, std::string path, const Open& open, int depth);
    void find(const rapidjson::Value& value, const std::string& path, int depth, std::string_view search);

    Open _open;
    std::shared_ptr<const Node> _root;
    std::vector<Row> _found;
    std::string _search;
    Int _revision = -1;
    bool _isStale = true;
};

/** Whether a member can be edited by the widgets of the toolkit: a key of no bytes is no name for them, and one with a zero byte ends
    there. */
bool isReachable(std::string_view key);

/** A JSON Pointer to a member or element. */
std::string childPath(const std::string& path, std::string_view key);

}
