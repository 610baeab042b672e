#include "app/TermExchange.h"

#include <cerrno>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Format.h>
#include <imgui.h>
#include <rapidjson/document.h>

#include "QuorvaneEditor/EditorState.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "app/DockLayout.h"
#include "app/MessageLog.h"
#include "app/ReportText.h"
#include "document/EditorSession.h"
#include "document/FileSystem.h"
#include "localization/LanguageLookup.h"
#include "localization/LastRun.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;
using Corrade::Utility::format;

namespace {

constexpr Int NoLanguage = -1;

Containers::Array<Containers::String> only(Containers::String&& reason) {
    Containers::Array<Containers::String> reasons;
    Containers::arrayAppend(reasons, std::move(reason));
    return reasons;
}

/** Why there is nothing to read at a path; empty where there is a file or a folder. */
Containers::String pathReason(FileSystem& fileSystem, Containers::StringView path) {
    if(path.isEmpty()) return "Choose a folder or a ZIP archive"_s;
    if(!path.hasPrefix('/')) return format("{}: has to begin with \"/\"", path);
    Containers::Array<Containers::String> names;
    const int error = fileSystem.listFolder(path, names);
    return error && error != ENOTDIR ? format("{}: {}", path, systemReason("read"_s, error)) : Containers::String{};
}

/** Whether a run is one that its user should look at. */
bool needsAttention(const LocalizationRun& run) {
    return !run.refusals.isEmpty() || ReportText::count(run.report, TermOutcome::Skipped) ||
        ReportText::count(run.report, TermOutcome::Notice);
}

}

TermExchange::TermExchange(EditorSession& session, JobSystem& jobs, MessageLog& log, FileSystem& fileSystem,
    const PathDialog folderDialog, const PathDialog archiveDialog)
    : _session{&session},
      _log{&log},
      _fileSystem{&fileSystem},
      _folderDialog{folderDialog},
      _archiveDialog{archiveDialog},
      _preview{session.editor(), jobs, fileSystem},
      _check{session.editor(), jobs},
      _panelView{session.state().registerView(DockLayout::Report)} {
    session.state().isViewOpen(_panelView) = false;
}

void TermExchange::askForImport() {
    const ValueAccess languages = _session->project().root()["languages"_s];
    const bool hasLanguages = languages.existsInProject() && (!languages.isObject() || languages.size());
    _popup.open(_path.isEmpty() ? _session->editor().exchangePath() : _path, !hasLanguages);
}

void TermExchange::prepare() {
    executeRequest(std::exchange(_request, ImportPopup::Request::None));
    executeAction(std::exchange(_action, ReportPanel::Action::None));
    executeCheck(std::exchange(_checkRequest, CheckPopup::Request::None));
    react(_preview.update());
    _check.update();
    noticeRun();
}

void TermExchange::executeRequest(const ImportPopup::Request request) {
    switch(request) {
    case ImportPopup::Request::None: return;
    case ImportPopup::Request::ChooseFolder: return choose(_folderDialog, "Preview the import of a folder"_s);
    case ImportPopup::Request::ChooseArchive: return choose(_archiveDialog, "Preview the import of a ZIP archive"_s);
    case ImportPopup::Request::Start: return start();
    case ImportPopup::Request::Cancel:
        _preview.cancel();
        _popup.close();
        return;
    }
}

void TermExchange::choose(const PathDialog dialog, const Containers::StringView title) {
    const std::size_t first = _log->count();
    const Containers::String path = dialog(title, _popup.path());
    if(!path.isEmpty()) return _popup.setPath(path);
    // A dialog that could not be shown looks like one that was cancelled.
    Containers::String problems = _log->problemsSince(first);
    if(!problems.isEmpty()) _popup.refuse(only(std::move(problems)));
}

void TermExchange::start() {
    const Containers::String path = _popup.path();
    Containers::String reason = pathReason(*_fileSystem, path);
    const Int language = defaultLanguage(reason);
    if(!reason.isEmpty()) return _popup.refuse(only(std::move(reason)));
    _path = path;
    _isOutdated = false;
    _preview.start(_path, UnsignedInt(language));
}

Int TermExchange::defaultLanguage(Containers::String& reason) const {
    const ValueAccess languages = _session->project().root()["languages"_s];
    if(!languages.existsInProject() || (languages.isObject() && !languages.size())) return Int(_popup.language());
    for(const Containers::StringView code: languages)
        if(languages.member(code).member("isDefault"_s).asBool())
            if(const Int language = findLanguage(code); language != NoLanguage) return language;
    if(reason.isEmpty())
        reason = "project.json: /languages: marks no language that the editor knows as default; \"Repair\" in the "
                 "Localization view does"_s;
    return NoLanguage;
}

void TermExchange::executeCheck(const CheckPopup::Request request) {
    if(request == CheckPopup::Request::Cancel) {
        _check.cancel();
        return _log->note("The terms were not checked");
    }
    if(request == CheckPopup::Request::None) return;
    Containers::String reason;
    const Int language = defaultLanguage(reason);
    if(language == NoLanguage) Corrade::Utility::Warning{} << reason;
    else _check.start(UnsignedInt(language));
}

void TermExchange::executeAction(const ReportPanel::Action action) {
    using Action = ReportPanel::Action;
    const bool isReady = hasPreview();
    const bool isSettled = !_session->changes().isGroupOpen();
    if(action == Action::Undo && _noticed && ReportText::undoObstacle(_session->editor(), *_noticed).isEmpty()) {
        _session->undo();
        _log->note("Undone: " + ReportText::headline(*_noticed, false));
    } else if(action == Action::Apply && isReady && isSettled) {
        react(_preview.apply());
    } else if(action == Action::Discard && isReady) {
        _preview.discard();
        _log->note(format("Nothing was imported from {}", _preview.path()));
    }
}

void TermExchange::react(const ImportPreview::Event event) {
    switch(event) {
    case ImportPreview::Event::None: return;
    case ImportPreview::Event::Ready:
    case ImportPreview::Event::Outdated:
        _isOutdated = event == ImportPreview::Event::Outdated;
        _popup.close();
        noteRun(*_preview.run(), true);
        return showPanel();
    case ImportPreview::Event::Refused: {
        Containers::Array<Containers::String> reasons;
        for(const Containers::String& refusal: _session->editor().lastRun->refusals) {
            Corrade::Utility::Warning{} << refusal;
            Containers::arrayAppend(reasons, refusal);
        }
        return _popup.refuse(std::move(reasons));
    }
    case ImportPreview::Event::Cancelled:
        _popup.close();
        return _log->note(format("Nothing was imported from {}", _preview.path()));
    case ImportPreview::Event::Applied: return;
    }
}

void TermExchange::noticeRun() {
    const std::shared_ptr<const LocalizationRun>& run = _session->editor().lastRun;
    if(run == _noticed) return;
    _noticed = run;
    if(!run) return;
    _preview.discard();
    // What was refused has been told already, with its reasons.
    if(run->refusals.isEmpty()) noteRun(*run, false);
    if(needsAttention(*run)) showPanel();
}

void TermExchange::noteRun(const LocalizationRun& run, const bool isPreview) {
    _log->note(ReportText::headline(run, isPreview) + ": " + ReportText::summary(run));
}

void TermExchange::showPanel() { _session->state().isViewOpen(_panelView) = _bringsPanelToFront = true; }

void TermExchange::draw() {
    if(bool& open = _session->state().isViewOpen(_panelView); open) {
        using Mode = ReportPanel::Mode;
        const bool isPreview = hasPreview();
        const Mode mode = !isPreview ? Mode::Done : _isOutdated ? Mode::Outdated : Mode::Preview;
        const std::shared_ptr<const LocalizationRun> run = isPreview ? _preview.run() : _noticed;
        _action = _panel.draw(_session->editor(), run, mode, &open);
    }
    _request = _popup.draw(_preview);
    _checkRequest = _checkPopup.draw(_check);
    // A popup that closes gives the keyboard back, and with it the front.
    if(_bringsPanelToFront && !ImGui::IsPopupOpen(nullptr, ImGuiPopupFlags_AnyPopup)) {
        _bringsPanelToFront = false;
        ImGui::SetWindowFocus(DockLayout::Report);
    }
}

void TermExchange::stop() {
    if(_preview.isRunning()) _preview.discard();
    _check.discard();
    _popup.close();
    _checkPopup.close();
}

void TermExchange::reset() {
    _popup.close();
    _checkPopup.close();
    _preview.discard();
    _check.discard();
    _noticed = nullptr;
    _path = {};
}

}
