#include "app/EditorFrame.h"

#include <algorithm>
#include <utility>

#include <Corrade/Utility/Debug.h>
#include <imgui.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/EditorState.h"
#include "QuorvaneEditor/JobSystem.h"
#include "app/CommandPalette.h"
#include "app/EditorPanels.h"
#include "app/FontWatch.h"
#include "app/LeftOutModules.h"
#include "app/Look.h"
#include "app/MessageLog.h"
#include "app/ProjectPath.h"
#include "app/ProjectState.h"
#include "app/RecentProjects.h"
#include "app/StartPage.h"
#include "app/StatusBar.h"
#include "document/EditorSession.h"
#include "document/FileSystem.h"
#include "document/KnownFiles.h"
#include "localization/LanguageLookup.h"
#include "localization/ProjectReview.h"
#include "modules/ModuleLoader.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/** Seconds between two looks at the disk. */
constexpr double LookPeriod = 1.0;

}

EditorFrame::EditorFrame(EditorSession& session, JobSystem& jobs, ModuleLoader& modules, MessageLog& log,
    Containers::ArrayView<const ViewCondition> conditions, PathDialog folderDialog, PathDialog archiveDialog,
    FileSystem* fileSystem)
    : _session{&session},
      _jobs{&jobs},
      _log{&log},
      _chooser{FileSystem::disk(), folderDialog},
      _ui{&session.project(), &session.changes(), &session.data()},
      _application{session.editor(), _ui},
      _panels{Corrade::InPlaceInit, session, log, modules},
      _palette{Corrade::InPlaceInit, session.project()},
      _layout{session.editor()},
      _views{modules, _application, session.data(), conditions},
      _exchange{session, jobs, log, fileSystem ? *fileSystem : FileSystem::disk(), folderDialog, archiveDialog},
      _autosave{session, jobs, FileSystem::disk()},
      _access{session} {
    _languageWatch = session.watch().subscribe(nullptr, "languages",
        [this](const Change&, Containers::ArrayView<Containers::StringView>) { _areLanguagesTouched = true; });
}

EditorFrame::~EditorFrame() {
    _exchange.stop();
    _jobs->waitForAll();
    // A handler's code may lie in a module, and the session lives longer than that.
    _session->forgetHandlers();
}

void EditorFrame::setDesktop(Desktop desktop) {
    _desktop = std::move(desktop);
    _chooser.setDialogs(_desktop.hasDialogs);
}

bool EditorFrame::open(Containers::StringView folder, Access access) {
    if(access == Access::Write && !_access.take(folder)) {
        _usedProject = Containers::String{folder};
        _questions.ask(Question::InUse, _access.refusal().path + ": " + _access.refusal().reason + ".");
        return false;
    }
    saveLayout();
    // Those of the GUI thread would change the project that comes.
    _jobs->waitForAll();
    const std::size_t first = _log->count();
    if(!_session->open(folder)) {
        const Containers::String problems = _log->problemsSince(first);
        _questions.showFailure(problems.isEmpty() ? Containers::String{folder} : problems);
        return false;
    }
    _access.begin(access);
    if(access == Access::Write) _session->makeEditorFolder();
    _questions.forget(Question::Changed);
    _putOff = 0;
    _autosave.end();
    askForKept();
    _exchange.reset();
    learnLanguages();
    restartViews();
    _layout.load();
    if(_desktop.recent) _desktop.recent->add(_session->folder());
    _log->note((access == Access::Write ? "Opened " : "Opened read-only: ") + Containers::String{_session->folder()});
    for(const Containers::String& finding: reviewProject(_session->project())) Corrade::Utility::Warning{} << finding;
    return true;
}

void EditorFrame::askForKept() {
    _questions.forget(Question::Restore);
    switch(_autosave.begin(_access.kind() == Access::Write)) {
    case Autosave::Found::Nothing: return;
    case Autosave::Found::Changes:
        return _questions.ask(Question::Restore, "The editor did not end well when this project was open.");
    case Autosave::Found::Outdated:
        return _questions.ask(Question::Restore,
            "The editor did not end well when this project was open, and its files have changed since: what is "
            "restored is without "
            "those changes.");
    }
}

void EditorFrame::restore() {
    _exchange.stop();
    _jobs->waitForAll();
    _autosave.restore();
    _exchange.reset();
    learnLanguages();
    restartViews();
    _log->note("Restored what was not saved");
}

void EditorFrame::restartViews() {
    // Their code lies in the modules.
    _jobs->waitForAll();
    _views.restart();
    if(_desktop.fonts) _desktop.fonts->restart(_session->watch(), _languages);
}

void EditorFrame::prepare() {
    if(keepsLayout()) _layout.saveChanges();
    // What views have done in the last frame they know.
    if(_areLanguagesTouched) learnLanguages();
    // A job of the GUI thread may change the project.
    if(!_exchange.readsProject()) _jobs->runMainThreadJobs();
    takeDropped();
    execute(_held.next(std::exchange(_command, Command::None)));
    showChosenTerm();
    openNext(_chooser.prepare());
    _panels->prepare();
    if(const Containers::String module = _panels->takeReload(); !module.isEmpty()) load(module);
    executeAnswer(std::exchange(_answer, Answer::None));
    askForSuspect();
    lookAtDisk();
    _autosave.update(ImGui::GetTime());
    if(const ViewCondition* const condition = _views.takeRepair()) condition->repair(_session->editor());
    _exchange.prepare();
    if(_areLanguagesTouched) tellNewLanguages();
    _session->beginFrame();
    if(_desktop.fonts) _desktop.fonts->update(_session->project(), ImGui::GetTime());
    _views.checkConditions();
}

void EditorFrame::load(const Containers::String& module) {
    if(_desktop.leftOut) _desktop.leftOut->forget(module);
    _jobs->waitForAll();
    if(_views.reload(module)) _log->note("Loaded " + module + " anew");
}

void EditorFrame::askForSuspect() {
    if(!_desktop.leftOut || _questions.isAsking(Question::Suspect)) return;
    const Containers::StringView suspect = _desktop.leftOut->suspect();
    if(!suspect.isEmpty()) _questions.ask(Question::Suspect, suspect + ", " + _desktop.leftOut->fileOf(suspect));
}

void EditorFrame::showChosenTerm() {
    const Containers::String path = _palette->takeTerm();
    if(path.isEmpty()) return;
    _isTermShown = _views.show(path);
    if(!_isTermShown) _log->note("No view shows " + path);
}

void EditorFrame::learnLanguages() {
    _languages = languagesOf(_session->project());
    _areLanguagesTouched = false;
    if(_desktop.fonts) _desktop.fonts->setLanguages(_languages);
}

void EditorFrame::tellNewLanguages() {
    const Containers::Array<UnsignedInt> known = std::move(_languages);
    learnLanguages();
    if(std::equal(known.begin(), known.end(), _languages.begin(), _languages.end())) return;
    // The view has a list of languages of its own, and learns of others when it is made.
    _jobs->waitForAll();
    _views.restart("Localization");
}

void EditorFrame::execute(Command command) {
    switch(command) {
    case Command::None: return;
    case Command::OpenProject: return openNext(_chooser.askToOpen(_session->folder()));
    case Command::NewProject: return _chooser.askForNew(_session->folder());
    case Command::ShowProject: return _desktop.showFolder(_session->folder());
    case Command::Save:
        if(_session->hasUnsavedChanges()) save();
        return;
    case Command::PreviewImport: return _exchange.askForImport();
    case Command::CheckTerms: return _exchange.askForCheck();
    case Command::Quit:
        _exchange.stop();
        _nextProject = {};
        return proceed();
    case Command::Undo: return _session->undo();
    case Command::Redo: return _session->redo();
    case Command::DarkTheme:
    case Command::LightTheme:
    case Command::LargerScale:
    case Command::SmallerScale:
    case Command::NormalScale: return _desktop.look->execute(command, *_log);
    case Command::OpenPalette: return _palette->open();
    case Command::ResetLayout: return _layout.reset();
    case Command::OpenDocumentation: return _desktop.open(_desktop.documentation);
    case Command::OpenDropped: return openDropped();
    case Command::EndKeeping: return endKeeping();
    case Command::About: return _questions.showAbout();
    case Command::ReloadModules:
        _jobs->waitForAll();
        _views.reload();
        return _log->note("Loaded all modules anew");
    }
}

void EditorFrame::openNext(Containers::String folder) {
    if(folder.isEmpty()) return;
    _nextProject = std::move(folder);
    proceed();
}

void EditorFrame::takeDropped() {
    if(_dropped.isEmpty() || _command != Command::None || ImGui::IsPopupOpen(nullptr, ImGuiPopupFlags_AnyPopup)) return;
    _taken = std::exchange(_dropped, {});
    _command = Command::OpenDropped;
}

void EditorFrame::openDropped() {
    Containers::String problem;
    openNext(findDroppedProject(FileSystem::disk(), std::exchange(_taken, {}), problem));
    if(!problem.isEmpty()) _questions.showFailure(problem);
}

void EditorFrame::proceed() {
    if(_session->hasUnsavedChanges()) _questions.ask(Question::Unsaved);
    else executeAnswer(Answer::Discard);
}

void EditorFrame::executeAnswer(Answer answer) {
    if(answer == Answer::None) return;
    _nextLook = ImGui::GetTime() + LookPeriod;
    const bool isProceeding = std::exchange(_isProceeding, false);
    switch(answer) {
    case Answer::None:
    case Answer::Cancel: return;
    case Answer::OpenReadOnly: open(std::exchange(_usedProject, {}), Access::Read); return;
    case Answer::Reload: open(Containers::String{_session->folder()}, _access.kind()); return;
    case Answer::Later: _putOff = projectState(FileSystem::disk(), _session->folder()); return;
    case Answer::KeepMine: return _session->keepDocument();
    case Answer::Restore: return restore();
    case Answer::DropCopy: return _autosave.discard();
    case Answer::LeaveOut: return _desktop.leftOut->leaveOut(_desktop.leftOut->suspect());
    case Answer::LeaveOutNow: return _desktop.leftOut->putOff(_desktop.leftOut->suspect());
    case Answer::LoadAnyway: return load(Containers::String{_desktop.leftOut->suspect()});
    case Answer::SaveOver:
        _session->keepDocument();
        if(!save() || !isProceeding) return;
        break;
    case Answer::Save:
        if(!save()) {
            _isProceeding = _questions.isAsking(Question::SaveOver);
            return;
        }
        break;
    case Answer::Discard: break;
    }
    if(!_nextProject.isEmpty()) {
        open(std::exchange(_nextProject, {}));
        return;
    }
    saveLayout();
    _autosave.end();
    _finished = true;
}

void EditorFrame::endKeeping() {
    keepUnsaved();
    saveLayout();
    _finished = true;
}

void EditorFrame::lookAtDisk() {
    const double now = ImGui::GetTime();
    if(now < _nextLook || !hasProject() || _questions.isAsking(Question::Changed) ||
        _questions.isAsking(Question::SaveOver) || !_questions.failure().isEmpty())
        return;
    _nextLook = now + LookPeriod;
    // A key that is meant for the text would answer. Who may write already is asked nothing.
    if(ImGui::GetIO().WantTextInput) {
        if(!isReadOnly()) updateAccess();
        return;
    }
    // The answer holds for what was there when it was given.
    if(_putOff && _putOff == projectState(FileSystem::disk(), _session->folder())) return updateAccess();
    _putOff = 0;
    if(!askForChanges(Question::Changed)) updateAccess();
}

void EditorFrame::updateAccess() {
    // What another program has kept of its changes is asked for before it is written over.
    if(!_access.update(*_log)) return;
    _questions.forget(Question::ReadOnly);
    askForKept();
}

bool EditorFrame::askForChanges(const Question question) {
    Containers::String changed;
    if(_session->lookAtDisk(&changed) != DiskState::Changed) return false;
    _questions.ask(question, changed);
    return true;
}

bool EditorFrame::save() {
    _questions.forget(Question::Changed);
    // The files may be as they were by now; where they are not, it is asked again.
    _questions.forget(Question::SaveOver);
    updateAccess();
    if(isReadOnly()) {
        _questions.ask(Question::ReadOnly, _session->folder() + ": "_s + _access.obstacle() + "."_s);
        return false;
    }
    if(askForChanges(Question::SaveOver) || !_session->save()) return false;
    _isProceeding = false;
    _log->note("Saved " + Containers::String{_session->folder()});
    return true;
}

bool EditorFrame::hasProject() const { return !_session->folder().isEmpty(); }

bool EditorFrame::keepsLayout() const { return hasProject() && _access.kind() == Access::Write; }

void EditorFrame::saveLayout() {
    // Jobs of the GUI thread run, which may change the project.
    _exchange.stop();
    if(keepsLayout()) _layout.save();
}

MainMenu::Available EditorFrame::available() {
    const bool isOpen = hasProject();
    const ChangeManager& changes = _session->changes();
    const bool isSettled = !changes.isGroupOpen();
    MainMenu::Available available;
    available.showProject = isOpen && _desktop.showFolder;
    available.save = isOpen && (_session->hasUnsavedChanges() || _held.isTyping());
    available.previewImport = available.resetLayout = isOpen;
    available.checkTerms = isOpen && !_exchange.hasPreview();
    available.undo = isSettled && changes.canUndo();
    available.redo = isSettled && changes.canRedo();
    ChangeSteps& steps = _panels->steps();
    available.undoName = steps.undoName();
    available.redoName = steps.redoName();
    available.openDocumentation = _desktop.open && !_desktop.documentation.isEmpty();
    if(_desktop.look) _desktop.look->addTo(available);
    return available;
}

void EditorFrame::drawStartPage() {
    static const std::vector<Containers::String> none;
    const StartPage::Choice choice = StartPage::draw(_desktop.recent ? _desktop.recent->folders() : none);
    if(choice.asks) _command = Command::OpenProject;
    if(choice.begins) _command = Command::NewProject;
    if(choice.project.isEmpty()) return;
    // Nothing is unsaved where nothing is open.
    _nextProject = choice.project;
    _answer = Answer::Discard;
}

void EditorFrame::draw() {
    _held.beginFrame();
    const MainMenu::Available available = this->available();
    _command = MainMenu::draw(_session->state(), available);
    const bool isUnsaved = hasProject() && _session->hasUnsavedChanges();
    StatusBar::Facts facts{_session->folder(), isUnsaved, {}, {}, _access.obstacle()};
    if(_desktop.fonts) {
        facts.fonts = _desktop.fonts->summary();
        facts.fontDetails = _desktop.fonts->details();
    }
    if(StatusBar::draw(facts, *_log)) _panels->toggleMessages();
    if(hasProject()) {
        _layout.draw();
        _views.draw();
        _panels->draw();
        _exchange.draw();
    } else drawStartPage();
    if(const Command command = _palette->draw(_session->state(), available); command != Command::None)
        _command = command;
    _chooser.draw();
    if(const Answer answer = _questions.draw(); answer != Answer::None) _answer = answer;
    _held.endFrame();
}

}
