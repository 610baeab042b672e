#include "app/ProjectChooser.h"

#include <utility>

#include <icons_font_awesome_6.h>

#include "app/ProjectPath.h"

namespace QuorvaneEngine {

namespace {

constexpr PathPopup::Form OpenForm{"Open project", ICON_FA_FOLDER_OPEN, "Which project?",
    "No program that shows file dialogs is installed here, such as zenity or kdialog. Type the path of the project's "
    "folder; \"~\" is your home folder.",
    "Open"};

}

Containers::String ProjectChooser::askToOpen(const Containers::StringView folder) {
    if(hasDialogs()) return _dialog("Open project", folder);
    _popup.open(OpenForm, folder.isEmpty() ? Containers::StringView{"~/"} : folder, false);
    return {};
}

Containers::String ProjectChooser::prepare() {
    switch(std::exchange(_request, PathPopup::Request::None)) {
    case PathPopup::Request::None:
    case PathPopup::Request::Choose:
    case PathPopup::Request::Other: return {};
    case PathPopup::Request::Accept: return accept();
    case PathPopup::Request::Cancel: _popup.close(); return {};
    }
    return {};
}

Containers::String ProjectChooser::accept() {
    Containers::String problem;
    Containers::String folder = findProject(*_files, _popup.path(), problem);
    if(problem.isEmpty()) _popup.close();
    else _popup.refuse(std::move(problem));
    return folder;
}

}
