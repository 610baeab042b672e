#include "Placeholders.h"

#include <string>

#include <gtest/gtest.h>

#include "TestProject.h"
#include "support/CpuTime.h"

namespace QuorvaneEngine {

namespace {

/** "name", "name|format", "-name" for each placeholder, with ";" between. */
std::string placeholdersOf(const std::string& text) {
    const Placeholders read{viewed(text)};
    std::string all;
    for(const Placeholder& one: read.placeholders()) {
        all += (all.empty() ? "" : ";") + std::string{one.isUnescaped ? "-" : ""} + copied(one.name);
        if(!one.format.isEmpty()) all += '|' + copied(one.format);
    }
    return all;
}

/** Keys in quotes, with blanks between. */
std::string nestingsOf(const std::string& text) {
    const Placeholders read{viewed(text)};
    std::string all;
    for(const Nesting& one: read.nestings()) all += (all.empty() ? "'" : " '") + copied(one.key) + '\'';
    return all;
}

}

TEST(Placeholders, AreFoundAsTheyAreWritten) {
    const std::string text = "Hi {{name}}, {{- raw }} and {{ sum, currency(USD) }}; $t(menu.quit)!";
    const Placeholders read{viewed(text)};
    ASSERT_EQ(read.placeholders().size(), 3u);
    EXPECT_EQ(read.placeholders()[0].text, "{{name}}");
    EXPECT_EQ(read.placeholders()[0].name, "name");
    EXPECT_EQ(read.placeholders()[0].format, "");
    EXPECT_FALSE(read.placeholders()[0].isUnescaped);
    EXPECT_EQ(read.placeholders()[1].text, "{{- raw }}");
    EXPECT_EQ(read.placeholders()[1].name, "raw");
    EXPECT_TRUE(read.placeholders()[1].isUnescaped);
    EXPECT_EQ(read.placeholders()[2].text, "{{ sum, currency(USD) }}");
    EXPECT_EQ(read.placeholders()[2].name, "sum");
    EXPECT_EQ(read.placeholders()[2].format, "currency(USD)");
    ASSERT_EQ(read.nestings().size(), 1u);
    EXPECT_EQ(read.nestings()[0].text, "$t(menu.quit)");
    EXPECT_EQ(read.nestings()[0].key, "menu.quit");
    EXPECT_FALSE(read.isEmpty());
    EXPECT_TRUE(Placeholders{"plain"}.isEmpty());
    EXPECT_TRUE(Placeholders{}.isEmpty());
}

TEST(Placeholders, HaveNamesAndFormatsAsTheLibraryReadsThem) {
    const struct {
        const char* text;
        const char* expected;
    } data[]{
        {"{{name}}{{name}}", "name;name"},
        {"{{user.address.city}}", "user.address.city"},
        {"{{ name }}", "name"},
        {"{{\u00a0name\u00a0}}", "name"},
        {"{{-name}}", "-name"},
        {"{{- name, uppercase}}", "-name|uppercase"},
        {"{{ - name}}", "- name"},
        {"{{-}}", "-"},
        {"{{a, b, c(d: 1, e: 2)}}", "a|b, c(d: 1, e: 2)"},
        {"{{date, datetime(month: long; day: numeric)}}", "date|datetime(month: long; day: numeric)"},
        {"{{a,}}", "a"},
        {"{{größe}}", "größe"},
        {"{{{a}}}", "{a"},
        {"{{}}}", "}"},
        {"{{a}} {{- b}} {{c}}", "a;-b;c"},
        {"{{a {{- b}} }}", "-b"},
        {"{{- a {{- b}} }}", "-a {{- b"},
        {"{{{-a}}", "-a"},
        {"{{{-}}}", "-}"},
        {"{{a {{-}}", "a {{-"},
        {"{{a {{b}} }}", "a {{b"},
        {"{{a", ""},
        {"a}}", ""},
        {"{a}", ""},
        {"{{a}", ""},
        {"{{}}", ""},
        {"{{-", ""},
        {"{{ }}", ""},
        {"{{- }}", ""},
        {"{{, uppercase}}", ""},
        {"{{a\nb}}", ""},
        {"{{a\rb}}", ""},
        {"{{a\u2028b}}", ""},
        {"{{a\u2029b}}", ""},
        {"{{a\u202ab}}", "a\u202ab"},
        {"{{a\n{{b}}", "b"},
        {"{{-\n}} {{b}}", "b"},
        {"$t(key, { \"count\": {{n}} })", "n"},
    };
    for(const auto& row: data) EXPECT_EQ(placeholdersOf(row.text), row.expected) << row.text;
}

TEST(Placeholders, NestingsHaveTheKeyThatTheLibraryLooksUp) {
    const struct {
        const char* text;
        const char* expected;
    } data[]{
        {"$t(a.b) $t(c)", "'a.b' 'c'"},
        {"$t(common:a)", "'common:a'"},
        {"$t( a )", "'a'"},
        {"$t(a\n)", "'a'"},
        {"$t(a, { \"count\": {{n}} })", "'a'"},
        {"$t(a,{\"x\": 1}, uppercase)", "'a'"},
        {"$t( a, {\"x\": 1})", "'a'"},
        {"$t(a , {\"x\": 1})", "'a '"},
        {"$t(a, uppercase, lowercase)", "'a'"},
        {"$t(a , uppercase)", "'a'"},
        {"$t(a, {\"x\": 1}, upper, lower)", "'a'"},
        {"$t(a_{{x}}, upper)", "'a_{{x}}'"},
        {"$t({a} b)", "'{a}'"},
        {"$t(a_{{kind}})", "'a_{{kind}}'"},
        {"$t(a, {\"x\": \"a) (b\"})", "'a'"},
        {"$t(a, {\"x\": 'it) is'})", "'a'"},
        {"$t((a))", "'(a)'"},
        {"$t()", "''"},
        {"$t(\"a)\")", "'\"a)\"'"},
        {"$t(a $t(b))", "'a $t(b)'"},
        {"$t(a $t(b $t(c)))", "'b $t(c)'"},
        {"$t(it's)", ""},
        {"$t(a", ""},
        {"$t(\"a)", ""},
        {"$t(\"a) $t(b)", "'b'"},
        {"$t (a)", ""},
        {"t(a)", ""},
    };
    for(const auto& row: data) EXPECT_EQ(nestingsOf(row.text), row.expected) << row.text;
}

TEST(Placeholders, AreReadAnewInTheSameObject) {
    Placeholders read{"{{a}} $t(b)"};
    read.read("{{c}}");
    ASSERT_EQ(read.placeholders().size(), 1u);
    EXPECT_EQ(read.placeholders()[0].name, "c");
    EXPECT_EQ(read.nestings().size(), 0u);
    read.read({});
    EXPECT_TRUE(read.isEmpty());
}

TEST(Placeholders, TakeTimeInProportionWhateverTheText) {
    for(const char* const part:
        {"{{", "{{-", "{{a\n", "{{ {{- ", "$t(", "$t(\"", "$t('\"", "$t((", "{{a}}", "$t(a)", "\n{{"}) {
        std::string text;
        while(text.size() < 1u << 20) text += part;
        const double begin = cpuTime();
        const Placeholders read{viewed(text)};
        // Searching from each beginning to the end would take minutes.
        EXPECT_LT(cpuTime() - begin, 5.0) << part;
    }
}

TEST(Placeholders, OfAnyBytesStayInsideThem) {
    const char alphabet[]{
        '{', '}', '-', ',', '$', 't', '(', ')', '"', '\'', ' ', '\n', 'a', '\xe2', '\x80', '\xa8', '\0'};
    std::uint32_t state = 1;
    for(int round = 0; round != 20000; ++round) {
        std::string text;
        for(std::uint32_t size = round % 24; size--;) {
            state = state * 1664525u + 1013904223u;
            text += alphabet[(state >> 16) % sizeof(alphabet)];
        }
        const Placeholders read{viewed(text)};
        const char* last = text.data();
        for(const Placeholder& one: read.placeholders()) {
            EXPECT_GE(one.text.begin(), last);
            EXPECT_TRUE(one.text.hasPrefix("{{") && one.text.hasSuffix("}}"));
            EXPECT_FALSE(one.name.isEmpty());
            last = one.text.end();
        }
        last = text.data();
        for(const Nesting& one: read.nestings()) {
            EXPECT_GE(one.text.begin(), last);
            EXPECT_TRUE(one.text.hasPrefix("$t(") && one.text.hasSuffix(")"));
            last = one.text.end();
        }
        EXPECT_LE(last, text.data() + text.size());
    }
}

}
