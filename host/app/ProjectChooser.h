#pragma once

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"
#include "app/PathPopup.h"

namespace QuorvaneEngine {

class FileSystem;

/** Lets the user say which project to open, or where to begin one: in a dialog of the desktop's, or by its path where no program shows such dialogs. */
class QUORVANE_API ProjectChooser {
public:
    /** Lets the user choose a folder; empty when none was chosen. */
    using FolderDialog = Containers::String (*)(Containers::StringView title, Containers::StringView defaultPath);

    /** @param files    where projects are; must outlive this object */
    explicit ProjectChooser(FileSystem& files, FolderDialog dialog): _files{&files}, _dialog{dialog} {}

    /** @param hasDialogs   whether there is a program that shows dialogs; null where there is */
    void setDialogs(bool (*hasDialogs)()) { _hasDialogs = hasDialogs; }

    /** Asks for a project to open.
        @param folder   proposed, may be empty
        @return the folder that was chosen at once; empty where none was, or where it is yet to be typed */
    Containers::String askToOpen(Containers::StringView folder);

    /** Asks for the folder of a new project.
        @param folder   of the open project, may be empty; a folder beside it is proposed */
    void askForNew(Containers::StringView folder);

    /** Does what the user asked for in the last frame. Between two frames.
        @return the folder of a project to open; empty for none */
    Containers::String prepare();

    /** Draws the dialog while it is open. */
    void draw() { _request = _popup.draw(); }

private:
    bool hasDialogs() const { return !_hasDialogs || _hasDialogs(); }
    Containers::String accept();
    Containers::String acceptNew();
    void choose();

    FileSystem* _files;
    FolderDialog _dialog;
    bool (*_hasDialogs)() = nullptr;
    PathPopup _popup;
    bool _isForNew = false;
    PathPopup::Request _request = PathPopup::Request::None;
};

}
