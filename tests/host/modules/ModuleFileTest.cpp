#include "modules/ModuleFile.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <unistd.h>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>

#include "modules/ModuleLoader.h"

namespace QuorvaneEngine {
namespace {

namespace fs = std::filesystem;

/** A copy of a module that loads, whose library a test cuts. */
class ModuleFileTest: public testing::Test {
protected:
    ModuleFileTest() {
        fs::create_directories(root);
        for(const char* const file: {"Counter.so", "Counter.conf"})
            fs::copy_file(fs::path{QUORVANE_FIXTURES "/good"} / file, root / file);
    }

    ~ModuleFileTest() override {
        std::error_code error;
        fs::remove_all(root, error);
    }

    /** As a copy does that comes to no end, beside the library that is mapped. */
    void replaceByPart(const std::uintmax_t length) const {
        fs::copy_file(QUORVANE_FIXTURES "/good/Counter.so", root / "part");
        fs::resize_file(root / "part", length);
        fs::rename(root / "part", library);
    }

    std::string problem() const { return std::string{fileProblem(library.c_str())}; }

    std::string refusal(const std::uintmax_t length) const {
        return "ModuleLoader::load(): Counter is not loaded: its library has " + std::to_string(length) +
            " bytes of at least " + std::to_string(whole) +
            ": it is still being written, or not all of it was copied.\n";
    }

    fs::path root = fs::temp_directory_path() / ("quorvane-module-file-" + std::to_string(getpid()));
    fs::path library = root / "Counter.so";
    std::uintmax_t whole = fs::file_size(QUORVANE_FIXTURES "/good/Counter.so");
};

TEST_F(ModuleFileTest, AWholeLibraryHasNoProblem) { EXPECT_EQ(problem(), ""); }

TEST_F(ModuleFileTest, ALibraryThatIsCutAnywhereHasOne) {
    const std::uintmax_t step = std::max<std::uintmax_t>(whole / 1000, 1);
    int cuts = 0;
    for(std::uintmax_t length = whole - 1; length >= 4; ++cuts) {
        fs::resize_file(library, length);
        ASSERT_NE(problem(), "") << "cut to " << length << " of " << whole << " bytes";
        // Every length near both ends, where the header and the tables are.
        const bool isNear = length <= 200 + step || length + 200 > whole;
        length -= isNear ? 1 : step;
    }
    EXPECT_GT(cuts, 1000);
}

TEST_F(ModuleFileTest, WhatIsNoLibraryIsLeftToTheSystem) {
    fs::resize_file(library, 3);
    EXPECT_EQ(problem(), "");
    fs::resize_file(library, 0);
    EXPECT_EQ(problem(), "");
    std::ofstream{library} << "a text that is longer than the header of a library, which has 64 bytes on this machine";
    EXPECT_EQ(problem(), "");
    fs::remove(library);
    EXPECT_EQ(problem(), "");
    fs::create_directory(library);
    EXPECT_EQ(problem(), "");
}

TEST_F(ModuleFileTest, NumbersBeyondAllFilesAreTooMany) {
    std::fstream file{library, std::ios::in | std::ios::out | std::ios::binary};
    // Where the section headers begin.
    file.seekp(40);
    const std::uint64_t offset = ~std::uint64_t{};
    file.write(reinterpret_cast<const char*>(&offset), sizeof(offset));
    file.close();
    EXPECT_EQ(
        problem().find("its library has " + std::to_string(whole) + " bytes of at least 18446744073709551615:"), 0u)
        << problem();
}

TEST_F(ModuleFileTest, ACutModuleIsRefusedAtTheStart) {
    for(const std::uintmax_t length: {std::uintmax_t{1000}, whole / 4, whole / 2, whole - 1}) {
        replaceByPart(length);
        std::ostringstream out;
        const Corrade::Utility::Error redirect{&out};
        ModuleLoader loader{root.c_str()};
        EXPECT_FALSE(loader.load("Counter"));
        EXPECT_EQ(out.str(), refusal(length));
    }
}

TEST_F(ModuleFileTest, ACutModuleIsRefusedAtAReloadAndTakenOnceItIsWhole) {
    ModuleLoader loader{root.c_str()};
    ASSERT_TRUE(loader.load("Counter"));
    for(const std::uintmax_t length: {std::uintmax_t{1000}, whole / 4, whole / 2, whole - 1}) {
        replaceByPart(length);
        std::ostringstream out;
        const Corrade::Utility::Error redirect{&out};
        EXPECT_FALSE(loader.reload("Counter"));
        EXPECT_EQ(out.str(), refusal(length));
    }
    replaceByPart(whole);
    EXPECT_TRUE(loader.reload("Counter"));
}

TEST(ModuleFile, SymbolsAreReadAsTheirAuthorsWroteThem) {
    EXPECT_EQ(withReadableSymbols("a.so: undefined symbol: _ZN14QuorvaneEngine12alsoNotThereEv"),
        "a.so: undefined symbol: QuorvaneEngine::alsoNotThere()");
    EXPECT_EQ(withReadableSymbols("/_Z/my_Zoo.so: undefined symbol: plain_c, _Zz\n"),
        "/_Z/my_Zoo.so: undefined symbol: plain_c, _Zz\n");
    EXPECT_EQ(withReadableSymbols(""), "");
}

}
}
