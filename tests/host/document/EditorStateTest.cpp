#include "QuorvaneEditor/EditorState.h"

#include <csignal>

#include <gtest/gtest.h>

namespace QuorvaneEngine {

TEST(EditorState, NewTitleGetsTheNextIdAndIsOpen) {
    EditorState state;
    EXPECT_EQ(state.viewCount(), 0u);
    EXPECT_EQ(state.registerView("Localization"), 0u);
    EXPECT_EQ(state.registerView("Scene"), 1u);
    EXPECT_EQ(state.viewCount(), 2u);
    EXPECT_TRUE(state.isViewOpen(0));
    EXPECT_TRUE(state.isViewOpen(1));
}

TEST(EditorState, SameTitleGetsTheSameIdAndKeepsItsFlag) {
    EditorState state;
    const UnsignedInt view = state.registerView("Localization");
    state.isViewOpen(view) = false;
    EXPECT_EQ(state.registerView("Localization"), view);
    EXPECT_FALSE(state.isViewOpen(view));
    EXPECT_EQ(state.viewCount(), 1u);
}

TEST(EditorState, FlagStaysInPlaceWhenMoreViewsCome) {
    EditorState state;
    bool& open = state.isViewOpen(state.registerView("first"));
    for(char letter = 'a'; letter <= 'z'; ++letter) state.registerView({&letter, 1});
    open = false;
    EXPECT_FALSE(state.isViewOpen(0));
}

TEST(EditorState, TitleIsCopiedAndTerminated) {
    EditorState state;
    char title[]{"Localization"};
    const UnsignedInt view = state.registerView({title, 5});
    title[0] = '#';
    EXPECT_EQ(state.viewTitle(view), "Local");
    EXPECT_TRUE(state.viewTitle(view).flags() & Containers::StringViewFlag::NullTerminated);
    EXPECT_EQ(state.viewTitle(view).data()[5], '\0');
}

TEST(EditorState, UnknownIdAborts) {
    EditorState state;
    state.registerView("a");
    state.registerView("b");
    EXPECT_EXIT(state.isViewOpen(7), testing::KilledBySignal(SIGABRT),
        "^EditorState::isViewOpen\\(\\): no view with id 7, have 2\n$");
    EXPECT_EXIT(state.viewTitle(2), testing::KilledBySignal(SIGABRT),
        "^EditorState::viewTitle\\(\\): no view with id 2, have 2\n$");
}

}
