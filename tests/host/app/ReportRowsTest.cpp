#include "app/ReportRows.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Language.h"

namespace QuorvaneEngine {
namespace {

using QuorvaneEngine::Test::language;
using Column = ReportRows::Column;

/** Five lines, told apart by their terms. */
class ReportRowsTest: public testing::Test {
protected:
    ReportRowsTest() {
        report.add(language("fr"), TermOutcome::Skipped, "d", "no term has this key", "fr/translation.json");
        report.add(language("de"), TermOutcome::Added, "B");
        report.add(language("fr"), TermOutcome::Changed, "a");
        report.add(language("de"), TermOutcome::Skipped, "c", "is not translatable", "de/common.json");
        report.add(LocalizationReport::NoLanguage, TermOutcome::Notice, "", "nobody calls a language xx", "xx.json");
        rows.assign(report.lines());
    }

    std::string terms() const {
        std::string terms;
        for(std::size_t row = 0; row != rows.size(); ++row) terms += rows[row].term.isEmpty() ? '-' : rows[row].term[0];
        return terms;
    }

    std::string found(const char* search) {
        rows.filter(ReportRows::AllOutcomes, search);
        return terms();
    }

    LocalizationReport report;
    ReportRows rows;
};

TEST_F(ReportRowsTest, WithoutAReportThereAreNone) {
    EXPECT_EQ(ReportRows{}.size(), 0u);
    ReportRows none;
    none.sort(Column::Term, true);
    none.filter(0, "x");
    none.unsort();
    EXPECT_EQ(none.size(), 0u);
}

TEST_F(ReportRowsTest, AllLinesAreShownInTheOrderOfTheReport) {
    EXPECT_EQ(terms(), "dBac-");
    EXPECT_EQ(rows.index(3), 3u);
}

TEST_F(ReportRowsTest, EveryColumnSortsBothWaysAndKeepsTheOrderOfWhatIsAlike) {
    const struct {
        Column column;
        const char* ascending;
        const char* descending;
    } cases[]{
        {Column::Language, "daBc-", "-Bcda"},
        {Column::Outcome, "Badc-", "-dcaB"},
        {Column::Term, "-Bacd", "dcaB-"},
        {Column::Reason, "Bacd-", "-dcBa"},
        {Column::File, "Bacd-", "-dcBa"},
    };
    for(const auto& data: cases) {
        SCOPED_TRACE(int(data.column));
        rows.sort(data.column, false);
        EXPECT_EQ(terms(), data.ascending);
        rows.sort(data.column, true);
        EXPECT_EQ(terms(), data.descending);
    }
    rows.unsort();
    EXPECT_EQ(terms(), "dBac-");
}

TEST_F(ReportRowsTest, OnlyTheOutcomesThatAreWantedAreShown) {
    rows.filter(ReportRows::bit(TermOutcome::Skipped), "");
    EXPECT_EQ(terms(), "dc");
    rows.filter(ReportRows::bit(TermOutcome::Added) | ReportRows::bit(TermOutcome::Notice), "");
    EXPECT_EQ(terms(), "B-");
    rows.filter(0, "");
    EXPECT_EQ(terms(), "");
    rows.filter(ReportRows::AllOutcomes, "");
    EXPECT_EQ(terms(), "dBac-");
}

TEST_F(ReportRowsTest, TermReasonFileAndLanguageAreSearchedWithoutRegardToCase) {
    EXPECT_EQ(found("b"), "Bc-") << "the term, the reason and a reason";
    EXPECT_EQ(found("KEY"), "d");
    EXPECT_EQ(found("common"), "c");
    EXPECT_EQ(found("german"), "Bc");
    EXPECT_EQ(found("xx.JSON"), "-");
    EXPECT_EQ(found("nowhere"), "");
    EXPECT_EQ(found(""), "dBac-");
}

TEST_F(ReportRowsTest, SearchAndOutcomesBothCount) {
    rows.filter(ReportRows::bit(TermOutcome::Skipped), "german");
    EXPECT_EQ(terms(), "c");
}

TEST_F(ReportRowsTest, SortingKeepsWhatIsShownAndSearchingTheOrder) {
    rows.filter(ReportRows::bit(TermOutcome::Skipped), "");
    rows.sort(Column::Term, false);
    EXPECT_EQ(terms(), "cd");
    rows.filter(ReportRows::AllOutcomes, "");
    EXPECT_EQ(terms(), "-Bacd");
}

TEST_F(ReportRowsTest, AnotherReportBeginsInItsOwnOrderAndKeepsTheFilter) {
    rows.filter(ReportRows::bit(TermOutcome::Skipped), "");
    rows.sort(Column::Term, false);
    LocalizationReport other;
    other.add(language("ja"), TermOutcome::Skipped, "z");
    other.add(language("ja"), TermOutcome::Skipped, "y");
    other.add(language("ja"), TermOutcome::Added, "x");
    rows.assign(other.lines());
    EXPECT_EQ(terms(), "zy");
}

TEST_F(ReportRowsTest, ReasonsThatLinesShareAreFoundInEachOfThem) {
    LocalizationReport shared;
    for(const char* term: {"1", "2", "3"}) shared.add(language("ja"), TermOutcome::Skipped, term, "has no source");
    rows.assign(shared.lines());
    EXPECT_EQ(found("SOURCE"), "123");
    rows.sort(Column::Reason, true);
    EXPECT_EQ(terms(), "123");
}

}
}
