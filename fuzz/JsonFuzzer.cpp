#include <string>
#include <vector>

#include <rapidjson/document.h>

#include "Catalogue.h"
#include "Fuzzer.h"
#include "I18NextReader.h"
#include "I18NextWriter.h"
#include "JsonReader.h"
#include "JsonWriter.h"
#include "TermKey.h"
#include "TermTree.h"

namespace QuorvaneEngine::Fuzz {

namespace {

void requireError(const JsonError& error) {
    require(error.line >= 1 && error.column >= 1, "an error has a place");
    require(!error.reason.isEmpty(), "an error has a reason");
    require(JsonReader::isUtf8(error.reason), "a reason is text");
}

std::string written(const rapidjson::Value& value) {
    Containers::String text, error;
    require(JsonWriter::write(value, {3}, text, error), "what was read can be written");
    return copied(text);
}

/** A document reads back as itself, and is written the same again. */
bool checkDocument(const Containers::StringView bytes, bool& isObject) {
    rapidjson::Document document;
    JsonError error;
    if(!JsonReader::read(bytes, document, error)) {
        requireError(error);
        require(document.IsNull(), "a document is left as it is on failure");
        return false;
    }
    isObject = document.IsObject();
    const std::string text = written(document);
    rapidjson::Document again;
    require(JsonReader::read(viewed(text), again, error), "what was written is read");
    require(written(again) == text, "what was written and read is written the same");
    return true;
}

/** An entry as a line: key, and text or value. */
std::vector<std::string> linesOf(const Catalogue& catalogue) {
    std::vector<std::string> lines;
    for(std::size_t i = 0; i != catalogue.entries().size(); ++i) {
        const CatalogueEntry& entry = catalogue.entries()[i];
        require(JsonReader::isUtf8(entry.key) && JsonReader::isUtf8(entry.text), "keys and texts are UTF-8");
        require(TermKey::isCanonical(entry.key), "keys are canonical");
        require(catalogue.find(entry.key) == Int(i), "a key is found where it is");
        if(entry.value)
            lines.push_back(copied(entry.key) + " = " + written(*entry.value) + copied(catalogue.spelling(i)));
        else if(!entry.text.isEmpty()) lines.push_back(copied(entry.key) + " = \"" + copied(entry.text));
    }
    return lines;
}

std::string writtenAgain(const Catalogue& catalogue, const Catalogue* const order) {
    TermTree tree;
    std::vector<Containers::StringView> texts;
    std::vector<const rapidjson::Value*> values;
    for(const CatalogueEntry& entry: catalogue.entries()) {
        Int other = -1;
        require(tree.insert(entry.key, Int(texts.size()), other) == TermConflict::None, "a file has no conflicts");
        texts.push_back(entry.text);
        values.push_back(entry.value);
    }
    return copied(writeI18Next(tree,
        {Containers::arrayView(texts.data(), texts.size()), Containers::arrayView(values.data(), values.size())},
        order));
}

/** Texts and values that are left out take the elements of arrays behind them to another place. */
bool hasGaps(const Catalogue& catalogue) {
    for(const CatalogueEntry& entry: catalogue.entries())
        if(!entry.value && entry.text.isEmpty()) return true;
    return false;
}

/** A file reads back as itself, with every text, value, key and order. */
bool checkTerms(const Containers::StringView bytes, JsonError& error) {
    Catalogue catalogue;
    if(!readI18Next(bytes, catalogue, error)) {
        requireError(error);
        return false;
    }
    const std::vector<std::string> lines = linesOf(catalogue);
    const std::string text = writtenAgain(catalogue, &catalogue);
    Catalogue again;
    require(readI18Next(viewed(text), again, error), "a written file is read");
    if(!hasGaps(catalogue)) {
        require(linesOf(again) == lines, "a written file has the same entries in the same order");
        require(again.isFlat() == catalogue.isFlat(), "a written file has the same shape");
    }
    require(writtenAgain(again, &again) == text, "what was written and read is written the same");
    return true;
}

}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* const data, const std::size_t size) {
    using namespace QuorvaneEngine;
    using namespace QuorvaneEngine::Fuzz;
    const Containers::StringView bytes{reinterpret_cast<const char*>(data), size};
    bool isObject = false;
    const bool isDocument = checkDocument(bytes, isObject);
    JsonError error;
    const bool isFile = checkTerms(bytes, error);
    require(!isFile || (isDocument && isObject), "a file of terms is an object");
    require(isFile || !isDocument || !isObject || error.reason == "an array has too many elements" ||
            error.reason == "too many keys repeat long names around them",
        "an object is a file of terms");
    return 0;
}
