#include "app/Questions.h"

#include <imgui.h>

#include <icons_font_awesome_6.h>

#include "ImGuiGuards.h"
#include "app/Widgets.h"

namespace QuorvaneEngine {

namespace {

constexpr float TextWidth = 520.0f;

/** Opens the dialog in the middle of the main window when it is not open yet. It would take the place of any popup that is open,
    and so waits until there is none. */
void prepare(const char* name) {
    if(!ImGui::IsPopupOpen(nullptr, ImGuiPopupFlags_AnyPopup)) ImGui::OpenPopup(name);
    ImGui::SetNextWindowPos(ImGui::GetMainViewport()->GetWorkCenter(), ImGuiCond_Appearing, {0.5f, 0.5f});
}

/** Room around what a dialog says. */
ImVec2 padding() { return {Widgets::scaled(20.0f), Widgets::scaled(16.0f)}; }

constexpr ImGuiWindowFlags Flags = ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoSavedSettings;

struct Button {
    const char* label;
    Answer answer;
};

struct Form {
    /** Of the dialog. */
    const char* name;
    const char* icon;
    const char* heading;
    /** Below what the question is about. */
    const char* text;
    /** The first one stands out. */
    Button buttons[3];
    /** To the key Escape; None where the user has to decide. */
    Answer escape;
};

/** One for each question, in their order. */
constexpr Form Forms[]{
    {"Unsaved changes", ICON_FA_FLOPPY_DISK, "Save the changes of this project?", "What is not saved is lost.",
        {{"Save", Answer::Save}, {"Don't save", Answer::Discard}, {"Cancel", Answer::Cancel}}, Answer::Cancel},
    {"Project in use", ICON_FA_LOCK, "This project is open elsewhere",
        "It can be opened read-only: it cannot be saved as long as the other program has it open.",
        {{"Open read-only", Answer::OpenReadOnly}, {"Cancel", Answer::Cancel}, {}}, Answer::Cancel},
    {"Changed on disk", ICON_FA_ROTATE, "Another program has changed this project",
        "Reload takes what is on the disk; what is not saved here is lost, and nothing can be undone. Keep mine goes "
        "on with what is here; when it is saved, what the other program wrote is lost. Later asks again when you save, "
        "or when more changes on the disk.",
        {{"Reload", Answer::Reload}, {"Keep mine", Answer::KeepMine}, {"Later", Answer::Later}}, Answer::Later},
    {"Save over changes", ICON_FA_TRIANGLE_EXCLAMATION, "Save over what another program wrote?",
        "Save over it, and what the other program wrote is lost. Reload, and what is not saved here is lost.",
        {{"Save over it", Answer::SaveOver}, {"Reload", Answer::Reload}, {"Cancel", Answer::Cancel}}, Answer::Cancel},
    {"Kept changes", ICON_FA_CLOCK_ROTATE_LEFT, "Unsaved changes were kept",
        "Restore them, and they are unsaved changes of this project. Discard them, and they are lost.",
        {{"Restore", Answer::Restore}, {"Discard", Answer::DropCopy}, {}}, Answer::None},
    {"Plug-in trouble", ICON_FA_PLUG_CIRCLE_XMARK, "The editor died while it was loading a plug-in",
        "Left out, it stays so until it is loaded in View > Plug-ins, or its file is another one. The key Escape "
        "leaves "
        "it out this time, and the next start asks again.",
        {{"Leave out", Answer::LeaveOut}, {"Load anyway", Answer::LoadAnyway}, {}}, Answer::LeaveOutNow},
    {"Project not saved", ICON_FA_LOCK, "This project is read-only here",
        "Your changes stay here, unsaved. They can be saved as soon as the other program has closed the project; "
        "then it says so.",
        {{"OK", Answer::Cancel}, {}, {}}, Answer::Cancel},
};

/** @return the answer that was given */
Answer drawButtons(const Form& form) {
    Answer answer = Answer::None;
    for(const Button& button: form.buttons) {
        if(!button.label) continue;
        const bool isFirst = &button == form.buttons;
        if(!isFirst) ImGui::SameLine();
        if(isFirst ? Widgets::primaryButton(button.label) : ImGui::Button(button.label)) answer = button.answer;
    }
    if(form.escape != Answer::None && ImGui::Shortcut(ImGuiKey_Escape)) answer = form.escape;
    return answer;
}

}

void Questions::ask(const Question question, const Containers::StringView text) {
    _isAsked[std::size_t(question)] = true;
    _texts[std::size_t(question)] = Containers::String{text};
}

Answer Questions::draw() {
    // What could not be done comes before what is to be done next.
    if(!_failure.isEmpty()) drawFailure();
    Answer answer = Answer::None;
    for(std::size_t question = 0; question != Count && answer == Answer::None; ++question)
        if(_isAsked[question] || _isShown[question]) answer = drawQuestion(question);
    if(_showsAbout) drawAbout();
    return answer;
}

Answer Questions::drawQuestion(const std::size_t question) {
    static_assert(sizeof(Forms) / sizeof(*Forms) == Count);
    const Form& form = Forms[question];
    if(_isAsked[question]) prepare(form.name);
    StyleGuard style;
    style.variable(ImGuiStyleVar_WindowPadding, padding());
    const PopupGuard modal{ImGui::BeginPopupModal(form.name, nullptr, Flags)};
    _isShown[question] = bool(modal);
    if(!modal) return Answer::None;
    if(!_isAsked[question]) {
        ImGui::CloseCurrentPopup();
        return Answer::None;
    }
    // Who went on by keys until now did not choose the first button.
    const bool comesUnasked = form.escape == Answer::None || form.escape == Answer::Later;
    if(ImGui::IsWindowAppearing() && comesUnasked) ImGui::SetNavCursorVisible(false);
    {
        const Widgets::BlockScope block{Widgets::scaled(TextWidth)};
        Widgets::heading(form.icon, form.heading);
        if(!_texts[question].isEmpty()) {
            Widgets::text(_texts[question]);
            ImGui::Spacing();
        }
        Widgets::text(form.text);
        ImGui::Spacing();
    }
    const Answer answer = drawButtons(form);
    if(answer == Answer::None) return answer;
    _isAsked[question] = false;
    ImGui::CloseCurrentPopup();
    return answer;
}

void Questions::drawFailure() {
    prepare("Project not opened");
    StyleGuard style;
    style.variable(ImGuiStyleVar_WindowPadding, padding());
    const PopupGuard modal{ImGui::BeginPopupModal("Project not opened", nullptr, Flags)};
    if(!modal) return;
    {
        const Widgets::BlockScope block{Widgets::scaled(TextWidth * 1.3f)};
        Widgets::heading(ICON_FA_TRIANGLE_EXCLAMATION, "This project cannot be opened");
        Widgets::text(_failure);
        ImGui::Spacing();
    }
    if(!Widgets::primaryButton("OK") && !ImGui::Shortcut(ImGuiKey_Escape)) return;
    _failure = {};
    ImGui::CloseCurrentPopup();
}

void Questions::drawAbout() {
    prepare("About");
    StyleGuard style;
    style.variable(ImGuiStyleVar_WindowPadding, padding());
    const PopupGuard modal{ImGui::BeginPopupModal("About", nullptr, Flags)};
    if(!modal) return;
    {
        const Widgets::BlockScope block{Widgets::scaled(TextWidth)};
        Widgets::heading(ICON_FA_LANGUAGE, "Quorvane editor");
        Widgets::text("Version " QUORVANE_VERSION);
        Widgets::paleText("The words of a game, in every language that it speaks.");
        ImGui::Spacing();
    }
    if(!Widgets::primaryButton("Close") && !ImGui::Shortcut(ImGuiKey_Escape)) return;
    _showsAbout = false;
    ImGui::CloseCurrentPopup();
}

}
