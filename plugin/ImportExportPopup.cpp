#include <algorithm>
#include <cstring>

#include <Corrade/Containers/Array.h>
#include <Corrade/Utility/Path.h>
#include <imgui.h>

#include "ImGuiGuards.h"
#include "ImGuiText.h"
#include "LocalizationView.h"
#include "QuorvaneEditor/LocalizationTools.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "Ui/Ui.h"
#include "Utils/Dialogs.h"
#include "ViewState.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;
using namespace ViewState;

namespace {

constexpr int ImportMode = 1;
constexpr int ExportMode = 2;

constexpr float ControlColumn = 80.0f;

void rowLabel(const Containers::StringView text) {
    Ui::label(text);
    Ui::sameLineAt(Ui::scaled(ControlColumn));
}

}

void LocalizationView::drawImportExportPopup() {
    const ImVec2 windowSize = ImGui::GetWindowSize();
    const ImVec2 windowPosition = ImGui::GetWindowPos();
    const ImVec2 size{windowSize.x - Ui::scaled(100.0f), lastFramePopupHeight};
    ImGui::SetNextWindowSize(size);
    ImGui::SetNextWindowPos({windowPosition.x + 0.5f * windowSize.x - 0.5f * size.x,
                                windowPosition.y + 0.5f * windowSize.y - 0.5f * size.y},
        ImGuiCond_Always, {0.0f, 0.0f});
    const char* const name = importExportPopupNames[currentMode].data();
    if(currentMode != 0 && !isOpen) {
        ImGui::OpenPopup(name);
        isOpen = true;
    }
    if(const PopupGuard popup{ImGui::BeginPopupModal(name, &isOpen, ImGuiWindowFlags_NoResize)}; popup) {
        drawPathRow();
        drawFormatRow();
        drawZipRow();
        if(ImGui::Button(currentMode == ExportMode ? "Export" : "Import", {ImGui::GetContentRegionAvail().x, 0.0f})) {
            runImportOrExport();
            currentMode = 0;
            ImGui::CloseCurrentPopup();
            isOpen = false;
        }
        lastFramePopupHeight = ImGui::GetCursorPosY() + Ui::scaled(4.0f);
    }
    if(!isOpen) currentMode = 0;
}

void LocalizationView::drawPathRow() {
    if(!pathBuffer[0]) {
        const Containers::String path = Corrade::Utility::Path::join(editor().exchangePath(), ""_s);
        /* A longer path than fits is none that the user should write to cut: the field stays empty */
        if(path.size() < sizeof(pathBuffer)) std::memcpy(pathBuffer, path.data(), path.size() + 1);
    }

    rowLabel("Path"_s);
    const ImGuiStyle& style = ImGui::GetStyle();
    const float buttonWidth = ImGui::CalcTextSize("...").x + 2.0f * style.FramePadding.x;
    ImGui::SetNextItemWidth(ImGui::GetContentRegionAvail().x - buttonWidth - style.WindowPadding.x);
    ImGui::InputText("##path", pathBuffer, sizeof(pathBuffer));
    ImGui::SameLine();
    if(ImGui::Button("...")) choosePath();
}

void LocalizationView::choosePath() {
    const Containers::String start = Corrade::Utility::Path::toNativeSeparators(Containers::StringView{pathBuffer});
    Containers::String chosen;
    if(currentMode == ExportMode) {
        chosen = enableZipCompression ? saveFileDialog("Save Terms"_s, start, {"ZIP Archive"_s, "*.zip"_s})
                                      : saveFileDialog("Save Terms"_s, start, {""_s, ""_s});
    } else if(!enableZipCompression) {
        chosen = openFolderDialog("Load Terms from folder"_s, start);
    } else {
        Containers::Array<Containers::String> files =
            openFileDialog("Load Terms as ZIP"_s, start, {"ZIP Archive"_s, "*.zip"_s}, false);
        if(!files.isEmpty()) chosen = std::move(files[0]);
    }
    if(chosen.isEmpty()) return;

    const std::size_t size = std::min(chosen.size(), sizeof(pathBuffer));
    std::memcpy(pathBuffer, chosen.data(), size);
    if(size < sizeof(pathBuffer)) pathBuffer[size] = '\0';
    pathBuffer[sizeof(pathBuffer) - 1] = '\0';
}

void LocalizationView::drawFormatRow() {
    rowLabel("Format"_s);
    ImGui::SetNextItemWidth(ImGui::GetContentRegionAvail().x);
    const ComboGuard combo{ImGui::BeginCombo("##Format", "i18next")};
    if(combo && ImGui::Selectable("i18next", currentFormat == 0)) currentFormat = 0;
}

void LocalizationView::drawZipRow() {
    rowLabel("Compress to .zip"_s);
    // The box is lower than a framed row: it stands in the middle of it, as the label does.
    ImGui::SetCursorPosY(ImGui::GetCursorPosY() + 0.5f * (ImGui::GetFrameHeight() - Ui::checkboxHeight()));
    Ui::checkbox("##zip"_s, &enableZipCompression);
}

void LocalizationView::runImportOrExport() {
    const Containers::StringView path{pathBuffer};
    const auto format = LocalizationFormat(currentFormat);
    if(currentMode == ImportMode) {
        LocalizationTools::importTerms(editor(), _languages, _defaultLanguage, path, format);
        _needsRefilter = true;
    } else if(enableZipCompression)
        LocalizationTools::exportTermsCompressed(editor(), _languages, _defaultLanguage, path, format);
    else LocalizationTools::exportTerms(editor(), _languages, _defaultLanguage, path, format);
}

}
