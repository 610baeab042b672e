#include "app/ProjectChooser.h"

#include <utility>

#include <Corrade/Containers/Pair.h>
#include <Corrade/Utility/Path.h>

#include <icons_font_awesome_6.h>

#include "app/NewProject.h"
#include "app/ProjectPath.h"

namespace QuorvaneEngine {

namespace {

namespace Path = Corrade::Utility::Path;

constexpr PathPopup::Form OpenForm{"Open project", ICON_FA_FOLDER_OPEN, "Which project?",
    "No program that shows file dialogs is installed here, such as zenity or kdialog. Type the path of the project's "
    "folder; \"~\" is your home folder.",
    "Open"};

constexpr PathPopup::Form NewForm{"New project", ICON_FA_FOLDER_PLUS, "Where is the new project?",
    "In an empty folder, or in one that is made now. The project begins with English as its language and nothing else.",
    "Create"};

}

Containers::String ProjectChooser::askToOpen(const Containers::StringView folder) {
    if(hasDialogs()) return _dialog("Open project", folder);
    _isForNew = false;
    _popup.open(OpenForm, folder.isEmpty() ? Containers::StringView{"~/"} : folder, false);
    return {};
}

void ProjectChooser::askForNew(const Containers::StringView folder) {
    const Containers::StringView above = folder.isEmpty() ? "~" : Path::split(folder).first();
    _isForNew = true;
    _popup.open(NewForm, Path::join(above, "new-project"), hasDialogs());
}

Containers::String ProjectChooser::prepare() {
    switch(std::exchange(_request, PathPopup::Request::None)) {
    case PathPopup::Request::None: return {};
    case PathPopup::Request::Choose: choose(); return {};
    case PathPopup::Request::Accept: return _isForNew ? acceptNew() : accept();
    // What is offered is to open the project that is there.
    case PathPopup::Request::Other: return accept();
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

Containers::String ProjectChooser::acceptNew() {
    Containers::String folder = _popup.path();
    Containers::String problem;
    const NewProject::Outcome outcome = NewProject::write(*_files, folder, problem);
    if(outcome == NewProject::Outcome::Written) {
        _popup.close();
        return folder;
    }
    _popup.refuse(std::move(problem), outcome == NewProject::Outcome::HasProject ? "Open it" : nullptr);
    return {};
}

void ProjectChooser::choose() {
    const Containers::String chosen = _dialog(NewForm.name, Path::split(_popup.path()).first());
    if(!chosen.isEmpty()) _popup.setPath(chosen);
}

}
