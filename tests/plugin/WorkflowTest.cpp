/* A session with the sample project and the real tools, by mouse and keys from the first search to the last undo. The whole document
   is compared after each step, and the files after each save. */

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

#include "ChangeManager.h"
#include "plugin/ViewTest.h"
#include "support/CapturedOutput.h"
#include "support/DialogProgram.h"

namespace QuorvaneEngine::Test {
namespace {

namespace fs = std::filesystem;

using Files = std::map<std::string, std::string>;

std::string contentOf(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream{file, std::ios::binary}.rdbuf();
    return text.str();
}

/* The files below a folder that are for version control */
Files filesOf(const fs::path& folder) {
    Files files;
    for(const fs::directory_entry& entry: fs::recursive_directory_iterator{folder}) {
        const std::string path = fs::relative(entry.path(), folder).string();
        if(entry.is_regular_file() && path.compare(0, 7, ".editor") != 0) files[path] = contentOf(entry.path());
    }
    return files;
}

void replace(std::string& text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    ASSERT_NE(at, std::string::npos) << from;
    text.replace(at, from.size(), to);
}

class Workflow: public testing::Test {
protected:
    Workflow() {
        fs::copy(fs::path{QUORVANE_SOURCE_DIR} / "samples/lighthouse", _project, fs::copy_options::recursive);
        EXPECT_TRUE(_test.session.open(_project.c_str()));
        _document = _test.document();
        _files = filesOf(_project);
    }

    void run(const ViewTest::Script& script) { _test.run(script); }

    /* Runs the popup with a path to its end */
    void exchange(const char* const mode, const std::string& path, const bool toggleZip) {
        run([&](ImGuiTestContext& user) {
            user.MenuClick((std::string{"File/"} + mode).c_str());
            user.Yield(4);
            user.SetRef((std::string{"//"} + mode + " Terms").c_str());
            user.ItemInput("##path");
            user.KeyCharsReplace(path.c_str());
            user.KeyPress(ImGuiKey_Enter);
            if(toggleZip) user.ItemClick("##zip");
            user.ItemClick(mode);
            user.Yield(2);
        });
    }

    void untick(const char* const term) {
        run([&](ImGuiTestContext& user) { tick(user, term); });
    }

    void expectUndoneAndRedone(const std::string& before) {
        const std::string after = _test.document();
        EXPECT_NE(after, before);
        _test.session.undo();
        EXPECT_EQ(_test.document(), before);
        _test.session.redo();
        EXPECT_EQ(_test.document(), after);
    }

    DialogProgram _dialogs;
    fs::path _project = _dialogs.folder() / "project";
    ViewTest _test{"{}"};
    std::string _document;
    Files _files;
};

TEST_F(Workflow, SearchingChangesNothing) {
    run([](ImGuiTestContext& user) {
        search(user, "##termsearch", "LANTERN");
        search(user, "##termsearch", "menu.start");
        IM_CHECK(rowItem(user, "termtablebody", "menu.start").ID);
        IM_CHECK(!rowItem(user, "termtablebody", "menu.quit").ID);
    });
    EXPECT_EQ(_test.document(), _document);
    EXPECT_FALSE(_test.session.hasUnsavedChanges());
}

TEST_F(Workflow, UntickingATermIsUndoneRedoneAndSaved) {
    run([](ImGuiTestContext& user) {
        search(user, "##termsearch", "menu.start");
        tick(user, "menu.start");
    });
    std::string expected = _document;
    replace(expected, R"("menu.start":{"sourceText":"/objects/title_screen/startText","translatable":true)",
        R"("menu.start":{"sourceText":"/objects/title_screen/startText","translatable":false)");
    EXPECT_EQ(_test.document(), expected);
    expectUndoneAndRedone(_document);

    EXPECT_TRUE(_test.session.hasUnsavedChanges());
    ASSERT_TRUE(_test.session.save());
    EXPECT_FALSE(_test.session.hasUnsavedChanges());
    Files files = _files;
    replace(files["project.json"],
        R"("menu.start": {"sourceText": "/objects/title_screen/startText", "translatable": true)",
        R"("menu.start": {"sourceText": "/objects/title_screen/startText", "translatable": false)");
    EXPECT_EQ(filesOf(_project), files);

    _test.session.undo();
    ASSERT_TRUE(_test.session.save());
    EXPECT_EQ(filesOf(_project), _files);
}

TEST_F(Workflow, AddingAndRemovingLanguagesChangesTheListAlone) {
    run([](ImGuiTestContext& user) {
        openLanguagePopup(user);
        user.KeyChars("de");
        user.Yield(2);
        user.ItemClick(offeredLanguage(user, "Makonde").ID);
        user.Yield(3);
        IM_CHECK(rowItem(user, "languagestablebody", "##Makonde").ID);
        openContextMenu(user, "French");
        user.ItemClick("//$FOCUSED/Remove");
        user.Yield(2);
        IM_CHECK(!rowItem(user, "languagestablebody", "##French").ID);
    });
    EXPECT_NE(_test.shownText().find("\xef\x80\x85 English | en"), std::string::npos);
    EXPECT_EQ(_test.document(), _document);
    EXPECT_FALSE(_test.session.hasUnsavedChanges());
}

TEST_F(Workflow, AnExportTakesTheViewsLanguagesAndLeavesTheProjectAlone) {
    run([](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        openContextMenu(user, "French");
        user.ItemClick("//$FOCUSED/Remove");
        user.Yield(2);
    });
    const fs::path folder = _dialogs.folder() / "exported";
    exchange("Export", folder.string(), false);
    for(const char* const code: {"en", "de", "ja", "ru", "ar", "pt-BR"})
        EXPECT_TRUE(fs::exists(folder / code / "translation.json")) << code;
    EXPECT_FALSE(fs::exists(folder / "fr"));
    EXPECT_EQ(_test.document(), _document);
    EXPECT_EQ(filesOf(_project), _files);
}

/* Its path would not fit into the popup's field, which stays empty */
TEST_F(Workflow, AnExportFromAFolderWithALongPathWarnsUntilAPathIsChosen) {
    const fs::path project = _dialogs.folder() / std::string(240, 'p');
    fs::copy(_project, project, fs::copy_options::recursive);
    ASSERT_TRUE(_test.session.open(project.c_str()));
    const auto exportIt = [&](const char* const path, const bool zip) {
        const CapturedOutput output;
        run([&](ImGuiTestContext& user) {
            user.MenuClick("File/Export");
            user.Yield(4);
            user.SetRef("//Export Terms");
            if(zip) user.ItemClick("##zip");
            if(path) {
                user.ItemInput("##path");
                user.KeyCharsReplace(path);
                user.KeyPress(ImGuiKey_Enter);
            }
            user.ItemClick("Export");
            user.Yield(2);
            IM_CHECK(user.UiContext->OpenPopupStack.empty());
        });
        return output.warning();
    };
    EXPECT_EQ(exportIt(nullptr, false), "LocalizationTools::exportTerms(): the path is empty\n");
    EXPECT_EQ(exportIt(nullptr, true), "LocalizationTools::exportTermsCompressed(): the path is empty\n");
    EXPECT_EQ(filesOf(project), _files);
    const fs::path folder = _dialogs.folder() / "exported";
    exportIt(folder.c_str(), true);
    EXPECT_TRUE(fs::exists(folder / "de" / "translation.json"));
}

TEST_F(Workflow, ExportingAgainLeavesEveryByteAsItIs) {
    const fs::path folder = _dialogs.folder() / "exported";
    exchange("Export", folder.string(), false);
    const Files first = filesOf(folder);
    ASSERT_EQ(first.size(), 14);
    exchange("Export", folder.string(), false);
    EXPECT_EQ(filesOf(folder), first);
}

TEST_F(Workflow, AChangedFileIsImportedAsOneStep) {
    const fs::path folder = _dialogs.folder() / "exported";
    exchange("Export", folder.string(), false);
    const fs::path file = folder / "de/translation.json";
    std::string german = contentOf(file);
    const std::size_t start = german.find("\"start\"");
    ASSERT_NE(start, std::string::npos) << german.substr(0, 400);
    const std::size_t value = german.find('"', german.find(':', start)) + 1;
    german.replace(value, german.find('"', value) - value, "Los geht es");
    std::ofstream{file, std::ios::binary} << german;

    exchange("Import", folder.string(), false);
    EXPECT_NE(_test.document(), _document);
    EXPECT_NE(_test.document().find("Los geht es"), std::string::npos);
    expectUndoneAndRedone(_document);

    ASSERT_TRUE(_test.session.save());
    Files saved = filesOf(_project);
    EXPECT_NE(saved["localization/de.json"], _files["localization/de.json"]);
    saved["localization/de.json"] = _files["localization/de.json"];
    EXPECT_EQ(saved, _files);

    _test.session.undo();
    ASSERT_TRUE(_test.session.save());
    EXPECT_EQ(filesOf(_project), _files);
}

TEST_F(Workflow, AnArchiveHoldsWhatTheFolderDoesAndIsImportedAsOneStep) {
    const fs::path archive = _dialogs.folder() / "terms.zip";
    exchange("Export", archive.string(), true);
    ASSERT_TRUE(fs::exists(archive));
    EXPECT_EQ(contentOf(archive).substr(0, 2), "PK");

    /* Nothing has changed since: the import changes nothing. Then a translation is lost, and the archive brings it back. */
    exchange("Import", archive.string(), false);
    EXPECT_EQ(_test.document(), _document);
    _test.session.changes().pushChange("/localization/translations/de/menu.quit/text", "qq verloren qq", false);
    const std::string lost = _test.document();
    EXPECT_NE(lost, _document);
    exchange("Import", archive.string(), false);
    EXPECT_EQ(_test.document().find("qq verloren qq"), std::string::npos);
    expectUndoneAndRedone(lost);
}

TEST_F(Workflow, AnImportShowsInTheTableAtOnce) {
    const fs::path folder = _dialogs.folder() / "in";
    fs::create_directories(folder / "en");
    std::ofstream{folder / "en/translation.json"} << R"({"brand": {"new": "A brand new text"}})";
    exchange("Import", folder.string(), false);
    run([](ImGuiTestContext& user) {
        search(user, "##termsearch", "brand");
        IM_CHECK(rowItem(user, "termtablebody", "brand.new").ID);
    });
    EXPECT_NE(_test.shownText().find("A brand new text"), std::string::npos);
    _test.session.undo();
    EXPECT_EQ(_test.document(), _document);
}

TEST_F(Workflow, GatheringIsOneStepAndShowsItsTerms) {
    _test.session.changes().pushChange("/objects/door/text", "A door that nobody has gathered", false);
    const std::string before = _test.document();
    run([](ImGuiTestContext& user) {
        user.MenuClick("Edit/Gather Strings");
        search(user, "##termsearch", "objects/door");
    });
    EXPECT_NE(_test.shownText().find("A door that nobody has gathered"), std::string::npos);
    expectUndoneAndRedone(before);
}

}
}
