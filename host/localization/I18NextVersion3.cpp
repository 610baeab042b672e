#include "I18NextVersion3.h"

#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Format.h>

#include "Catalogue.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/** Arabic has as many forms; a set of more is a list. */
constexpr UnsignedInt MaxForms = 6;

struct Forms {
    Containers::StringView first;
    UnsignedInt count = 0;

    void add(const Containers::StringView key, const UnsignedInt forms) {
        if(count == 0) first = key;
        count += forms;
    }
};

const CatalogueEntry* textOf(const Catalogue& catalogue, const Containers::StringView key) {
    const Int found = catalogue.find(key);
    if(found == -1 || catalogue.entries()[std::size_t(found)].value) return nullptr;
    return &catalogue.entries()[std::size_t(found)];
}

/** How many forms there are from this one on, 0 where they are no set. */
UnsignedInt numberedForms(const Catalogue& catalogue, const Containers::StringView first, bool& isCounted) {
    Containers::String key{first};
    UnsignedInt count = 0;
    for(; count <= MaxForms; ++count) {
        key.back() = char('0' + count);
        const CatalogueEntry* const form = textOf(catalogue, key);
        if(!form) break;
        isCounted = isCounted || form->text.contains("{{count"_s);
    }
    return count >= 2 && count <= MaxForms ? count : 0;
}

}

bool isVersion3Form(const Catalogue& catalogue, const Containers::StringView key) {
    if(key.hasSuffix("_plural"_s)) return textOf(catalogue, key.exceptSuffix(7));
    if(!catalogue.hasNumberedForms() || key.size() < 3 || key[key.size() - 2] != '_' || key.back() < '0') return false;
    bool isCounted = false;
    return UnsignedInt(key.back() - '0') < numberedForms(catalogue, key, isCounted);
}

void noticeVersion3(Catalogue& catalogue) {
    Forms plurals, numbered;
    bool isCounted = false;
    for(const CatalogueEntry& entry: catalogue.entries()) {
        if(entry.value) continue;
        if(entry.key.hasSuffix("_plural"_s)) {
            if(textOf(catalogue, entry.key.exceptSuffix(7))) plurals.add(entry.key, 1);
        } else if(entry.key.hasSuffix("_0"_s)) {
            if(const UnsignedInt count = numberedForms(catalogue, entry.key, isCounted)) numbered.add(entry.key, count);
        }
    }
    if(isCounted && numbered.count) {
        plurals.add(numbered.first, numbered.count);
        catalogue.setNumberedForms();
    }
    if(plurals.count == 0) return;
    catalogue.addNotice(plurals.first,
        plurals.count == 1
            ? Containers::
                  String{"looks like a plural form of version 3 of the format: it is an ordinary key, which version 4 "
                         "does not choose by number"_s}
            : Corrade::Utility::format(
                  "looks like a plural form of version 3 of the format, as {} more do: they are ordinary "
                  "keys, which version 4 does not choose by number",
                  plurals.count - 1));
}

}
