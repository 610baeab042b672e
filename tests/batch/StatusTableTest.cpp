#include "batch/StatusTable.h"

#include <initializer_list>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "fonts/LanguageLetters.h"
#include "localization/LanguageLookup.h"
#include "localization/LocalizationStatus.h"

namespace QuorvaneEngine {
namespace {

LanguageStatus status(const char* const code, const UnsignedInt missing, const UnsignedInt stale,
    const UnsignedInt draft, const UnsignedInt review, const UnsignedInt done) {
    return {UnsignedInt(findLanguage(code)), {missing, stale, draft, review, done}};
}

Terminal terminal(const UnsignedInt width, const bool isUtf8 = false, const bool hasColors = false) {
    Terminal terminal;
    terminal.width = width;
    terminal.isUtf8 = isUtf8;
    terminal.hasColors = hasColors;
    return terminal;
}

std::string table(const std::vector<LanguageStatus>& statuses, const Terminal& terminal) {
    return statusTable(Containers::arrayView(statuses.data(), statuses.size()), terminal);
}

const std::vector<LanguageStatus> Statuses{status("en", 0, 0, 0, 0, 180), status("pt-BR", 1, 2, 3, 4, 170),
    status("ja", 90, 0, 45, 0, 45), status("ru", 180, 0, 0, 0, 0)};

TEST(StatusTable, EveryLanguageHasNumbersAndABar) {
    EXPECT_EQ(table(Statuses, terminal(90)),
        "Language                       Translated              Done  Review  Draft  Stale  Missing\n"
        "en        English              ###############  100 %   180       0      0      0        0\n"
        "pt-BR     Portuguese (Brazil)  ############+~.   98 %   170       4      3      2        1\n"
        "ja        Japanese             ###+++.........   50 %    45       0     45      0       90\n"
        "ru        Russian              ...............    0 %     0       0      0      0      180\n"
        "# done   + review or draft   ~ stale   . missing\n");
}

TEST(StatusTable, BarsBecomeLongerWithTheTerminalUpToFortyCharacters) {
    EXPECT_EQ(table({status("ru", 20, 0, 0, 0, 20)}, terminal(60)),
        "Language  Translated        Done  Review  Draft  Stale  Missing\n"
        "ru        #####.....  50 %    20       0      0      0       20\n"
        "# done   + review or draft   ~ stale   . missing\n");
    EXPECT_EQ(table({status("ru", 20, 0, 0, 0, 20)}, terminal(1000)),
        "Language           Translated                                      Done  Review  Draft  Stale  Missing\n"
        "ru        Russian  ####################....................  50 %    20       0      0      0       20\n"
        "# done   + review or draft   ~ stale   . missing\n");
}

TEST(StatusTable, OnANarrowTerminalTheNamesGiveWayFirst) {
    EXPECT_EQ(table(Statuses, terminal(72)),
        "Language  Translated                 Done  Review  Draft  Stale  Missing\n"
        "en        ##################  100 %   180       0      0      0        0\n"
        "pt-BR     ###############+~.   98 %   170       4      3      2        1\n"
        "ja        ####++++..........   50 %    45       0     45      0       90\n"
        "ru        ..................    0 %     0       0      0      0      180\n"
        "# done   + review or draft   ~ stale   . missing\n");
    EXPECT_EQ(table(Statuses, terminal(20)),
        "Language  Translated         Done  Review  Draft  Stale  Missing\n"
        "en        ##########  100 %   180       0      0      0        0\n"
        "pt-BR     #######+~.   98 %   170       4      3      2        1\n"
        "ja        ##++......   50 %    45       0     45      0       90\n"
        "ru        ..........    0 %     0       0      0      0      180\n"
        "# done   + review or draft   ~ stale   . missing\n");
}

TEST(StatusTable, WhereTheLocaleAllowsItBarsAreBlocks) {
    EXPECT_EQ(table({status("pt-BR", 1, 2, 3, 4, 170)}, terminal(80, true)),
        "Language  Translated                         Done  Review  Draft  Stale  Missing\n"
        "pt-BR     \u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588"
        "\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2593\u2592\u2591  98 %   170       4      3      2        "
        "1\n"
        "\u2588 done   \u2593 review or draft   \u2592 stale   \u2591 missing\n");
}

TEST(StatusTable, ColoursChangeNothingElse) {
    std::string colored = table(Statuses, terminal(90, false, true));
    EXPECT_NE(colored.find("\x1b[32m######"), std::string::npos);
    for(std::size_t begin; (begin = colored.find("\x1b[")) != std::string::npos;)
        colored.erase(begin, colored.find('m', begin) + 1 - begin);
    EXPECT_EQ(colored, table(Statuses, terminal(90)));
}

TEST(StatusTable, NothingOfWhatThereIsVanishesFromABar) {
    const std::string text = table({status("de", 1, 1, 1, 0, 100000)}, terminal(20));
    EXPECT_NE(text.find("#######+~."), std::string::npos) << text;
    EXPECT_NE(text.find(" 99 %"), std::string::npos) << text;
}

TEST(StatusTable, WhatNeedsNoTextIsTranslated) {
    EXPECT_EQ(table({status("de", 0, 0, 0, 0, 0)}, terminal(20)),
        "Language  Translated         Done  Review  Draft  Stale  Missing\n"
        "de        ##########  100 %     0       0      0      0        0\n"
        "# done   + review or draft   ~ stale   . missing\n");
}

TEST(StatusTable, WithoutLanguagesThereAreNoLines) {
    EXPECT_EQ(table({}, terminal(20)),
        "Language  Translated    Done  Review  Draft  Stale  Missing\n"
        "# done   + review or draft   ~ stale   . missing\n");
}

TEST(StatusTable, LettersAndShapingAreTwoLines) {
    LanguageLetters letters[3];
    const char* const codes[]{"ja", "ar", "he"};
    for(std::size_t i = 0; i != 3; ++i) letters[i].language = UnsignedInt(findLanguage(codes[i]));
    EXPECT_EQ(letterLines(letters, true), "");
    letters[0].undrawn = 2;
    letters[0].firstUndrawn = 0x706f;
    EXPECT_EQ(letterLines(letters, true), "Letters that no font of this machine has: ja (2, such as U+706F)\n");
    letters[1].isJoined = letters[2].isRightToLeft = true;
    letters[2].undrawn = 1;
    letters[2].firstUndrawn = 0x5d0;
    EXPECT_EQ(letterLines(letters, true),
        "Letters that no font of this machine has: ja (2, such as U+706F), he (1, such as U+05D0)\n"
        "Drawn letter by letter in the editor, which does no shaping: ar, he\n");
    EXPECT_EQ(letterLines(letters, false),
        "This machine has no fonts; which letters the editor can draw is known where it has some.\n"
        "Drawn letter by letter in the editor, which does no shaping: ar, he\n");
}

TEST(StatusTable, MachinesGetTheNumbers) {
    rapidjson::Document object{rapidjson::kObjectType};
    LanguageLetters letters[2];
    letters[0].isJoined = true;
    letters[1].undrawn = 3;
    addStatus(Containers::arrayView(Statuses.data(), 2), Containers::arrayView(letters), true, object);
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer{buffer};
    object.Accept(writer);
    EXPECT_STREQ(buffer.GetString(),
        R"({"languages":[{"language":"en","name":"English","percent":100,"total":180,"done":180,"review":0,"draft":0,"stale":0,"missing":0,"undrawn":0,"needsShaping":true},)"
        R"json({"language":"pt-BR","name":"Portuguese (Brazil)","percent":98,"total":180,"done":170,"review":4,"draft":3,"stale":2,"missing":1,"undrawn":3,"needsShaping":false}],"hasFonts":true})json");
}

}
}
