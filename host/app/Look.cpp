#include "app/Look.h"

#include <string>

#include "app/MessageLog.h"
#include "app/Settings.h"

namespace QuorvaneEngine {

namespace {

constexpr Int NormalScale = 100;

/** The scale that a command leads to; the present one where it is about something else. */
Int scaleAfter(const Command command, const Int present) {
    switch(command) {
    case Command::LargerScale: return Settings::nextScale(present, 1);
    case Command::SmallerScale: return Settings::nextScale(present, -1);
    case Command::NormalScale: return NormalScale;
    default: return present;
    }
}

}

Look::Look(Settings& settings, const float displayScale, const Theme::Scheme scheme)
    : _settings{&settings}, _displayScale{displayScale}, _scheme{scheme} {
    apply();
}

void Look::setDisplayScale(const float scale) {
    if(scale == _displayScale) return;
    _displayScale = scale;
    apply();
}

void Look::execute(const Command command, MessageLog& log) {
    if(command == Command::DarkTheme || command == Command::LightTheme) {
        _scheme = command == Command::DarkTheme ? Theme::Scheme::Dark : Theme::Scheme::Light;
        _settings->setScheme(_scheme);
    }
    const Int scale = scaleAfter(command, _settings->scale());
    if(scale != _settings->scale()) {
        _settings->setScale(scale);
        log.note(("Scale " + std::to_string(scale) + " %").c_str());
    }
    apply();
}

void Look::addTo(MainMenu::Available& available) const {
    available.isDark = _scheme == Theme::Scheme::Dark;
    available.isLight = !available.isDark;
    available.largerScale = _settings->scale() < Settings::LargestScale;
    available.smallerScale = _settings->scale() > Settings::SmallestScale;
    available.normalScale = _settings->scale() != NormalScale;
    available.theme = true;
}

void Look::apply() const { Theme::apply(_displayScale * float(_settings->scale()) / float(NormalScale), _scheme); }

}
