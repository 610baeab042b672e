#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <unistd.h>

#include <gtest/gtest.h>

#include <rapidjson/document.h>

#include "FileSystem.h"
#include "Import.h"
#include "LocalizationReport.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "TestFolder.h"
#include "TestProject.h"
#include "support/OrdinaryUser.h"

namespace QuorvaneEngine {

using Test::OrdinaryUser;

namespace {

constexpr const char* Game =
    R"({"languages":{"en":{"isDefault":true},"de":{}},"name":"Game","localization":{)"
    R"("terms":{"greeting":{"sourceText":"/localization/strings/greeting","translatable":true},)"
    R"("name":{"sourceText":"name","translatable":false}},"strings":{"greeting":"Hello"},)"
    R"("translations":{"de":{"greeting":{"text":"Guten Tag","source":"0"}}}}})";

struct Result {
    bool isImported;
    std::vector<std::string> messages;
};

/** "code: term: reason", without what is empty; "file: reason" where it is of no language. */
std::string message(const LocalizationReport::Line& line) {
    std::string text;
    const bool isOfLanguage = line.language != LocalizationReport::NoLanguage;
    if(isOfLanguage) text += copied(AllLanguages[line.language].code) + ": ";
    if(isOfLanguage && line.term.data()) text += copied(line.term) + ": ";
    if(!isOfLanguage && !line.file.isEmpty()) text += copied(line.file) + ": ";
    return text + copied(line.reason);
}

/** Imports with "IN" for @p path in the messages. Only skipped texts and notices have one. */
Result import(TestProject& project, FileSystem& fileSystem, const std::string& path) {
    Import import{project.editor(), FallbackLanguage};
    LocalizationReport report;
    Result result{import.read(fileSystem, viewed(path)) && import.compare(report), {}};
    if(result.isImported) {
        Containers::Array<UnsignedInt> languages;
        import.apply(languages);
        for(const LocalizationReport::Line& line: report.lines())
            if(line.outcome == TermOutcome::Skipped || line.outcome == TermOutcome::Notice)
                result.messages.push_back(message(line));
    } else
        for(const Containers::String& refusal: import.refusals()) result.messages.push_back(copied(refusal));
    for(std::string& text: result.messages)
        for(std::size_t at; (at = text.find(path)) != std::string::npos;) text.replace(at, path.size(), "IN");
    return result;
}

Result import(TestProject& project, const std::string& path) { return import(project, FileSystem::disk(), path); }

/** Whether the project is as @p before has it, byte for byte, with nothing to undo. */
testing::AssertionResult isUntouched(TestProject& project, const std::string& before) {
    if(project.text() != before) return testing::AssertionFailure() << "the project is " << project.text();
    if(project.changeCount() != 0) return testing::AssertionFailure() << "there is something to undo";
    return testing::AssertionSuccess();
}

/** All paths below a folder, links and what cannot be read as well, with sizes and times of change. */
std::vector<std::string> listing(const std::filesystem::path& folder) {
    std::vector<std::string> found;
    std::error_code error;
    constexpr auto Options = std::filesystem::directory_options::skip_permission_denied;
    for(std::filesystem::recursive_directory_iterator at{folder, Options, error}, end; at != end; at.increment(error)) {
        const auto size = at->is_regular_file(error) ? at->file_size(error) : 0;
        const auto time = std::filesystem::last_write_time(at->path(), error);
        found.push_back(at->path().string() + ' ' + std::to_string(size) + ' ' +
            std::to_string(error ? 0 : time.time_since_epoch().count()));
    }
    std::sort(found.begin(), found.end());
    return found;
}

/** Lines end up in the message of a failed test, and keys of a mebibyte would, too. */
std::vector<std::string> shortened(std::vector<std::string> messages) {
    for(std::string& text: messages)
        if(text.size() > 500)
            text = text.substr(0, 200) + "... " + std::to_string(std::hash<std::string>{}(text)) + " ..." +
                text.substr(text.size() - 200);
    return messages;
}

struct Case {
    std::string name, path, missing;
    bool isRefused;
    bool isForOrdinaryUsers;
    std::vector<std::string> messages;
};

void PrintTo(const Case& one, std::ostream* const out) { *out << one.name; }

std::string fileBytes(const std::string& path) {
    std::ifstream file{path, std::ios::binary};
    return {std::istreambuf_iterator<char>{file}, {}};
}

std::vector<Case> corpus() {
    rapidjson::Document table;
    table.Parse(fileBytes(QUORVANE_CORPUS_DIR "/cases.json").c_str());
    std::vector<Case> cases;
    for(const rapidjson::Value& one: table.GetArray()) {
        std::vector<std::string> messages;
        for(const rapidjson::Value& text: one["messages"].GetArray())
            messages.emplace_back(text.GetString(), text.GetStringLength());
        cases.push_back({one["name"].GetString(), std::string{QUORVANE_CORPUS_DIR "/"} + one["path"].GetString(),
            one["missing"].GetString(), one["outcome"] == "refused", one["isForOrdinaryUsers"].GetBool(), messages});
    }
    return cases;
}

std::string caseName(const testing::TestParamInfo<Case>& info) {
    std::string name = info.param.name;
    std::replace_if(
        name.begin(), name.end(), [](const char c) { return !std::isalnum(c); }, '_');
    return name;
}

class Corpus: public testing::TestWithParam<Case> {};

}

TEST_P(Corpus, GivesItsMessages) {
    const Case& one = GetParam();
    if(!one.missing.empty()) GTEST_SKIP() << "this input could not be made here: " << one.missing;
    const std::filesystem::path path{one.path};
    std::string place = path.parent_path();
    // Where an ordinary user can get to it, and leave it to that user.
    const TestFolder copy;
    std::unique_ptr<OrdinaryUser> user;
    if(one.isForOrdinaryUsers && geteuid() == 0) {
        std::filesystem::copy(place, copy / "case", std::filesystem::copy_options::recursive);
        place = copy / "case";
        user = std::make_unique<OrdinaryUser>(copy.path);
        if(!user->isOrdinary) GTEST_SKIP() << "the superuser cannot become anybody else here";
    }
    const std::vector<std::string> files = listing(place);
    TestProject project{Game};
    const std::string before = project.text();

    const Result result = import(project, place + '/' + path.filename().string());
    EXPECT_EQ(result.isImported, !one.isRefused);
    EXPECT_EQ(shortened(result.messages), shortened(one.messages));
    if(one.isRefused) {
        EXPECT_TRUE(isUntouched(project, before));
    } else {
        if(project.session.changes().canUndo()) project.session.undo();
        EXPECT_EQ(project.text(), before);
        EXPECT_FALSE(project.session.changes().canUndo());
    }
    // Nothing is unpacked, and reading leaves nothing behind.
    EXPECT_EQ(listing(place), files);
}

INSTANTIATE_TEST_SUITE_P(Hostile, Corpus, testing::ValuesIn(corpus()), caseName);

TEST(Corpus, HasMoreThan100Inputs) {
    const std::vector<Case> cases = corpus();
    EXPECT_GE(cases.size(), 300u);
    EXPECT_GE(std::count_if(cases.begin(), cases.end(), [](const Case& one) { return one.isRefused; }), 250);
}

namespace {

/** What an import says of a file of German texts with these bytes. Refused ones must leave the project alone. */
Result importGerman(
    TestProject& project, const TestFolder& folder, const std::string& bytes, const std::string& before) {
    folder.write("de.json", bytes);
    Result result = import(project, folder.path);
    if(!result.isImported) {
        EXPECT_TRUE(isUntouched(project, before)) << bytes;
    }
    return result;
}

constexpr const char* AllKinds =
    "{\n  \"greeting\": \"Gr\xc3\xbc\xc3\x9f \\u00e4\\ud83d\\ude00 \xf0\x9f\x98\x80 \\\"{{name}}\\\"\",\n"
    "  \"list\": [\"a\", 1, -2.5e+3, true, false, null, [], {}],\n  \"deep\": {\"er\": {\"key\": \"\"}}\n}\n";

}

TEST(HostileBytes, FileCutAtAnyByteIsRefused) {
    const TestFolder folder;
    TestProject project{Game};
    const std::string before = project.text(), whole = AllKinds;
    const std::size_t end = whole.rfind('}');
    for(std::size_t size = 0; size <= end; ++size) {
        const Result result = importGerman(project, folder, whole.substr(0, size), before);
        EXPECT_FALSE(result.isImported) << size;
        ASSERT_EQ(result.messages.size(), 1u) << size;
        EXPECT_EQ(result.messages[0].substr(0, 11), "IN/de.json:") << size;
    }
    EXPECT_TRUE(importGerman(project, folder, whole.substr(0, end + 1), before).isImported);
}

TEST(HostileBytes, FileWithAnyOneByteReplacedIsReadOrRefused) {
    const TestFolder folder;
    const std::string whole = AllKinds, before = TestProject{Game}.text();
    std::size_t refused = 0, read = 0;
    for(std::size_t i = 0; i != whole.size(); ++i)
        for(const char value: {'\0', '"', '\\', '{', ']', ',', '\x80', '\xff'}) {
            TestProject project{Game};
            std::string changed = whole;
            changed[i] = value;
            (importGerman(project, folder, changed, before).isImported ? read : refused)++;
        }
    EXPECT_GT(refused, whole.size() * 4);
    EXPECT_GT(read, 20u);
}

TEST(HostileBytes, ArchiveCutAtAnyByteIsRefused) {
    const TestFolder folder;
    TestProject project{Game};
    const std::string before = project.text();
    const std::string whole = fileBytes(QUORVANE_CORPUS_DIR "/made-on-macos/in.zip");
    ASSERT_GT(whole.size(), 100u);
    for(std::size_t size = 0; size != whole.size(); ++size) {
        folder.write("in.zip", whole.substr(0, size));
        const Result result = import(project, folder / "in.zip");
        EXPECT_FALSE(result.isImported) << size;
        ASSERT_EQ(result.messages.size(), 1u) << size;
        EXPECT_TRUE(isUntouched(project, before)) << size;
    }
}

TEST(HostileBytes, ArchiveWithAnyOneByteReplacedGivesTheSameTextsOrNone) {
    const TestFolder folder;
    for(const char* const name: {"zip64-end-not-needed", "made-as-stream-zip64"}) {
        const std::string whole = fileBytes(QUORVANE_CORPUS_DIR "/" + std::string{name} + "/in.zip");
        ASSERT_GT(whole.size(), 100u);
        const auto textsOf = [&](const std::string& bytes) {
            TestProject project{Game};
            const std::string before = project.text();
            folder.write("in.zip", bytes);
            if(import(project, folder / "in.zip").isImported)
                return project.at("/localization/translations/de/greeting/text");
            EXPECT_TRUE(isUntouched(project, before));
            return std::string{"none"};
        };
        const std::string texts = textsOf(whole);
        EXPECT_EQ(texts, "\"Hallo\"");
        for(std::size_t i = 0; i != whole.size(); ++i)
            for(const int delta: {1, 127, 128, 255}) {
                std::string changed = whole;
                changed[i] = char(changed[i] + delta);
                const std::string found = textsOf(changed);
                // A name that is another one is that of no German text.
                EXPECT_TRUE(found == texts || found == "none" || found == "\"Guten Tag\"") << name << i << found;
            }
    }
}

namespace {

/** The disk, some of whose paths nobody has the right to read: what a superuser does not meet there. */
class Forbidding: public FileSystem {
public:
    explicit Forbidding(const std::string& path): _path{path} {}

    int readFile(Containers::StringView path, Containers::String& bytes, std::size_t maxSize) override {
        return copied(path) == _path ? EACCES : disk().readFile(path, bytes, maxSize);
    }
    int listFolder(Containers::StringView path, Containers::Array<Containers::String>& names) override {
        return copied(path) == _path ? EACCES : disk().listFolder(path, names);
    }
    bool isLink(Containers::StringView path) override { return disk().isLink(path); }
    // Reading changes nothing.
    int writeFile(Containers::StringView, Containers::StringView, Containers::StringView) override { return change(); }
    int syncFile(Containers::StringView) override { return change(); }
    int syncFolder(Containers::StringView) override { return change(); }
    int linkFile(Containers::StringView, Containers::StringView) override { return change(); }
    int renameFile(Containers::StringView, Containers::StringView) override { return change(); }
    int removeFile(Containers::StringView) override { return change(); }
    int makeFolder(Containers::StringView) override { return change(); }
    int removeFolder(Containers::StringView) override { return change(); }

private:
    static int change() {
        ADD_FAILURE() << "something is changed";
        return EROFS;
    }

    std::string _path;
};

}

TEST(HostileBytes, WhatNobodyMayReadIsRefusedWhereItMatters) {
    const TestFolder folder;
    folder.write("de/translation.json", R"({"greeting": "Hallo"})");
    folder.write("fr.json", R"({"greeting": "Bonjour"})");
    folder.write("notes/x.txt", "");
    const auto tried = [&](const std::string& forbidden) {
        TestProject project{Game};
        const std::string before = project.text();
        Forbidding fileSystem{forbidden};
        const Result result = import(project, fileSystem, folder.path);
        if(!result.isImported) {
            EXPECT_TRUE(isUntouched(project, before));
        }
        return result.messages.empty() ? result.isImported ? "imported" : "nothing said" : result.messages[0];
    };
    EXPECT_EQ(tried(folder.path), "IN: cannot be read: Permission denied");
    EXPECT_EQ(tried(folder / "de"), "IN/de: cannot be read: Permission denied");
    EXPECT_EQ(tried(folder / "de/translation.json"), "IN/de/translation.json: cannot be read: Permission denied");
    EXPECT_EQ(tried(folder / "fr.json"), "IN/fr.json: cannot be read: Permission denied");
    EXPECT_EQ(tried(folder / ".localization-export/journal"),
        "IN/.localization-export/journal: cannot be read: Permission denied");
    EXPECT_EQ(tried(folder / "notes"), "imported");
}

}
