#include "I18NextWriter.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <rapidjson/document.h>

#include "../document/JsonText.h"
#include "Catalogue.h"
#include "FileOrder.h"
#include "JsonOutput.h"
#include "KeptValues.h"
#include "TermKey.h"
#include "TermTree.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

class Writing {
public:
    Writing(const TermTree& tree, const TermTexts& texts, const Catalogue* const file)
        : _tree{tree}, _texts{texts}, _order{tree, file} {
        if(file) findNumbers(*file);
    }

    Containers::String run() {
        if(!members(TermTree::Root, 0)) _out.put("{}"_s);
        _out.put('\n');
        return _out.take();
    }

private:
    /** A number in the file that is there already. */
    struct Number {
        Int term;
        const rapidjson::Value* value;
        Containers::StringView spelling;
        bool operator<(const Number& other) const { return term < other.term; }
    };

    void findNumbers(const Catalogue& file) {
        for(std::size_t i = 0; i != file.entries().size(); ++i) {
            const CatalogueEntry& entry = file.entries()[i];
            if(!entry.value || !entry.value->IsNumber()) continue;
            UnsignedInt node = TermTree::Root;
            for(Containers::StringView rest = entry.key; node != TermTree::None && rest.data();)
                node = _tree.child(node, TermKey::takeSegment(rest, rest));
            if(node != TermTree::None) _numbers.push_back({_tree.node(node).term, entry.value, file.spelling(i)});
        }
        std::sort(_numbers.begin(), _numbers.end());
    }

    /** Writes what is at and below a node; false, and any part of it may be written, where there is nothing. */
    // As deep as keys have segments, which the tree limits.
    bool write(const UnsignedInt index, const std::size_t depth) {
        const TermTree::Node& node = _tree.node(index);
        if(node.term != -1) return leaf(node.term);
        return node.isArray ? elements(index, depth) : members(index, depth);
    }

    bool leaf(const Int term) {
        const std::size_t index = std::size_t(term);
        if(index < _texts.values.size() && _texts.values[index]) value(term, *_texts.values[index]);
        else if(index < _texts.texts.size() && !_texts.texts[index].isEmpty()) _out.putString(_texts.texts[index]);
        else return false;
        return true;
    }

    void value(const Int term, const rapidjson::Value& value) {
        if(const Containers::StringView spelling = spellingOf(value); !spelling.isEmpty()) return _out.put(spelling);
        const auto number = std::lower_bound(_numbers.begin(), _numbers.end(), Number{term, nullptr, {}});
        const bool isThere = number != _numbers.end() && number->term == term && isSameValue(*number->value, value);
        if(isThere && !number->spelling.isEmpty()) return _out.put(number->spelling);
        std::string text;
        appendJson(text, value);
        _out.put({text.data(), text.size()});
    }

    bool members(const UnsignedInt index, const std::size_t depth) {
        bool isEmpty = true;
        const auto write = [&](const UnsignedInt child) {
            const std::size_t size = _out.size();
            _out.put(isEmpty ? '{' : ',');
            _out.putNewLine(depth + 1);
            const TermTree::Node& node = _tree.node(child);
            if(node.isPlain) _out.putString(node.segment);
            else _out.putString(TermKey::memberName(node.segment));
            _out.put(": "_s);
            if(this->write(child, depth + 1)) isEmpty = false;
            else _out.truncate(size);
        };

        if(_order.isTrees())
            for(UnsignedInt i = _tree.node(index).firstChild; i != TermTree::None; i = _tree.node(i).next) write(i);
        else {
            const std::size_t begin = _siblings.size();
            for(UnsignedInt i = _tree.node(index).firstChild; i != TermTree::None; i = _tree.node(i).next)
                _siblings.push_back(i);
            const std::size_t end = _siblings.size();
            _order.sort(_siblings.data() + begin, end - begin);
            for(std::size_t i = begin; i != end; ++i) write(_siblings[i]);
            _siblings.resize(begin);
        }
        if(!isEmpty) close('}', depth);
        return !isEmpty;
    }

    bool elements(const UnsignedInt index, const std::size_t depth) {
        std::vector<std::pair<Int, UnsignedInt>> children;
        for(UnsignedInt i = _tree.node(index).firstChild; i != TermTree::None; i = _tree.node(i).next)
            children.emplace_back(TermKey::elementIndex(_tree.node(i).segment), i);
        std::sort(children.begin(), children.end());

        Int next = 0;
        for(const auto& [element, child]: children) {
            const std::size_t size = _out.size();
            for(Int i = next; i <= element; ++i) {
                _out.put(i == 0 ? '[' : ',');
                _out.putNewLine(depth + 1);
                if(i != element) _out.put("null"_s);
            }
            if(write(child, depth + 1)) next = element + 1;
            else _out.truncate(size);
        }
        if(next != 0) close(']', depth);
        return next != 0;
    }

    void close(const char bracket, const std::size_t depth) {
        _out.putNewLine(depth);
        _out.put(bracket);
    }

    const TermTree& _tree;
    const TermTexts& _texts;
    FileOrder _order;
    /** By terms. */
    std::vector<Number> _numbers;
    /** Of all branches that are being written, the innermost last. */
    std::vector<UnsignedInt> _siblings;
    JsonOutput _out;
};

}

Containers::String writeI18Next(const TermTree& tree, const TermTexts& texts, const Catalogue* const order) {
    return Writing{tree, texts, order}.run();
}

}
