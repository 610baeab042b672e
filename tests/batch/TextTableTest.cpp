#include "batch/TextTable.h"

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

using Side = TextTable::Side;

TEST(TextTable, ColumnsAreAsWideAsTheirWidestCell) {
    TextTable table{{Side::Left, Side::Right, Side::Left}};
    table.add({"Language", "Done", "Note"});
    table.add({"de", "10000", ""});
    EXPECT_EQ(table.text(), "Language   Done  Note\nde        10000\n");
    EXPECT_EQ(table.width(), 21u);
}

TEST(TextTable, WidthIsCountedInCharactersAndNotInBytes) {
    TextTable table{{Side::Left, Side::Left}};
    table.add({"Bokm\u00e5l", "1"});
    table.add({"Bokmal", "2"});
    EXPECT_EQ(table.text(), "Bokm\u00e5l  1\nBokmal  2\n");
    EXPECT_EQ(characterCount("\u2588\u2588a"), 3u);
    EXPECT_EQ(characterCount("\x1b[31;1mred\x1b[0m"), 3u);
    EXPECT_EQ(characterCount("\x1b["), 0u);
}

TEST(TextTable, WithoutLinesThereIsNoText) {
    const TextTable table{{Side::Left}};
    EXPECT_EQ(table.text(), "");
    EXPECT_EQ(table.width(), 0u);
}

}
}
