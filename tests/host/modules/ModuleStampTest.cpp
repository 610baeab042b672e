#include "modules/ModuleStamp.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <dlfcn.h>
#include <unistd.h>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>

#include "modules/ModuleLoader.h"

namespace QuorvaneEngine {
namespace {

namespace fs = std::filesystem;

/** A copy of a module that loads, whose metadata a test writes anew. */
class ModuleStampTest: public testing::Test {
protected:
    ModuleStampTest() {
        fs::create_directories(root);
        fs::copy_file(QUORVANE_FIXTURES "/good/Counter.so", root / "Counter.so");
        std::ifstream file{QUORVANE_FIXTURES "/good/Counter.conf"};
        metadata = {std::istreambuf_iterator<char>{file}, {}};
        write(metadata);
    }

    ~ModuleStampTest() override {
        std::error_code error;
        fs::remove_all(root, error);
    }

    void write(const std::string& text, const char* name = "Counter") const {
        std::ofstream{root / (std::string{name} + ".conf")} << text;
    }

    /** The metadata with another value of the stamp, and the value that was there. */
    std::string with(const std::string& key, const std::string& value) {
        const std::size_t begin = metadata.find("\n" + key + "=") + key.size() + 2;
        const std::size_t end = metadata.find('\n', begin);
        own = metadata.substr(begin, end - begin);
        return metadata.substr(0, begin) + value + metadata.substr(end);
    }

    std::string problem() const { return stampProblem((root / "Counter.conf").c_str()); }

    bool isInProcess(const char* name = "Counter") const {
        void* const handle = dlopen((root / (std::string{name} + ".so")).c_str(), RTLD_LAZY | RTLD_NOLOAD);
        if(handle) dlclose(handle);
        return handle;
    }

    fs::path root = fs::temp_directory_path() / ("quorvane-stamp-" + std::to_string(getpid()));
    std::string metadata;
    std::string own;
};

TEST_F(ModuleStampTest, AModuleOfThisBuildFits) {
    EXPECT_EQ(problem(), "");
    ModuleLoader loader{root.c_str()};
    EXPECT_TRUE(loader.load("Counter"));
}

struct Difference {
    const char* key;
    const char* value;
    const char* before;
    const char* between;
};

TEST_F(ModuleStampTest, EachDifferenceIsSaidWithBothValues) {
    const Difference cases[]{
        {"compiler", "GNU 99", "it was built with GNU 99", ", this editor with "},
        {"imgui", "1.80", "it was built for Dear ImGui 1.80", ", this editor for "},
        {"imguiConfiguration", "docking", "its Dear ImGui is configured with docking", ", this editor's with "},
        {"corrade", "other ones", "its Corrade and Magnum are the other ones", ", this editor's the "},
        {"compiler", "", "it was built with (nothing)", ", this editor with "},
    };
    for(const Difference& difference: cases) {
        write(with(difference.key, difference.value));
        EXPECT_EQ(problem(), difference.before + std::string{difference.between} + own);
        EXPECT_FALSE(own.empty());
    }
}

TEST_F(ModuleStampTest, DifferencesAreSaidTogether) {
    metadata = with("compiler", "GNU 99");
    const std::string compiler = own;
    write(with("imgui", "1.80"));
    EXPECT_EQ(problem(),
        "it was built with GNU 99, this editor with " + compiler +
            "; it was built for Dear ImGui 1.80, this editor for " + own);
}

TEST_F(ModuleStampTest, MetadataWithoutAStampAreSaid) {
    const char* const missing =
        "its metadata do not say what it was built with, as they do when it is built with quorvane_add_view()";
    write("[metadata]\ntitle=Counter\n");
    EXPECT_EQ(problem(), missing);
    fs::remove(root / "Counter.conf");
    EXPECT_EQ(problem(), missing);
}

TEST_F(ModuleStampTest, AModuleWithAnotherStampIsRefusedInWordsAndNotMapped) {
    write(with("compiler", "GNU 99"));
    std::ostringstream out;
    const Corrade::Utility::Error redirect{&out};
    ModuleLoader loader{root.c_str()};
    EXPECT_FALSE(loader.load("Counter"));
    const std::string message =
        "ModuleLoader::load(): Counter is not loaded: it was built with GNU 99, this editor with " + own + ".";
    EXPECT_EQ(out.str(), message + "\n");
    ASSERT_EQ(loader.messages().size(), 1u);
    EXPECT_EQ(loader.messages()[0], message.c_str());
    EXPECT_FALSE(isInProcess());
}

/* A library that tells when anything of it runs, even before the manager asks it for its version. */
TEST_F(ModuleStampTest, NothingOfARefusedModuleRuns) {
    fs::remove(root / "Counter.so");
    fs::copy_file(QUORVANE_FIXTURES "/shouting/Shouting.so", root / "Shouting.so");
    write(with("imgui", "1.80"), "Shouting");
    unsetenv("QUORVANE_SHOUTED");
    std::ostringstream out;
    const Corrade::Utility::Error redirect{&out};
    ModuleLoader loader{root.c_str()};
    EXPECT_FALSE(loader.load("Shouting"));
    EXPECT_EQ(getenv("QUORVANE_SHOUTED"), nullptr);
    EXPECT_FALSE(isInProcess("Shouting"));
    write(metadata, "Shouting");
    loader.load("Shouting");
    EXPECT_NE(getenv("QUORVANE_SHOUTED"), nullptr);
}

TEST_F(ModuleStampTest, AModuleIsRefusedForTheStampOfOneThatItNeeds) {
    fs::copy_file(root / "Counter.so", root / "Needed.so");
    write("depends=Needed\n" + metadata);
    write(with("compiler", "GNU 99"), "Needed");
    std::ostringstream out;
    const Corrade::Utility::Error redirect{&out};
    ModuleLoader loader{root.c_str()};
    EXPECT_FALSE(loader.load("Counter"));
    EXPECT_EQ(out.str(),
        "ModuleLoader::load(): Needed is not loaded: it was built with GNU 99, this editor with " + own + ".\n");
    EXPECT_FALSE(isInProcess());
    EXPECT_FALSE(isInProcess("Needed"));
}

TEST_F(ModuleStampTest, AReloadReadsTheStampAnew) {
    std::ostringstream out;
    const Corrade::Utility::Error redirect{&out};
    ModuleLoader loader{root.c_str()};
    ASSERT_TRUE(loader.load("Counter"));
    write(with("compiler", "GNU 99"));
    EXPECT_FALSE(loader.reload("Counter"));
    EXPECT_FALSE(isInProcess());
    write(metadata);
    EXPECT_TRUE(loader.load("Counter"));
}

TEST_F(ModuleStampTest, TheFrameworkIsAsTheMetadataSayAndTheFirstWhereTheySayNothing) {
    const std::string file = (root / "Counter.conf").string();
    EXPECT_EQ(moduleFramework(file.c_str()), 2);
    write(with("framework", "3"));
    EXPECT_EQ(moduleFramework(file.c_str()), 3);
    EXPECT_EQ(problem(), "");
    for(const char* const value: {"", "0", "-7", "new"}) {
        write(with("framework", value));
        EXPECT_EQ(moduleFramework(file.c_str()), 1) << value;
    }
    write("[metadata]\ntitle=Counter\n");
    EXPECT_EQ(moduleFramework(file.c_str()), 1);
    fs::remove(file);
    EXPECT_EQ(moduleFramework(file.c_str()), 1);
}

/* The file may be another one by then. */
TEST_F(ModuleStampTest, TheLoaderKnowsTheFrameworkOfTheLibraryThatItHasLoaded) {
    ModuleLoader loader{root.c_str()};
    EXPECT_EQ(loader.framework("Counter"), 0);
    ASSERT_TRUE(loader.load("Counter"));
    write(with("framework", "3"));
    EXPECT_EQ(loader.framework("Counter"), 2);
    loader.unload("Counter");
    ASSERT_TRUE(loader.load("Counter"));
    EXPECT_EQ(loader.framework("Counter"), 3);
    loader.unload("Counter");
    EXPECT_EQ(loader.framework("Counter"), 0);
    EXPECT_EQ(loader.framework("Nobody"), 0);
}

}
}
