#include "TextMarkup.h"

#include <string>

#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

/** A text with its markup in brackets. */
std::string marked(const std::string& text) {
    TextMarkup markup{viewed(text)};
    std::string out;
    for(std::size_t i = 0; i != text.size();) {
        const std::size_t end = markup.end(i);
        if(end == i) out += text[i++];
        else {
            out += '[' + text.substr(i, end - i) + ']';
            i = end;
        }
    }
    return out;
}

}

TEST(TextMarkup, IsWhatTheApplicationReads) {
    EXPECT_EQ(marked("a{{b}}c$t(d)e"), "a[{{b}}]c[$t(d)]e");
    EXPECT_EQ(marked("$t(a, {{b}})c"), "[$t(a, {{b}})]c");
    EXPECT_EQ(marked("a<b>c</b><br/>"), "a[<b>]c[</b>][<br/>]");
    EXPECT_EQ(marked("<a title='b > c'>d"), "[<a title='b > c'>]d");
    EXPECT_EQ(marked("a&amp;b&#1;c&#xAf;d"), "a[&amp;]b[&#1;]c[&#xAf;]d");
    EXPECT_EQ(marked("a\\nb\\u00E9c\\x1fd\\\\e"), "a[\\n]b[\\u00E9]c[\\x1f]d[\\\\]e");
    EXPECT_EQ(marked("\\u00Eg\\x1"), "[\\u00E]g[\\x1]");
}

TEST(TextMarkup, IsNotWhatOnlyLooksLikeIt) {
    for(const char* const text:
        {"", "a < b > c", "1 <", "</", "</ a>", "<a", "<é>", "a & b; c", "&;", "&a b;", "&1;", "{{a", "$t(a"})
        EXPECT_EQ(marked(text), text);
    EXPECT_EQ(marked("<a <b>"), "<a [<b>]");
    EXPECT_EQ(marked("\\é"), "[\\]é");
}

TEST(TextMarkup, MayBeAskedFromAnyPlaceOn) {
    const std::string text = "ab{{c}}d";
    TextMarkup markup{viewed(text)};
    EXPECT_EQ(markup.end(4), 7u);
    EXPECT_EQ(markup.end(7), 7u);
}

}
