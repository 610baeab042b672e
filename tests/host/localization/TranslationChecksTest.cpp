#include "TranslationChecks.h"

#include "Findings.h"

namespace QuorvaneEngine {

TEST(TranslationChecks, FindPlaceholdersThatDiffer) {
    EXPECT_EQ(found(translated({{"a", "Hi {{name}}"}}, {{"a", "Hallo {{nme}}"}})),
        "placeholder-differs: localization/de.json: /a: lacks {{name}} of the source, and has {{nme}}, which the "
        "source "
        "does not have\n");
    EXPECT_EQ(found(translated({{"a", "Hi {{name}}"}}, {{"a", "Hallo"}})),
        "placeholder-differs: localization/de.json: /a: lacks {{name}} of the source\n");
    EXPECT_EQ(found(translated({{"a", "Hi"}}, {{"a", "Hallo {{name}}"}})),
        "placeholder-differs: localization/de.json: /a: has {{name}}, which the source does not have\n");
    EXPECT_EQ(found(translated({{"a", "{{x}} of {{y}}"}}, {{"a", "{{y}}, {{x}}, {{ x }}"}})), "");
    EXPECT_EQ(found(translated({{"a", "Hi {{count}}"}}, {{"a", "Hallo"}})),
        "placeholder-differs: localization/de.json: /a: lacks {{count}} of the source\n");
}

TEST(TranslationChecks, FindFormatsThatDiffer) {
    EXPECT_EQ(found(translated({{"a", "{{sum, number}} A"}}, {{"a", "{{sum}} B"}})),
        "format-differs: localization/de.json: /a: has {{sum}} where the source has {{sum, number}}\n");
    EXPECT_EQ(found(translated({{"a", "{{- html}} A"}}, {{"a", "{{html}} B"}})),
        "format-differs: localization/de.json: /a: has {{html}} where the source has {{- html}}\n");
    EXPECT_EQ(found(translated({{"a", "{{sum, number(a: 1)}} A"}}, {{"a", "{{sum,number( a:1 )}} B"}})), "");
}

TEST(TranslationChecks, FindNestingsThatDifferOrLeadNowhere) {
    EXPECT_EQ(found(translated({{"a", "Press $t(b)"}, {"b", "Start"}, {"c", "End"}}, {{"a", "Drücke $t(c)"}})),
        "nesting-differs: localization/de.json: /a: lacks $t(b) of the source, and has $t(c), which the source does "
        "not "
        "have\n");
    EXPECT_EQ(found(translated({{"a", "Press $t(b)"}, {"b", "Start"}}, {{"a", "Drücke $t(b) und $t(gone)"}})),
        "nesting-differs: localization/de.json: /a: has $t(gone), which the source does not have\n"
        "nesting-unknown: localization/de.json: /a: has $t(gone), and no exported term has this key\n");
    EXPECT_EQ(
        found(translated({{"a", "Press $t(b)"}, {"b", "Start"}}, {{"a", "$t(b, { \"case\": \"dative\" }) drücken"}})),
        "");
}

TEST(TranslationChecks, FindTextsThatAreTheSource) {
    EXPECT_EQ(found(translated({{"a", "Save"}}, {{"a", "Save"}})),
        "same-as-source: localization/de.json: /a: is the same as the source: Save\n");
    EXPECT_EQ(found(translated({{"a", "Save"}}, {{"a", "save"}})), "");
    // Without letters of their own
    for(const char* const text: {"100 %", "{{name}}", "$t(a)", "<b>{{x}}</b>", "&nbsp;- ", "\\n", "2 + 2", "👍"})
        EXPECT_EQ(found(translated({{"a", text}}, {{"a", text}})), "") << text;
    EXPECT_NE(found(translated({{"a", "東京"}}, {{"a", "東京"}})), "");
    // Languages that share their words
    EXPECT_EQ(found(translated({{"a", "Save"}}, {{"a", "Save"}}, "en-GB")), "");
    EXPECT_EQ(found(translated({{"a", "Guardar"}}, {{"a", "Guardar"}}, "es"), "es-MX"), "");
    EXPECT_NE(found(translated({{"a", "Save"}}, {{"a", "Save"}}, "eng-GB")), "");
}

TEST(TranslationChecks, FindTranslationsThatAreNotOfTodaysSource) {
    const auto project = [](const std::string& translation, const char* const silenced = "") {
        return R"({"localization": {"strings": {"a/b": "A"}, "terms": {"a/b": {"sourceText": "/localization/strings/a~1b",
            "translatable": true)" +
            std::string{silenced} + R"(}}, "translations": {"de": {"a/b": )" + translation + "}}}}";
    };
    const std::string stale =
        "stale: localization/de.json: /a~1b: is not marked as a translation of today's source text";
    EXPECT_EQ(found(project(translation("B", "Yesterday's A"))), stale + "\n");
    EXPECT_EQ(found(project(R"({"text": "B", "source": ""})")), stale + "\n");
    EXPECT_EQ(found(project(R"({"text": "B"})")), stale + "\n");
    EXPECT_EQ(found(project(R"({"text": "B", "source": 7})")),
        "wrong-type: localization/de.json: /a~1b/source: /source is a number, but must be a string\n" + stale + "\n");
    EXPECT_EQ(found(project(translation("B", "A"))), "");
    // What is missing is not stale.
    EXPECT_EQ(found(project(R"({"text": ""})")), "");
    EXPECT_EQ(found(project("{}")), "");
    EXPECT_EQ(found(project(R"({"text": "B"})", R"(, "silenced": {"stale": "is a name"})")), stale + " [is a name]\n");
    // Nobody asks for what is not translatable.
    EXPECT_EQ(found(R"({"localization": {"strings": {"a": "A"}, "terms": {"a": {"sourceText": "/localization/strings/a",
        "translatable": false}}, "translations": {"de": {"a": {"text": "B"}}}}})"),
        "");
    // That it is the same as its source is another thing.
    EXPECT_EQ(found(project(R"({"text": "A"})")),
        "same-as-source: localization/de.json: /a~1b: is the same as the source: A\n" + stale + "\n");
}

TEST(TranslationChecks, AFormThatNoTermHasIsStaleWithTheSourceOfTheFormOther) {
    const auto forms = [](const char* const source) {
        return found(R"({"localization": {"strings": {"a_one": "A", "a_other": "B"}, "terms": {
            "a_one": {"sourceText": "/localization/strings/a_one", "translatable": false},
            "a_other": {"sourceText": "/localization/strings/a_other", "translatable": true}}, "translations": {"pl": {
            "a_few": )" +
            translation("C", source) + R"(, "a_many": )" + translation("D", "B") + R"(, "a_other": )" +
            translation("E", "B") + "}}}}");
    };
    EXPECT_EQ(forms("B"), "");
    EXPECT_EQ(
        forms("A"), "stale: localization/pl.json: /a_few: is not marked as a translation of today's source text\n");
}

TEST(TranslationChecks, FindOtherBlanksAroundATranslation) {
    EXPECT_EQ(found(translated({{"a", "Name: "}}, {{"a", "Bezeichnung:"}})),
        "outer-blanks: localization/de.json: /a: ends with no blank where the source has \" \"\n");
    EXPECT_EQ(found(translated({{"a", "Name"}}, {{"a", "\u00a0Bezeichnung\n"}})),
        "outer-blanks: localization/de.json: /a: begins with \"\\u00a0\" where the source has no blank, and ends with "
        "\"\\n\" where the source has no blank\n");
    EXPECT_EQ(found(translated({{"a", " Name\n"}}, {{"a", " Bezeichnung\n"}})), "");
}

TEST(TranslationChecks, AFormThatIsNotTranslatableProvesAPluralAndIsAskedOfNobody) {
    const auto plural = [](const char* const one, const char* const other, const char* const texts) {
        return std::string{
                   R"({"localization": {"strings": {"a_one": "{{count}} key", "a_other": "{{count}} keys"}, "terms": {
            "a_one": {"sourceText": "/localization/strings/a_one", "translatable": )"} +
            one + R"(}, "a_other": {"sourceText": "/localization/strings/a_other", "translatable": )" + other +
            R"(}}, "translations": {"ru": {)" + texts + "}}}}";
    };
    const std::string forms = R"("a_few": )" + translation("{{count}} ключа", "{{count}} keys") + R"(, "a_other": )" +
        translation("{{count}} ключей", "{{count}} keys");
    const char* const texts = forms.c_str();
    EXPECT_EQ(found(plural("false", "true", texts)),
        "plural-missing: localization/ru.json: /a_other: lacks the form many, which Russian has numbers for\n");
    EXPECT_EQ(found(plural("true", "true", texts)),
        "plural-missing: localization/ru.json: /a_other: lacks the forms one and many, which Russian has numbers "
        "for\n");
    const std::string one = R"("a_one": )" + translation("{{count}} ключ", "{{count}} key");
    EXPECT_EQ(found(plural("true", "false", one.c_str())), "");
}

TEST(TranslationChecks, FindTranslationsThatShowNothing) {
    EXPECT_EQ(found(translated({{"a", "Hi {{name}} "}}, {{"a", "  \u00a0\n"}})),
        "only-blanks: localization/de.json: /a: has nothing but blanks, and shows nothing\n");
    // As the source does
    EXPECT_EQ(found(translated({{"a", " "}}, {{"a", "  "}})), "");
}

TEST(TranslationChecks, FindFormsThatAPluralLacks) {
    const std::string forms =
        "plural-missing: localization/ru.json: /a_other: lacks the forms few and many, which Russian has "
        "numbers for\n";
    EXPECT_EQ(found(translated({{"a_one", "{{count}} door"}, {"a_other", "{{count}} doors"}},
                  {{"a_one", "{{count}} дверь"}, {"a_other", "{{count}} двери"}}, "ru")),
        forms);
    EXPECT_EQ(found(translated({{"a_one", "{{count}} door"}, {"a_other", "{{count}} doors"}},
                  {{"a_one", "{{count}} дверь"}, {"a_few", "{{count}} двери"}, {"a_many", "{{count}} дверей"},
                      {"a_other", "{{count}} двери"}},
                  "ru")),
        "");
    EXPECT_EQ(found(translated({{"a_one", "A door"}, {"a_other", "Doors"}}, {{"a_one", "Eine Tür"}})),
        "plural-missing: project.json: /localization/terms/a_other: lacks the form other, which German has numbers "
        "for\n");
    // What is not translated at all is missing, and no set without a proof is one.
    EXPECT_EQ(found(translated({{"a_one", "A door"}, {"a_other", "Doors"}}, {})), "");
    EXPECT_EQ(found(translated({{"a_one", "A door"}, {"a_other", "Doors"}}, {{"a_one", ""}})), "");
    EXPECT_EQ(found(translated({{"file_other", "Other"}}, {{"file_other", "Anderes"}}, "ru")), "");
    // No rules, no needs
    EXPECT_EQ(found(translated({{"a_one", "A door"}, {"a_other", "Doors"}}, {{"a_one", "Porta"}}, "la")), "");
}

TEST(TranslationChecks, FindFormsThatALanguageHasNoNumberFor) {
    EXPECT_EQ(
        found(translated({{"a_one", "A door"}, {"a_other", "Doors"}}, {{"a_one", "ドア"}, {"a_other", "扉"}}, "ja")),
        "plural-extra: localization/ja.json: /a_one: is the form one, which Japanese has no number for\n");
    EXPECT_EQ(found(translated({{"a_one", "A door"}, {"a_other", "Doors"}},
                  {{"a_one", "Eine Tür"}, {"a_few", "Ein paar Türen"}, {"a_other", "Türen"}})),
        "plural-extra: localization/de.json: /a_few: is the form few, which German has no number for\n");
    // Zero is for every language.
    EXPECT_EQ(found(translated({{"a_one", "A door"}, {"a_other", "Doors"}},
                  {{"a_zero", "Keine Tür"}, {"a_one", "Eine Tür"}, {"a_other", "Türen"}})),
        "");
}

TEST(TranslationChecks, OrdinalFormsAreThoseOfOrdinalNumbers) {
    EXPECT_EQ(
        found(translated({{"a_ordinal_one", "{{count}}st"}, {"a_ordinal_two", "{{count}}nd"},
                             {"a_ordinal_few", "{{count}}rd"}, {"a_ordinal_other", "{{count}}th"}},
            {{"a_ordinal_one", "{{count}}er"}, {"a_ordinal_other", "{{count}}e"}, {"a_ordinal_two", "{{count}}nde"}},
            "fr")),
        "plural-extra: localization/fr.json: /a_ordinal_two: is the form two, which French has no number for\n");
}

TEST(TranslationChecks, FormsOfAPluralMayLeaveOutTheNumberAndShareNames) {
    EXPECT_EQ(found(translated({{"a_one", "One apple for {{name}}"}, {"a_other", "{{count}} apples for {{name}}"}},
                  {{"a_zero", "Kein Apfel für {{name}}"}, {"a_one", "Ein Apfel für {{name}}"},
                      {"a_other", "{{count}} Äpfel für {{name}}"}})),
        "");
    // What another form of the source has is there, too.
    EXPECT_EQ(found(translated({{"a_one", "One apple"}, {"a_other", "{{count}} apples of {{all}}"}},
                  {{"a_one", "1 Apfel von {{all}}"}, {"a_other", "{{count}} Äpfel von {{all}}"}})),
        "");
    EXPECT_EQ(found(translated({{"a_one", "One apple"}, {"a_other", "{{count}} apples of {{all}}"}},
                  {{"a_one", "1 Apfel von {{al}}"}, {"a_other", "{{count}} Äpfel"}})),
        "placeholder-differs: localization/de.json: /a_one: has {{al}}, which the source does not have\n"
        "placeholder-differs: localization/de.json: /a_other: lacks {{all}} of the source\n");
    // A form that only the other language has is compared with "other".
    EXPECT_EQ(found(translated({{"a_one", "Door {{x}}"}, {"a_other", "{{count}} doors {{x}}"}},
                  {{"a_one", "{{x}} A"}, {"a_few", "{{count}} B"}, {"a_many", "{{count}} {{x}} C"},
                      {"a_other", "{{count}} {{x}} D"}},
                  "ru")),
        "placeholder-differs: localization/ru.json: /a_few: lacks {{x}} of the source\n");
}

TEST(TranslationChecks, FormsForSeveralNumbersNeedTheNumber) {
    const auto forms = [](const std::initializer_list<std::pair<std::string, std::string>> translations,
                           const char* const code) {
        return found(translated({{"k_one", "One key"}, {"k_other", "{{count}} keys"}}, translations, code));
    };
    EXPECT_EQ(forms({{"k_one", "Ein Schlüssel"}, {"k_other", "viele"}}, "de"),
        "placeholder-differs: localization/de.json: /k_other: lacks {{count}} of the source\n");
    EXPECT_EQ(forms({{"k_one", "1"}, {"k_few", "few"}, {"k_many", "many"}, {"k_other", "{{count}}"}}, "ru"),
        "placeholder-differs: localization/ru.json: /k_few: lacks {{count}} of the source\n"
        "placeholder-differs: localization/ru.json: /k_many: lacks {{count}} of the source\n");
    // 3 and 6 alone
    EXPECT_EQ(forms({{"k_zero", "0"}, {"k_one", "1"}, {"k_two", "2"}, {"k_few", "3"}, {"k_many", "6"},
                        {"k_other", "{{count}}"}},
                  "cy"),
        "");
}

TEST(TranslationChecks, FindPlaceholdersInSingleBraces) {
    EXPECT_EQ(found(translated({{"a", "Hi {{name}}"}}, {{"a", "Hallo {name}"}})),
        "placeholder-differs: localization/de.json: /a: lacks {{name}} of the source; it has {name} as plain text, as "
        "a placeholder has two braces on each side\n");
    EXPECT_EQ(found(translated({{"k_one", "One key"}, {"k_other", "{{count}} keys"}},
                  {{"k_one", "{count} Schlüssel"}, {"k_other", "{{count}} Schlüssel"}})),
        "placeholder-differs: localization/de.json: /k_one: has {count} as plain text, as a placeholder has two braces "
        "on each side\n");
}

TEST(TranslationChecks, LookAtTranslatableTermsWithASourceAlone) {
    EXPECT_EQ(found(R"({"localization": {"strings": {"a": "{{x}} A", "c": ""}, "terms": {
        "a": {"sourceText": "/localization/strings/a", "translatable": false},
        "c": {"sourceText": "/localization/strings/c", "translatable": true}},
        "translations": {"de": {"a": {"text": "B "}, "c": {"text": " C"}}}}})"),
        "");
}

TEST(TranslationChecks, FindTranslationsUnderKeysThatNoTermHas) {
    EXPECT_EQ(found(translated({{"a_one", "A"}, {"a_other", "B"}, {"b", "B"}},
                  {{"c", "C"}, {"b_few", "D"}, {"gone:x", "E"}, {"empty", ""}, {"a_one", "F"}, {"a_few", "G"},
                      {"a_many", "H"}, {"a_other", "I"}},
                  "ru")),
        "term-unknown: localization/ru.json: /c: no term has this key\n"
        "term-unknown: localization/ru.json: /b_few: no term has this key\n"
        "term-unknown: localization/ru.json: /gone:x: no term has this key\n");
}

TEST(TranslationChecks, FindStatesThatDoNotExist) {
    const auto state = [](const char* const value) {
        return found(R"({"localization": {"strings": {"a/b": "A"}, "terms": {
            "a/b": {"sourceText": "/localization/strings/a~1b", "translatable": true}},
            "translations": {"de": {"a/b": )" +
            translation("B", "A", R"(, "state": )" + std::string{value}) + "}}}}");
    };
    EXPECT_EQ(state(R"("dreft")"),
        "state-unknown: localization/de.json: /a~1b/state: has the state dreft, which does not exist, and counts as "
        "done; did you mean draft?\n");
    EXPECT_EQ(state(R"("to be looked at")"),
        "state-unknown: localization/de.json: /a~1b/state: has the state to be looked at, which does not exist, and "
        "counts as done\n");
    for(const char* const value: {R"("draft")", R"("review")", R"("done")", R"("")"}) EXPECT_EQ(state(value), "");
}

TEST(TranslationChecks, FindTranslationsOfAWrongType) {
    EXPECT_EQ(found(R"({"localization": {"translations": {"de": {"a_text": "Hallo", "b": {"text": 1}},
        "no code": {"c": []}}}})"),
        "wrong-type: localization/de.json: /a_text: is a string, but must be an object\n"
        "wrong-type: localization/de.json: /b/text: /text is a number, but must be a string\n"
        "wrong-type: project.json: /localization/translations/no code/c: is an array, but must be an object\n");
}

TEST(TranslationChecks, NameTheFileThatHasTheText) {
    EXPECT_EQ(found(translated({{"a/b~c", "A"}}, {{"a/b~c", "A"}}, "de-AT")),
        "same-as-source: localization/de-AT.json: /a~1b~0c: is the same as the source: A\n");
    EXPECT_EQ(found(translated({{"a", "A"}}, {{"a", "A"}}, "no code")),
        "same-as-source: project.json: /localization/translations/no code/a: is the same as the source: A\n");
    const LocalizationFindings findings = findingsOf(translated({{"a/b", "A"}}, {{"a/b", "A"}}));
    ASSERT_EQ(findings.findings().size(), 1u);
    EXPECT_EQ(findings.findings()[0].term, "a/b");
    EXPECT_EQ(findings.findings()[0].language, "de");
}

TEST(TranslationChecks, AreSilencedWithTheTermOrTheCheck) {
    const auto project = [](const char* const more) {
        return R"({"localization": {"strings": {"a": "A"}, "terms": {"a": {"sourceText": "/localization/strings/a",
            "translatable": true)" +
            std::string{more} + R"(}, "translations": {"de": {"a": )" + translation("A", "A") + "}}}}";
    };
    EXPECT_EQ(found(project(R"(, "silenced": {"same-as-source": "a letter"}})")),
        "same-as-source: localization/de.json: /a: is the same as the source: A [a letter]\n");
    EXPECT_EQ(found(project(R"(}}, "checks": {"same-as-source": "names")")),
        "same-as-source: localization/de.json: /a: is the same as the source: A [names]\n");
    // Another check, and what gives no reason
    EXPECT_EQ(found(project(R"(, "silenced": {"outer-blanks": "a letter"}})")),
        "same-as-source: localization/de.json: /a: is the same as the source: A\n");
}

TEST(TranslationChecks, FormsOfOneLanguageAreSilencedWithTheFormOther) {
    const std::string text = found(R"({"localization": {"strings": {"a_one": "A", "a_other": "{{x}}"}, "terms": {
        "a_one": {"sourceText": "/localization/strings/a_one", "translatable": true,
            "silenced": {"placeholder-differs": "one"}},
        "a_other": {"sourceText": "/localization/strings/a_other", "translatable": true,
            "silenced": {"placeholder-differs": "other", "plural-missing": "fewer", "plural-extra": "two"}}},
        "translations": {"ru": {"a_few": )" +
        translation("B", "{{x}}") + R"(, "a_two": )" + translation("{{x}}x", "{{x}}") + "}}}}");
    EXPECT_EQ(text,
        "placeholder-differs: localization/ru.json: /a_few: lacks {{x}} of the source [other]\n"
        "plural-extra: localization/ru.json: /a_two: is the form two, which Russian has no number for [two]\n"
        "plural-missing: project.json: /localization/terms/a_other: lacks the forms one, many and other, which Russian "
        "has numbers for "
        "[fewer]\n");
}

TEST(TranslationChecks, FindAFormThatATermLiesBelow) {
    EXPECT_EQ(
        found(translated({{"a_one", "{{count}} a"}, {"a_other", "{{count}} b"}, {"a_few.x", "X"}},
            {{"a_one", "{{count}} c"}, {"a_few", "{{count}} d"}, {"a_many", "{{count}} e"}, {"a_other", "{{count}} f"}},
            "pl")),
        "leaf-and-branch: localization/pl.json: /a_few: cannot stand beside a_few.x: one is a text, and the other lies "
        "below it\n");
}

}
