#pragma once

#include <cstdint>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "app/PathField.h"

namespace QuorvaneEngine {

class ImportPreview;

/** The dialog that stands before everything else while the user says what is to be imported, and while that is looked at. */
class QUORVANE_API ImportPopup {
public:
    enum class Request : std::uint8_t { None, ChooseFolder, ChooseArchive, Start, Cancel };

    ImportPopup();

    /** Asks for a path.
        @param path             proposed
        @param asksForLanguage  whether to ask for the default language, too: English is proposed */
    void open(Containers::StringView path, bool asksForLanguage);

    /** Asks no more. What runs is still shown until it has ended. */
    void close() { _isOpen = false; }

    bool isOpen() const { return _isOpen; }

    /** Shows why the import cannot be previewed, until the user asks for something else. */
    void refuse(Containers::Array<Containers::String>&& reasons);

    /** As the disk knows it. */
    Containers::String path() const { return _path.path(); }

    /** Where the user chose a path elsewhere; one that is too long to be edited is refused. */
    void setPath(Containers::StringView path);

    /** The default language of a project that has none, as index into @ref AllLanguages . */
    UnsignedInt language() const { return _language; }

    /** Draws the dialog while it is open, or while the preview runs.
        @return what the user asks for */
    Request draw(const ImportPreview& preview);

private:
    Request drawQuestion();
    Request drawPath();
    void drawLanguage();
    void drawLanguages();
    void drawReasons() const;
    static Request drawProgress(const ImportPreview& preview);

    bool _isOpen = false;
    bool _asksForLanguage = false;
    UnsignedInt _language;
    PathField _path{"Folder or ZIP archive"};
    /** NUL-terminated. */
    Containers::Array<char> _search;
    Containers::Array<Containers::String> _reasons;
};

}
