#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace QuorvaneEngine {

/** How a file of JSON is laid out. */
struct JsonLayout {
    std::string mark = {};
    std::string newLine = "\n";
    std::string indent = "  ";
    std::string colon = ": ";
    /** Whether names are written by "\u" where they may be. */
    bool isEscaped = false;
};

/** A value of a JSON document, as plainly as can be. */
struct JsonModel {
    enum class Kind { Scalar, Object, Array } kind = Kind::Object;
    /** A scalar as JSON writes it. */
    std::string text = {};
    /** Members or elements. */
    struct Child;
    std::vector<Child> children;

    static JsonModel scalar(std::string text);

    /** Whether it stands for a text that is not there. */
    bool isMissing() const { return kind == Kind::Scalar && (text == "null" || text == "\"\""); }

    /** Whether it is a text, be it one that is not there. */
    bool isText() const { return kind == Kind::Scalar && (text[0] == '"' || text == "null"); }

    JsonModel* member(const std::string& name);

    std::string printed(const JsonLayout& layout = {}, std::size_t depth = 0) const;

    /** A whole file. */
    std::string file(const JsonLayout& layout = {}) const { return layout.mark + printed(layout) + layout.newLine; }

    /** Takes out what an export leaves out: texts that are missing, and containers that hold nothing else.
        @return whether something is left of this value */
    bool leaveOut();
};

struct JsonModel::Child {
    /** As it is, without quotation marks; empty for an element. */
    std::string name;
    JsonModel value;
};

inline JsonModel JsonModel::scalar(std::string text) { return {Kind::Scalar, std::move(text), {}}; }

inline JsonModel* JsonModel::member(const std::string& name) {
    const auto found =
        std::find_if(children.begin(), children.end(), [&](const Child& child) { return child.name == name; });
    return kind == Kind::Object && found != children.end() ? &found->value : nullptr;
}

/** A text as JSON writes it. */
inline std::string quoted(const std::string& text, const bool isEscaped = false) {
    const std::string escaped = "\"\\\b\f\n\r\t";
    std::string out{'"'};
    for(const char c: text) {
        const auto byte = static_cast<unsigned char>(c);
        if(isEscaped ? byte < 0x80 : byte < 0x20 && escaped.find(c) == std::string::npos) {
            out += "\\u00";
            for(const unsigned digit: {byte / 16u, byte % 16u}) out += "0123456789ABCDEF"[digit];
        } else if(const std::size_t at = escaped.find(c); at != std::string::npos) {
            out += '\\';
            out += "\"\\bfnrt"[at];
        } else out += c;
    }
    return out + '"';
}

inline std::string JsonModel::printed(const JsonLayout& layout, const std::size_t depth) const {
    if(kind == Kind::Scalar) return text;
    const std::string brackets = kind == Kind::Object ? "{}" : "[]";
    if(children.empty()) return brackets;
    const auto newLine = [&](const std::size_t level) {
        std::string out = layout.newLine;
        for(std::size_t i = 0; i != level; ++i) out += layout.indent;
        return out;
    };
    std::string out{brackets[0]};
    for(std::size_t i = 0; i != children.size(); ++i) {
        out += (i ? "," : "") + newLine(depth + 1);
        if(kind == Kind::Object) out += quoted(children[i].name, layout.isEscaped) + layout.colon;
        out += children[i].value.printed(layout, depth + 1);
    }
    return out + newLine(depth) + brackets[1];
}

inline bool JsonModel::leaveOut() {
    if(kind == Kind::Scalar) return !isMissing();
    if(children.empty()) return true;
    for(Child& child: children)
        if(!child.value.leaveOut()) child.value = scalar("null");
    const auto isNothing = [](const Child& child) { return child.value.isMissing(); };
    if(kind == Kind::Object) std::erase_if(children, isNothing);
    else
        while(!children.empty() && isNothing(children.back())) children.pop_back();
    return !children.empty();
}

/** A step from a container to what lies in it. */
struct JsonStep {
    std::string name;
    /** -1 for a member. */
    int element = -1;

    auto operator<=>(const JsonStep&) const = default;
    bool operator==(const JsonStep&) const = default;
};

using JsonPlace = std::vector<JsonStep>;

/** A scalar or an empty container, and where it lies. */
struct JsonLeaf {
    JsonPlace place;
    const JsonModel* value;
};

/** All leaves of a file in its order. */
inline std::vector<JsonLeaf> leavesOf(const JsonModel& file) {
    std::vector<JsonLeaf> leaves;
    JsonPlace place;
    const std::function<void(const JsonModel&)> visit = [&](const JsonModel& value) {
        for(std::size_t i = 0; i != value.children.size(); ++i) {
            const JsonModel::Child& child = value.children[i];
            place.push_back(value.kind == JsonModel::Kind::Array ? JsonStep{"", int(i)} : JsonStep{child.name, -1});
            if(child.value.children.empty()) leaves.push_back({place, &child.value});
            else visit(child.value);
            place.pop_back();
        }
    };
    visit(file);
    return leaves;
}

/** Puts a value at a place, with what is missing on the way. */
inline void put(JsonModel& file, const JsonPlace& place, const JsonModel& value) {
    JsonModel* at = &file;
    for(const JsonStep& step: place) {
        const auto kind = step.element < 0 ? JsonModel::Kind::Object : JsonModel::Kind::Array;
        if(at->kind != kind) *at = {kind, {}, {}};
        while(step.element >= 0 && at->children.size() <= std::size_t(step.element))
            at->children.push_back({"", JsonModel::scalar("null")});
        if(step.element < 0 && !at->member(step.name)) at->children.push_back({step.name, JsonModel::scalar("null")});
        at = step.element < 0 ? at->member(step.name) : &at->children[std::size_t(step.element)].value;
    }
    *at = value;
}

}
