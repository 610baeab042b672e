#pragma once

#include "QuorvaneEditor/Host.h"
#include "app/MainMenu.h"

namespace QuorvaneEngine {

class Ui;

/** Holds a command back that concerns the project as a whole until what is being typed is part of it. */
class QUORVANE_API HeldCommand {
public:
    /** @param ui   the toolkit whose inputs are typed into; must outlive this object */
    explicit HeldCommand(const Ui& ui): _ui{&ui} {}

    /** Whether something has been typed that is going to be a change of the project. */
    bool isTyping() const;

    /** What is to be done now, between two frames, once in each of them. A command to save or to leave the project ends the edit
        that is under way, as if its input had lost the keyboard, and comes out when the frames that this takes have been drawn.
        @param command  what the user asked for in the last frame, which takes the place of what is held */
    Command next(Command command);

    /** @{ @name To be called in each frame, before and after anything is drawn */
    void beginFrame();
    void endFrame();
    /** @} */

private:
    void endEdit();

    const Ui* _ui;
    Command _held = Command::None;

    /** Until it comes out. */
    int _frames = 0;

    /** Whether the next frame, or this one, has Enter pressed, and by us. */
    bool _entersNext = false;
    bool _enters = false;
};

}
