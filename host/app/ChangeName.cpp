#include "app/ChangeName.h"

#include <algorithm>
#include <vector>

#include <Corrade/Containers/Array.h>
#include <Corrade/Utility/Format.h>

#include "Change.h"
#include "PathParts.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/** From this many changes on it takes too long to see what they have in common. */
constexpr std::size_t MaxCompared = 1000;

constexpr std::size_t MaxKeySize = 40;

using Tokens = std::vector<Containers::StringView>;

/** Where entries of a kind of their own lie. Anywhere else they are the members of the root's members. */
struct Place {
    Containers::StringView prefix;

    /** What an entry of it is called. */
    Containers::StringView entry;

    /** What lies in it. */
    Containers::StringView all;
};

constexpr Place Places[]{
    {"/localization/terms/"_s, "term "_s, "terms"_s},
    {"/localization/strings/"_s, "source text of "_s, "source texts"_s},
    {"/languages/"_s, "language "_s, "languages"_s},
};
constexpr Containers::StringView Translations = "/localization/translations/"_s;

const Place* placeOf(Containers::StringView path) {
    for(const Place& place: Places)
        if(path.hasPrefix(place.prefix)) return &place;
    return nullptr;
}

Tokens split(Containers::StringView path) {
    Tokens tokens;
    for(const Containers::StringView token: path.split('/')) tokens.push_back(token);
    // What is before the first slash is no token.
    tokens.erase(tokens.begin());
    return tokens;
}

Containers::String shown(Containers::StringView token) {
    Containers::String text = unescaped(token);
    std::replace_if(
        text.begin(), text.end(), [](char byte) { return static_cast<unsigned char>(byte) < ' ' || byte == '\x7f'; },
        ' ');
    if(text.size() <= MaxKeySize) return text;
    std::size_t size = MaxKeySize;
    // No character is cut in its middle.
    while(size && (text[size] & '\xc0') == '\x80') --size;
    return text.prefix(size) + "..."_s;
}

/** What is below an entry, with slashes between. */
Containers::String rest(const Tokens& tokens, std::size_t first) {
    Containers::String text = shown(tokens[first]);
    for(std::size_t i = first + 1; i < tokens.size(); ++i) text = text + "/"_s + shown(tokens[i]);
    return text;
}

/** The name of an entry, whose key is the token at @p key . */
Containers::String entryName(Containers::StringView path, const Tokens& tokens, std::size_t key) {
    if(path.hasPrefix(Translations)) return "translation of " + shown(tokens[3]) + " (" + shown(tokens[2]) + ")";
    if(const Place* const place = placeOf(path)) return place->entry + shown(tokens[key]);
    return shown(tokens[key]) + " in " + shown(tokens[key - 1]);
}

/** Which token of a path is the key of the entry that it leads to. */
std::size_t keyIndex(Containers::StringView path) {
    return path.hasPrefix(Translations) ? 3 : path.hasPrefix("/localization/"_s) ? 2 : 1;
}

Containers::String valueName(Containers::StringView path) {
    const Tokens tokens = split(path);
    const std::size_t key = keyIndex(path);
    if(tokens.size() <= key) {
        // A container as a whole.
        if(tokens.size() == 3) return "translations (" + shown(tokens[2]) + ")";
        return shown(tokens.back());
    }
    const bool isEntry = tokens.size() == key + 1;
    if(path.hasPrefix(Translations)) {
        const bool isText = isEntry || (tokens.size() == 5 && tokens[4] == "text"_s);
        const Containers::String translation = entryName(path, tokens, key);
        return isText ? translation : rest(tokens, key + 1) + " of " + translation;
    }
    if(isEntry) return entryName(path, tokens, key);
    const bool isLanguage = path.hasPrefix("/languages/"_s);
    return rest(tokens, key + 1) + " of " + (isLanguage ? "language "_s : ""_s) + shown(tokens[key]);
}

/** The path of the container of the entry, or of the entry, that a value belongs to; empty where it belongs to none. */
Containers::StringView upTo(Containers::StringView path, std::size_t token) {
    std::size_t slashes = 0;
    for(std::size_t i = 0; i != path.size(); ++i)
        if(path[i] == '/' && slashes++ == token + 1) return path.prefix(i);
    return slashes == token + 1 ? path : Containers::StringView{};
}

bool allIn(Containers::ArrayView<const Change> changes, Containers::StringView container) {
    return !container.isEmpty() && std::all_of(changes.begin(), changes.end(), [&](const Change& change) {
        const Containers::StringView path = change.path;
        return path.hasPrefix(container) && (path.size() == container.size() || path[container.size()] == '/');
    });
}

}

Containers::String changeName(const Change& change) {
    const Containers::StringView verb = !change.newValue ? "removal of "_s
        : change.oldValue                                ? "change of "_s
                                                         : "creation of "_s;
    return verb + valueName(change.path);
}

Containers::String changeName(Containers::ArrayView<const Change> changes) {
    if(changes.size() == 1) return changeName(changes.front());
    Containers::String count = Corrade::Utility::format("{} changes", changes.size());
    if(changes.size() > MaxCompared) return count;
    const Containers::StringView path = changes.front().path;
    const std::size_t key = keyIndex(path);
    const Containers::StringView entry = upTo(path, key);
    if(allIn(changes, entry)) {
        const Tokens tokens = split(entry);
        const bool isPlain = key == 1 && !placeOf(path);
        return count + " of " + (isPlain ? shown(tokens[key]) : entryName(path, tokens, key));
    }
    const Containers::StringView container = upTo(path, key - 1);
    if(!allIn(changes, container)) return count;
    const Tokens tokens = split(container);
    if(path.hasPrefix(Translations)) return count + " in translations (" + shown(tokens.back()) + ")";
    const Place* const place = placeOf(path);
    return count + " in " + (place ? Containers::String{place->all} : shown(tokens.back()));
}

}
