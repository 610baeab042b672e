#include "app/ViewSet.h"

#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>
#include <string>

#include <dlfcn.h>
#include <unistd.h>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>
#include <imgui.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/ProjectWatch.h"
#include "QuorvaneEditor/QuorvaneEditorApplication.h"
#include "Ui/Ui.h"
#include "document/EditorSession.h"
#include "modules/ModuleLoader.h"

namespace QuorvaneEngine {
namespace {

constexpr const char* WatchingFile = QUORVANE_FIXTURES "/watching/Watching.so";

/** How often the module in the process was told of changes, -1 where there is none. */
int toldCount() {
    void* const handle = dlopen(WatchingFile, RTLD_LAZY | RTLD_NOLOAD);
    if(!handle) return -1;
    const int told = reinterpret_cast<int (*)()>(dlsym(handle, "toldCount"))();
    dlclose(handle);
    return told;
}

/** A view that watches "objects" twice, once by a guard that it loses. EditorFrameTest has the rest of what views are subject to. */
class ViewSetTest: public testing::Test {
protected:
    ViewSetTest() { ImGui::CreateContext(); }
    ~ViewSetTest() override { ImGui::DestroyContext(); }

    void pushObject() { session.changes().pushChange("/objects/door", rapidjson::Value{1}, false); }

    std::size_t subscriptions() { return session.watch().subscriptionCount() - own; }

    std::ostringstream printed;
    Corrade::Utility::Debug redirect{&printed};
    EditorSession session;
    std::size_t own = session.watch().subscriptionCount();
    Ui ui{&session.project(), &session.changes(), &session.data()};
    QuorvaneEditorApplication application{session.editor(), ui};
    ModuleLoader modules{QUORVANE_FIXTURES "/watching"};
};

TEST_F(ViewSetTest, AThousandReloadsLeaveNoSubscriptionBehind) {
    ViewSet views{modules, application, session.data(), {}};
    views.restart();
    ASSERT_EQ(subscriptions(), 2u);
    for(int i = 0; i != 1000; ++i) {
        views.reload();
        ASSERT_EQ(subscriptions(), 2u) << "after reload " << i + 1;
    }
    EXPECT_EQ(toldCount(), 0);
    pushObject();
    EXPECT_EQ(toldCount(), 2);
}

TEST_F(ViewSetTest, ARestartEndsTheSubscriptionsOfTheViewThatGoes) {
    ViewSet views{modules, application, session.data(), {}};
    views.restart();
    views.restart("Watching");
    EXPECT_EQ(subscriptions(), 2u);
    views.restart();
    EXPECT_EQ(subscriptions(), 2u);
    pushObject();
    EXPECT_EQ(toldCount(), 2);
}

TEST_F(ViewSetTest, SubscriptionsAreTakenOverToAnotherProjectAndEndWithTheSet) {
    {
        ViewSet views{modules, application, session.data(), {}};
        views.restart();
        session.replaceDocument(rapidjson::Document{rapidjson::kObjectType});
        pushObject();
        EXPECT_EQ(toldCount(), 2);
    }
    EXPECT_EQ(subscriptions(), 0u);
    ASSERT_TRUE(modules.unload("Watching"));
    ASSERT_EQ(toldCount(), -1);
    pushObject();
}

TEST_F(ViewSetTest, WhatAViewLeavesOpenIsClosedAndSaidOnceAndSoIsATitleThatTwoHave) {
    ModuleLoader leaking{QUORVANE_FIXTURES "/leaking"};
    std::ostringstream warned;
    const Corrade::Utility::Warning warnings{&warned};
    ViewSet views{leaking, application, session.data(), {}};
    views.restart();
    EXPECT_EQ(warned.str(),
        "ViewSet::start(): the views of Leaking and Twin share a window, because both have the title Leaking\n");
    warned.str("");

    ImGuiIO& io = ImGui::GetIO();
    io.DisplaySize = {200.0f, 200.0f};
    io.BackendFlags |= ImGuiBackendFlags_RendererHasTextures;
    for(int frame = 0; frame != 3; ++frame) {
        ImGui::NewFrame();
        views.draw();
        EXPECT_EQ(ui.scopePath(), "");
        EXPECT_TRUE(ui.flagStack.empty());
        EXPECT_FALSE(ui.flags & Ui::Flag::NoLabel);
        ImGui::EndFrame();
    }
    const std::string once = "ViewSet::draw(): Leaking left open: the scope /objects/door 1 flags\n";
    EXPECT_EQ(warned.str(), once + once);
}

/* Where the function that is asked stands in a newer view, an older one may have anything. */
TEST_F(ViewSetTest, AViewOfAnOlderFrameworkIsNotAskedToShowAValue) {
    namespace fs = std::filesystem;
    const fs::path root = fs::temp_directory_path() / ("quorvane-older-" + std::to_string(getpid()));
    fs::create_directories(root);
    fs::copy_file(QUORVANE_FIXTURES "/good/Counter.so", root / "Counter.so");
    const std::ifstream newer{QUORVANE_FIXTURES "/good/Counter.conf"};
    std::ostringstream metadata;
    metadata << newer.rdbuf();
    std::string older = metadata.str();
    const std::size_t at = older.find("framework=");
    ASSERT_NE(at, std::string::npos);
    older.erase(at, older.find('\n', at) + 1 - at);

    session.changes().pushChange("/counted", rapidjson::Value{1}, false);
    for(const std::string& text: {older, metadata.str()}) {
        std::ofstream{root / "Counter.conf"} << text;
        ModuleLoader loader{root.c_str()};
        ViewSet views{loader, application, session.data(), {}};
        views.restart();
        EXPECT_EQ(views.show("/counted"), text != older);
    }
    fs::remove_all(root);
}

}
}
