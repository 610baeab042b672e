#pragma once

#include <cstdint>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"
#include "app/WindowPlace.h"

namespace QuorvaneEngine {

/** Remembers where the editor's window was in each project, whose folder keeps it in `.editor/window.json`. All between two frames. */
class QUORVANE_API WindowMemory {
public:
    /** Seconds without a change before a place is written. */
    static constexpr double Quiet = 0.5;

    /** Pixels; a window that is smaller on one side, or larger on one, is none to return to. */
    static constexpr Int SmallestSide = 200;
    static constexpr Int LargestSide = 16384;

    /** @param restores     whether the window gets the places of the projects, too; where not, they are only kept */
    explicit WindowMemory(bool restores): _restores{restores} {}

    /** What a project keeps. */
    enum class Found : std::uint8_t {
        Nothing, /**< or a place on none of the screens any more */
        Place,
        Other /**< a file that holds no place, or one of another version, which is a warning */
    };

    /** Reads where the window was when a project was open last.
        @param folder   of the project
        @param place    left as it is unless one is found */
    static Found load(
        Containers::StringView folder, Containers::ArrayView<const ScreenArea> screens, WindowPlace& place);

    /** Whether a folder is that of the project that was entered last. */
    bool isOf(const Containers::StringView folder) const { return folder == _folder; }

    /** Notices that another project is open, once for each.
        A place of the project before that is not written yet is written now.
        @param folder   of the open project, empty for none
        @param current  where the window is, and receives where it is to go
        @return whether it is to go elsewhere */
    bool enter(Containers::StringView folder, Containers::ArrayView<const ScreenArea> screens, WindowPlace& current);

    /** Notices where the window is.
        @param now  in seconds
        @return whether the place is to be written now */
    bool notice(const WindowPlace& current, double now);

    /** Whether there is a place that is not written. */
    bool isPending() const { return next() != _place; }

    /** Writes the place into the folder of the open project; on failure prints a warning. A file that is there and holds no place, or one of another
        version, is left as it is; and so is a project that is not ours. */
    void write();

    /** Says whether the project that was entered last is ours to write into, as every other is at first. */
    void setOurs(const bool isOurs) { _isOurs = isOurs; }

private:
    /** The place that @ref _seen is. */
    WindowPlace next() const;

    bool _restores;
    bool _isOurs = true;

    /** Whether what the project keeps is not for us to replace. */
    bool _isForeign = false;
    Containers::String _folder;

    /** Where the window was when it had been still for long enough. */
    WindowPlace _place;

    /** Where the window is now, and since when, in seconds. */
    WindowPlace _seen;
    double _changed = 0.0;
};

}
