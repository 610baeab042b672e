#include "plugin/ViewTest.h"

#include <algorithm>

#include <Corrade/PluginManager/Manager.hpp>
#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace QuorvaneEngine::Test {

namespace {

rapidjson::Document parse(const Containers::StringView text) {
    rapidjson::Document document;
    document.Parse(text.data(), text.size());
    EXPECT_FALSE(document.HasParseError());
    return document;
}

}

ViewTest::ViewTest(const Containers::StringView project, const ImVec2& displaySize)
    : ui{&session.project(), &session.changes(), &session.data()},
      application{session.editor(), ui},
      gui{displaySize},
      manager{QUORVANE_MODULE_DIR} {
    replaceDocument(project);
    module = manager.loadAndInstantiate("Localization");
    if(!module) return;
    view = static_cast<EditorView*>(module.get());
    view->init(gui.context(), &session.data(), &application);
}

ViewTest::~ViewTest() {
    if(module) module->unload(true);
}

void ViewTest::replaceDocument(const Containers::StringView project) { session.replaceDocument(parse(project)); }

void ViewTest::draw() {
    session.beginFrame();
    if(docked) {
        ImGui::DockSpaceOverViewport(1);
        ImGui::SetNextWindowDockID(1, ImGuiCond_Always);
    }
    if(capturesText) ImGui::LogToBuffer();
    if(view->open()) view->draw();
    if(capturesText) {
        capturedText = ImGui::GetCurrentContext()->LogBuffer.c_str();
        ImGui::LogFinish();
    }
    if(beside) beside();
}

bool ViewTest::run(const Script& script) {
    return gui.run(
        "view", [this] { draw(); },
        [&](ImGuiTestContext& user) {
            user.WindowMove("//Localization", {20.0f, 20.0f});
            user.WindowResize("//Localization", {900.0f, 700.0f});
            user.SetRef("//Localization");
            script(user);
        });
}

void ViewTest::frames(const int count) {
    gui.frames([this] { draw(); }, count);
}

std::string ViewTest::shownText() {
    capturesText = true;
    frames(2);
    capturesText = false;
    return capturedText;
}

std::string ViewTest::document() {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer{buffer};
    session.project().document().Accept(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

bool paints(const ImU32 color, const ImRect& where) {
    /* The script runs at a frame's beginning, when each window still holds what it drew in the last one */
    for(const ImGuiWindow* const window: ImGui::GetCurrentContext()->Windows) {
        if(!window->WasActive || window->Hidden) continue;
        for(const ImDrawVert& corner: window->DrawList->VtxBuffer)
            if(corner.col == color && where.Contains(corner.pos)) return true;
    }
    return false;
}

ImGuiWindow* childWindow(ImGuiTestContext& user, const char* const name) {
    return user.WindowInfo((std::string{"//Localization/"} + name).c_str()).Window;
}

namespace {

ImGuiTestItemInfo drawnItem(ImGuiTestContext& user, ImGuiWindow* const window, const std::string& path) {
    user.SetRef(window);
    const ImGuiTestItemInfo item = user.ItemInfo(path.c_str(), ImGuiTestOpFlags_NoError);
    user.SetRef("//Localization");
    return item;
}

}

ImGuiTestItemInfo rowItem(ImGuiTestContext& user, const char* const child, const char* const path) {
    ImGuiWindow* const window = childWindow(user, child);
    if(!window) return user.ItemInfoNull();
    const std::string fullPath = std::string{"termstable/"} + path;
    ImGuiTestItemInfo item = drawnItem(user, window, fullPath);
    if(item.ID && window->ClipRect.Contains(item.RectFull.GetCenter())) return item;

    /* Rows that do not show are not drawn: look for it page by page */
    const float page = std::max(window->InnerRect.GetHeight() * 0.5f, 20.0f);
    for(float y = 0.0f;; y += page) {
        user.ScrollToPosY(window->ID, 0.0f);
        window->Scroll.y = std::min(y, window->ScrollMax.y);
        user.Yield(2);
        item = drawnItem(user, window, fullPath);
        if(item.ID && window->ClipRect.Contains(item.RectFull.GetCenter())) return item;
        if(y >= window->ScrollMax.y) return item;
    }
}

void search(ImGuiTestContext& user, const char* const bar, const char* const text) {
    user.ItemInput((std::string{"//Localization/"} + bar).c_str());
    user.KeyCharsReplace(text);
    user.Yield(2);
}

void selectTab(ImGuiTestContext& user, const char* const tab) {
    user.ItemClick((std::string{"//Localization/localizationtabs/"} + tab).c_str());
    user.Yield(2);
}

void tick(ImGuiTestContext& user, const char* const term) {
    const std::string path = std::string{term} + "/##translatable";
    const ImGuiTestItemInfo box = rowItem(user, "termtablebody", path.c_str());
    IM_CHECK(box.ID != 0);
    user.ItemClick(box.ID);
    user.Yield(2);
}

void openContextMenu(ImGuiTestContext& user, const char* const language) {
    const ImGuiTestItemInfo row = rowItem(user, "languagestablebody", (std::string{"##"} + language).c_str());
    IM_CHECK(row.ID != 0);
    user.ItemClick(row.ID, ImGuiMouseButton_Right);
    user.Yield();
}

void openLanguagePopup(ImGuiTestContext& user) {
    selectTab(user, "Languages");
    user.ItemClick("//Localization/Add Language");
    user.Yield(3);
    IM_CHECK(languagePopup(user) != nullptr);
}

ImGuiWindow* languagePopup(ImGuiTestContext& user) {
    const ImVector<ImGuiPopupData>& popups = user.UiContext->OpenPopupStack;
    return popups.empty() ? nullptr : popups[0].Window;
}

ImGuiWindow* languageList(ImGuiTestContext& user) {
    ImGuiWindow* const popup = languagePopup(user);
    for(ImGuiWindow* const window: user.UiContext->Windows)
        if(popup && window->ParentWindow == popup && window->WasActive &&
            (window->Flags & ImGuiWindowFlags_ChildWindow))
            return window;
    return nullptr;
}

ImGuiTestItemInfo offeredLanguage(ImGuiTestContext& user, const Containers::StringView language) {
    ImGuiWindow* const window = languageList(user);
    for(float y = 0.0f;; y += window->InnerRect.GetHeight() * 0.5f) {
        window->Scroll.y = std::min(y, window->ScrollMax.y);
        user.Yield(2);
        user.SetRef(window);
        const ImGuiTestItemInfo item = user.ItemInfo(language.data(), ImGuiTestOpFlags_NoError);
        user.SetRef("//Localization");
        if(item.ID && window->ClipRect.Contains(item.RectFull.GetCenter())) return item;
        if(y >= window->ScrollMax.y) return user.ItemInfoNull();
    }
}

}
