#pragma once

#include "QuorvaneEditor/Host.h"
#include "app/ChangeSteps.h"
#include "app/HistoryPanel.h"

namespace QuorvaneEngine {

class EditorSession;
class MessageLog;

/** The host's own windows beside the views: messages and history. Each is a view to the editor's state, closed at first. */
class QUORVANE_API EditorPanels {
public:
    /** @param session  must outlive this object, as must the log */
    explicit EditorPanels(EditorSession& session, const MessageLog& log);

    EditorPanels(const EditorPanels&) = delete;
    EditorPanels& operator=(const EditorPanels&) = delete;

    /** Does what was asked for in the last frame. Between two frames. */
    void prepare();

    /** Draws the windows that are open. */
    void draw();

    /** Opens or closes the window with all messages. */
    void toggleMessages();

    /** The steps of the change log, as they are now. */
    ChangeSteps& steps();

private:
    void goTo(Int steps);

    EditorSession* _session;
    const MessageLog* _log;
    UnsignedInt _messagesView;
    UnsignedInt _historyView;
    ChangeSteps _steps;
    HistoryPanel _history;
    Int _wanted = HistoryPanel::Nowhere;
};

}
