#include "I18NextVersion3.h"

#include <initializer_list>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "Catalogue.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

/** "key: reason" of the notice about a file with these texts, empty where there is none. */
std::string noticed(const std::initializer_list<std::pair<const char*, const char*>> entries) {
    Catalogue catalogue;
    for(const auto& [key, text]: entries) catalogue.add(key, text);
    noticeVersion3(catalogue);
    EXPECT_LE(catalogue.notices().size(), 1u);
    EXPECT_EQ(catalogue.entries().size(), entries.size());
    if(catalogue.notices().isEmpty()) return {};
    return copied(catalogue.notices()[0].key) + ": " + copied(catalogue.notices()[0].reason);
}

const std::string One =
    ": looks like a plural form of version 3 of the format: it is an ordinary key, which version 4 does not "
    "choose by number";

std::string more(const int count) {
    return ": looks like a plural form of version 3 of the format, as " + std::to_string(count) +
        " more do: they are ordinary keys, which version 4 does not choose by number";
}

}

TEST(I18NextVersion3, PluralBesideItsSingular) {
    EXPECT_EQ(noticed({{"menu.key", "item"}, {"menu.key_plural", "items"}}), "menu.key_plural" + One);
    EXPECT_EQ(noticed({{"a_plural", "x"}, {"a", "y"}, {"b", ""}, {"b_plural", ""}}), "a_plural" + more(1));
    EXPECT_EQ(noticed({{"friend_male", "x"}, {"friend_male_plural", "y"}}), "friend_male_plural" + One);
}

TEST(I18NextVersion3, PluralAloneIsAName) {
    EXPECT_EQ(noticed({{"key_plural", "x"}, {"other", "y"}}), "");
    EXPECT_EQ(noticed({{"_plural", "x"}}), "");
    EXPECT_EQ(noticed({{"key", "x"}, {"key_other", "y"}}), "");
}

TEST(I18NextVersion3, NumberedFormsThatCount) {
    EXPECT_EQ(noticed({{"key_0", "{{count}} слово"}, {"key_1", "{{count}} слова"}, {"key_2", "{{count}} слов"}}),
        "key_0" + more(2));
    EXPECT_EQ(noticed({{"list_0", "a"}, {"list_1", "b"}, {"key_0", "{{count, number}}"}, {"key_1", "b"}}),
        "list_0" + more(3));
}

TEST(I18NextVersion3, ListsAreNoForms) {
    EXPECT_EQ(noticed({{"line_0", "a"}, {"line_1", "b"}}), "");
    EXPECT_EQ(noticed({{"key_0", "{{count}}"}}), "");
    EXPECT_EQ(noticed({{"key_0", "{{count}}"}, {"key_2", "{{count}}"}}), "");
    EXPECT_EQ(noticed({{"key_1", "{{count}}"}, {"key_2", "{{count}}"}}), "");
    EXPECT_EQ(noticed({{"l_0", "{{count}}"}, {"l_1", "b"}, {"l_2", "c"}, {"l_3", "d"}, {"l_4", "e"}, {"l_5", "f"},
                  {"l_6", "g"}}),
        "");
}

TEST(I18NextVersion3, FormsAreKnownOneByOne) {
    Catalogue catalogue, list;
    for(const char* const key: {"a", "a_plural", "b_plural", "c_0", "c_1", "d_1", "e_", "_", "f_0", "f_x"}) {
        catalogue.add(key, "{{count}}");
        list.add(key, "x");
    }
    noticeVersion3(catalogue);
    noticeVersion3(list);
    std::string forms, plurals;
    for(const CatalogueEntry& entry: catalogue.entries()) {
        if(isVersion3Form(catalogue, entry.key)) forms += copied(entry.key) + ' ';
        if(isVersion3Form(list, entry.key)) plurals += copied(entry.key) + ' ';
    }
    EXPECT_EQ(forms, "a_plural c_0 c_1 ");
    EXPECT_EQ(plurals, "a_plural ");
}

TEST(I18NextVersion3, FormsOfAllKindsAreOneNotice) {
    EXPECT_EQ(noticed({{"a_0", "{{count}}"}, {"a_1", ""}, {"b", ""}, {"b_plural", ""}}), "b_plural" + more(2));
}

}
