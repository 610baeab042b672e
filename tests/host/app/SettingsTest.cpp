#include "app/Settings.h"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "host/localization/TestFolder.h"
#include "support/CapturedOutput.h"
#include "support/OrdinaryUser.h"

namespace QuorvaneEngine {
namespace {

using Test::CapturedOutput;
using Test::OrdinaryUser;
using Theme::Scheme;

constexpr const char* File = "settings/settings.json";

class SettingsTest: public testing::Test {
protected:
    Settings fresh() const { return Settings{(folder / "settings").c_str()}; }

    static void expectFirstValues(const Settings& settings) {
        EXPECT_EQ(settings.scheme(), Scheme::Dark);
        EXPECT_EQ(settings.scale(), 100);
    }

    const TestFolder folder;
};

TEST_F(SettingsTest, AreDarkAndOfTheDisplaysScaleAtFirstAndNothingIsWritten) {
    const CapturedOutput output;
    expectFirstValues(fresh());
    EXPECT_EQ(output.warning() + output.error(), "");
    EXPECT_FALSE(std::filesystem::exists(folder / "settings"));
}

TEST_F(SettingsTest, AreThereAgainTheNextTime) {
    Settings settings = fresh();
    settings.setScheme(Scheme::Light);
    settings.setScale(150);
    EXPECT_EQ(folder.read(File), "{\n  \"version\": 1,\n  \"theme\": \"light\",\n  \"scale\": 150\n}\n");
    EXPECT_EQ(fresh().scheme(), Scheme::Light);
    EXPECT_EQ(fresh().scale(), 150);
}

TEST_F(SettingsTest, AreNotWrittenWhereNothingChanges) {
    Settings settings = fresh();
    settings.setScheme(Scheme::Dark);
    settings.setScale(100);
    EXPECT_FALSE(std::filesystem::exists(folder / "settings"));
}

TEST_F(SettingsTest, KeepWhatTheyDoNotKnow) {
    folder.write(File, "{\"colours\": [1, {\"a\": null}], \"version\": 1, \"scale\": 125}");
    fresh().setScheme(Scheme::Light);
    EXPECT_EQ(folder.read(File),
        "{\n  \"colours\": [1, {\"a\": null}],\n  \"version\": 1,\n  \"scale\": 125,\n  \"theme\": \"light\"\n}\n");
}

TEST_F(SettingsTest, KeepWhatAnotherEditorHasPutThereMeanwhile) {
    Settings settings = fresh();
    folder.write(File, "{\"version\": 1, \"more\": true}");
    settings.setScale(75);
    EXPECT_EQ(folder.read(File), "{\n  \"version\": 1,\n  \"more\": true,\n  \"scale\": 75\n}\n");
}

TEST_F(SettingsTest, WhatTwoEditorsChooseIsKeptOfBoth) {
    Settings one = fresh();
    Settings other = fresh();
    one.setScale(150);
    other.setScheme(Scheme::Light);
    EXPECT_EQ(fresh().scale(), 150);
    EXPECT_EQ(fresh().scheme(), Scheme::Light);
}

TEST_F(SettingsTest, ThoseOfALaterVersionStayAsTheyAre) {
    for(const char* const text: {"{\"version\": 2, \"theme\": [\"light\"]}", "{\"version\": 1.5}"}) {
        folder.write(File, text);
        const CapturedOutput output;
        Settings settings = fresh();
        settings.setScale(150);
        EXPECT_EQ(settings.scale(), 150);
        EXPECT_EQ(folder.read(File), text);
        EXPECT_EQ(output.warning(),
            "Settings::read(): " + (folder / File) + ":1:1: the settings are of another version\nSettings::write(): " +
                (folder / File) + ":1:1: the settings are of a later version, and stay as they are\n");
    }
}

TEST_F(SettingsTest, ThoseWithoutAVersionAreOfThisOneWhenSomethingIsChosen) {
    folder.write(File, "{\"scale\": 125}");
    const CapturedOutput output;
    fresh().setScheme(Scheme::Light);
    EXPECT_EQ(folder.read(File), "{\n  \"scale\": 125,\n  \"version\": 1,\n  \"theme\": \"light\"\n}\n");
}

TEST_F(SettingsTest, AFileWithoutRightsIsToldAndReplacedByOneThatItsOwnerCanRead) {
    folder.write(File, "{\"version\": 1, \"scale\": 150}");
    std::filesystem::permissions(folder / File, std::filesystem::perms::none);
    const OrdinaryUser user{folder.path};
    if(!user.isOrdinary) GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
    const CapturedOutput output;
    Settings settings = fresh();
    expectFirstValues(settings);
    EXPECT_EQ(output.warning(), "Settings::read(): " + (folder / File) + ":1:1: the file cannot be read\n");
    settings.setScale(125);
    EXPECT_EQ(fresh().scale(), 125);
}

TEST_F(SettingsTest, WhatIsNoSettingsIsOneWarningAndHasTheFirstValues) {
    const std::pair<const char*, const char*> files[]{
        {"", ":1:1: "},
        {"garbage", ":1:1: "},
        {"{\"version\": 1,\n \"theme\": \"light\"", ":2:"},
        {"\xff\xfe\x00\x01", ":1:1: "},
        {"[]", ":1:1: the settings are no object\n"},
        {"null", ":1:1: the settings are no object\n"},
        {"{}", ":1:1: the settings are of another version\n"},
        {"{\"version\": 2, \"theme\": \"light\", \"scale\": 200}", ":1:1: the settings are of another version\n"},
        {"{\"version\": \"1\"}", ":1:1: the settings are of another version\n"},
        {"{\"version\": 1, \"theme\": \"pink\"}", ":1:1: the theme is none\n"},
        {"{\"version\": 1, \"theme\": 7}", ":1:1: the theme is none\n"},
        {"{\"version\": 1, \"scale\": 74}", ":1:1: the scale is no number from 75 to 300\n"},
        {"{\"version\": 1, \"scale\": 301}", ":1:1: the scale is no number from 75 to 300\n"},
        {"{\"version\": 1, \"scale\": 1e300}", ":1:1: the scale is no number from 75 to 300\n"},
        {"{\"version\": 1, \"scale\": \"100\", \"theme\": null}",
            ":1:1: the theme is none, and the scale is no number from 75 to 300\n"},
    };
    for(const auto& [text, warning]: files) {
        folder.write(File, text);
        const CapturedOutput output;
        expectFirstValues(fresh());
        EXPECT_EQ(output.warning().find("Settings::read(): " + (folder / File) + warning), 0u) << text << "\n"
                                                                                               << output.warning();
        EXPECT_EQ(output.warning().find('\n'), output.warning().size() - 1) << output.warning();
        EXPECT_EQ(output.error(), "");
    }
}

TEST_F(SettingsTest, OneMemberThatIsWrongLeavesTheOthers) {
    folder.write(File, "{\"version\": 1, \"theme\": \"light\", \"scale\": 7}");
    const CapturedOutput output;
    const Settings settings = fresh();
    EXPECT_EQ(settings.scheme(), Scheme::Light);
    EXPECT_EQ(settings.scale(), 100);
}

TEST_F(SettingsTest, WhatCannotBeReadIsReplacedWhenSomethingIsChosen) {
    folder.write(File, "garbage");
    const CapturedOutput output;
    fresh().setScale(200);
    EXPECT_EQ(fresh().scale(), 200);
}

TEST_F(SettingsTest, AFolderInPlaceOfTheFileIsAWarning) {
    std::filesystem::create_directories(folder / File);
    const CapturedOutput output;
    Settings settings = fresh();
    expectFirstValues(settings);
    settings.setScale(125);
    EXPECT_EQ(output.warning(),
        "Settings::read(): " + (folder / File) + ":1:1: the file cannot be read\nSettings::write(): " +
            (folder / File) + ": cannot be written: Is a directory\n");
    EXPECT_EQ(folder.files().size(), 2u) << "nothing lies beside it";
    EXPECT_EQ(settings.scale(), 125);
}

TEST_F(SettingsTest, WithoutAFolderNothingIsKept) {
    const CapturedOutput output;
    Settings settings{""};
    settings.setScheme(Scheme::Light);
    EXPECT_EQ(settings.scheme(), Scheme::Light);
    EXPECT_EQ(output.warning(), "");
}

TEST_F(SettingsTest, AScaleOutsideOfTheLimitsIsTheNearest) {
    Settings settings = fresh();
    settings.setScale(1000);
    EXPECT_EQ(settings.scale(), 300);
    settings.setScale(-1);
    EXPECT_EQ(settings.scale(), 75);
}

TEST_F(SettingsTest, ScalesGoFrom75To300AndBack) {
    std::vector<Int> up{75};
    while(Settings::nextScale(up.back(), 1) != up.back()) up.push_back(Settings::nextScale(up.back(), 1));
    EXPECT_EQ(up, (std::vector<Int>{75, 90, 100, 110, 125, 150, 175, 200, 250, 300}));
    for(std::size_t i = up.size() - 1; i; --i) EXPECT_EQ(Settings::nextScale(up[i], -1), up[i - 1]);
    EXPECT_EQ(Settings::nextScale(75, -1), 75);
}

TEST_F(SettingsTest, AScaleBetweenTwoGoesToTheNearerEnd) {
    EXPECT_EQ(Settings::nextScale(130, 1), 150);
    EXPECT_EQ(Settings::nextScale(130, -1), 125);
}

}
}
