#pragma once

#include <string>

#include <gtest/gtest.h>

#include "FileSystem.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "TermFiles.h"
#include "TermKey.h"
#include "TestFolder.h"
#include "TestProject.h"

namespace QuorvaneEngine {

/** Behind the path of what holds no terms. */
inline constexpr const char* NoTerms =
    ": holds no terms: there is no <language code>/translation.json and no <language code>.json\n";

/** "code=bytes" or "code namespace=bytes" of every file, then "notice: ..." and "refused: ..." with "FOLDER" for the folder,
    lines between. */
inline std::string found(const TestFolder& folder, const std::string& name = {},
    const Containers::ArrayView<const LanguageMapping> map = {},
    const Containers::ArrayView<const UnsignedInt> languages = {}) {
    TermFiles found;
    const std::string path = name.empty() ? folder.path : folder / name;
    const bool isRead = readTermFiles(FileSystem::disk(), viewed(path), {map, {}, languages}, found);
    EXPECT_EQ(isRead, found.refusals.isEmpty());
    std::string lines;
    for(const TermFile& file: found.files) {
        EXPECT_TRUE(file.name.hasSuffix("/" + file.relativePath)) << copied(file.name);
        lines += copied(AllLanguages[file.language].code) +
            (file.nameSpace == DefaultNamespace ? "" : ' ' + copied(file.nameSpace)) + '=' + copied(file.bytes) + '\n';
    }
    for(const FileNotice& one: found.notices) lines += "notice: " + copied(one.file) + ": " + copied(one.reason) + '\n';
    for(const Containers::String& one: found.refusals) lines += "refused: " + copied(one) + '\n';
    for(std::size_t at; (at = lines.find(folder.path)) != std::string::npos;)
        lines.replace(at, folder.path.size(), "FOLDER");
    return lines;
}

}
