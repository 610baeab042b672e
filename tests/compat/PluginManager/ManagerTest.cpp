#include <string>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/PluginManager/Manager.hpp>
#include <Corrade/PluginManager/PluginMetadata.h>
#include <Corrade/Utility/ConfigurationGroup.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Path.h>
#include <gtest/gtest.h>

#include "AbstractAnimal.h"
#include "Print.h"

using namespace Corrade;
using namespace Corrade::Containers::Literals;
using Containers::Pointer;
using Containers::String;
using PluginManager::LoadState;
using Utility::Debug;
using Utility::Error;

namespace {

const std::string Animals = FIXTURES "/animals";

struct AnimalManager: PluginManager::Manager<AbstractAnimal> {
    explicit AnimalManager(const std::string& folder = Animals): Manager{folder} {}
};

// What a function writes to the error output.
template <class F> std::string errorsOf(F&& function) {
    String out;
    {
        const Error redirect{&out};
        function();
    }
    return std::string(out);
}

// The same for the standard output.
template <class F> std::string outputOf(F&& function) {
    String out;
    {
        const Debug redirect{&out};
        function();
    }
    return std::string(out);
}

struct Unprefixed: AbstractAnimal {
    static Containers::Array<String> pluginSearchPaths() { return {}; }
    using AbstractAnimal::AbstractAnimal;
};
struct Searched: AbstractAnimal {
    static Containers::Array<String> pluginSearchPaths() {
        return Containers::Array<String>{InPlaceInit, {"nowhere", FIXTURES "/animals"}};
    }
    using AbstractAnimal::AbstractAnimal;
};
struct SearchedInVain: AbstractAnimal {
    static Containers::Array<String> pluginSearchPaths() {
        return Containers::Array<String>{InPlaceInit, {"nowhere", "/nowhere/at/all"}};
    }
    using AbstractAnimal::AbstractAnimal;
};
struct WithoutMetadata: AbstractAnimal {
    static Containers::StringView pluginMetadataSuffix() { return ""_s; }
    using AbstractAnimal::AbstractAnimal;
};

} // namespace

TEST(PluginManager, ListsPluginsAndAliasesSorted) {
    const AnimalManager manager;
    EXPECT_EQ(printed(manager.pluginList()), "{Canary, Dog, PitBull, Snail}");
    EXPECT_EQ(printed(manager.aliasList()), "{Bird, Canary, Dog, Guard, Pet, PitBull, Snail}");
    EXPECT_EQ(manager.pluginInterface(), "compat.test.AbstractAnimal/1.0");
    EXPECT_EQ(manager.pluginDirectory(), Animals);
    EXPECT_EQ(PluginManager::AbstractManager::Version, 7);
    EXPECT_EQ(CORRADE_PLUGIN_VERSION, 7);
}

TEST(PluginManager, LoadStatesHaveTheirDocumentedValuesAndNames) {
    EXPECT_EQ(int(LoadState::NotFound), 1);
    EXPECT_EQ(int(LoadState::WrongPluginVersion), 2);
    EXPECT_EQ(int(LoadState::WrongInterfaceVersion), 4);
    EXPECT_EQ(int(LoadState::WrongMetadataFile), 8);
    EXPECT_EQ(int(LoadState::UnresolvedDependency), 16);
    EXPECT_EQ(int(LoadState::LoadFailed), 32);
    EXPECT_EQ(int(LoadState::Static), 64);
    EXPECT_EQ(int(LoadState::Loaded), 192);
    EXPECT_EQ(int(LoadState::NotLoaded), 256);
    EXPECT_EQ(int(LoadState::UnloadFailed), 512);
    EXPECT_EQ(int(LoadState::Required), 1024);
    EXPECT_EQ(int(LoadState::Used), 2048);
    EXPECT_EQ(printed(LoadState::Loaded), "PluginManager::LoadState::Loaded");
    EXPECT_EQ(printed(LoadState::WrongInterfaceVersion), "PluginManager::LoadState::WrongInterfaceVersion");
    EXPECT_EQ(printed(LoadState(0x3f)), "PluginManager::LoadState(0x3f)");
}

TEST(PluginManager, LoadsInstantiatesAndUnloads) {
    AnimalManager manager;
    EXPECT_EQ(manager.loadState("Canary"), LoadState::NotLoaded);
    const std::string output = outputOf([&] {
        EXPECT_EQ(manager.load("Canary"), LoadState::Loaded);
        EXPECT_EQ(manager.load("Canary"), LoadState::Loaded);
        EXPECT_EQ(manager.loadState("Canary"), LoadState::Loaded);
        {
            Pointer<AbstractAnimal> animal = manager.instantiate("Canary");
            EXPECT_EQ(animal->legs(), 2);
            EXPECT_EQ(animal->plugin(), "Canary");
            EXPECT_EQ(animal->metadata(), manager.metadata("Canary"));
        }
        EXPECT_EQ(manager.unload("Canary"), LoadState::NotLoaded);
    });
    EXPECT_EQ(output, "initialize Canary\ndestroy Canary\nfinalize Canary\n");
    EXPECT_EQ(manager.loadState("Canary"), LoadState::NotLoaded);
    EXPECT_EQ(manager.unload("Canary"), LoadState::NotLoaded);
}

TEST(PluginManager, ReadsMetadata) {
    const AnimalManager manager;
    const PluginManager::PluginMetadata* metadata = manager.metadata("Canary");
    ASSERT_TRUE(metadata);
    EXPECT_EQ(metadata->name(), "Canary");
    EXPECT_EQ(printed(metadata->provides()), "{Bird}");
    EXPECT_TRUE(metadata->depends().isEmpty());
    EXPECT_EQ(metadata->data().value("title"), "A yellow bird");
    EXPECT_TRUE(manager.metadata("Dog")->data().isEmpty());
    EXPECT_EQ(manager.metadata("Whale"), nullptr);
}

TEST(PluginManager, KnowsPluginsByWhatTheyProvide) {
    AnimalManager manager;
    // Both provide "Pet"; the first one has it.
    Pointer<AbstractAnimal> pet = manager.loadAndInstantiate("Pet");
    EXPECT_EQ(pet->legs(), 4);
    EXPECT_EQ(pet->plugin(), "Pet");
    EXPECT_EQ(pet->metadata()->name(), "Dog");
    EXPECT_EQ(manager.loadState("Guard"), LoadState::Loaded);
}

TEST(PluginManager, UnknownPluginsAreNotFound) {
    AnimalManager manager;
    EXPECT_EQ(manager.loadState("Whale"), LoadState::NotFound);
    EXPECT_EQ(errorsOf([&] { EXPECT_EQ(manager.load("Whale"), LoadState::NotFound); }),
        "PluginManager::Manager::load(): plugin Whale is not static and was not found in " + Animals + "\n");
    EXPECT_EQ(errorsOf([&] { EXPECT_EQ(manager.unload("Whale"), LoadState::NotFound); }),
        "PluginManager::Manager::unload(): plugin Whale was not found\n");
    EXPECT_EQ(errorsOf([&] { EXPECT_FALSE(manager.loadAndInstantiate("Whale")); }),
        "PluginManager::Manager::load(): plugin Whale is not static and was not found in " + Animals + "\n");
}

TEST(PluginManager, LoadsWhatAPluginDependsOnFirst) {
    AnimalManager manager;
    EXPECT_EQ(outputOf([&] { EXPECT_EQ(manager.load("PitBull"), LoadState::Loaded); }),
        "initialize Dog\ninitialize PitBull\n");
    EXPECT_EQ(printed(manager.metadata("Dog")->usedBy()), "{PitBull}");
    EXPECT_EQ(printed(manager.metadata("PitBull")->depends()), "{Dog}");
    EXPECT_EQ(errorsOf([&] { EXPECT_EQ(manager.unload("Dog"), LoadState::Required); }),
        "PluginManager::Manager::unload(): plugin Dog is required by other plugins: {PitBull}\n");
    EXPECT_EQ(outputOf([&] {
        EXPECT_EQ(manager.unload("PitBull"), LoadState::NotLoaded);
        EXPECT_EQ(manager.unload("Dog"), LoadState::NotLoaded);
    }),
        "finalize PitBull\nfinalize Dog\n");
    EXPECT_TRUE(manager.metadata("Dog")->usedBy().isEmpty());
}

TEST(PluginManager, AMissingDependencyIsUnresolved) {
    AnimalManager manager;
    EXPECT_EQ(errorsOf([&] { EXPECT_EQ(manager.load("Snail"), LoadState::UnresolvedDependency); }),
        "PluginManager::Manager::load(): unresolved dependency House of plugin Snail\n");
    EXPECT_EQ(manager.loadState("Snail"), LoadState::NotLoaded);
}

TEST(PluginManager, UnloadsAtTheEndUsersFirst) {
    const std::string output = outputOf([] {
        AnimalManager manager;
        manager.load("PitBull");
        manager.load("Canary");
    });
    // Some versions of the library forget the plug-in itself where its users had to go first.
    EXPECT_TRUE(output.starts_with("initialize Dog\ninitialize PitBull\ninitialize Canary\n"
                                   "finalize Canary\nfinalize PitBull\n"))
        << output;
}

TEST(PluginManager, ALivePluginIsNotUnloaded) {
    AnimalManager manager;
    Pointer<AbstractAnimal> animal = manager.loadAndInstantiate("Canary");
    EXPECT_EQ(errorsOf([&] { EXPECT_EQ(manager.unload("Canary"), LoadState::Used); }),
        "PluginManager::Manager::unload(): plugin Canary has a live instance which cannot be automatically "
        "deleted\n");
    EXPECT_EQ(manager.loadState("Canary"), LoadState::Loaded);
    animal = nullptr;
    EXPECT_EQ(manager.unload("Canary"), LoadState::NotLoaded);
}

TEST(PluginManager, InstancesThatAgreeAreDeletedOnUnloading) {
    AnimalManager manager;
    EXPECT_EQ(outputOf([&] {
        manager.loadAndInstantiate("Canary").release()->deletable = true;
        manager.instantiate("Canary").release()->deletable = true;
        EXPECT_EQ(manager.unload("Canary"), LoadState::NotLoaded);
    }),
        "initialize Canary\ndestroy Canary\ndestroy Canary\nfinalize Canary\n");
}

TEST(PluginManager, LoadsAFileByItsPath) {
    AnimalManager manager;
    const std::string file = FIXTURES "/elsewhere/Canary.so";
    Pointer<AbstractAnimal> animal = manager.loadAndInstantiate(file);
    ASSERT_TRUE(animal);
    EXPECT_EQ(animal->legs(), 3);
    EXPECT_EQ(animal->plugin(), "Canary");
    EXPECT_EQ(printed(manager.aliasList()), "{Canary, Dog, Guard, Pet, PitBull, Snail}");
    EXPECT_EQ(errorsOf([&] { EXPECT_EQ(manager.load(file), LoadState::Used); }),
        "PluginManager::load(): Canary.so conflicts with currently loaded plugin of the same name\n");
}

TEST(PluginManager, AnotherFolderForgetsWhatIsNotLoaded) {
    AnimalManager manager;
    manager.load("Dog");
    manager.setPluginDirectory(FIXTURES "/elsewhere");
    EXPECT_EQ(printed(manager.pluginList()), "{Canary, Dog}");
    EXPECT_EQ(manager.loadState("Dog"), LoadState::Loaded);
    manager.setPluginDirectory("/nowhere/at/all");
    EXPECT_EQ(printed(manager.pluginList()), "{Dog}");
    manager.setPluginDirectory(Animals.c_str());
    manager.reloadPluginDirectory();
    EXPECT_EQ(printed(manager.pluginList()), "{Canary, Dog, PitBull, Snail}");
}

TEST(PluginManager, SearchesFoldersRelativeToTheProgram) {
    const PluginManager::Manager<Searched> manager;
    EXPECT_EQ(manager.pluginDirectory(), Animals);
    String out;
    {
        const Utility::Warning redirect{&out};
        const PluginManager::Manager<SearchedInVain> empty;
        EXPECT_TRUE(empty.pluginList().isEmpty());
        EXPECT_EQ(empty.pluginDirectory(), "");
    }
    EXPECT_EQ(out,
        "PluginManager::Manager: none of the plugin search paths in {nowhere, /nowhere/at/all} exists and "
        "pluginDirectory was not set, skipping plugin discovery\n");
}

TEST(PluginManager, NeedsNoMetadataWithoutASuffixForIt) {
    PluginManager::Manager<WithoutMetadata> manager{FIXTURES "/broken"};
    EXPECT_EQ(manager.load("NoMetadata"), LoadState::Loaded);
}

TEST(PluginManager, MissingAndWrongMetadataArePrintedOnDiscovery) {
    String out;
    {
        const Error redirect{&out};
        AnimalManager manager{FIXTURES "/broken"};
        EXPECT_EQ(manager.loadState("NoMetadata"), LoadState::WrongMetadataFile);
        EXPECT_EQ(manager.loadState("WrongMetadata"), LoadState::WrongMetadataFile);
        manager.load("NoMetadata");
    }
    EXPECT_EQ(out,
        "PluginManager::Manager: " FIXTURES "/broken/NoMetadata.conf was not found\n"
        "Utility::Configuration::Configuration(): missing equals for a value\n"
        "PluginManager::Manager::load(): plugin NoMetadata is not ready to load: "
        "PluginManager::LoadState::WrongMetadataFile\n");
}

TEST(PluginManager, BrokenLibrariesAreRefusedWithTheirReason) {
    String discovery;
    Pointer<AnimalManager> manager;
    {
        const Error redirect{&discovery};
        manager.emplace(FIXTURES "/broken");
    }
    const std::string file = FIXTURES "/broken/";
    const auto undefined = [&](const std::string& name, const std::string& symbol) {
        return file + name + ".so: undefined symbol: " + symbol + "\n";
    };
    const struct {
        std::string name;
        LoadState state;
        std::string message;
    } data[]{
        {"WrongVersion", LoadState::WrongPluginVersion, "wrong version of plugin WrongVersion, expected 7 but got 0\n"},
        {"WrongInterface", LoadState::WrongInterfaceVersion,
            "wrong interface string of plugin WrongInterface, expected compat.test.AbstractAnimal/1.0 but got "
            "compat.test.AbstractAnimal/0.9\n"},
        {"NoVersion", LoadState::LoadFailed,
            "cannot get version of plugin NoVersion: " + undefined("NoVersion", "pluginVersion")},
        {"NoInterface", LoadState::LoadFailed,
            "cannot get interface string of plugin NoInterface: " + undefined("NoInterface", "pluginInterface")},
        {"NoInitializer", LoadState::LoadFailed,
            "cannot get initializer of plugin NoInitializer: " + undefined("NoInitializer", "pluginInitializer")},
        {"NoFinalizer", LoadState::LoadFailed,
            "cannot get finalizer of plugin NoFinalizer: " + undefined("NoFinalizer", "pluginFinalizer")},
        {"NoInstancer", LoadState::LoadFailed,
            "cannot get instancer of plugin NoInstancer: " + undefined("NoInstancer", "pluginInstancer")},
        {"UndefinedSymbol", LoadState::LoadFailed,
            "cannot load plugin UndefinedSymbol from \"" + file +
                "UndefinedSymbol.so\": " + undefined("UndefinedSymbol", "definedNowhere")},
        {"NotALibrary", LoadState::LoadFailed,
            "cannot load plugin NotALibrary from \"" + file + "NotALibrary.so\": " + file +
                "NotALibrary.so: file too short\n"}};
    for(const auto& item: data) {
        EXPECT_EQ(errorsOf([&] { EXPECT_EQ(manager->load(item.name), item.state) << item.name; }),
            "PluginManager::Manager::load(): " + item.message);
        EXPECT_EQ(manager->loadState(item.name), LoadState::NotLoaded);
    }
}

TEST(PluginManager, APluginMadeByHandBelongsToNoManager) {
    struct Ghost: AbstractAnimal {
        int legs() const override { return 0; }
    } ghost;
    EXPECT_EQ(ghost.plugin(), "");
    EXPECT_EQ(ghost.metadata(), nullptr);
    EXPECT_EQ(PluginManager::AbstractPlugin::pluginSuffix(), ".so");
    EXPECT_EQ(PluginManager::AbstractPlugin::pluginMetadataSuffix(), ".conf");
    EXPECT_EQ(PluginManager::AbstractPlugin::pluginInterface(), "");
    EXPECT_TRUE(PluginManager::AbstractPlugin::pluginSearchPaths().isEmpty());
}

TEST(PluginManagerDeath, MisuseAborts) {
    EXPECT_DEATH(AnimalManager{}.instantiate("Canary"),
        "PluginManager::Manager::instantiate\\(\\): plugin Canary is not loaded\n");
    EXPECT_DEATH(PluginManager::Manager<Unprefixed>{},
        "PluginManager::Manager: either pluginDirectory has to be set or T::pluginSearchPaths\\(\\) is "
        "expected to have at least one entry\n");
    EXPECT_DEATH(
        {
            AnimalManager manager;
            manager.loadAndInstantiate("Canary").release();
        },
        "PluginManager::Manager: cannot unload plugin Canary on manager destruction: PluginManager::LoadState::Used\n");
    EXPECT_DEATH(
        {
            struct Ghost: AbstractAnimal {
                using AbstractAnimal::AbstractAnimal;
                int legs() const override { return 0; }
            };
            AnimalManager manager;
            Ghost ghost(manager, "Ghost");
        },
        "PluginManager::AbstractPlugin::AbstractPlugin\\(\\): attempt to register instance of plugin not known to "
        "given manager\n");
}
