#pragma once

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>

#include <vector>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** A place in a text that the application fills: `{{name}}`, `{{- name}}`, `{{name, format}}`. */
struct Placeholder {
    /** As it is written, with its braces. */
    Containers::StringView text;

    /** Of the value, dots included, as in `user.name`; never empty. */
    Containers::StringView name;

    /** What follows the first comma, as in `currency(USD)`; formats may hold further commas. */
    Containers::StringView format;

    /** Whether the value is put in as it is (`{{- name}}`), without the HTML escapes that others get. */
    bool isUnescaped = false;
};

/** A place in a text that takes another text: `$t(key)`, `$t(key, { "count": {{n}} })`, `$t(key, uppercase)`. */
struct Nesting {
    /** As it is written, with its brackets. */
    Containers::StringView text;

    /** Of the other text; may be empty, and may hold placeholders. The library does not look up what `$t(key , {...})`
        means without that blank, so it is part of the key here, too. */
    Containers::StringView key;
};

/** What the i18next library replaces in a text of i18next JSON v4, with its own delimiters.

    As in the library, what is unbalanced is plain text; a placeholder stands on one line; a nesting may hold brackets one level
    deep and any characters in quotes. A placeholder without a name, which the library leaves as it is, is plain text, too.
    Takes time in proportion to the text; in a text of many nestings without an end, made to be slow, those far behind count as
    plain text. */
class QUORVANE_API Placeholders {
public:
    Placeholders();
    explicit Placeholders(Containers::StringView text);
    ~Placeholders();

    /** Reads another text, in the memory of the one before.
        @param text     must outlive what is read */
    void read(Containers::StringView text);

    /** In the order of the text; those inside a nesting, too. */
    Containers::ArrayView<const Placeholder> placeholders() const {
        return {_placeholders.data(), _placeholders.size()};
    }

    /** In the order of the text. */
    Containers::ArrayView<const Nesting> nestings() const { return {_nestings.data(), _nestings.size()}; }

    bool isEmpty() const { return _placeholders.empty() && _nestings.empty(); }

private:
    void readPlaceholders(Containers::StringView text);
    void readNestings(Containers::StringView text);

    std::vector<Placeholder> _placeholders;
    std::vector<Nesting> _nestings;
};

}
