#include "LocalizationView.h"

#include <cstdlib>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Format.h>
#include <imgui.h>
#include <imgui_internal.h>

#include "ImGuiGuards.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/EditorData.h"
#include "QuorvaneEditor/LocalizationTools.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/QuorvaneEditor.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "Ui/Ui.h"
#include "ViewState.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;
using namespace ViewState;

namespace {

constexpr std::size_t SearchCapacity = 100;
constexpr UnsignedInt UnknownLanguage = ~UnsignedInt{};

/* The index of a language by its code, LanguageCount where the table has none */
UnsignedInt languageByCode(const Containers::StringView code) {
    for(UnsignedInt i = 0; i != LanguageCount; ++i)
        if(AllLanguages[i].code == code) return i;
    return LanguageCount;
}

/* The first language that has a code: an import may have brought indices that the table does not have */
UnsignedInt firstKnown(const Containers::ArrayView<const UnsignedInt> languages) {
    for(const UnsignedInt language: languages)
        if(language < LanguageCount) return language;
    return FallbackLanguage;
}

}

LocalizationView::LocalizationView(
    Corrade::PluginManager::AbstractManager& manager, const Containers::StringView& plugin)
    : EditorView{manager, plugin},
      _searchBuffer{Corrade::NoInit, SearchCapacity},
      _languageSearchBuffer{Corrade::NoInit, SearchCapacity} {}

LocalizationView::~LocalizationView() = default;

Containers::StringView LocalizationView::title() { return "Localization"_s; }

void LocalizationView::init(ImGuiContext* context, EditorData* editorData, QuorvaneEditorApplication* application) {
    EditorView::init(context, editorData, application);
    _searchBuffer[0] = '\0';
    _languageSearchBuffer[0] = '\0';
    _needsRefilter = true;
}

void LocalizationView::deinit() {}
void LocalizationView::keyPressEvent() {}

bool LocalizationView::show(const Containers::StringView path) {
    constexpr Containers::StringView Terms = "/localization/terms/"_s;
    if(!path.hasPrefix(Terms)) return false;
    const Containers::StringView below = path.exceptPrefix(Terms);
    const Containers::StringView token = below.prefix(below.findOr('/', below.end()).begin());
    if(!editor().project().getValue(path, false)) return false;
    /* An input that is being edited would keep its text */
    ImGui::ClearActiveID();
    _mark.want(token);
    return true;
}

void LocalizationView::refreshLanguages() {
    Containers::arrayResize<Containers::ArrayMallocAllocator>(_languages, Corrade::NoInit, 0);
    for(const Containers::StringView code: editor().project().root().member("languages"_s)) {
        const UnsignedInt language = languageByCode(code);
        if(language != LanguageCount) Containers::arrayAppend<Containers::ArrayMallocAllocator>(_languages, language);
    }
    _needsRefilter = true;
}

Containers::StringView LocalizationView::rememberDefaultLanguage(const UnsignedInt language, const bool isMarked) {
    const Containers::StringView code = AllLanguages[language].code;
    if(!isMarked) _defaultLanguagePath = {};
    else if(_defaultLanguage != language || !_defaultLanguagePath)
        _defaultLanguagePath = Corrade::Utility::format("/languages/{}/isDefault", code);
    _defaultLanguage = language;
    return code;
}

Containers::StringView LocalizationView::findDefaultLanguage() {
    if(_languages.isEmpty()) {
        refreshLanguages();
        if(_languages.isEmpty())
            Containers::arrayAppend<Containers::ArrayMallocAllocator>(_languages, FallbackLanguage);
    }

    /* Where a project marks its default, the mark is all that a frame asks for; else it asks whether there are languages by now */
    const ValueAccess root = editor().project().root();
    if(_defaultLanguagePath && root[_defaultLanguagePath].asBool()) return AllLanguages[_defaultLanguage].code;

    const ValueAccess languages = root.member("languages"_s);
    if(!languages.isObject() || !languages.size()) return rememberDefaultLanguage(firstKnown(_languages), false);

    const auto isMarked = [&languages](const Containers::StringView code) {
        return languages.member(code).member("isDefault"_s).asBool();
    };
    if(_defaultLanguage != UnknownLanguage && isMarked(AllLanguages[_defaultLanguage].code))
        return rememberDefaultLanguage(_defaultLanguage, true);
    for(const Containers::StringView code: languages) {
        if(!isMarked(code)) continue;
        const UnsignedInt language = languageByCode(code);
        if(language != LanguageCount) return rememberDefaultLanguage(language, true);
    }

    Corrade::Utility::Error{} << "There should never be an instance where there is no default language!";
    std::abort();
}

void LocalizationView::draw() {
    findDefaultLanguage();

    ImGui::SetNextWindowSize(
        {Ui::scaled(250.0f), ImGui::GetIO().DisplaySize.y - Ui::scaled(450.0f)}, ImGuiCond_FirstUseEver);
    beginWindow(ImGuiWindowFlags_MenuBar);
    const WindowGuard window{_windowOpen};
    drawMenuBar();

    bool refilter = _editorData->currentRevision() != lastSearch || _needsRefilter;
    _needsRefilter = false;
    refilter |= drawTabBar();
    ImGui::Spacing();

    switch(currentTab) {
    case 0: drawTermsTab(refilter); break;
    case 1: drawLanguagesTab(refilter); break;
    case 2: break;
    default: Corrade::Utility::Error{} << "Unknown Tab"; std::abort();
    }
    drawImportExportPopup();
}

void LocalizationView::drawMenuBar() {
    const MenuBarGuard bar{ImGui::BeginMenuBar()};
    if(!bar) return;
    if(const MenuGuard file{ImGui::BeginMenu("File")}; file) {
        if(ImGui::MenuItem("Export", "", false, true)) currentMode = 2;
        if(ImGui::MenuItem("Import", "", false, true)) currentMode = 1;
    }
    if(const MenuGuard edit{ImGui::BeginMenu("Edit")}; edit) {
        if(ImGui::MenuItem("Gather Strings", "", false, true)) {
            LocalizationTools::gatherStrings(editor());
            _needsRefilter = true;
        }
        if(ImGui::MenuItem("Refresh Languages", "", false, true)) refreshLanguages();
    }
}

bool LocalizationView::drawTabBar() {
    static constexpr const char* Tabs[]{"Terms", "Languages"};

    const TabBarGuard bar{ImGui::BeginTabBar("localizationtabs")};
    if(!bar) return false;
    bool switched = false;
    for(int i = 0; i != 2; ++i) {
        const bool isWanted = i == 0 && currentTab != 0 && _mark.isWanted();
        const ImGuiTabItemFlags flags = isWanted ? ImGuiTabItemFlags_SetSelected : ImGuiTabItemFlags_None;
        const TabItemGuard tab{ImGui::BeginTabItem(Tabs[i], nullptr, flags)};
        if(!tab || currentTab == i) continue;
        _searchBuffer[0] = '\0';
        currentTab = i;
        switched = true;
    }
    return switched;
}

}
