/* The module file: what it exports, and that nothing of it stays behind. How a manager refuses modules that do not fit is tested
   with the loader of modules. */

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include <dlfcn.h>

#include <Corrade/PluginManager/Manager.hpp>
#include <gtest/gtest.h>

#include "QuorvaneEditor/AbstractModule.h"
#include "plugin/ViewTest.h"

namespace QuorvaneEngine::Test {
namespace {

using Corrade::PluginManager::LoadState;

const std::string ModuleFile = QUORVANE_MODULE_DIR "/Localization.so";

bool isMapped() {
    std::ifstream maps{"/proc/self/maps"};
    for(std::string line; std::getline(maps, line);)
        if(line.find("/Localization.so") != std::string::npos) return true;
    return false;
}

std::vector<std::string> linesOf(const std::string& command) {
    std::vector<std::string> lines;
    FILE* const pipe = popen(command.c_str(), "r");
    char line[1024];
    while(pipe && std::fgets(line, sizeof(line), pipe)) lines.emplace_back(line);
    EXPECT_EQ(pclose(pipe), 0);
    return lines;
}

TEST(Localization, ExportsExactlyTheFiveEntryPoints) {
    std::vector<std::string> names;
    for(const std::string& line: linesOf("nm -D --defined-only --format=posix '" + ModuleFile + "'"))
        names.push_back(line.substr(0, line.find(' ')));
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names,
        (std::vector<std::string>{
            "pluginFinalizer", "pluginInitializer", "pluginInstancer", "pluginInterface", "pluginVersion"}));
}

TEST(Localization, HasNoUniqueSymbolsThatWouldKeepItLoaded) {
    for(const std::string& line: linesOf("nm -D --format=posix '" + ModuleFile + "'"))
        EXPECT_EQ(line.find(" u "), std::string::npos) << line;
}

TEST(Localization, NamesTheVersionAndTheInterfaceOfTheHost) {
    ViewTest test{English};
    ASSERT_TRUE(test.view);
    void* const library = dlopen(ModuleFile.c_str(), RTLD_NOW | RTLD_NOLOAD);
    ASSERT_TRUE(library);
    EXPECT_EQ(reinterpret_cast<int (*)()>(dlsym(library, "pluginVersion"))(), 7);
    const Containers::StringView interface = reinterpret_cast<const char* (*)()>(dlsym(library, "pluginInterface"))();
    EXPECT_EQ(interface, AbstractModule::pluginInterface());
    EXPECT_TRUE(interface.hasSuffix(".QuorvaneEditor.AbstractModule/1.1"));
    dlclose(library);
}

TEST(Localization, IsFoundByTheManagerWithItsMetadata) {
    ASSERT_TRUE(std::ifstream{QUORVANE_MODULE_DIR "/Localization.conf"}.good());
    const Corrade::PluginManager::Manager<AbstractModule> manager{QUORVANE_MODULE_DIR};
    EXPECT_EQ(manager.loadState("Localization"), LoadState::NotLoaded);
}

TEST(Localization, IsAViewNamedLocalization) {
    ViewTest test{English};
    ASSERT_TRUE(test.view);
    EXPECT_EQ(test.view->title(), "Localization");
    EXPECT_EQ(test.view->moduleType(), 1);
    EXPECT_EQ(test.view->plugin(), "Localization");
}

TEST(Localization, LeavesTheProcessWhenItIsUnloaded) {
    ViewTest test{English};
    ASSERT_TRUE(test.view);
    test.frames(3);
    EXPECT_TRUE(isMapped());
    test.module = nullptr;
    EXPECT_EQ(test.manager.unload("Localization"), LoadState::NotLoaded);
    EXPECT_FALSE(isMapped());
}

TEST(Localization, LeavesNothingOfItsOwnInTheHost) {
    ViewTest test{R"({"languages": {"en": {"isDefault": true}}, "localization": {"terms": {"a": {}, "b": {}}}})"};
    test.run([](ImGuiTestContext& user) {
        tick(user, "a");
        tick(user, "b");
    });
    const std::string ticked = test.document();
    test.module = nullptr;
    ASSERT_EQ(test.manager.unload("Localization"), LoadState::NotLoaded);
    ASSERT_FALSE(isMapped());
    test.session.undo();
    test.session.undo();
    test.session.redo();
    test.session.redo();
    EXPECT_EQ(test.document(), ticked);
    test.ui.path = {};
}

}
}
