#include "app/ImportPopup.h"

#include <string>

#include <Corrade/Containers/GrowableArray.h>
#include <gtest/gtest.h>

#include "GatedFileSystem.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/JobSystem.h"
#include "ShownText.h"
#include "app/ImportPreview.h"
#include "document/EditorSession.h"
#include "localization/LanguageLookup.h"

namespace QuorvaneEngine {
namespace {

using QuorvaneEngine::Test::GuiTest;
using QuorvaneEngine::Test::shownText;
using Request = ImportPopup::Request;

class ImportPopupTest: public testing::Test {
protected:
    void draw() {
        if(const Request request = popup.draw(preview); request != Request::None) asked = request;
    }

    bool play(const char* name, const GuiTest::Script& script) {
        return gui.run(
            name, [this] { draw(); },
            [&](ImGuiTestContext& user) {
                user.Yield(2);
                user.SetRef("//Preview Import");
                script(user);
            });
    }

    std::string shown() {
        return shownText(gui, [this] { draw(); });
    }

    static bool isShown() {
        const ImGuiWindow* const window = ImGui::FindWindowByName("Preview Import");
        return window && window->WasActive;
    }

    static Containers::Array<Containers::String> reasons(int count) {
        Containers::Array<Containers::String> reasons;
        for(int i = 0; i != count; ++i)
            Containers::arrayAppend(reasons, Containers::String{("reason " + std::to_string(i)).c_str()});
        return reasons;
    }

    GatedFileSystem files;
    JobSystem jobs{1};
    EditorSession session{&jobs};
    ImportPreview preview{session.editor(), jobs, files};
    ImportPopup popup;
    GuiTest gui;
    Request asked = Request::None;
};

TEST_F(ImportPopupTest, IsNotThereBeforeItIsOpened) {
    EXPECT_EQ(shown(), "");
    EXPECT_FALSE(ImGui::IsPopupOpen(nullptr, ImGuiPopupFlags_AnyPopup));
}

TEST_F(ImportPopupTest, TakesAPathByKeysAlone) {
    popup.open("/proposed", false);
    EXPECT_TRUE(play("type", [this](ImGuiTestContext& user) {
        IM_CHECK(popup.path() == "/proposed");
        user.KeyChars("/elsewhere");
        user.KeyPress(ImGuiKey_Enter);
        IM_CHECK(popup.path() == "/elsewhere");
        IM_CHECK(asked == Request::Start);
        IM_CHECK(isShown());
    }));
}

TEST_F(ImportPopupTest, EveryButtonAsksForWhatItSays) {
    popup.open("/proposed", false);
    EXPECT_TRUE(play("click", [this](ImGuiTestContext& user) {
        const struct {
            const char* button;
            Request request;
        } cases[]{{"###Folder", Request::ChooseFolder}, {"###Archive", Request::ChooseArchive},
            {"Preview", Request::Start}, {"Cancel", Request::Cancel}};
        for(const auto& data: cases) {
            asked = Request::None;
            user.ItemClick(data.button);
            IM_CHECK(asked == data.request);
            IM_CHECK(isShown());
        }
    }));
}

TEST_F(ImportPopupTest, TheFirstEscapeCancelsAlsoWhereTheFieldHasTheKeyboard) {
    popup.open("/proposed", false);
    EXPECT_TRUE(play("escape", [this](ImGuiTestContext& user) {
        IM_CHECK(ImGui::GetIO().WantTextInput);
        user.KeyPress(ImGuiKey_Escape);
        IM_CHECK(asked == Request::Cancel);
        asked = Request::None;
        IM_CHECK(!ImGui::GetIO().WantTextInput);
        user.KeyPress(ImGuiKey_Escape);
        IM_CHECK(asked == Request::Cancel);
    }));
}

TEST_F(ImportPopupTest, GoesWhenItIsClosed) {
    popup.open("/proposed", false);
    EXPECT_TRUE(play("close", [this](ImGuiTestContext& user) {
        IM_CHECK(isShown());
        popup.close();
        user.Yield(3);
        IM_CHECK(!isShown());
        IM_CHECK(!ImGui::IsPopupOpen(nullptr, ImGuiPopupFlags_AnyPopup));
    }));
}

TEST_F(ImportPopupTest, WaitsForTheEndOfAnotherPopup) {
    bool closesOther = false;
    popup.open("/proposed", false);
    const auto other = [&] {
        if(ImGui::GetFrameCount() < 3) ImGui::OpenPopup("Other");
        if(ImGui::BeginPopup("Other")) {
            ImGui::TextUnformatted("other");
            if(closesOther) ImGui::CloseCurrentPopup();
            ImGui::EndPopup();
        }
        draw();
    };
    gui.frames(other, 5);
    EXPECT_FALSE(isShown());
    closesOther = true;
    gui.frames(other, 5);
    EXPECT_TRUE(isShown());
}

TEST_F(ImportPopupTest, ReasonsAreShownUntilAnotherPathIsChosen) {
    popup.open("/proposed", false);
    popup.refuse(reasons(2));
    EXPECT_NE(shown().find("reason 1"), std::string::npos);
    popup.setPath("/other");
    EXPECT_EQ(popup.path(), "/other");
    EXPECT_EQ(shown().find("reason"), std::string::npos);
    popup.refuse(reasons(2));
    popup.open("/proposed", false);
    EXPECT_EQ(shown().find("reason"), std::string::npos);
}

TEST_F(ImportPopupTest, AfterARefusalThePathCanBeMendedAtOnce) {
    popup.open("/proposed", false);
    EXPECT_TRUE(play("mend", [this](ImGuiTestContext& user) {
        user.ItemClick("Preview");
        popup.refuse(reasons(1));
        user.Yield(3);
        user.KeyChars("/mended");
        IM_CHECK(popup.path() == "/mended");
    }));
}

TEST_F(ImportPopupTest, OfManyReasonsTheFirstOnesAreShownAndTheRestCounted) {
    popup.open("/proposed", false);
    popup.refuse(reasons(8));
    EXPECT_EQ(shown().find(" more, "), std::string::npos);
    popup.refuse(reasons(1000));
    const std::string text = shown();
    EXPECT_NE(text.find("reason 7"), std::string::npos) << text;
    EXPECT_EQ(text.find("reason 8"), std::string::npos) << text;
    EXPECT_NE(text.find("and 992 more, which the report has"), std::string::npos) << text;
}

TEST_F(ImportPopupTest, APathThatIsTooLongIsRefusedAndNotCut) {
    popup.open("/proposed", false);
    popup.setPath(("/" + std::string(5000, 'x')).c_str());
    EXPECT_EQ(popup.path(), "/proposed");
    EXPECT_NE(shown().find(": is too long a path"), std::string::npos);
}

TEST_F(ImportPopupTest, AsksForADefaultLanguageOnlyWhereItIsTold) {
    popup.open("/proposed", false);
    EXPECT_EQ(shown().find("default language"), std::string::npos);
    popup.open("/proposed", true);
    EXPECT_NE(shown().find("default language"), std::string::npos);
    EXPECT_EQ(popup.language(), FallbackLanguage);
}

TEST_F(ImportPopupTest, TheDefaultLanguageIsFoundByTyping) {
    popup.open("/proposed", true);
    EXPECT_TRUE(play("language", [this](ImGuiTestContext& user) {
        user.ItemClick("##language");
        user.Yield(3);
        user.KeyChars("pt-br");
        user.Yield(2);
        user.ItemClick("//$FOCUSED/Portuguese (Brazil)");
        user.Yield(2);
        IM_CHECK(AllLanguages[popup.language()].code == "pt-BR");
        user.ItemClick("##language");
        user.Yield(3);
        IM_CHECK(user.ItemExists("//$FOCUSED/Afrikaans"));
        user.KeyPress(ImGuiKey_Escape);
        user.Yield(2);
        IM_CHECK(isShown());
    }));
}

TEST_F(ImportPopupTest, ShowsWhatRunsAndLetsItBeCancelled) {
    files.put("/terms/de/translation.json", "{}");
    files.close();
    preview.start("/terms", UnsignedInt(findLanguage("en")));
    files.awaitReader();
    EXPECT_NE(shown().find("Reading and checking the files"), std::string::npos);
    EXPECT_NE(shown().find("/terms"), std::string::npos);
    EXPECT_TRUE(play("cancel", [this](ImGuiTestContext& user) {
        user.ItemClick("###Cancel");
        IM_CHECK(asked == Request::Cancel);
        asked = Request::None;
        user.KeyPress(ImGuiKey_Escape);
        IM_CHECK(asked == Request::Cancel);
        asked = Request::None;
        preview.cancel();
        user.Yield(2);
        IM_CHECK(user.ItemInfo("###Cancel").ItemFlags & ImGuiItemFlags_Disabled);
        user.KeyPress(ImGuiKey_Escape);
        IM_CHECK(asked == Request::None);
    }));
    EXPECT_NE(shown().find("Cancelling..."), std::string::npos);
    files.open();
    preview.discard();
}

}
}
