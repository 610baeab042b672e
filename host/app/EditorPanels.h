#pragma once

#include <utility>

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "app/ChangeSteps.h"
#include "app/HistoryPanel.h"
#include "app/MessagePanel.h"

namespace QuorvaneEngine {

class EditorSession;
class ModuleLoader;

/** The host's own windows beside the views: messages, history and plug-ins. Each is a view to the editor's state, closed at first. */
class QUORVANE_API EditorPanels {
public:
    /** @param session  must outlive this object, as must the others */
    explicit EditorPanels(EditorSession& session, const MessageLog& log, const ModuleLoader& modules);

    EditorPanels(const EditorPanels&) = delete;
    EditorPanels& operator=(const EditorPanels&) = delete;

    /** Does what was asked for in the last frame. Between two frames. */
    void prepare();

    /** Draws the windows that are open. */
    void draw();

    /** Opens or closes the window with all messages. */
    void toggleMessages();

    /** The name of the module that the user wanted to be loaded anew since the last call; empty for none. */
    Containers::String takeReload() { return std::exchange(_reload, {}); }

    /** The steps of the change log, as they are now. */
    ChangeSteps& steps();

private:
    void goTo(Int steps);

    EditorSession* _session;
    const MessageLog* _log;
    const ModuleLoader* _modules;
    UnsignedInt _messagesView;
    UnsignedInt _historyView;
    UnsignedInt _modulesView;
    MessagePanel _messages;
    ChangeSteps _steps;
    HistoryPanel _history;
    Int _wanted = HistoryPanel::Nowhere;
    Containers::String _reload;
};

}
