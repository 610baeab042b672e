#include "app/FontWatch.h"

#include <algorithm>

#include <rapidjson/document.h>

#include "Change.h"
#include "fonts/FontWords.h"
#include "localization/DocumentLookup.h"
#include "localization/LanguageLookup.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/* In one frame. */
constexpr std::size_t BytesPerStep = 128 * 1024;

/* A language is looked at when nothing of it has changed for so many seconds, or at last when a change is so old. */
constexpr double Quiet = 1.0;
constexpr double LongestWait = 10.0;

/** Whether there may be a text in a value. Of an array its first element tells: what is dragged is an array of numbers. */
bool hasText(const rapidjson::Value* const value) {
    if(!value) return false;
    if(value->IsArray()) return !value->Empty() && hasText(value->Begin());
    return value->IsString() || value->IsObject();
}

}

void FontWatch::restart(ProjectWatch& watch, const Containers::ArrayView<const UnsignedInt> languages) {
    _coverage.restart(languages);
    _touched.clear();
    _areSourcesTouched = _areAllTouched = _isTouched = false;
    _firstTouch = _lastTouch = -1.0;
    _isRunning = true;
    if(_watch == &watch) return;
    _watch = &watch;
    _watchedSources = 0;
    _subscriptions.clear();
    _subscriptions.push_back(watch.subscribe(nullptr, "localization",
        [this](const Change& change, const Containers::ArrayView<Containers::StringView> path) {
            noteLocalization(change, path);
        }));
}

void FontWatch::setLanguages(const Containers::ArrayView<const UnsignedInt> languages) {
    _isTouched = _areAllTouched = true;
    const Containers::ArrayView<const LanguageLetters> known = _coverage.languages();
    const bool isKnown = std::equal(languages.begin(), languages.end(), known.begin(), known.end(),
        [](const UnsignedInt language, const LanguageLetters& letters) { return letters.language == language; });
    if(isKnown) return;
    _coverage.restart(languages);
    _isRunning = true;
}

void FontWatch::noteLocalization(const Change& change, const Containers::ArrayView<const Containers::StringView> path) {
    if(path.size() > 3 && path[2] == "translations"_s) return noteTranslation(change, path);
    _isTouched = true;
    if(path.size() > 3) _areSourcesTouched = true;
    else _areAllTouched = true;
}

void FontWatch::noteTranslation(const Change& change, const Containers::ArrayView<const Containers::StringView> path) {
    constexpr std::size_t WholeTranslation = 5;
    const bool isText = path.size() > WholeTranslation;
    if(isText && path[WholeTranslation] != "text"_s) return;
    const Int language = findLanguage(path[3]);
    if(language == -1) return;
    const rapidjson::Value* const value = isText ? change.newValue.get() : memberOf(change.newValue.get(), "text"_s);
    const bool isOne = path.size() >= WholeTranslation;
    const Containers::StringView text = isOne && value && value->IsString()
        ? Containers::StringView{value->GetString(), value->GetStringLength()}
        : Containers::StringView{};
    if(_coverage.add(UnsignedInt(language), text) && isOne) return;
    _isTouched = true;
    if(std::find(_touched.begin(), _touched.end(), UnsignedInt(language)) == _touched.end())
        _touched.push_back(UnsignedInt(language));
}

void FontWatch::begin(ProjectFile& project) {
    _firstTouch = -1.0;
    if(_areAllTouched)
        for(const LanguageLetters& letters: _coverage.languages()) _coverage.touch(letters.language);
    if(_areSourcesTouched) _coverage.touchSources(project);
    for(const UnsignedInt language: _touched) _coverage.touch(language);
    _touched.clear();
    _areAllTouched = _areSourcesTouched = false;
    _isRunning = true;
}

void FontWatch::watchSources() {
    const Containers::ArrayView<const Containers::String> members = _coverage.sourceMembers();
    for(; _watchedSources != members.size(); ++_watchedSources) {
        // That is watched already.
        if(members[_watchedSources] == "localization"_s) continue;
        _subscriptions.push_back(_watch->subscribe(nullptr, members[_watchedSources],
            [this](const Change& change, Containers::ArrayView<Containers::StringView>) {
                if(hasText(change.oldValue.get()) || hasText(change.newValue.get()))
                    _isTouched = _areSourcesTouched = true;
            }));
    }
}

void FontWatch::update(ProjectFile& project, const double now) {
    if(_isTouched) {
        _isTouched = false;
        _lastTouch = now;
        if(_firstTouch < 0.0) _firstTouch = now;
    }
    if(_firstTouch >= 0.0 && (now - _lastTouch >= Quiet || now - _firstTouch >= LongestWait)) begin(project);
    if(_isRunning) {
        _coverage.advance(project, BytesPerStep);
        _isRunning = !_coverage.isFinished();
        watchSources();
    }
    if(_coverage.revision() == _told) return;
    _told = _coverage.revision();
    _summary = FontWords::summary(_coverage.languages());
    _details = FontWords::details(_coverage.languages());
}

}
