#pragma once

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "EditorView.h"
#include "TermMark.h"
#include "TermRows.h"

namespace QuorvaneEngine {

/** Shows the project's terms and languages, marks what is to be translated, and exchanges terms through the host's tools.

    Adding and removing languages changes the view's own list alone, which is handed to import and export; the one edit that the
    view makes to the project is a term's "translatable" flag. */
class LocalizationView: public EditorView {
public:
    explicit LocalizationView(Corrade::PluginManager::AbstractManager& manager, const Containers::StringView& plugin);
    ~LocalizationView() override;

    Containers::StringView title() override;
    void init(ImGuiContext* context, EditorData* editorData, QuorvaneEditorApplication* application) override;
    void deinit() override;
    void draw() override;
    void keyPressEvent() override;

    /** Shows terms, of which it marks the row for a while. */
    bool show(Containers::StringView path) override;

private:
    void refreshLanguages();
    Containers::StringView findDefaultLanguage();
    Containers::StringView rememberDefaultLanguage(UnsignedInt language, bool isMarked);

    void drawMenuBar();
    bool drawTabBar();

    void drawTermsTab(bool refilter);
    void filterTerms();
    std::size_t findWantedTerm();
    void scrollTo(std::size_t row);
    void drawTermTable();
    void skipTermRows(std::size_t begin, std::size_t end);
    void drawTermRow(std::size_t row);
    bool drawTermKey(std::size_t row);
    void drawLongText(std::size_t row);
    void drawTranslatableBox(std::size_t row);

    void drawLanguagesTab(bool refilter);
    void filterLanguages();
    void drawLanguageTable();
    void drawLanguageRow(std::size_t row);
    void drawLanguageContextMenu();

    void drawLanguagePopup();
    void filterMissingLanguages();

    void drawImportExportPopup();
    void drawPathRow();
    void choosePath();
    void drawFormatRow();
    void drawZipRow();
    void runImportOrExport();

    /** The text of the search bar of both tabs, NUL-terminated. */
    Containers::Array<char> _searchBuffer;

    /** The terms that match the search, in the project's order. */
    TermRows _filteredTerms;

    /** Positions in @ref _languages that match the search. */
    Containers::Array<UnsignedInt> _filteredLanguages;

    /** The text of the search bar of the add-language popup, NUL-terminated. */
    Containers::Array<char> _languageSearchBuffer;

    /** Languages that the popup offers, ascending. */
    Containers::Array<UnsignedInt> _languageSearchResults;

    /** The text shown in the row that was clicked last. */
    Containers::String _selectedTerm;

    bool _needsRefilter = false;
    bool _needsLanguageRefilter = false;

    /** The project's languages, in the order in which they were found or added. */
    Containers::Array<UnsignedInt> _languages;

    /** All bits set while no default language is known. */
    UnsignedInt _defaultLanguage = ~UnsignedInt{};

    /** Where the project marks the default language, so that a frame asks for nothing else; empty where it marks none. */
    Containers::String _defaultLanguagePath;

    /** The term that was asked for last. */
    TermMark _mark;
};

}
