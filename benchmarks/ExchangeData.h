#pragma once

#include <string>
#include <vector>

#include <rapidjson/document.h>

/** A game's texts in 20 languages, made up: the same ones in every run. */
namespace ExchangeData {

/** One file of i18next JSON v4. */
struct File {
    /** `<language code>/<namespace>.json` */
    std::string path;
    rapidjson::Document document;

    /** The document as an export prints it. */
    std::string text() const;
};

/** The default language first.
    @param terms        that the default language has; others have other plural forms
    @param edition      another number gives other texts under the same keys */
std::vector<File> make(int terms, int edition);

/** Writes files into a folder, which is made. */
void write(const std::vector<File>& files, const std::string& folder);

}
