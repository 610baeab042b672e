/* How the popup calls the tools of the host, and what the view makes of the languages that an import hands back. */

#include <string>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>

#include "plugin/ImportExportPopupTest.h"

namespace QuorvaneEngine::Test {
namespace {

TEST_F(ImportExportPopup, ExportCallsTheToolWithListDefaultPathAndFormat) {
    run([](ImGuiTestContext& user) {
        open(user, "Export");
        type(user, "/tmp/out");
        user.ItemClick("Export");
        user.Yield(2);
        IM_CHECK(!isOpen(user));
    });
    ASSERT_EQ(FakeTools::calls.size(), 1);
    const FakeTools::Call& call = FakeTools::calls[0];
    EXPECT_EQ(call.function, "export");
    EXPECT_EQ(call.editor, &_test.session.editor());
    EXPECT_EQ(call.languages, (std::vector<UnsignedInt>{indexOf("de"), indexOf("en"), indexOf("fr")}));
    EXPECT_EQ(call.defaultLanguage, indexOf("en"));
    EXPECT_EQ(call.path, "/tmp/out");
    EXPECT_EQ(call.format, 0);
}

TEST_F(ImportExportPopup, ExportWithZipCallsTheOtherTool) {
    run([](ImGuiTestContext& user) {
        open(user, "Export");
        type(user, "/tmp/out.zip");
        user.ItemClick("##zip");
        user.ItemClick("Export");
        user.Yield(2);
    });
    ASSERT_EQ(FakeTools::calls.size(), 1);
    EXPECT_EQ(FakeTools::calls[0].function, "export compressed");
    EXPECT_EQ(FakeTools::calls[0].path, "/tmp/out.zip");
    EXPECT_EQ(FakeTools::calls[0].defaultLanguage, indexOf("en"));
}

TEST_F(ImportExportPopup, OffersOneFormat) {
    run([](ImGuiTestContext& user) {
        open(user, "Export");
        user.ComboClick("##Format/i18next");
        user.Yield(2);
        IM_CHECK_EQ(user.UiContext->OpenPopupStack.Size, 1);
        user.ItemClick("Export");
    });
    ASSERT_EQ(FakeTools::calls.size(), 1);
    EXPECT_EQ(FakeTools::calls[0].format, 0);
}

TEST_F(ImportExportPopup, GatheringCallsTheTool) {
    run([](ImGuiTestContext& user) { user.MenuClick("Edit/Gather Strings"); });
    ASSERT_EQ(FakeTools::calls.size(), 1);
    EXPECT_EQ(FakeTools::calls[0].function, "gather");
    EXPECT_EQ(FakeTools::calls[0].editor, &_test.session.editor());
}

TEST_F(ImportExportPopup, ImportHandsTheListItselfOver) {
    FakeTools::onImport = [](Containers::Array<UnsignedInt>& languages) {
        Containers::arrayAppend(languages, indexOf("cy"));
    };
    for(const bool zip: {false, true}) {
        run([zip](ImGuiTestContext& user) {
            open(user, "Import");
            type(user, "/tmp/in");
            if(zip) user.ItemClick("##zip");
            user.ItemClick("Import");
            user.Yield(2);
            IM_CHECK(!isOpen(user));
            user.SetRef("//Localization");
            selectTab(user, "Languages");
            IM_CHECK(rowItem(user, "languagestablebody", "##Welsh").ID);
            selectTab(user, "Terms");
        });
        FakeTools::onImport = nullptr;
    }
    ASSERT_EQ(FakeTools::calls.size(), 2);
    for(const FakeTools::Call& call: FakeTools::calls) {
        EXPECT_EQ(call.function, "import");
        EXPECT_EQ(call.editor, &_test.session.editor());
        EXPECT_EQ(call.defaultLanguage, indexOf("en"));
        EXPECT_EQ(call.path, "/tmp/in");
        EXPECT_EQ(call.format, 0);
    }
    EXPECT_EQ(FakeTools::calls[0].languages.size(), 3);
    EXPECT_EQ(FakeTools::calls[1].languages.size(), 4);
}

TEST_F(ImportExportPopup, WhatAnImportBringsShowsAtOnce) {
    FakeTools::onImport = [](Containers::Array<UnsignedInt>& languages) {
        Containers::arrayAppend(languages, indexOf("cy"));
    };
    run([](ImGuiTestContext& user) {
        selectTab(user, "Languages");
        open(user, "Import");
        user.ItemClick("Import");
        user.Yield(3);
        user.SetRef("//Localization");
        IM_CHECK(rowItem(user, "languagestablebody", "##Welsh").ID);
    });
}

/* A tool that hands back an index outside of the table is none that a user can click together */
TEST_F(ImportExportPopup, AnUnknownLanguageIsARedQuestionMark) {
    FakeTools::onImport = [](Containers::Array<UnsignedInt>& languages) { Containers::arrayAppend(languages, 411u); };
    run([](ImGuiTestContext& user) {
        open(user, "Import");
        user.ItemClick("Import");
        user.Yield(3);
        user.SetRef("//Localization");
        selectTab(user, "Languages");
        user.MouseMoveToPos({10.0f, 10.0f});
        user.Yield(2);
        const ImGuiTestItemInfo row = rowItem(user, "languagestablebody", "##?");
        IM_CHECK(row.ID != 0);
        IM_CHECK(paints(IM_COL32(255, 0, 0, 255), row.RectFull));
        IM_CHECK(!paints(IM_COL32(255, 0, 0, 255), rowItem(user, "languagestablebody", "##German").RectFull));
    });
    const std::string shown = _test.shownText();
    EXPECT_NE(shown.find("? | ? |"), std::string::npos) << shown;
}

TEST_F(ImportExportPopup, AnUnknownLanguageIsListedWhateverIsSearchedFor) {
    FakeTools::onImport = [](Containers::Array<UnsignedInt>& languages) {
        Containers::arrayAppend(languages, 411u);
        Containers::arrayAppend(languages, ~0u);
    };
    run([](ImGuiTestContext& user) {
        open(user, "Import");
        user.ItemClick("Import");
        user.Yield(3);
        user.SetRef("//Localization");
        selectTab(user, "Languages");
        search(user, "##languagesearch", "german");
        IM_CHECK(rowItem(user, "languagestablebody", "##German").ID);
        IM_CHECK(!rowItem(user, "languagestablebody", "##French").ID);
    });
    std::string shown = _test.shownText();
    EXPECT_NE(shown.find("German | de |"), std::string::npos) << shown;
    EXPECT_NE(shown.find("? | ? |"), shown.rfind("? | ? |")) << shown;
    run([](ImGuiTestContext& user) { search(user, "##languagesearch", "no such language"); });
    shown = _test.shownText();
    EXPECT_EQ(shown.find("German"), std::string::npos) << shown;
    EXPECT_NE(shown.find("? | ? |"), shown.rfind("? | ? |")) << shown;
}

/* The default of a project without languages is the first one of the list that has a code */
TEST_F(ImportExportPopup, AnUnknownLanguageIsNoDefault) {
    for(const bool withWelsh: {true, false}) {
        FakeTools::calls.clear();
        FakeTools::onImport = [withWelsh](Containers::Array<UnsignedInt>& languages) {
            languages = Containers::Array<UnsignedInt>{};
            for(const UnsignedInt language: {411u, indexOf("en"), 1000000000u, ~0u})
                Containers::arrayAppend(languages, language);
            if(withWelsh) Containers::arrayAppend(languages, indexOf("cy"));
        };
        _test.replaceDocument("{}");
        run([](ImGuiTestContext& user) {
            open(user, "Import");
            user.ItemClick("Import");
            user.Yield(3);
            user.SetRef("//Localization");
            selectTab(user, "Languages");
        });
        EXPECT_NE(_test.shownText().find("\xef\x80\x85 English | en"), std::string::npos);
        run([](ImGuiTestContext& user) {
            openContextMenu(user, "English");
            user.ItemClick("//$FOCUSED/Remove");
            user.Yield(2);
        });
        const std::string shown = _test.shownText();
        EXPECT_EQ(shown.find("\xef\x80\x85 Welsh | cy") != std::string::npos, withWelsh) << shown;
        EXPECT_EQ(shown.find("\xef\x80\x85 ?"), std::string::npos) << shown;
        run([](ImGuiTestContext& user) {
            open(user, "Export");
            user.ItemClick("Export");
            user.Yield(2);
        });
        ASSERT_EQ(FakeTools::calls.size(), 2);
        EXPECT_EQ(FakeTools::calls[1].defaultLanguage, withWelsh ? indexOf("cy") : indexOf("en"));
    }
}

/* A tool may hand back storage of any kind */

int freedLists = 0;

void freeList(UnsignedInt* const list, std::size_t) {
    ++freedLists;
    delete[] list;
}

TEST_F(ImportExportPopup, ARefreshFreesAListThatAToolBroughtAndMakesOneOfItsOwn) {
    freedLists = 0;
    FakeTools::onImport = [](Containers::Array<UnsignedInt>& languages) {
        languages = Containers::Array<UnsignedInt>{new UnsignedInt[1]{indexOf("cy")}, 1, freeList};
    };
    run([](ImGuiTestContext& user) {
        open(user, "Import");
        user.ItemClick("Import");
        user.Yield(3);
        user.SetRef("//Localization");
        selectTab(user, "Languages");
        IM_CHECK(rowItem(user, "languagestablebody", "##Welsh").ID);
        IM_CHECK_EQ(freedLists, 0);
        user.MenuClick("Edit/Refresh Languages");
        user.Yield(3);
        IM_CHECK_EQ(freedLists, 1);
        IM_CHECK(!rowItem(user, "languagestablebody", "##Welsh").ID);
        for(const char* const language: {"##German", "##English", "##French"})
            IM_CHECK(rowItem(user, "languagestablebody", language).ID);
    });
    const void* deleter = nullptr;
    FakeTools::onImport = [&](Containers::Array<UnsignedInt>& languages) {
        deleter = reinterpret_cast<const void*>(languages.deleter());
    };
    run([](ImGuiTestContext& user) {
        open(user, "Import");
        user.ItemClick("Import");
        user.Yield(2);
    });
    EXPECT_EQ(FakeTools::calls[1].languages, (std::vector<UnsignedInt>{indexOf("de"), indexOf("en"), indexOf("fr")}));
    EXPECT_NE(deleter, nullptr);
    EXPECT_NE(deleter, reinterpret_cast<const void*>(freeList));
    EXPECT_EQ(freedLists, 1);
}

TEST_F(ImportExportPopup, LanguagesAreAddedToAndRemovedFromAListThatAToolBrought) {
    for(const bool adds: {true, false}) {
        freedLists = 0;
        FakeTools::onImport = [](Containers::Array<UnsignedInt>& languages) {
            languages = Containers::Array<UnsignedInt>{new UnsignedInt[2]{indexOf("cy"), indexOf("ja")}, 2, freeList};
        };
        run([adds](ImGuiTestContext& user) {
            open(user, "Import");
            user.ItemClick("Import");
            user.Yield(3);
            user.SetRef("//Localization");
            if(adds) {
                openLanguagePopup(user);
                user.ItemClick(offeredLanguage(user, "German").ID);
            } else {
                selectTab(user, "Languages");
                openContextMenu(user, "Japanese");
                user.ItemClick("//$FOCUSED/Remove");
            }
            user.Yield(3);
            IM_CHECK_EQ(bool(rowItem(user, "languagestablebody", "##German").ID), adds);
            IM_CHECK_EQ(bool(rowItem(user, "languagestablebody", "##Japanese").ID), adds);
            IM_CHECK(rowItem(user, "languagestablebody", "##Welsh").ID);
        });
        EXPECT_EQ(freedLists, 1);
    }
}

}
}
