#pragma once

#include "QuorvaneEditor/Host.h"
#include "app/MainMenu.h"
#include "app/Theme.h"

namespace QuorvaneEngine {

class MessageLog;
class Settings;

/** How the editor looks to its user: the theme and the scale of the settings, on a display with a scale of its own. Between two frames. */
class QUORVANE_API Look {
public:
    /** Gives the current GUI context the look.
        @param settings         must outlive this object
        @param displayScale     pixels per pixel at scale 1, as the display wants it
        @param scheme           until the user chooses another */
    explicit Look(Settings& settings, float displayScale, Theme::Scheme scheme);

    /** The window is on another display now, or on one that has changed. */
    void setDisplayScale(float scale);

    /** Does what the user asked for, where it is about the look.
        @param log  where the new scale is told */
    void execute(Command command, MessageLog& log);

    /** What the menu marks and offers. */
    void addTo(MainMenu::Available& available) const;

private:
    void apply() const;

    Settings* _settings;
    float _displayScale;
    Theme::Scheme _scheme;
};

}
