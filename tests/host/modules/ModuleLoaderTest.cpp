#include "modules/ModuleLoader.h"

#include <cstring>
#include <filesystem>
#include <sstream>
#include <string>

#include <dlfcn.h>
#include <unistd.h>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>
#include <imgui.h>

#include "EditorView.h"
#include "QuorvaneEditor/QuorvaneEditorApplication.h"
#include "Ui/Ui.h"
#include "document/EditorSession.h"
#include "support/Abort.h"

namespace QuorvaneEngine {
namespace {

constexpr const char* Good = QUORVANE_FIXTURES "/good";
constexpr const char* Bad = QUORVANE_FIXTURES "/bad";
constexpr const char* CounterFile = QUORVANE_FIXTURES "/good/Counter.so";

bool isInProcess(const char* file) {
    void* const handle = dlopen(file, RTLD_LAZY | RTLD_NOLOAD);
    if(handle) dlclose(handle);
    return handle;
}

enum Counted { Draws, Inits, Deinits, EmptyLoads };

/** A counter of the module in the process. */
int counter(Counted which) {
    void* const handle = dlopen(CounterFile, RTLD_LAZY | RTLD_NOLOAD);
    if(!handle) return -1;
    const auto value = reinterpret_cast<int (*)(int)>(dlsym(handle, "counterValue"));
    const int result = value(which);
    dlclose(handle);
    return result;
}

/** What making a loader and a load print to Error, and the loader's own record of it. */
struct Refusal {
    std::string printed;
    std::string kept;
    bool loaded;
};

constexpr const char* NoMetadata = "PluginManager::Manager: " QUORVANE_FIXTURES "/bad/Alone.conf was not found\n";

/** What was said beside what was said of the folder's module without metadata. */
std::string withoutMetadataMessage(const std::string& text) {
    return text.find(NoMetadata) == 0 ? text.substr(std::strlen(NoMetadata)) : text;
}

Refusal loadFrom(const char* folder, const char* name) {
    std::ostringstream out;
    Refusal refusal{};
    {
        Corrade::Utility::Error redirect{&out};
        ModuleLoader loader{folder};
        refusal.loaded = loader.load(name);
        for(const Containers::String& message: loader.messages()) refusal.kept += std::string{message} + "\n";
    }
    refusal.kept = withoutMetadataMessage(refusal.kept);
    refusal.printed = withoutMetadataMessage(out.str());
    return refusal;
}

/** Everything that a view is bound to. */
struct Host {
    Host() { ImGui::CreateContext(); }
    ~Host() { ImGui::DestroyContext(); }

    void init(AbstractModule* module) {
        static_cast<EditorView*>(module)->init(ImGui::GetCurrentContext(), &session.data(), &application);
    }

    EditorSession session;
    Ui ui{&session.project(), &session.changes(), &session.data()};
    QuorvaneEditorApplication application{session.editor(), ui};
};

TEST(ModuleLoader, ListsTheModulesOfAFolderInByteOrder) {
    const ModuleLoader loader{Bad};
    std::string names;
    for(const Containers::String& name: loader.names()) names += std::string{name} + " ";
    EXPECT_EQ(names, "Alone Garbage NoInstancer WrongInterface WrongVersion ");
}

TEST(ModuleLoader, AFolderThatDoesNotExistHoldsNoModulesAndIsAMessage) {
    std::ostringstream out;
    Corrade::Utility::Warning redirect{&out};
    const ModuleLoader loader{"/nowhere/modules"};
    EXPECT_TRUE(loader.names().isEmpty());
    ASSERT_EQ(loader.messages().size(), 1u);
    EXPECT_EQ(loader.messages()[0], "ModuleLoader::ModuleLoader(): no folder of modules at /nowhere/modules");
    EXPECT_EQ(out.str(), "ModuleLoader::ModuleLoader(): no folder of modules at /nowhere/modules\n");
}

TEST(ModuleLoader, ModulesOfSeveralFoldersAreListedTogetherAndLoaded) {
    const Containers::String folders[]{QUORVANE_FIXTURES "/watching", Good};
    ModuleLoader loader{Containers::arrayView(folders)};
    ASSERT_EQ(loader.names().size(), 2u);
    EXPECT_EQ(loader.names()[0], "Counter");
    EXPECT_EQ(loader.names()[1], "Watching");
    EXPECT_TRUE(loader.load("Counter"));
    EXPECT_TRUE(loader.load("Watching"));
    EXPECT_TRUE(loader.messages().isEmpty());
    EXPECT_TRUE(loader.unload("Counter"));
    EXPECT_FALSE(isInProcess(CounterFile));
}

TEST(ModuleLoader, OfModulesWithOneNameThatOfTheFirstFolderCountsWhichIsAMessage) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("quorvane-modules-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    for(const char* file: {"Counter.so", "Counter.conf"})
        std::filesystem::copy_file(std::filesystem::path{Good} / file, folder / file);
    std::ostringstream out;
    {
        const Corrade::Utility::Warning redirect{&out};
        const Containers::String folders[]{Containers::String{folder.c_str()}, Good};
        ModuleLoader loader{Containers::arrayView(folders)};
        EXPECT_EQ(loader.names().size(), 1u);
        EXPECT_TRUE(loader.load("Counter"));
        EXPECT_TRUE(isInProcess((folder / "Counter.so").c_str()));
        EXPECT_FALSE(isInProcess(CounterFile));
        EXPECT_EQ(loader.messages().size(), 1u);
    }
    EXPECT_EQ(out.str(),
        "ModuleLoader::ModuleLoader(): Counter is loaded from " + folder.string() + " and not from " + Good + "\n");
    std::filesystem::remove_all(folder);
}

const ModuleLoader::Module& moduleOf(const ModuleLoader& loader, Containers::StringView name) {
    for(const ModuleLoader::Module& module: loader.modules())
        if(module.name == name) return module;
    ADD_FAILURE() << "no such module";
    return loader.modules()[0];
}

TEST(ModuleLoader, TellsWhatHasBecomeOfAModule) {
    using Status = ModuleLoader::Status;
    Host host;
    ModuleLoader loader{Good};
    const ModuleLoader::Module& module = moduleOf(loader, "Counter");
    EXPECT_EQ(module.file, CounterFile);
    EXPECT_EQ(module.status, Status::NotLoaded);
    host.init(loader.load("Counter"));
    EXPECT_EQ(module.status, Status::Loaded);
    loader.reload("Counter");
    EXPECT_EQ(module.status, Status::Loaded);
    loader.unload("Counter");
    EXPECT_EQ(module.status, Status::NotLoaded);
    EXPECT_EQ(module.reason, "");
}

TEST(ModuleLoader, TellsWhyAModuleIsNotLoaded) {
    using Status = ModuleLoader::Status;
    std::ostringstream out;
    const Corrade::Utility::Error redirect{&out};
    ModuleLoader loader{Bad};
    ASSERT_EQ(loader.folderMessages().size(), 1u);
    EXPECT_EQ(loader.folderMessages()[0] + "\n", NoMetadata);
    loader.load("WrongVersion");
    const ModuleLoader::Module& failed = moduleOf(loader, "WrongVersion");
    EXPECT_EQ(failed.status, Status::Failed);
    EXPECT_EQ(
        failed.reason, "PluginManager::Manager::load(): wrong version of plugin WrongVersion, expected 7 but got 6");
    loader.load("Alone");
    const ModuleLoader::Module& refused = moduleOf(loader, "Alone");
    EXPECT_NE(refused.status, Status::Loaded);
    EXPECT_FALSE(refused.reason.isEmpty());
    EXPECT_EQ(loader.folderMessages().size(), 1u);
}

TEST(ModuleLoader, WithoutFoldersItIsABrokenPrecondition) {
    QUORVANE_EXPECT_ABORT(ModuleLoader{Containers::ArrayView<const Containers::String>{}},
        "ModuleLoader::ModuleLoader(): there are no folders");
}

TEST(ModuleLoader, LoadsAModuleIntoTheProcessAndConstructsItsObject) {
    ModuleLoader loader{Good};
    EXPECT_FALSE(isInProcess(CounterFile));
    EXPECT_EQ(loader.module("Counter"), nullptr);
    AbstractModule* const module = loader.load("Counter");
    ASSERT_TRUE(module);
    EXPECT_TRUE(isInProcess(CounterFile));
    EXPECT_EQ(module->moduleType(), 1);
    EXPECT_EQ(module->plugin(), "Counter");
    EXPECT_EQ(static_cast<EditorView*>(module)->title(), "Counter");
    EXPECT_EQ(loader.module("Counter"), module);
    EXPECT_TRUE(loader.messages().isEmpty());
}

TEST(ModuleLoader, LoadingALoadedModuleGivesTheSameObject) {
    ModuleLoader loader{Good};
    AbstractModule* const module = loader.load("Counter");
    EXPECT_EQ(loader.load("Counter"), module);
}

TEST(ModuleLoader, LoadingWithoutArgumentsStartsAModuleWithAnEmptyState) {
    ModuleLoader loader{Good};
    AbstractModule* const module = loader.load("Counter");
    ASSERT_TRUE(module);
    EXPECT_EQ(counter(EmptyLoads), 0);
    module->load();
    EXPECT_EQ(counter(EmptyLoads), 1);
    EXPECT_EQ(counter(Inits), 0);
}

TEST(ModuleLoader, UnloadingTakesTheLibraryOutOfTheProcess) {
    ModuleLoader loader{Good};
    ASSERT_TRUE(loader.load("Counter"));
    EXPECT_TRUE(loader.unload("Counter"));
    EXPECT_FALSE(isInProcess(CounterFile));
    EXPECT_EQ(loader.module("Counter"), nullptr);
    EXPECT_TRUE(loader.unload("Counter"));
}

TEST(ModuleLoader, DestructionUnloadsEverything) {
    { ASSERT_TRUE(ModuleLoader{Good}.load("Counter")); }
    EXPECT_FALSE(isInProcess(CounterFile));
}

TEST(ModuleLoader, NothingThatAModuleKeptInVariablesSurvivesAnUnload) {
    Host host;
    ModuleLoader loader{Good};
    host.init(loader.load("Counter"));
    EXPECT_EQ(counter(Inits), 1);
    loader.unload("Counter");
    ASSERT_TRUE(loader.load("Counter"));
    EXPECT_EQ(counter(Inits), 0);
}

TEST(ModuleLoader, AFinalUnloadDoesNotTakeLeaveOfTheView) {
    Host host;
    ModuleLoader loader{Good};
    host.init(loader.load("Counter"));
    loader.module("Counter")->unload(true);
    EXPECT_EQ(counter(Deinits), 0);
}

TEST(ModuleLoader, AReloadedViewIsBoundAgainWithTheSameIdAndOpenFlag) {
    Host host;
    host.session.state().registerView("Another");
    ModuleLoader loader{Good};
    host.init(loader.load("Counter"));
    const UnsignedInt id = static_cast<EditorView*>(loader.module("Counter"))->viewId();
    host.session.state().isViewOpen(id) = false;

    AbstractModule* const module = loader.reload("Counter");
    ASSERT_TRUE(module);
    EXPECT_EQ(counter(Inits), 1);
    EXPECT_EQ(counter(Deinits), 0);
    EXPECT_EQ(static_cast<EditorView*>(module)->viewId(), id);
    EXPECT_EQ(host.session.state().viewCount(), 2u);
    EXPECT_FALSE(static_cast<EditorView*>(module)->open());
}

TEST(ModuleLoader, ReloadTakesTheFileAsItIsNow) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("quorvane-modules-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    for(const char* file: {"Counter.so", "Counter.conf"})
        std::filesystem::copy_file(std::filesystem::path{Good} / file, folder / file);
    {
        Host host;
        ModuleLoader loader{folder.c_str()};
        host.init(loader.load("Counter"));
        std::filesystem::remove(folder / "Counter.so");
        std::filesystem::copy_file(QUORVANE_FIXTURES "/bad/WrongVersion.so", folder / "Counter.so");
        std::ostringstream out;
        Corrade::Utility::Error redirect{&out};
        EXPECT_EQ(loader.reload("Counter"), nullptr);
        EXPECT_EQ(out.str(), "PluginManager::Manager::load(): wrong version of plugin Counter, expected 7 but got 6\n");
        EXPECT_EQ(loader.module("Counter"), nullptr);
    }
    std::filesystem::remove_all(folder);
}

TEST(ModuleLoader, AMissingFunctionIsSaidByItsName) {
    const Refusal refusal = loadFrom(QUORVANE_FIXTURES "/undefined", "Undefined");
    EXPECT_FALSE(refusal.loaded);
    EXPECT_NE(refusal.kept.find("undefined symbol: QuorvaneEngine::alsoNotThere(int)"), std::string::npos)
        << refusal.kept;
    EXPECT_EQ(refusal.printed, refusal.kept);
}

TEST(ModuleLoader, AFolderWithoutModulesIsAMessageThatLooksOneFolderDeeper) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("quorvane-modules-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    std::ostringstream out;
    {
        const Corrade::Utility::Warning redirect{&out};
        const ModuleLoader without{folder.c_str()};
        EXPECT_EQ(without.messages().size(), 1u);
        std::filesystem::create_directories(folder / "modules");
        const ModuleLoader above{folder.c_str()};
        EXPECT_EQ(above.messages().size(), 1u);
    }
    const std::string told = "ModuleLoader::ModuleLoader(): there are no modules in " + folder.string();
    EXPECT_EQ(out.str(), told + "\n" + told + ", but perhaps in " + folder.string() + "/modules\n");
    std::filesystem::remove_all(folder);
}

TEST(ModuleLoader, WrongVersionIsRefused) {
    const Refusal refusal = loadFrom(Bad, "WrongVersion");
    EXPECT_FALSE(refusal.loaded);
    EXPECT_EQ(
        refusal.kept, "PluginManager::Manager::load(): wrong version of plugin WrongVersion, expected 7 but got 6\n");
    EXPECT_EQ(refusal.printed, refusal.kept);
    EXPECT_FALSE(isInProcess(QUORVANE_FIXTURES "/bad/WrongVersion.so"));
}

TEST(ModuleLoader, WrongInterfaceIsRefused) {
    const Refusal refusal = loadFrom(Bad, "WrongInterface");
    EXPECT_FALSE(refusal.loaded);
    EXPECT_EQ(refusal.kept,
        "PluginManager::Manager::load(): wrong interface string of plugin WrongInterface, expected "
        "dev.quorvane.QuorvaneEditor.AbstractModule/1.1 but got "
        "dev.quorvane.QuorvaneEditor.AbstractModule/1.0\n");
    EXPECT_EQ(refusal.printed, refusal.kept);
    EXPECT_FALSE(isInProcess(QUORVANE_FIXTURES "/bad/WrongInterface.so"));
}

TEST(ModuleLoader, AMissingEntryPointIsRefused) {
    const Refusal refusal = loadFrom(Bad, "NoInstancer");
    EXPECT_FALSE(refusal.loaded);
    // The reason behind the last colon is the dynamic linker's.
    EXPECT_EQ(refusal.kept.find("PluginManager::Manager::load(): cannot get instancer of plugin NoInstancer: "), 0u)
        << refusal.kept;
    EXPECT_NE(refusal.kept.find("undefined symbol: pluginInstancer"), std::string::npos) << refusal.kept;
    EXPECT_EQ(refusal.printed, refusal.kept);
    EXPECT_FALSE(isInProcess(QUORVANE_FIXTURES "/bad/NoInstancer.so"));
}

TEST(ModuleLoader, WhatIsNoLibraryIsRefused) {
    const Refusal refusal = loadFrom(Bad, "Garbage");
    EXPECT_FALSE(refusal.loaded);
    EXPECT_EQ(refusal.kept.find("PluginManager::Manager::load(): cannot load plugin Garbage from \"" QUORVANE_FIXTURES
                                "/bad/Garbage.so\": "),
        0u)
        << refusal.kept;
    EXPECT_EQ(refusal.printed, refusal.kept);
}

TEST(ModuleLoader, AModuleWithoutMetadataIsRefused) {
    ModuleLoader loader{Bad};
    ASSERT_EQ(loader.messages().size(), 1u);
    EXPECT_EQ(loader.messages()[0] + "\n", NoMetadata);
    const Refusal refusal = loadFrom(Bad, "Alone");
    EXPECT_FALSE(refusal.loaded);
    EXPECT_EQ(refusal.kept,
        "PluginManager::Manager::load(): plugin Alone is not ready to load: "
        "PluginManager::LoadState::WrongMetadataFile\n");
    EXPECT_EQ(refusal.printed, refusal.kept);
}

TEST(ModuleLoader, ANameThatIsNotThereIsRefused) {
    const Refusal refusal = loadFrom(Good, "Nobody");
    EXPECT_FALSE(refusal.loaded);
    EXPECT_EQ(refusal.kept,
        "PluginManager::Manager::load(): plugin Nobody is not static and was not found in " QUORVANE_FIXTURES
        "/good\n");
}

TEST(ModuleLoader, OtherModulesLoadAfterOneThatIsRefused) {
    ModuleLoader loader{Bad};
    std::ostringstream out;
    Corrade::Utility::Error redirect{&out};
    for(const Containers::String& name: loader.names()) EXPECT_EQ(loader.load(name), nullptr);
    EXPECT_EQ(loader.messages().size(), 6u);
    ModuleLoader other{Good};
    EXPECT_TRUE(other.load("Counter"));
}

TEST(ModuleLoader, ALibraryThatCannotBeTakenOutIsAWarningWithTheManagersState) {
    ModuleLoader loader{QUORVANE_FIXTURES "/clinging"};
    ASSERT_TRUE(loader.load("Clinging"));
    std::ostringstream out;
    {
        Corrade::Utility::Warning redirected{&out};
        EXPECT_FALSE(loader.unload("Clinging"));
    }
    EXPECT_EQ(out.str(),
        "ModuleLoader::unload(): Clinging is still in the process, with what it knows: "
        "PluginManager::LoadState::Used\n");

    void* const handle = dlopen(QUORVANE_FIXTURES "/clinging/Clinging.so", RTLD_LAZY | RTLD_NOLOAD);
    ASSERT_TRUE(handle);
    reinterpret_cast<void (*)()>(dlsym(handle, "letGo"))();
    dlclose(handle);
    ASSERT_TRUE(loader.load("Clinging"));
    EXPECT_TRUE(loader.unload("Clinging"));
    EXPECT_FALSE(isInProcess(QUORVANE_FIXTURES "/clinging/Clinging.so"));
}

}
}
