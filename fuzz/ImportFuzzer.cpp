#include <algorithm>
#include <string>
#include <utility>

#include <Corrade/Containers/GrowableArray.h>
#include <rapidjson/document.h>

#include "../tests/host/document/MemoryFileSystem.h"
#include "ChangeManager.h"
#include "EditorSession.h"
#include "Export.h"
#include "FileSystem.h"
#include "Fuzzer.h"
#include "Import.h"
#include "JsonReader.h"
#include "JsonWriter.h"
#include "LocalizationReport.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/ValueAccess.h"

namespace QuorvaneEngine::Fuzz {

namespace {

constexpr const char* Game =
    R"({"languages":{"en":{"isDefault":true},"de":{}},"name":"Game","localization":{)"
    R"("terms":{"greeting":{"sourceText":"/localization/strings/greeting","translatable":true},)"
    R"("apples_one":{"sourceText":"/localization/strings/apples_one","translatable":true},)"
    R"("apples_other":{"sourceText":"/localization/strings/apples_other","translatable":true},)"
    R"("name":{"sourceText":"name","translatable":false}},)"
    R"("strings":{"greeting":"Hello","apples_one":"One apple","apples_other":"{{count}} apples"},)"
    R"("translations":{"de":{"greeting":{"text":"Guten Tag","source":"0"}}}}})";

constexpr char FileMark = '\x1e';

/** An input is an archive, or files: each begins with a mark and its path up to the end of the line. */
std::string put(MemoryFileSystem& files, std::string input) {
    files.putFolder("/in");
    if(input.starts_with("PK")) {
        files.put("/in.zip", input);
        return "/in.zip";
    }
    while(!input.empty() && input[0] == FileMark) {
        const std::size_t end = std::min(input.find(FileMark, 1), input.size());
        const std::size_t line = std::min(input.find('\n'), end);
        const std::string path = input.substr(1, line - 1);
        const bool isPath = !path.empty() && path[0] != '/' && path.find("//") == std::string::npos &&
            path.back() != '/' && path.find("..") == std::string::npos && path.find('\0') == std::string::npos;
        if(isPath) files.put("/in/" + path, input.substr(std::min(line + 1, end), end - std::min(line + 1, end)));
        input.erase(0, end);
    }
    return "/in";
}

std::string textOf(EditorSession& session) {
    Containers::String text, error;
    require(JsonWriter::write(session.project().document(), {3}, text, error), "a project can be written");
    return copied(text);
}

void requireText(const Containers::StringView text) {
    require(!text.isEmpty() && JsonReader::isUtf8(text), "what is said is text");
    for(const char c: text)
        require(static_cast<unsigned char>(c) >= 0x20 && c != 0x7f, "what is said has no control characters");
}

bool import(EditorSession& session, MemoryFileSystem& files, const Containers::StringView path) {
    Import import{session.editor(), FallbackLanguage};
    LocalizationReport report;
    const std::size_t changes = files.changes;
    if(!import.read(files, path) || !import.compare(report)) {
        require(!import.refusals().isEmpty(), "a refusal is said");
        for(const Containers::String& refusal: import.refusals()) requireText(refusal);
        require(files.changes == changes, "reading changes nothing on the disk");
        return false;
    }
    require(import.refusals().isEmpty(), "what is imported is not refused");
    for(const LocalizationReport::Line& line: report.lines())
        if(!line.reason.isEmpty()) requireText(line.reason);
    Containers::Array<UnsignedInt> languages;
    import.apply(languages);
    require(files.changes == changes, "reading changes nothing on the disk");
    return true;
}

Containers::Array<UnsignedInt> languagesOf(EditorSession& session) {
    Containers::Array<UnsignedInt> languages;
    for(UnsignedInt i = 0; i != LanguageCount; ++i)
        if(session.project().root()["languages"].member(AllLanguages[i].code).existsInProject())
            Containers::arrayAppend(languages, i);
    return languages;
}

}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* const data, const std::size_t size) {
    using namespace QuorvaneEngine;
    using namespace QuorvaneEngine::Fuzz;
    MemoryFileSystem files;
    const std::string path = put(files, {reinterpret_cast<const char*>(data), size});

    rapidjson::Document document;
    JsonError error;
    require(JsonReader::read(Game, document, error), "the project is read");
    EditorSession session;
    session.replaceDocument(std::move(document));
    const std::string before = textOf(session);

    if(!import(session, files, viewed(path))) {
        require(textOf(session) == before, "a refused import changes nothing");
        require(session.changes().changes().size() == 0, "a refused import is no step of the history");
        return 0;
    }
    const std::string after = textOf(session);
    if(session.changes().canUndo()) {
        session.undo();
        require(textOf(session) == before, "one undo takes an import back");
        require(!session.changes().canUndo(), "an import is one step of the history");
        session.redo();
        require(textOf(session) == after, "one redo brings an import back");
    } else require(after == before, "what changes the project can be undone");

    const Containers::Array<UnsignedInt> languages = languagesOf(session);
    LocalizationReport report;
    FileError fileError;
    const std::size_t changes = session.changes().changes().size();
    files.putFolder("/out");
    const Export request{session.project(), files, languages, FallbackLanguage};
    require(request.toFolder("/out", report, fileError), "what was imported can be exported");
    const std::size_t writes = files.changes;
    require(request.toFolder("/out", report, fileError) && files.changes == writes, "a second export writes nothing");
    import(session, files, "/out");
    require(textOf(session) == after, "an export that comes back changes nothing");
    require(session.changes().changes().size() == changes, "an export that comes back is no step of the history");
    return 0;
}
