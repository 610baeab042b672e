#include "app/ViewSet.h"

#include <algorithm>
#include <utility>

#include <Corrade/Containers/Array.h>
#include <Corrade/Utility/Debug.h>
#include <imgui.h>

#include <icons_font_awesome_6.h>

#include "EditorView.h"
#include "ImGuiGuards.h"
#include "QuorvaneEditor/EditorData.h"
#include "QuorvaneEditor/ProjectWatch.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "QuorvaneEditor/QuorvaneEditorApplication.h"
#include "Ui/Ui.h"
#include "app/Widgets.h"
#include "modules/ModuleLoader.h"

namespace QuorvaneEngine {

namespace {

constexpr Int ModuleTypeView = 1;

/** The first framework whose views have EditorView::show(). */
constexpr Int ShowingFramework = 2;

void warn(Containers::StringView reason) {
    for(Containers::StringView line: reason.splitWithoutEmptyParts('\n'))
        Corrade::Utility::Warning{} << "project.json:" << line;
}

}

ViewSet::ViewSet(ModuleLoader& modules, QuorvaneEditorApplication& application, EditorData& data,
    Containers::ArrayView<const ViewCondition> conditions)
    : _modules{&modules}, _application{&application}, _data{&data}, _conditions{conditions} {
    for(const ModuleLoader::Module& found: modules.modules()) {
        if(found.status == ModuleLoader::Status::LeftOut) continue;
        AbstractModule* const module = load(found.name);
        if(module && module->moduleType() == ModuleTypeView)
            _entries.push_back(Entry{found.name, nullptr, nullptr, {}});
    }
}

ViewSet::~ViewSet() {
    for(const Entry& entry: _entries) {
        if(!entry.view) continue;
        entry.view->deinit();
        endSubscriptions(entry);
    }
}

AbstractModule* ViewSet::load(Containers::StringView name) {
    if(AbstractModule* const module = _modules->module(name)) return module;
    const LoadNote::Scope note = _modules->noted(name);
    AbstractModule* const module = _modules->load(name);
    if(module) module->load();
    return module;
}

void ViewSet::start(Entry& entry) {
    const LoadNote::Scope note = _modules->noted(entry.module);
    entry.isProven = false;
    // A view's module has no other kind of object.
    entry.view = static_cast<EditorView*>(load(entry.module));
    if(!entry.view) return;
    for(const Entry& other: _entries)
        if(&other != &entry && other.view && other.view->title() == entry.view->title())
            Corrade::Utility::Warning{} << "ViewSet::start(): the views of" << other.module << "and" << entry.module
                                        << "share a window, because both have the title" << entry.view->title();
    entry.view->init(ImGui::GetCurrentContext(), _data, _application);
}

void ViewSet::stop(Entry& entry) {
    entry.reason = {};
    if(!entry.view) return;
    entry.view->deinit();
    endSubscriptions(entry);
    entry.view = nullptr;
    _modules->unload(entry.module);
}

void ViewSet::endSubscriptions(const Entry& entry) {
    // Those as well whose guards the view has lost: their code goes with the module.
    if(ProjectWatch* const watch = _application->editor().projectWatch()) watch->endAll(*entry.view);
}

void ViewSet::restart() {
    for(Entry& entry: _entries) stop(entry);
    for(Entry& entry: _entries) start(entry);
    _started = true;
    _checkedRevision = -1;
}

void ViewSet::restart(const Containers::StringView title) {
    for(Entry& entry: _entries) {
        if(!entry.view || entry.view->title() != title) continue;
        stop(entry);
        start(entry);
        _checkedRevision = -1;
        return;
    }
}

void ViewSet::reload() {
    for(Entry& entry: _entries) reload(entry);
    _checkedRevision = -1;
}

void ViewSet::reload(Entry& entry) {
    if(entry.view) {
        const LoadNote::Scope note = _modules->noted(entry.module);
        entry.isProven = false;
        endSubscriptions(entry);
        entry.view = static_cast<EditorView*>(_modules->reload(entry.module));
    } else if(_started) {
        start(entry);
    } else {
        // A view that is bound to nothing has no state to hand over.
        _modules->unload(entry.module);
        load(entry.module);
    }
}

bool ViewSet::reload(const Containers::StringView module) {
    _checkedRevision = -1;
    const auto known =
        std::find_if(_entries.begin(), _entries.end(), [&](const Entry& entry) { return entry.module == module; });
    if(known != _entries.end()) {
        reload(*known);
        return _modules->module(module);
    }
    const LoadNote::Scope note = _modules->noted(module);
    AbstractModule* const object = _modules->module(module) ? _modules->reload(module) : load(module);
    if(!object || object->moduleType() != ModuleTypeView) return object;
    _entries.push_back(Entry{Containers::String{module}, nullptr, nullptr, {}});
    if(_started) start(_entries.back());
    return true;
}

void ViewSet::checkConditions() {
    const Int revision = _data->storedRevision();
    if(revision == _checkedRevision) return;
    _checkedRevision = revision;
    for(Entry& entry: _entries) {
        const Containers::String before = std::exchange(entry.reason, {});
        entry.failed = nullptr;
        if(!entry.view) continue;
        for(const ViewCondition& condition: _conditions) {
            if(condition.view != entry.view->title()) continue;
            entry.reason = condition.reason(_application->editor());
            if(entry.reason.isEmpty()) continue;
            entry.failed = &condition;
            if(entry.reason != before) warn(entry.reason);
            break;
        }
    }
}

void ViewSet::draw() {
    for(Entry& entry: _entries) {
        if(!entry.view || !entry.view->open()) continue;
        if(std::exchange(entry.isRaised, false)) {
            ImGui::SetNextWindowFocus();
            ImGui::SetNextWindowCollapsed(false);
        }
        if(entry.failed) {
            drawReason(entry);
        } else if(entry.isProven) {
            drawView(entry);
        } else {
            const LoadNote::Scope note = _modules->noted(entry.module);
            drawView(entry);
            entry.isProven = true;
        }
    }
}

void ViewSet::drawView(Entry& entry) {
    Ui& ui = _application->ui();
    const std::size_t scope = ui.scopePath().size();
    const std::size_t flagCount = ui.flagStack.size();
    entry.view->draw();
    const Containers::StringView leftOpen = ui.scopePath().exceptPrefix(std::min(scope, ui.scopePath().size()));
    const std::size_t flagsLeft = ui.flagStack.size() - std::min(flagCount, ui.flagStack.size());
    if(leftOpen.isEmpty() && !flagsLeft) return;
    if(!std::exchange(entry.isLeakTold, true)) {
        Corrade::Utility::Warning warning;
        warning << "ViewSet::draw():" << entry.view->title() << "left open:";
        if(!leftOpen.isEmpty()) warning << "the scope" << leftOpen;
        if(flagsLeft) warning << flagsLeft << "flags";
    }
    // Their IDs are gone with the window that they belong to.
    if(!leftOpen.isEmpty()) ui.path[scope] = '\0';
    while(ui.flagStack.size() > flagCount) ui.popFlags();
}

void ViewSet::drawReason(Entry& entry) {
    const WindowGuard window{ImGui::Begin(entry.view->title().data(), &entry.view->open(), ImGuiWindowFlags_None)};
    if(!window) return;
    const float width = Widgets::scaled(560.0f);
    Widgets::centre(width, Widgets::scaled(160.0f));
    const Widgets::BlockScope block{width};
    Widgets::heading(ICON_FA_SCREWDRIVER_WRENCH, "This view cannot work with the project as it is");
    Widgets::text(entry.reason);
    ImGui::Spacing();
    if(Widgets::primaryButton("Repair")) _repair = entry.failed;
    ImGui::SameLine();
    Widgets::paleText("One step, which Edit > Undo takes back");
}

bool ViewSet::show(const Containers::StringView path) {
    for(Entry& entry: _entries) {
        if(!entry.view || _modules->framework(entry.module) < ShowingFramework || !entry.view->show(path)) continue;
        entry.view->open() = entry.isRaised = true;
        return true;
    }
    return false;
}

Containers::StringView ViewSet::reason(UnsignedInt view) const {
    for(const Entry& entry: _entries)
        if(entry.view && entry.view->viewId() == view) return entry.reason;
    return {};
}

const ViewCondition* ViewSet::takeRepair() { return std::exchange(_repair, nullptr); }

}
