#include "Journal.h"

#include <string>

#include <Corrade/Containers/GrowableArray.h>
#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

constexpr const char* Text = "quorvane-journal 1\n"
                             "complete\n"
                             "replace project.json\n"
                             "create localization/fr.json\n"
                             "remove a name with blanks\n"
                             "end\n";

TEST(Journal, TextIsReadBack) {
    const Containers::Optional<Journal> journal = Journal::fromText(Text);
    ASSERT_TRUE(journal);
    EXPECT_EQ(journal->direction, Journal::Direction::Complete);
    ASSERT_EQ(journal->entries.size(), 3);
    EXPECT_EQ(journal->entries[0].action, Journal::Action::Replace);
    EXPECT_EQ(journal->entries[1].action, Journal::Action::Create);
    EXPECT_EQ(journal->entries[1].path, "localization/fr.json");
    EXPECT_EQ(journal->entries[2].action, Journal::Action::Remove);
    EXPECT_EQ(journal->entries[2].path, "a name with blanks");
    EXPECT_EQ(journal->text(), Text);
}

TEST(Journal, HasADirection) {
    Journal journal;
    journal.direction = Journal::Direction::Restore;
    EXPECT_EQ(journal.text(), "quorvane-journal 1\nrestore\nend\n");
    EXPECT_EQ(Journal::fromText(journal.text())->direction, Journal::Direction::Restore);
}

TEST(Journal, CutAtAnyByteItIsNone) {
    const std::string text{Text};
    for(std::size_t size = 0; size != text.size(); ++size) EXPECT_FALSE(Journal::fromText({text.data(), size})) << size;
}

TEST(Journal, AnythingElseIsNone) {
    for(const char* const text: {"", "\n\n\n", "quorvane-journal 2\ncomplete\nend\n",
            "quorvane-journal 1\nforward\nend\n", "quorvane-journal 1\ncomplete\n\nend\n",
            "quorvane-journal 1\ncomplete\nreplace\nend\n", "quorvane-journal 1\ncomplete\nreplace \nend\n",
            "quorvane-journal 1\ncomplete\nkeep project.json\nend\n", "quorvane-journal 1\ncomplete\nend\nend \n"})
        EXPECT_FALSE(Journal::fromText(text)) << text;
}

TEST(Journal, PathsThatLeadOutOfTheFolderAreRefused) {
    for(const char* const path: {"/etc/passwd", "../x", "a/../../x", "a/..", "./x", "a//b", "a/", "", "a\\b", "a\nb"}) {
        EXPECT_FALSE(Journal::isPath(path)) << path;
        EXPECT_FALSE(Journal::fromText(Containers::String{"quorvane-journal 1\ncomplete\nremove "} + path + "\nend\n"))
            << path;
    }
    for(const char* const path: {"project.json", "localization/pt-BR.json", "..x", "a b"})
        EXPECT_TRUE(Journal::isPath(path)) << path;
}

}
}
