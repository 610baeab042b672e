#pragma once

#include <cstddef>
#include <cstdint>

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** What the user is asked. */
enum class Question : std::uint8_t {
    Unsaved, /**< what to do with unsaved changes: Save, Discard, Cancel */
    InUse, /**< what to do with a project that somebody else has open: OpenReadOnly, Cancel */
    Changed, /**< what to do with files that somebody else has changed: Reload, KeepMine, Later */
    SaveOver, /**< whether to save over files that somebody else has changed: SaveOver, Reload, Cancel */
    Restore, /**< what to do with changes that a program has kept that did not end well: Restore, DropCopy */
    Suspect, /**< what to do with a module that an editor died with: LeaveOut, LoadAnyway, LeaveOutNow */
    ReadOnly /**< no question: why the project cannot be saved; Cancel */
};

/** What the user wants done. */
enum class Answer : std::uint8_t {
    None,
    Save,
    Discard,
    Cancel,
    OpenReadOnly,
    Reload,
    KeepMine,
    Later,
    SaveOver,
    Restore,
    DropCopy,
    LeaveOut,
    LeaveOutNow,
    LoadAnyway
};

/** The host's own dialogs, which stand before everything else until they are answered. A dialog waits for
    the end of any other popup. */
class QUORVANE_API Questions {
public:
    /** Asks, until there is an answer.
        @param text     what the question is about; empty for what it says of itself */
    void ask(Question question, Containers::StringView text = {});

    bool isAsking(Question question) const { return _isAsked[std::size_t(question)]; }

    /** Takes a question back. */
    void forget(Question question) { _isAsked[std::size_t(question)] = false; }

    /** Says why a project could not be opened. */
    void showFailure(Containers::StringView text) { _failure = text; }
    Containers::StringView failure() const { return _failure; }

    void showAbout() { _showsAbout = true; }

    /** @return the answer to a question, in the frame in which it is given */
    Answer draw();

private:
    static constexpr std::size_t Count = std::size_t(Question::ReadOnly) + 1;

    Answer drawQuestion(std::size_t question);
    void drawFailure();
    void drawAbout();

    bool _isAsked[Count]{};
    bool _isShown[Count]{};
    Containers::String _texts[Count];
    bool _showsAbout = false;
    Containers::String _failure;
};

}
