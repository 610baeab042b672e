#include "app/LayoutFile.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <string>
#include <vector>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/Format.h>

#include "document/JsonReader.h"

namespace QuorvaneEngine {

namespace {

using namespace Containers::Literals;
using Containers::StringView;

/** The library's own limits: the range of the numbers that it keeps, and columns of a table. */
constexpr Int SmallestNumber = -32768;
constexpr Int LargestNumber = 32767;
constexpr Int MostColumns = 512;
constexpr float LargestFactor = 1.0e6f;

/** Deeper ones come from nobody who drags windows about; the library recurses through them. */
constexpr std::size_t DeepestNode = 64;
constexpr std::size_t MostNodes = 1000;

constexpr StringView NodeFlags[]{"NoResize=1"_s, "CentralNode=1"_s, "NoTabBar=1"_s, "HiddenTabBar=1"_s,
    "NoWindowMenuButton=1"_s, "NoCloseButton=1"_s};

/** Takes one line apart. What it does not find it leaves where it is. */
class Reader {
public:
    explicit Reader(StringView line): _rest{line} {}

    bool atEnd() const { return _rest.isEmpty(); }
    void skipBlanks() { _rest = _rest.trimmedPrefix(" "_s); }

    bool take(StringView text) {
        if(!_rest.hasPrefix(text)) return false;
        _rest = _rest.exceptPrefix(text.size());
        return true;
    }

    bool takeHex(UnsignedInt& value) {
        if(!_rest.hasPrefix("0x"_s)) return false;
        std::size_t end = 2;
        while(end != _rest.size() && std::isxdigit(static_cast<unsigned char>(_rest[end]))) ++end;
        if(end == 2 || end > 10) return false;
        value = UnsignedInt(std::strtoul(taken(end).c_str(), nullptr, 16));
        return true;
    }

    bool takeInteger(Int& value, Int smallest, Int largest) {
        std::size_t end = _rest.hasPrefix('-');
        const std::size_t digits = end;
        while(end != _rest.size() && isDigit(_rest[end])) ++end;
        if(end == digits || end - digits > 9) return false;
        value = Int(std::strtol(taken(end).c_str(), nullptr, 10));
        return value >= smallest && value <= largest;
    }

    /** Two integers with a comma between. */
    bool takePair(Int smallest, Int largest) {
        Int value = 0;
        return takeInteger(value, smallest, largest) && take(","_s) && takeInteger(value, smallest, largest);
    }

    bool takeFactor() {
        std::size_t end = 0;
        while(end != _rest.size() && (isDigit(_rest[end]) || "+-.e"_s.contains(_rest[end]))) ++end;
        const std::string text = taken(end);
        char* parsed = nullptr;
        const float value = std::strtof(text.c_str(), &parsed);
        return !text.empty() && !*parsed && value >= 0.0f && value <= LargestFactor;
    }

private:
    static bool isDigit(char character) { return character >= '0' && character <= '9'; }

    std::string taken(std::size_t size) {
        std::string text{_rest.data(), size};
        _rest = _rest.exceptPrefix(size);
        return text;
    }

    StringView _rest;
};

/** A panel of the docking, or two that share its place. */
struct Node {
    UnsignedInt id = 0;
    std::size_t parent = 0;
    std::size_t depth = 0;
    Int children = 0;
    Int centres = 0;
    bool isRoot = false;
    bool isSpace = false;
    bool isSplit = false;
    bool isCentral = false;
};

/** The tree of docked panels, line by line. Reasons are empty where all is well. */
class DockTree {
public:
    StringView addLine(StringView line);

    /** Tells of a window that lies in a panel, which may come later. */
    void addWindow(UnsignedInt node) { _windows.push_back(node); }

    StringView problem(UnsignedInt dockSpace) const;

private:
    StringView add(Node node, UnsignedInt parent);
    const Node* find(UnsignedInt id) const;

    std::vector<Node> _nodes;
    std::vector<UnsignedInt> _windows;
};

bool readPlace(Reader& reader, UnsignedInt& parent) {
    if(reader.take(" Parent="_s))
        return reader.takeHex(parent) && parent && reader.take(" SizeRef="_s) && reader.takePair(1, LargestNumber);
    UnsignedInt window = 0;
    if(reader.take(" Window="_s) && (!reader.takeHex(window) || !window)) return false;
    return reader.take(" Pos="_s) && reader.takePair(SmallestNumber, LargestNumber) && reader.take(" Size="_s) &&
        reader.takePair(1, LargestNumber);
}

bool readFlags(Reader& reader, Node& node) {
    node.isSplit = reader.take(" Split=X"_s) || reader.take(" Split=Y"_s);
    for(const StringView flag: NodeFlags) {
        const bool isSet = reader.take(" "_s + flag);
        if(isSet && flag == "CentralNode=1"_s) node.isCentral = true;
    }
    UnsignedInt selected = 0;
    return (!reader.take(" Selected="_s) || reader.takeHex(selected)) && reader.atEnd();
}

StringView DockTree::addLine(const StringView line) {
    constexpr StringView Unknown = "this is no panel of a layout"_s;
    Reader reader{line};
    reader.skipBlanks();
    Node node;
    node.isSpace = reader.take("DockSpace"_s);
    if(!node.isSpace && !reader.take("DockNode"_s)) return Unknown;
    reader.skipBlanks();
    UnsignedInt parent = 0;
    if(!reader.take("ID="_s) || !reader.takeHex(node.id) || !node.id || !readPlace(reader, parent) ||
        !readFlags(reader, node))
        return Unknown;
    node.isRoot = !parent;
    return add(node, parent);
}

StringView DockTree::add(Node node, const UnsignedInt parent) {
    if(find(node.id)) return "this panel is there twice"_s;
    const std::size_t index = _nodes.size();
    if(index == MostNodes) return "there are too many panels"_s;
    if(!node.isRoot) {
        const Node* const found = find(parent);
        if(!found) return "this panel lies in one that is not there"_s;
        if(node.isSpace) return "a dock space lies in a panel"_s;
        node.parent = std::size_t(found - _nodes.data());
        node.depth = found->depth + 1;
        if(node.depth > DeepestNode) return "panels lie in each other too deep"_s;
        ++_nodes[node.parent].children;
    }
    _nodes.push_back(node);
    if(!node.isCentral) return {};
    std::size_t root = index;
    while(!_nodes[root].isRoot) root = _nodes[root].parent;
    return ++_nodes[root].centres == 1 ? StringView{} : "there are two panels in the centre"_s;
}

const Node* DockTree::find(const UnsignedInt id) const {
    const auto found = std::find_if(_nodes.begin(), _nodes.end(), [id](const Node& node) { return node.id == id; });
    return found == _nodes.end() ? nullptr : &*found;
}

StringView DockTree::problem(const UnsignedInt dockSpace) const {
    const Node* const space = find(dockSpace);
    if(!space || !space->isSpace || !space->centres) return "has no dock space of the editor"_s;
    for(const Node& node: _nodes) {
        if(node.children != (node.isSplit ? 2 : 0)) return "has a panel that is not split in two"_s;
        if(node.isCentral && node.isSplit) return "has a centre that is split"_s;
    }
    for(const UnsignedInt id: _windows) {
        const Node* const node = find(id);
        if(!node || node->isSplit) return "has a window in a panel that cannot hold it"_s;
    }
    return {};
}

/** Whether a line is a word, "=" and numbers, of which the library takes those that it knows. */
bool isWindowLine(const StringView line) {
    const StringView equals = line.find('=');
    if(equals.isEmpty() || equals.begin() == line.begin() || line.size() > 64) return false;
    for(const char letter: line.prefix(equals.begin()))
        if(!std::isalpha(static_cast<unsigned char>(letter))) return false;
    for(const char letter: line.suffix(equals.end()))
        if(!std::isxdigit(static_cast<unsigned char>(letter)) && !"x,.-"_s.contains(letter)) return false;
    return equals.end() != line.end();
}

bool isColumnValue(Reader& reader) {
    Int integer = 0;
    UnsignedInt id = 0;
    if(reader.take("Width="_s)) return reader.takeInteger(integer, 0, LargestNumber);
    if(reader.take("Weight="_s)) return reader.takeFactor();
    if(reader.take("Visible="_s)) return reader.takeInteger(integer, 0, 1);
    if(reader.take("Order="_s)) return reader.takeInteger(integer, 0, MostColumns - 1);
    if(reader.take("ID="_s) || reader.take("UserID="_s)) return reader.takeHex(id);
    return reader.take("Sort="_s) && reader.takeInteger(integer, 0, MostColumns - 1) &&
        (reader.take("v"_s) || reader.take("^"_s));
}

bool isTableLine(const StringView line, const Int columns) {
    Reader reader{line};
    Int value = 0;
    if(reader.take("RefScale="_s)) return reader.takeFactor() && reader.atEnd();
    if(reader.take("LastUsed="_s)) return reader.takeInteger(value, 0, 99999999) && reader.atEnd();
    if(!reader.take("Column "_s)) return false;
    if(!reader.takeInteger(value, 0, columns - 1)) return false;
    while(reader.skipBlanks(), !reader.atEnd())
        if(!isColumnValue(reader)) return false;
    return true;
}

/** Goes through the lines of a layout, section by section. */
class Lines {
public:
    /** @return what is wrong with the line */
    StringView read(const StringView line) {
        if(line.hasPrefix('[')) return begin(line);
        switch(_section) {
        case Section::None: return "this is no layout"_s;
        case Section::Unknown: return {};
        case Section::Docking: return _tree.addLine(line);
        case Section::Window: return readWindow(line);
        case Section::Table: return isTableLine(line, _columns) ? StringView{} : "this is no property of a table"_s;
        }
        return {};
    }

    const DockTree& tree() const { return _tree; }

private:
    enum class Section : UnsignedShort { None, Unknown, Docking, Window, Table };

    StringView begin(const StringView line) {
        const StringView middle = line.find("]["_s);
        if(middle.isEmpty() || !line.hasSuffix(']')) return "this is no heading of a section"_s;
        const StringView type = line.prefix(middle.begin()).exceptPrefix(1);
        const StringView name = line.suffix(middle.end()).exceptSuffix(1);
        _section = Section::Unknown;
        if(type == "Window"_s) _section = Section::Window;
        else if(type == "Docking"_s && name == "Data"_s) _section = Section::Docking;
        else if(type == "Table"_s) return beginTable(name);
        return {};
    }

    StringView readWindow(const StringView line) {
        constexpr StringView Unknown = "this is no property of a window"_s;
        if(!isWindowLine(line)) return Unknown;
        Reader reader{line};
        if(!reader.take("DockId="_s)) return {};
        UnsignedInt node = 0;
        Int order = 0;
        if(!reader.takeHex(node) || (reader.take(","_s) && !reader.takeInteger(order, -1, LargestNumber)) ||
            !reader.atEnd())
            return Unknown;
        if(node) _tree.addWindow(node);
        return {};
    }

    StringView beginTable(const StringView name) {
        Reader reader{name};
        UnsignedInt id = 0;
        _section = Section::Table;
        const bool isTable =
            reader.takeHex(id) && reader.take(","_s) && reader.takeInteger(_columns, 1, MostColumns - 1);
        return isTable && reader.atEnd() ? StringView{} : "this is no heading of a table"_s;
    }

    Section _section = Section::None;
    Int _columns = 0;
    DockTree _tree;
};

bool isPlainText(const StringView text) {
    for(const char letter: text)
        if(static_cast<unsigned char>(letter) < ' ' && letter != '\n' && letter != '\r') return false;
    return JsonReader::isUtf8(text);
}

}

Containers::String layoutProblem(const StringView text, const UnsignedInt dockSpace) {
    if(text.trimmed().isEmpty()) return "is empty"_s;
    if(!isPlainText(text)) return "is no text"_s;
    if(!text.hasSuffix('\n')) return "ends in the middle of a line"_s;
    Lines lines;
    std::size_t number = 0;
    for(const StringView line: text.split('\n')) {
        ++number;
        // Comments are the user's, and a line may end as another system's do.
        const StringView withoutEnd = line.trimmedSuffix("\r"_s);
        if(withoutEnd.isEmpty() || withoutEnd.hasPrefix(';')) continue;
        if(const StringView problem = lines.read(withoutEnd); !problem.isEmpty())
            return Corrade::Utility::format("{}: {}", number, problem);
    }
    return lines.tree().problem(dockSpace);
}

}
