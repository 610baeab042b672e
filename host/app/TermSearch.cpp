#include "app/TermSearch.h"

#include <algorithm>
#include <tuple>

#include <rapidjson/document.h>

#include "QuorvaneEditor/ProjectFile.h"
#include "localization/DocumentLookup.h"
#include "localization/TermSource.h"

namespace QuorvaneEngine {

namespace {

/** What it costs to learn a term, as @ref TermSearch::FrameWork counts. */
constexpr std::size_t LearnWork = 400;

Containers::StringView viewOf(const rapidjson::Value& text) { return {text.GetString(), text.GetStringLength()}; }

Containers::StringView sourceOf(const rapidjson::Value& term) {
    const rapidjson::Value* const source = memberOf(&term, "sourceText");
    return source && source->IsString() ? viewOf(*source) : Containers::StringView{};
}

auto rank(const TermSearch::Found& found) { return std::tuple{-found.score, found.size, found.number}; }

}

TermSearch::TermSearch(ProjectFile& project): _project{&project} {}

void TermSearch::start(const Containers::StringView search) {
    // Whether a term begins with the match says nothing against a command, whose name begins with that of its menu.
    _pattern = FuzzyPattern{search, FuzzyPattern::WordStart};
    _found.reserve(MaxCount);
    begin();
}

void TermSearch::begin() {
    _found.clear();
    _next = 0;
    _isSearching = _pattern.size();
}

const rapidjson::Value* TermSearch::terms() const {
    const rapidjson::Value* const terms = _project->getValue("/localization/terms", false);
    return terms && terms->IsObject() ? terms : nullptr;
}

bool TermSearch::update() {
    if(!_pattern.size()) return false;
    if(_revision != _project->revision()) {
        _revision = _project->revision();
        _terms.clear();
        begin();
    }
    if(!_isSearching) return false;
    const rapidjson::Value* const terms = this->terms();
    const UnsignedInt count = terms ? terms->MemberCount() : 0;
    _terms.reserve(count);
    for(std::size_t work = 0; _next != count && work < FrameWork; ++_next) {
        const auto member = terms->MemberBegin() + std::ptrdiff_t(_next);
        if(_next == _terms.size()) {
            learn(viewOf(member->name), member->value);
            work += LearnWork;
        }
        work += look(member->value);
    }
    _isSearching = _next != count;
    return true;
}

void TermSearch::learn(const Containers::StringView key, const rapidjson::Value& term) {
    const rapidjson::Value* const text = TermSource::value(*_project, sourceOf(term));
    _terms.push_back({key, text ? viewOf(*text) : Containers::StringView{}});
}

std::size_t TermSearch::look(const rapidjson::Value& term) {
    const Term& known = _terms[_next];
    Found found{known.key, known.text, {}, FuzzyPattern::NoMatch, 0, _next};
    const std::size_t work = rate(known.key, found) + rate(known.text, found);
    if(found.score == FuzzyPattern::NoMatch) return work;
    if(_found.size() == MaxCount && rank(found) >= rank(_found.back())) return work;
    found.source = sourceOf(term);
    add(found);
    return work;
}

std::size_t TermSearch::rate(const Containers::StringView text, Found& found) {
    const Containers::StringView searched = text.prefix(std::min(text.size(), MaxSearched));
    const Int score = _pattern.score(searched);
    if(score == FuzzyPattern::NoMatch) return searched.size();
    if(score > found.score || (score == found.score && text.size() < found.size)) {
        found.score = score;
        found.size = text.size();
    }
    return searched.size() * (_pattern.size() + 1);
}

void TermSearch::add(const Found& found) {
    if(_found.size() == MaxCount) _found.pop_back();
    const auto place = std::upper_bound(
        _found.begin(), _found.end(), found, [](const Found& a, const Found& b) { return rank(a) < rank(b); });
    _found.insert(place, found);
}

}
