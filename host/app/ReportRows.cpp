#include "app/ReportRows.h"

#include <algorithm>
#include <numeric>

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Utils.h"

namespace QuorvaneEngine {

namespace {

using Line = LocalizationReport::Line;

/** Texts that lines share lie at one place. */
bool isSame(Containers::StringView a, Containers::StringView b) { return a.data() == b.data() && a.size() == b.size(); }

/** Whether texts contain another one, for texts that often are the one that was asked for before. */
class Search {
public:
    explicit Search(Containers::StringView text): _text{text} {}

    bool finds(Containers::StringView text) {
        if(isSame(text, _last)) return _lastFound;
        _last = text;
        return _lastFound = Utils::caseInsensitiveSearch(text, _text) != -1;
    }

private:
    Containers::StringView _text;
    Containers::StringView _last;
    bool _lastFound = false;
};

/** For each language and for none whether its name or code contains a text. */
std::vector<bool> findLanguages(Containers::StringView text) {
    std::vector<bool> found(LanguageCount + 1);
    for(UnsignedInt i = 0; i != LanguageCount; ++i)
        found[i] = Utils::caseInsensitiveSearch(AllLanguages[i].name, text) != -1 ||
            Utils::caseInsensitiveSearch(AllLanguages[i].code, text) != -1;
    return found;
}

template <class Less> void sortLines(std::vector<UnsignedInt>& order, bool descending, const Less& isLess) {
    if(descending)
        std::stable_sort(order.begin(), order.end(), [&](UnsignedInt a, UnsignedInt b) { return isLess(b, a); });
    else std::stable_sort(order.begin(), order.end(), isLess);
}

}

void ReportRows::assign(const Containers::ArrayView<const Line> lines) {
    _lines = lines;
    unsort();
}

void ReportRows::sort(const Column column, const bool descending) {
    std::iota(_order.begin(), _order.end(), 0u);
    const auto byNumber = [&](auto Line::*const member) {
        sortLines(
            _order, descending, [&](UnsignedInt a, UnsignedInt b) { return _lines[a].*member < _lines[b].*member; });
    };
    const auto byText = [&](Containers::StringView Line::*const member) {
        sortLines(_order, descending, [&](UnsignedInt a, UnsignedInt b) {
            return !isSame(_lines[a].*member, _lines[b].*member) && _lines[a].*member < _lines[b].*member;
        });
    };
    switch(column) {
    case Column::Language: byNumber(&Line::language); break;
    case Column::Outcome: byNumber(&Line::outcome); break;
    case Column::Term: byText(&Line::term); break;
    case Column::Reason: byText(&Line::reason); break;
    case Column::File: byText(&Line::file); break;
    }
    select();
}

void ReportRows::unsort() {
    _order.resize(_lines.size());
    std::iota(_order.begin(), _order.end(), 0u);
    select();
}

void ReportRows::filter(const Outcomes outcomes, const Containers::StringView search) {
    _outcomes = outcomes;
    _search = search;
    select();
}

void ReportRows::select() {
    _shown.clear();
    _shown.reserve(_order.size());
    if(_search.isEmpty()) {
        for(const UnsignedInt i: _order)
            if(bit(_lines[i].outcome) & _outcomes) _shown.push_back(i);
        return;
    }
    const std::vector<bool> languages = findLanguages(_search);
    Search terms{_search};
    Search reasons{_search};
    Search files{_search};
    for(const UnsignedInt i: _order) {
        const Line& line = _lines[i];
        if(!(bit(line.outcome) & _outcomes)) continue;
        if(languages[std::min(line.language, LanguageCount)] || terms.finds(line.term) || reasons.finds(line.reason) ||
            files.finds(line.file))
            _shown.push_back(i);
    }
}

}
