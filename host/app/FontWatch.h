#pragma once

#include <string>
#include <vector>

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"
#include "QuorvaneEditor/ProjectWatch.h"
#include "fonts/FontCoverage.h"

namespace QuorvaneEngine {

/** Keeps what is known of the fonts and the project's languages up to date. All languages are looked at when a project is opened, a step in
    each frame. After that each new text is looked at alone; a language is looked at as a whole, to forget letters that are gone, when
    nothing of it has changed for a while. */
class QUORVANE_API FontWatch {
public:
    /** @param drawn    letters that can be drawn; must outlive this object */
    explicit FontWatch(const LetterSet& drawn): _coverage{drawn} {}

    FontWatch(const FontWatch&) = delete;
    FontWatch& operator=(const FontWatch&) = delete;

    /** Turns to a project, and begins at once. Between two frames.
        @param watch        of the project; kept
        @param languages    indices into @ref AllLanguages */
    void restart(ProjectWatch& watch, Containers::ArrayView<const UnsignedInt> languages);

    /** Something about the project's languages has changed, such as which one is the default. Between two frames. */
    void setLanguages(Containers::ArrayView<const UnsignedInt> languages);

    /** Goes on for a millisecond or so. Between two frames.
        @param now  seconds since any moment */
    void update(ProjectFile& project, double now);

    /** Whether there is more to look at now. */
    bool isBusy() const { return _isRunning; }

    /** @ref FontWords::summary() of the languages. Stays until the next @ref update() . */
    Containers::StringView summary() const { return {_summary.data(), _summary.size()}; }

    /** @ref FontWords::details() of the languages. Stays until the next @ref update() . */
    Containers::StringView details() const { return {_details.data(), _details.size()}; }

private:
    void noteLocalization(const Change& change, Containers::ArrayView<const Containers::StringView> path);
    void noteTranslation(const Change& change, Containers::ArrayView<const Containers::StringView> path);
    void begin(ProjectFile& project);
    void watchSources();

    FontCoverage _coverage;
    std::string _summary;
    std::string _details;
    /** Of @ref FontCoverage::revision() , that the texts tell of. */
    UnsignedInt _told = 0;

    /* What has to be looked at once more, and when that was first and last found out in seconds, -1 for never. */
    std::vector<UnsignedInt> _touched;
    bool _areSourcesTouched = false;
    bool _areAllTouched = false;
    bool _isTouched = false;
    double _firstTouch = -1.0;
    double _lastTouch = -1.0;

    bool _isRunning = false;
    ProjectWatch* _watch = nullptr;
    /** Of the terms and translations first, then of each member that source texts are below. */
    std::vector<ProjectWatch::Subscription> _subscriptions;
    std::size_t _watchedSources = 0;
};

}
