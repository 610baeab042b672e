#include "app/EditorPanels.h"

#include <utility>

#include "app/DockLayout.h"
#include "app/ModulePanel.h"
#include "document/EditorSession.h"

namespace QuorvaneEngine {

namespace {

UnsignedInt registerClosed(EditorState& state, const char* title) {
    const UnsignedInt view = state.registerView(title);
    state.isViewOpen(view) = false;
    return view;
}

}

EditorPanels::EditorPanels(EditorSession& session, const MessageLog& log, const ModuleLoader& modules)
    : _session{&session},
      _log{&log},
      _modules{&modules},
      _messagesView{registerClosed(session.state(), DockLayout::Messages)},
      _historyView{registerClosed(session.state(), DockLayout::History)},
      _modulesView{registerClosed(session.state(), DockLayout::Modules)} {}

void EditorPanels::prepare() {
    if(const Int wanted = std::exchange(_wanted, HistoryPanel::Nowhere); wanted != HistoryPanel::Nowhere) goTo(wanted);
}

void EditorPanels::goTo(const Int steps) {
    // What was done since the click may have shortened the log.
    if(std::size_t(steps) > this->steps().size()) return;
    const ChangeManager& changes = _session->changes();
    const Int target = _steps.lastChange(std::size_t(steps));
    for(Int last = changes.lastChangeIndex(); last != target; last = changes.lastChangeIndex()) {
        if(last > target) _session->undo();
        else _session->redo();
        // Nothing moves in an open group, and one who is told of a change may have made another.
        const Int now = changes.lastChangeIndex();
        if(last > target ? now >= last || now < target : now <= last || now > target) return;
    }
}

void EditorPanels::draw() {
    EditorState& state = _session->state();
    if(bool& open = state.isViewOpen(_messagesView); open) _messages.draw(*_log, &open);
    if(bool& open = state.isViewOpen(_historyView); open) {
        const Int clicked = _history.draw(steps(), !_session->changes().isGroupOpen(), &open);
        if(clicked != HistoryPanel::Nowhere) _wanted = clicked;
    }
    if(bool& open = state.isViewOpen(_modulesView); open) {
        const Containers::StringView module = ModulePanel::draw(*_modules, &open);
        if(!module.isEmpty()) _reload = Containers::String{module};
    }
}

void EditorPanels::toggleMessages() {
    bool& open = _session->state().isViewOpen(_messagesView);
    open = !open;
}

ChangeSteps& EditorPanels::steps() {
    _steps.update(_session->editor());
    return _steps;
}

}
