#include "app/ReportCounts.h"

#include <gtest/gtest.h>

#include "Language.h"
#include "ShownText.h"
#include "support/FrameAllocations.h"

namespace QuorvaneEngine {
namespace {

using QuorvaneEngine::Test::frameAllocations;
using QuorvaneEngine::Test::GuiTest;
using QuorvaneEngine::Test::language;
using QuorvaneEngine::Test::shownText;

class ReportCountsTest: public testing::Test {
protected:
    void draw(float width = 700.0f, float height = 300.0f) {
        ImGui::SetNextWindowSize({width + 100.0f, height + 100.0f});
        ImGui::Begin("Window");
        counts.draw({width, height});
        ImGui::End();
    }

    std::string shown() {
        return shownText(gui, [this] { draw(); });
    }

    LocalizationReport report;
    ReportCounts counts;
    GuiTest gui;
};

TEST_F(ReportCountsTest, OneLanguageIsOneRowWithTheOutcomesThatItHas) {
    report.addLanguage(language("de"));
    report.add(language("de"), TermOutcome::Added, "a");
    report.add(language("de"), TermOutcome::Unchanged, "b");
    report.add(language("de"), TermOutcome::Unchanged, "c");
    counts.assign(report);
    EXPECT_EQ(counts.size(), 1u);
    const std::string text = shown();
    EXPECT_NE(text.find("| Language | Added | Unchanged |"), std::string::npos) << text;
    EXPECT_NE(text.find("| German | 1 | 2 |"), std::string::npos) << text;
    EXPECT_EQ(text.find("All"), std::string::npos) << text;
}

TEST_F(ReportCountsTest, SeveralLanguagesHaveASumWithWhatBelongsToNone) {
    for(const char* code: {"fr", "de"}) report.addLanguage(language(code));
    report.add(language("fr"), TermOutcome::Skipped, "a", "is not translatable");
    report.add(language("de"), TermOutcome::Changed, "a");
    report.add(LocalizationReport::NoLanguage, TermOutcome::Skipped, "", "is no language");
    counts.assign(report);
    EXPECT_EQ(counts.size(), 4u);
    const std::string text = shown();
    for(const char* row: {"| Language | Changed | Skipped |", "| All | 1 | 2 |", "| French | 0 | 1 |",
            "| German | 1 | 0 |", "| No language | 0 | 1 |"})
        EXPECT_NE(text.find(row), std::string::npos) << row << "\n" << text;
}

TEST_F(ReportCountsTest, StaleTranslationsHaveAColumnWhereThereAreAny) {
    for(const char* code: {"fr", "de"}) report.addLanguage(language(code));
    report.add(language("fr"), TermOutcome::Unchanged, "a");
    report.addStale(language("fr"), 2);
    report.addStale(language("de"));
    counts.assign(report);
    const std::string text = shown();
    for(const char* row:
        {"| Language | Unchanged | Stale |", "| All | 1 | 3 |", "| French | 1 | 2 |", "| German | 0 | 1 |"})
        EXPECT_NE(text.find(row), std::string::npos) << row << "\n" << text;
}

TEST_F(ReportCountsTest, WithoutLanguagesThereIsTheSumAlone) {
    report.add(LocalizationReport::NoLanguage, TermOutcome::Added, "door");
    counts.assign(report);
    EXPECT_EQ(counts.size(), 1u);
    const std::string text = shown();
    EXPECT_NE(text.find("| All | 1 |"), std::string::npos) << text;
}

TEST_F(ReportCountsTest, AReportWithoutNumbersHasNoColumnsForThem) {
    counts.assign(report);
    EXPECT_EQ(counts.size(), 0u);
    report.addLanguage(language("de"));
    counts.assign(report);
    EXPECT_EQ(counts.size(), 1u);
    const std::string text = shown();
    EXPECT_NE(text.find("| German |"), std::string::npos) << text;
}

TEST_F(ReportCountsTest, ItIsAsLargeAsItSays) {
    for(const char* code: {"fr", "de", "ja"}) report.addLanguage(language(code));
    report.add(language("fr"), TermOutcome::Added, "a");
    counts.assign(report);
    gui.frames(
        [this] {
            draw(counts.width(), counts.height());
            const ImGuiWindow* inner = nullptr;
            for(const ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows)
                if(window->ParentWindow && window->Active) inner = window;
            ASSERT_TRUE(inner);
            EXPECT_EQ(inner->ScrollMax.x, 0.0f);
            EXPECT_EQ(inner->ScrollMax.y, 0.0f);
        },
        5);
}

TEST_F(ReportCountsTest, AFrameAllocatesNothing) {
    for(UnsignedInt i = 0; i != LanguageCount; ++i) {
        report.addLanguage(i);
        report.add(i, TermOutcome::Added, "a");
    }
    counts.assign(report);
    gui.frames([this] { draw(); }, 10);
    EXPECT_EQ(frameAllocations(gui, 10, [this] { draw(); }), 0u);
}

}
}
