#include "app/StatusLayout.h"

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

using Widths = std::array<float, StatusItemCount>;

constexpr std::array<StatusWidth, StatusItemCount> All{
    {{200, 20, 50}, {100, 20, 50}, {150, 20, 50}, {150, 20, 50}, {500, 20, 50}}};

TEST(StatusLayout, WhereThereIsRoomNothingIsCut) {
    EXPECT_EQ(fitStatusItems(All, 1100.0f), (Widths{200, 100, 150, 150, 500}));
    EXPECT_EQ(fitStatusItems(All, 5000.0f), (Widths{200, 100, 150, 150, 500}));
}

TEST(StatusLayout, TheMessageGivesWayFirstAndKeepsTwoFifths) {
    EXPECT_EQ(fitStatusItems(All, 1050.0f), (Widths{200, 100, 150, 150, 450}));
    EXPECT_EQ(fitStatusItems(All, 1000.0f), (Widths{200, 100, 150, 150, 400}));
}

TEST(StatusLayout, WhatIsKnownFromElsewhereGivesWayNext) {
    EXPECT_EQ(fitStatusItems(All, 900.0f), (Widths{200, 100, 150, 90, 360}));
    EXPECT_EQ(fitStatusItems(All, 600.0f), (Widths{90, 100, 150, 20, 240}));
    EXPECT_EQ(fitStatusItems(All, 400.0f), (Widths{20, 100, 100, 20, 160}));
    EXPECT_EQ(fitStatusItems(All, 200.0f), (Widths{20, 60, 20, 20, 80}));
}

TEST(StatusLayout, WhereATextHasNextToNoRoomItsIconStandsAloneAndTheMessageHasTheRest) {
    EXPECT_EQ(fitStatusItems(All, 830.0f), (Widths{200, 100, 150, 20, 360}));
    EXPECT_EQ(fitStatusItems(All, 180.0f), (Widths{20, 20, 20, 20, 100}));
}

TEST(StatusLayout, AtLastIconsAreLeft) {
    EXPECT_EQ(fitStatusItems(All, 120.0f), (Widths{20, 20, 20, 20, 40}));
    EXPECT_EQ(fitStatusItems(All, 100.0f), (Widths{20, 20, 20, 20, 20}));
    EXPECT_EQ(fitStatusItems(All, 10.0f), (Widths{20, 20, 20, 20, 20}));
}

TEST(StatusLayout, AShortMessageLeavesItsRoomToOthers) {
    auto widths = All;
    widths[std::size_t(StatusItem::Message)] = {50, 20, 50};
    EXPECT_EQ(fitStatusItems(widths, 600.0f), (Widths{200, 100, 150, 100, 50}));
}

TEST(StatusLayout, WhatIsNotThereTakesNoRoom) {
    EXPECT_EQ(
        fitStatusItems({{{200, 20, 50}, {100, 20, 50}, {}, {}, {500, 20, 50}}}, 500.0f), (Widths{200, 100, 0, 0, 200}));
    EXPECT_EQ(fitStatusItems({}, 500.0f), (Widths{}));
}

}
}
