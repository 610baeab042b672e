/* Which dialog the popup opens for its path, and what it does with the answer. */

#include <string>
#include <vector>

#include "plugin/ImportExportPopupTest.h"

namespace QuorvaneEngine::Test {
namespace {

bool has(const std::vector<std::string>& arguments, const std::string& part) {
    for(const std::string& argument: arguments)
        if(argument.find(part) != std::string::npos) return true;
    return false;
}

TEST_F(ImportExportPopup, ExportAsksWhereToSave) {
    const std::string folder = _dialogs.folder().string();
    _dialogs.choose(folder + "/saved");
    run([&](ImGuiTestContext& user) {
        open(user, "Export");
        type(user, (folder + "/bin").c_str());
        user.ItemClick("...");
        user.Yield();
        IM_CHECK_STR_EQ(path(user).c_str(), (folder + "/saved").c_str());
        close(user);
    });
    const std::vector<std::string> arguments = _dialogs.takeArguments();
    EXPECT_TRUE(has(arguments, "--save"));
    EXPECT_TRUE(has(arguments, "Save Terms"));
    EXPECT_TRUE(has(arguments, folder + "/bin"));
    EXPECT_FALSE(has(arguments, "*.zip"));
}

TEST_F(ImportExportPopup, ExportWithZipFiltersArchives) {
    _dialogs.choose("/tmp/terms.zip");
    run([](ImGuiTestContext& user) {
        open(user, "Export");
        user.ItemClick("##zip");
        user.ItemClick("...");
        user.Yield();
        IM_CHECK_STR_EQ(path(user).c_str(), "/tmp/terms.zip");
        close(user);
    });
    const std::vector<std::string> arguments = _dialogs.takeArguments();
    EXPECT_TRUE(has(arguments, "--save"));
    EXPECT_TRUE(has(arguments, "ZIP Archive"));
    EXPECT_TRUE(has(arguments, "*.zip"));
}

TEST_F(ImportExportPopup, ImportAsksForAFolder) {
    _dialogs.choose("/tmp/in");
    run([](ImGuiTestContext& user) {
        open(user, "Import");
        type(user, "/nowhere/at all");
        user.ItemClick("...");
        user.Yield();
        IM_CHECK_STR_EQ(path(user).substr(0, 7).c_str(), "/tmp/in");
        close(user);
    });
    const std::vector<std::string> arguments = _dialogs.takeArguments();
    EXPECT_TRUE(has(arguments, "--directory"));
    EXPECT_TRUE(has(arguments, "Load Terms from folder"));
    EXPECT_TRUE(has(arguments, "/nowhere/at all"));
}

TEST_F(ImportExportPopup, ImportWithZipAsksForOneFile) {
    _dialogs.choose("/tmp/in.zip");
    run([](ImGuiTestContext& user) {
        open(user, "Import");
        user.ItemClick("##zip");
        user.ItemClick("...");
        user.Yield();
        IM_CHECK_STR_EQ(path(user).c_str(), "/tmp/in.zip");
        close(user);
    });
    const std::vector<std::string> arguments = _dialogs.takeArguments();
    EXPECT_TRUE(has(arguments, "Load Terms as ZIP"));
    EXPECT_TRUE(has(arguments, "*.zip"));
    EXPECT_FALSE(has(arguments, "--save"));
    EXPECT_FALSE(has(arguments, "--directory"));
    EXPECT_FALSE(has(arguments, "--multiple"));
}

TEST_F(ImportExportPopup, ACancelledDialogChangesNothing) {
    run([](ImGuiTestContext& user) {
        for(const char* const mode: {"Export", "Import"})
            for(int zip = 0; zip != 2; ++zip) {
                open(user, mode);
                user.ItemClick("##zip");
                type(user, "/tmp/kept");
                user.ItemClick("...");
                user.Yield();
                IM_CHECK_STR_EQ(path(user).c_str(), "/tmp/kept");
                IM_CHECK(isOpen(user));
                close(user);
            }
    });
    EXPECT_FALSE(_dialogs.takeArguments().empty());
}

TEST_F(ImportExportPopup, AnAnswerOfMoreThan255BytesIsCut) {
    const std::string answer = "/tmp/" + std::string(300, 'x');
    _dialogs.choose(answer);
    run([&](ImGuiTestContext& user) {
        open(user, "Export");
        user.ItemClick("...");
        user.Yield();
        user.ItemClick("Export");
    });
    ASSERT_EQ(FakeTools::calls.size(), 1);
    EXPECT_EQ(FakeTools::calls[0].path, answer.substr(0, 255));
}

TEST_F(ImportExportPopup, AnAnswerOf256BytesIsCutAndOneOf255IsNot) {
    for(const std::size_t size: {255, 256}) {
        _dialogs.choose("/" + std::string(size - 1, 'y'));
        run([&](ImGuiTestContext& user) {
            open(user, "Export");
            user.ItemClick("...");
            user.Yield();
            user.ItemClick("Export");
        });
        ASSERT_FALSE(FakeTools::calls.empty());
        EXPECT_EQ(FakeTools::calls.back().path.size(), 255);
    }
}

TEST_F(ImportExportPopup, AShorterAnswerReplacesALongerPath) {
    _dialogs.choose("/a");
    run([](ImGuiTestContext& user) {
        open(user, "Export");
        type(user, "/a/very/long/path/that/leaves/nothing/behind");
        user.ItemClick("...");
        user.Yield();
        IM_CHECK_STR_EQ(path(user).c_str(), "/a");
        close(user);
    });
}

}
}
