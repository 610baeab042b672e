#include "ImportOrder.h"

#include <algorithm>
#include <mutex>
#include <utility>

#include <Corrade/Containers/Optional.h>
#include <rapidjson/document.h>

#include "DocumentLookup.h"
#include "ImportSources.h"
#include "ImportTerms.h"
#include "ImportTranslations.h"
#include "OrderNote.h"
#include "Parallel.h"
#include "ProjectEdit.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "TermKey.h"
#include "TermLayout.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

/** How an export by itself would write the files of a namespace after the import. */
struct ImportOrder::Namespace {
    std::once_flag isLaidOut;
    std::unique_ptr<TermLayout> layout;
    /** The order of the terms alone, and the one that the default language's note makes of it: the same where there is none. */
    std::unique_ptr<OrderNote> plain;
    std::unique_ptr<OrderNote> noted;

    const OrderNote& byDefault() const { return noted ? *noted : *plain; }
};

ImportOrder::ImportOrder(const rapidjson::Value& root, const ImportTerms& terms, const UnsignedInt defaultLanguage)
    : _root{root}, _terms{terms}, _defaultLanguage{defaultLanguage} {}

ImportOrder::~ImportOrder() = default;

void ImportOrder::compare(const Containers::ArrayView<const ImportedFile> files, const ImportSources& sources,
    const Containers::ArrayView<const std::unique_ptr<ImportTranslations>> translations) {
    _sources = &sources;
    _translations = translations;
    const std::size_t count = _terms.terms().namespaces().size();
    for(std::size_t i = 0; i != count; ++i) _namespaces.push_back(std::make_unique<Namespace>());
    _isNew.assign(count, true);
    for(const ProjectTerm& term: _terms.terms().terms().prefix(_terms.knownCount())) _isNew[term.nameSpace] = false;
    for(const KeptValues::Entry& value: sources.values().known()) _isNew[std::size_t(value.place.nameSpace)] = false;

    compareNamespaces(files);
    compareDefault(files);
    std::vector<std::vector<Note>> notes(translations.size());
    forEachInParallel(translations.size(), [&](const std::size_t i) { notes[i] = compare(files, *translations[i]); });
    for(std::vector<Note>& some: notes) std::move(some.begin(), some.end(), std::back_inserter(_notes));
}

void ImportOrder::compareNamespaces(const Containers::ArrayView<const ImportedFile> files) {
    const rapidjson::Value* const notes = memberOf(memberOf(&_root, "localization"_s), "namespaces"_s);
    for(const ImportedFile& file: files) {
        if(file.language != _defaultLanguage) continue;
        const UnsignedInt nameSpace = UnsignedInt(_terms.terms().findNamespace(file.nameSpace));
        const TermNamespace& in = _terms.terms().namespaces()[nameSpace];
        const rapidjson::Value* const flat = memberOf(memberOf(notes, in.name), "flat"_s);
        if(in.isFlat != (flat && flat->IsTrue())) _changedShapes.push_back(nameSpace);
        else if(_terms.terms().fileKeys(nameSpace).isEmpty() && !in.isNoted && (nameSpace != 0 || hasOthers(files)))
            _emptyNamespaces.push_back(nameSpace);
    }
}

bool ImportOrder::hasOthers(const Containers::ArrayView<const ImportedFile> files) const {
    const auto namespaces = _terms.terms().namespaces();
    for(UnsignedInt i = 1; i < namespaces.size(); ++i)
        if(namespaces[i].isNoted || !_terms.terms().fileKeys(i).isEmpty()) return true;
    return std::any_of(files.begin(), files.end(), [this](const ImportedFile& file) {
        return file.language == _defaultLanguage && file.nameSpace != DefaultNamespace;
    });
}

void ImportOrder::compareDefault(const Containers::ArrayView<const ImportedFile> files) {
    for(const ImportedFile& file: files) {
        if(file.language != _defaultLanguage) continue;
        const UnsignedInt nameSpace = UnsignedInt(_terms.terms().findNamespace(file.nameSpace));
        if(!_isNew[nameSpace]) continue;
        Namespace& in = layOut(nameSpace);
        const std::vector<UnsignedInt> texts = exported(in, file, nullptr);
        if(in.plain->isInOrder({texts.data(), texts.size()})) continue;
        Note note{nameSpace, file.language, {}};
        Catalogue order;
        for(const UnsignedInt number: in.plain->make({texts.data(), texts.size()})) {
            note.fileKeys.push_back(in.layout->fileKey(number));
            order.add(note.fileKeys.back(), {});
        }
        in.noted = std::make_unique<OrderNote>(in.layout->tree(), &order);
        _notes.push_back(std::move(note));
    }
}

std::vector<ImportOrder::Note> ImportOrder::compare(
    const Containers::ArrayView<const ImportedFile> files, const ImportTranslations& translations) {
    std::vector<Note> notes;
    const std::vector<bool> hasTexts = namespacesWithTexts(translations);
    for(const ImportedFile& file: files) {
        if(file.language != translations.language()) continue;
        const UnsignedInt nameSpace = UnsignedInt(_terms.terms().findNamespace(file.nameSpace));
        if(hasTexts[nameSpace]) continue;
        const Namespace& in = layOut(nameSpace);
        const std::vector<UnsignedInt> texts = exported(in, file, &translations);
        if(in.byDefault().isInOrder({texts.data(), texts.size()})) continue;
        Note note{nameSpace, file.language, {}};
        for(const UnsignedInt number: in.plain->make({texts.data(), texts.size()}))
            note.fileKeys.push_back(in.layout->fileKey(number));
        notes.push_back(std::move(note));
    }
    return notes;
}

ImportOrder::Namespace& ImportOrder::layOut(const UnsignedInt nameSpace) {
    Namespace& in = *_namespaces[nameSpace];
    std::call_once(in.isLaidOut, [&] {
        std::vector<TermLayout::Key> forms;
        for(const auto& translations: _translations) translations->appendForms(nameSpace, forms);
        std::vector<TermLayout::Key> values;
        _sources->values().appendKeys(nameSpace, values);
        std::vector<LayoutConflict> conflicts;
        in.layout = std::make_unique<TermLayout>(_terms.terms(), nameSpace, _terms.plurals(nameSpace),
            Containers::ArrayView<const TermLayout::Key>{forms.data(), forms.size()},
            Containers::ArrayView<const TermLayout::Key>{values.data(), values.size()}, conflicts);
        in.plain = std::make_unique<OrderNote>(in.layout->tree(), nullptr);
        const auto known =
            OrderNote::read(_terms.terms().namespaces()[nameSpace].order, AllLanguages[_defaultLanguage].code);
        if(known) in.noted = std::make_unique<OrderNote>(in.layout->tree(), &*known);
    });
    return in;
}

std::vector<UnsignedInt> ImportOrder::exported(
    const Namespace& in, const ImportedFile& file, const ImportTranslations* const translations) const {
    std::vector<UnsignedInt> numbers;
    numbers.reserve(file.catalogue.entries().size());
    const UnsignedInt nameSpace = UnsignedInt(_terms.terms().findNamespace(file.nameSpace));
    Int last = -1;
    for(const CatalogueEntry& entry: file.catalogue.entries()) {
        if((!entry.value && entry.text.isEmpty()) || (translations && translations->isSkipped(entry))) continue;
        Int number = in.layout->find(entry.key, last);
        if(number == -1)
            if(const Containers::String other = _terms.otherShape(nameSpace, entry.key); !other.isEmpty())
                number = in.layout->find(other, last);
        if(number != -1) numbers.push_back(UnsignedInt(number));
    }
    return numbers;
}

std::vector<bool> ImportOrder::namespacesWithTexts(const ImportTranslations& translations) const {
    std::vector<bool> hasTexts(_namespaces.size());
    for(std::size_t i = 0; i != _terms.knownCount(); ++i)
        if(!translations.known()[i].text().isEmpty()) hasTexts[_terms.terms().terms()[i].nameSpace] = true;
    for(const ProjectTranslations::Other& other: translations.known().others())
        hasTexts[std::size_t(other.place.nameSpace)] = true;
    for(const KeptValues::Entry& value: translations.values().known())
        hasTexts[std::size_t(value.place.nameSpace)] = true;
    return hasTexts;
}

bool ImportOrder::isEmpty() const { return _notes.empty() && _changedShapes.empty() && _emptyNamespaces.empty(); }

void ImportOrder::collect(ProjectEdit& edit) const {
    const auto nameOf = [&](const UnsignedInt nameSpace) { return _terms.terms().namespaces()[nameSpace].name; };
    for(const UnsignedInt nameSpace: _emptyNamespaces)
        edit.set({"localization"_s, "namespaces"_s, nameOf(nameSpace)}, rapidjson::Value{rapidjson::kObjectType});
    for(const UnsignedInt nameSpace: _changedShapes)
        edit.set({"localization"_s, "namespaces"_s, nameOf(nameSpace), "flat"_s},
            rapidjson::Value{_terms.terms().namespaces()[nameSpace].isFlat});
    for(const Note& note: _notes) {
        rapidjson::Value keys{rapidjson::kArrayType};
        for(const Containers::StringView key: note.fileKeys) keys.PushBack(edit.text(key), edit.allocator());
        edit.set(
            {"localization"_s, "namespaces"_s, nameOf(note.nameSpace), "order"_s, AllLanguages[note.language].code},
            std::move(keys));
    }
}

}
