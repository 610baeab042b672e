#include "app/ReportPanel.h"

#include <algorithm>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Format.h>
#include <imgui.h>
#include <imgui_internal.h>

#include <icons_font_awesome_6.h>

#include "ChangeManager.h"
#include "ImGuiGuards.h"
#include "ImGuiText.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "Ui/Ui.h"
#include "app/DockLayout.h"
#include "app/MessagePanel.h"
#include "app/OutcomeLook.h"
#include "app/ReportText.h"
#include "app/Widgets.h"
#include "localization/LastRun.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

constexpr std::size_t SearchCapacity = 256;

/** From this width on, at scale 1, the tables stand side by side. */
constexpr float WideLayout = 1100.0f;

constexpr const char* ApplyLabel = ICON_FA_CHECK "  Apply###Apply";
constexpr const char* DiscardLabel = "Discard";
constexpr const char* CopyLabel = ICON_FA_COPY "  Copy###Copy";

constexpr float MinSearchWidth = 160.0f;
constexpr float MaxSearchWidth = 360.0f;

/* By LocalizationRun::Kind */
constexpr const char* KindIcons[]{
    ICON_FA_LIST_CHECK, ICON_FA_FILE_EXPORT, ICON_FA_FILE_IMPORT, ICON_FA_MAGNIFYING_GLASS};
constexpr const char* UndoLabels[]{ICON_FA_ROTATE_LEFT "  Undo this gathering###Undo", nullptr,
    ICON_FA_ROTATE_LEFT "  Undo this import###Undo", ICON_FA_ROTATE_LEFT "  Undo the import###Undo"};

/** Null where the run has nothing that could be undone. */
const char* undoLabel(const LocalizationRun& run) {
    return run.kind == LocalizationRun::Kind::Check && run.group == -1 ? nullptr : UndoLabels[std::size_t(run.kind)];
}

float buttonWidth(const char* label) {
    return ImGui::CalcTextSize(label, nullptr, true).x + 2.0f * ImGui::GetStyle().FramePadding.x;
}

void drawIcon(const char* icon, const ImVec4& color) {
    StyleGuard style;
    style.color(ImGuiCol_Text, color);
    ImGui::TextUnformatted(icon);
    ImGui::SameLine();
}

void drawErrorIcon() {
    drawIcon(MessagePanel::icon(MessageLog::Severity::Error), MessagePanel::color(MessageLog::Severity::Error));
}

/** A text of one line that ends in an ellipsis where it is longer than a width in pixels; then all of it shows under the mouse. */
void drawEllipsis(Containers::StringView text, float width) {
    const ImVec2 cursor = ImGui::GetCursorScreenPos();
    const ImVec2 position{cursor.x, cursor.y + ImGui::GetCurrentWindow()->DC.CurrLineTextBaseOffset};
    const float needed = calcTextSize(text).x;
    const float end = position.x + std::min(needed, width);
    const float height = ImGui::GetFontSize();
    ImGui::Dummy({std::max(end - position.x, 1.0f), height});
    if(needed > width && ImGui::IsItemHovered()) setTooltip(text);
    ImGui::RenderTextEllipsis(
        ImGui::GetWindowDrawList(), position, {end, position.y + height}, end, text.begin(), text.end(), nullptr);
}

/** A button that stays pressed while something is on. */
bool drawSwitch(Containers::StringView label, const ImVec4& color, bool isOn) {
    StyleGuard style;
    style.color(ImGuiCol_Text, isOn ? color : ImGui::GetStyleColorVec4(ImGuiCol_TextDisabled));
    if(!isOn) style.color(ImGuiCol_Button, ImVec4{});
    return ImGui::Button(ImGuiText{label});
}

void explain(Containers::StringView reason) {
    if(!reason.isEmpty() && ImGui::IsItemHovered(ImGuiHoveredFlags_AllowWhenDisabled)) setTooltip(reason);
}

}

ReportPanel::ReportPanel(): _search{Corrade::ValueInit, SearchCapacity} {}

ReportPanel::Action ReportPanel::draw(const QuorvaneEditor& editor, const std::shared_ptr<const LocalizationRun>& run,
    const Mode mode, bool* const open) {
    ImGui::SetNextWindowSize({Widgets::scaled(900.0f), Widgets::scaled(400.0f)}, ImGuiCond_FirstUseEver);
    const WindowGuard window{ImGui::Begin(DockLayout::Report, open, ImGuiWindowFlags_NoScrollbar)};
    show(run, mode);
    if(!window) return Action::None;
    if(!_run) {
        Widgets::paleText(
            "What gathering, export and import have done, and what checks have found, is reported here."_s);
        return Action::None;
    }
    findObstacle(editor);
    Action action = drawHeadline();
    drawRefusals();
    if(_run->refusals.isEmpty()) {
        if(const Action asked = drawTools(); asked != Action::None) action = asked;
        drawTables();
    }
    if(ImGui::Shortcut(ImGuiMod_Ctrl | ImGuiKey_C)) _table.copySelected();
    return action;
}

void ReportPanel::show(const std::shared_ptr<const LocalizationRun>& run, const Mode mode) {
    const bool isOther = run != _run;
    if(!isOther && mode == _mode) return;
    _run = run;
    _mode = mode;
    _obstacleRevision = -1;
    if(!run) {
        _table = {};
        return;
    }
    _headline = ReportText::headline(*run, mode != Mode::Done);
    _time = ReportText::time(*run);
    if(!isOther) return;

    // What hid lines of the last report shall not hide any of this one; a field that is being edited has a copy of its text.
    _outcomes = ReportRows::AllOutcomes;
    _search[0] = '\0';
    if(ImGuiInputTextState* const edited = ImGui::GetInputTextState(getId("##report"_s)))
        edited->ReloadUserBufAndSelectAll();
    _table.assign(run);
    _counts.assign(run->report);
    _filters = {};
    for(const OutcomeLook& look: outcomeLooks()) {
        const auto lines = std::count_if(run->report.lines().begin(), run->report.lines().end(),
            [&](const LocalizationReport::Line& line) { return line.outcome == look.outcome; });
        if(!lines) continue;
        const Containers::StringView name = lines == 1 ? ReportText::outcomeName(look.outcome) : look.heading;
        Containers::arrayAppend(_filters,
            Filter{look.outcome, Corrade::Utility::format("{} {} {}###{}", look.icon, lines, name, look.heading)});
    }
}

void ReportPanel::findObstacle(const QuorvaneEditor& editor) {
    const Int revision = editor.project().revision();
    const bool isInGroup = editor.changeManager().isGroupOpen();
    if(revision == _obstacleRevision && isInGroup == _obstacleInGroup) return;
    _obstacleRevision = revision;
    _obstacleInGroup = isInGroup;
    _isUndone = ReportText::isUndone(editor, *_run);
    if(_mode == Mode::Done) _obstacle = ReportText::undoObstacle(editor, *_run);
    else _obstacle = isInGroup ? "Another change is not finished yet"_s : ""_s;
}

ReportPanel::Action ReportPanel::drawHeadline() const {
    const bool isRefused = !_run->refusals.isEmpty();
    const bool isPreview = _mode != Mode::Done;
    const bool isOutdated = _mode == Mode::Outdated;
    const OutcomeLook& look = outcomeLook(isOutdated ? TermOutcome::Skipped : TermOutcome::Changed);
    ImGui::AlignTextToFramePadding();
    if(isRefused) drawErrorIcon();
    else drawIcon(KindIcons[std::size_t(_run->kind)], look.color());

    const float spacing = ImGui::GetStyle().ItemSpacing.x;
    const float buttons = isPreview ? buttonWidth(ApplyLabel) + spacing + buttonWidth(DiscardLabel) + spacing
        : isRefused                 ? buttonWidth(CopyLabel) + spacing
                                    : 0.0f;
    const float end = ImGui::GetCursorPosX() + ImGui::GetContentRegionAvail().x;
    const Containers::StringView undone = _isUndone ? "(undone)"_s : ""_s;
    const float details = calcTextSize(_time).x + calcTextSize(undone).x + 2.0f * spacing;
    drawEllipsis(_headline, end - ImGui::GetCursorPosX() - buttons - details);
    ImGui::SameLine();
    Widgets::paleText(_time);
    ImGui::SameLine();
    Widgets::paleText(undone);
    Action action = Action::None;
    if(isPreview) {
        ImGui::SameLine(end - buttons + spacing);
        action = drawPreviewButtons();
    } else if(isRefused) {
        ImGui::SameLine(end - buttons + spacing);
        if(ImGui::Button(CopyLabel)) _table.copyShown();
        explain("Copy the reasons"_s);
    }
    if(isOutdated) {
        StyleGuard style;
        style.color(ImGuiCol_Text, look.color());
        const TextWrapGuard wrap{0.0f};
        Widgets::text("The project has changed since the preview that was to be applied. "
                      "This is what \"Apply\" does now."_s);
    }
    return action;
}

ReportPanel::Action ReportPanel::drawPreviewButtons() const {
    Action action = Action::None;
    {
        const DisabledGuard disabled{!_obstacle.isEmpty()};
        if(Widgets::primaryButton(ApplyLabel)) action = Action::Apply;
    }
    explain(_obstacle.isEmpty() ? "One step, which Edit > Undo takes back"_s : _obstacle);
    ImGui::SameLine();
    if(ImGui::Button(DiscardLabel)) action = Action::Discard;
    explain("Forget the preview; the project stays as it is"_s);
    return action;
}

ReportPanel::Action ReportPanel::drawUndoButton() const {
    bool isPressed = false;
    {
        const DisabledGuard disabled{!_obstacle.isEmpty()};
        isPressed = ImGui::Button(undoLabel(*_run));
    }
    explain(_obstacle);
    return isPressed ? Action::Undo : Action::None;
}

void ReportPanel::drawRefusals() const {
    if(_run->refusals.isEmpty()) return;
    const float line = ImGui::GetTextLineHeightWithSpacing();
    const float padding = 2.0f * ImGui::GetStyle().WindowPadding.y;
    const float wanted = line * float(_run->refusals.size()) + padding + ImGui::GetStyle().ScrollbarSize;
    const float space = ImGui::GetContentRegionAvail().y;
    const ChildGuard child{ImGui::BeginChild(
        "refusals", {0.0f, std::min(wanted, space)}, ImGuiChildFlags_Borders, ImGuiWindowFlags_HorizontalScrollbar)};
    if(!child) return;
    ImGuiListClipper clipper;
    clipper.Begin(int(_run->refusals.size()), line);
    while(clipper.Step())
        for(int i = clipper.DisplayStart; i != clipper.DisplayEnd; ++i) {
            const IdGuard id{i};
            drawErrorIcon();
            Widgets::text(_run->refusals[std::size_t(i)]);
        }
}

ReportPanel::Action ReportPanel::drawTools() {
    bool isChanged = false;
    for(const Filter& filter: _filters) {
        const ReportRows::Outcomes bit = ReportRows::bit(filter.outcome);
        if(drawSwitch(filter.label, outcomeLook(filter.outcome).color(), _outcomes & bit)) {
            _outcomes ^= bit;
            isChanged = true;
        }
        explain("Show or hide these lines"_s);
        ImGui::SameLine();
    }

    // Far from where "Apply" was: a second click shall not take the import back.
    const char* const undo = _mode == Mode::Done && _run->refusals.isEmpty() ? undoLabel(*_run) : nullptr;
    const float spacing = ImGui::GetStyle().ItemSpacing.x;
    const float undoWidth = undo ? buttonWidth(undo) + spacing : 0.0f;
    // The search bar counts its icon, and not what lies between that and the field.
    const float others = 2.0f * spacing + buttonWidth(CopyLabel) + undoWidth;
    if(ImGui::GetContentRegionAvail().x - others < Widgets::scaled(MinSearchWidth)) ImGui::NewLine();
    const float space = ImGui::GetContentRegionAvail().x - others;
    const float end = ImGui::GetCursorPosX() + ImGui::GetContentRegionAvail().x;
    {
        const GroupGuard group;
        isChanged |=
            Ui::searchBar("report"_s, _search, std::min(space, Widgets::scaled(MaxSearchWidth)), {}, 0.0f, false);
    }
    if(isChanged) _table.filter(_outcomes, _search.data());
    ImGui::SameLine();
    if(ImGui::Button(CopyLabel)) _table.copyShown();
    explain("Copy all lines that are shown, with tabs between columns"_s);
    if(!undo) return Action::None;
    ImGui::SameLine(std::max(end - undoWidth + spacing, 0.0f));
    return drawUndoButton();
}

void ReportPanel::drawTables() {
    const ImVec2 space = ImGui::GetContentRegionAvail();
    const float spacing = ImGui::GetStyle().ItemSpacing.x;
    const bool isWide = space.x >= Widgets::scaled(WideLayout);
    const float scrollbar = ImGui::GetStyle().ScrollbarSize;
    const float height = isWide ? space.y : std::min(_counts.height() + scrollbar, space.y * 0.4f);
    const float wanted = _counts.width() + (_counts.height() > height ? scrollbar : 0.0f);
    _counts.draw({isWide ? wanted : std::min(wanted, space.x), height});
    if(isWide) ImGui::SameLine(0.0f, spacing);
    const ImVec2 rest = ImGui::GetContentRegionAvail();
    _table.draw({rest.x, std::max(rest.y, 4.0f * ImGui::GetTextLineHeightWithSpacing())});
}

}
