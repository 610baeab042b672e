#include "I18NextWriter.h"

#include <algorithm>
#include <vector>

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "Catalogue.h"
#include "TermKey.h"
#include "TermTree.h"

namespace QuorvaneEngine {

namespace {

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void writeText(Writer& writer, const Containers::StringView text) {
    writer.String(text.isEmpty() ? "" : text.data(), rapidjson::SizeType(text.size()));
}

/** The children of a node in the order that they are written in. */
std::vector<UnsignedInt> orderedChildren(
    const TermTree& tree, const UnsignedInt node, const TermTree& existing, const UnsignedInt existingNode) {
    std::vector<UnsignedInt> kept;
    if(existingNode != TermTree::None)
        for(UnsignedInt i = existing.node(existingNode).firstChild; i != TermTree::None; i = existing.node(i).next) {
            const UnsignedInt child = tree.child(node, existing.node(i).segment);
            if(child != TermTree::None) kept.push_back(child);
        }

    // A run of new children follows the old one that it stands behind in the tree; -1 for those before all old ones.
    std::vector<UnsignedInt> ordered;
    std::vector<std::vector<UnsignedInt>> runs(kept.size() + 1);
    std::vector<std::pair<UnsignedInt, std::size_t>> places;
    for(std::size_t i = 0; i != kept.size(); ++i) places.emplace_back(kept[i], i + 1);
    std::sort(places.begin(), places.end());
    std::size_t run = 0;
    for(UnsignedInt i = tree.node(node).firstChild; i != TermTree::None; i = tree.node(i).next) {
        const auto place = std::lower_bound(places.begin(), places.end(), std::pair{i, std::size_t{}});
        if(place != places.end() && place->first == i) run = place->second;
        else runs[run].push_back(i);
    }
    ordered = std::move(runs[0]);
    for(std::size_t i = 0; i != kept.size(); ++i) {
        ordered.push_back(kept[i]);
        ordered.insert(ordered.end(), runs[i + 1].begin(), runs[i + 1].end());
    }
    return ordered;
}

struct Nesting {
    const Catalogue& catalogue;
    const TermTree& tree;
    const TermTree& existing;
    Writer& writer;

    // As deep as keys have segments, which the tree limits.
    void write(const UnsignedInt node, const UnsignedInt existingNode) {
        if(tree.node(node).term != -1) writeText(writer, catalogue.entries()[std::size_t(tree.node(node).term)].text);
        else if(tree.node(node).isArray) writeElements(node, existingNode);
        else writeMembers(node, existingNode);
    }

    void writeMembers(const UnsignedInt node, const UnsignedInt existingNode) {
        writer.StartObject();
        for(const UnsignedInt child: orderedChildren(tree, node, existing, existingNode)) {
            const Containers::StringView segment = tree.node(child).segment;
            const Containers::String name = TermKey::memberName(segment);
            writer.Key(name.data(), rapidjson::SizeType(name.size()));
            write(child, counterpart(existingNode, segment));
        }
        writer.EndObject();
    }

    void writeElements(const UnsignedInt node, const UnsignedInt existingNode) {
        std::vector<std::pair<Int, UnsignedInt>> elements;
        for(UnsignedInt i = tree.node(node).firstChild; i != TermTree::None; i = tree.node(i).next)
            elements.emplace_back(TermKey::elementIndex(tree.node(i).segment), i);
        std::sort(elements.begin(), elements.end());

        writer.StartArray();
        Int next = 0;
        for(const auto& [index, child]: elements) {
            for(; next < index; ++next) writer.Null();
            write(child, counterpart(existingNode, tree.node(child).segment));
            ++next;
        }
        writer.EndArray();
    }

    UnsignedInt counterpart(const UnsignedInt existingNode, const Containers::StringView segment) const {
        return existingNode == TermTree::None ? existingNode : existing.child(existingNode, segment);
    }
};

void insertAll(TermTree& tree, const Catalogue& catalogue, const bool withoutText) {
    Int other = -1;
    for(std::size_t i = 0; i != catalogue.entries().size(); ++i)
        if(withoutText || !catalogue.entries()[i].text.isEmpty())
            tree.insert(catalogue.entries()[i].key, Int(i), other);
}

}

Containers::String writeI18Next(const Catalogue& catalogue, const Catalogue* const order) {
    TermTree tree;
    insertAll(tree, catalogue, false);
    TermTree existing;
    if(order) insertAll(existing, *order, true);

    rapidjson::StringBuffer buffer;
    Writer writer{buffer};
    writer.SetIndent(' ', 2);
    Nesting{catalogue, tree, existing, writer}.write(TermTree::Root, TermTree::Root);
    buffer.Put('\n');
    return Containers::String{buffer.GetString(), buffer.GetSize()};
}

}
