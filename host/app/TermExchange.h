#pragma once

#include <memory>
#include <utility>

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "app/CheckPopup.h"
#include "app/ImportPopup.h"
#include "app/ImportPreview.h"
#include "app/ReportPanel.h"
#include "app/TermCheck.h"

namespace QuorvaneEngine {

class EditorSession;
class FileSystem;
class MessageLog;

/** What the editor itself does for the exchange of terms: the preview of an import, the checks of terms, and the report of the last
    gathering, export, import or check, whoever started it.

    The report's window opens by itself and comes to the front after a run that was refused, left something out or has something to
    tell, since the status bar has room for one line alone; after any other run that line tells the counts, and the window stays as
    it is. A preview ends with the next run of any tool, whose report takes its place, and a report with the next run or when
    another project is opened. */
class QUORVANE_API TermExchange {
public:
    /** Lets the user choose a folder or file; empty when nothing was chosen. */
    using PathDialog = Containers::String (*)(Containers::StringView title, Containers::StringView defaultPath);

    /** @param session      must outlive this object, as must the others */
    explicit TermExchange(EditorSession& session, JobSystem& jobs, MessageLog& log, FileSystem& fileSystem,
        PathDialog folderDialog, PathDialog archiveDialog);

    TermExchange(const TermExchange&) = delete;
    TermExchange& operator=(const TermExchange&) = delete;

    /** Lets the user preview an import. */
    void askForImport();

    /** Checks the terms, and reports what is found. Not while there is a preview, which the report would take the place of. */
    void askForCheck() { _checkPopup.open(); }

    /** Whether a preview waits for its user. */
    bool hasPreview() const { return _preview.state() == ImportPreview::State::Ready; }

    /** Does what the user asked for in the last frame, and goes on with what runs. Between two frames. */
    void prepare();

    /** Draws the report, where its window is open, and what stands before everything else. */
    void draw();

    /** Ends what runs, without any trace of it, and the question for it. */
    void stop();

    /** Forgets everything: another project has been opened. */
    void reset();

    /** Whether something runs that the user waits for. */
    bool isBusy() const { return _preview.isRunning() || _check.isRunning(); }

    /** Whether another thread reads the project now, which therefore must not change. */
    bool readsProject() const { return _preview.readsProject() || _check.readsProject(); }

private:
    void executeRequest(ImportPopup::Request request);
    void executeCheck(CheckPopup::Request request);
    void executeAction(ReportPanel::Action action);
    void choose(PathDialog dialog, Containers::StringView title);
    void start();
    Int defaultLanguage(Containers::String& reason) const;
    void react(ImportPreview::Event event);
    void noticeRun();
    void noteRun(const LocalizationRun& run, bool isPreview);
    void showPanel();

    EditorSession* _session;
    MessageLog* _log;
    FileSystem* _fileSystem;
    PathDialog _folderDialog;
    PathDialog _archiveDialog;
    ImportPreview _preview;
    ImportPopup _popup;
    TermCheck _check;
    CheckPopup _checkPopup;
    ReportPanel _panel;
    UnsignedInt _panelView;
    ImportPopup::Request _request = ImportPopup::Request::None;
    CheckPopup::Request _checkRequest = CheckPopup::Request::None;
    ReportPanel::Action _action = ReportPanel::Action::None;
    std::shared_ptr<const LocalizationRun> _noticed;
    Containers::String _path;
    bool _isOutdated = false;
    bool _bringsPanelToFront = false;
};

}
