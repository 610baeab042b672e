#include "plugin/FakeTools.h"

#include "QuorvaneEditor/LocalizationTools.h"

namespace QuorvaneEngine {

namespace Test {

std::vector<FakeTools::Call> FakeTools::calls;
std::function<void(Containers::Array<UnsignedInt>&)> FakeTools::onImport;

namespace {

void record(const char* const function, QuorvaneEditor& editor,
    const Containers::ArrayView<const UnsignedInt> languages, const UnsignedInt defaultLanguage,
    const Containers::StringView path, const LocalizationFormat format) {
    FakeTools::calls.push_back({function, &editor, {languages.begin(), languages.end()}, defaultLanguage,
        {path.data(), path.size()}, int(format)});
}

}

}

namespace LocalizationTools {

void gatherStrings(QuorvaneEditor& editor) { Test::record("gather", editor, {}, 0, "", {}); }

void exportTerms(QuorvaneEditor& editor, const Containers::ArrayView<const UnsignedInt> languages,
    const UnsignedInt defaultLanguage, const Containers::StringView path, const LocalizationFormat format) {
    Test::record("export", editor, languages, defaultLanguage, path, format);
}

void exportTermsCompressed(QuorvaneEditor& editor, const Containers::ArrayView<const UnsignedInt> languages,
    const UnsignedInt defaultLanguage, const Containers::StringView path, const LocalizationFormat format) {
    Test::record("export compressed", editor, languages, defaultLanguage, path, format);
}

void importTerms(QuorvaneEditor& editor, Containers::Array<UnsignedInt>& languages, const UnsignedInt defaultLanguage,
    const Containers::StringView path, const LocalizationFormat format) {
    Test::record("import", editor, languages, defaultLanguage, path, format);
    if(Test::FakeTools::onImport) Test::FakeTools::onImport(languages);
}

}

}
