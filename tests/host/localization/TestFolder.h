#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include <Corrade/Containers/StringView.h>

namespace QuorvaneEngine {

namespace Containers = Corrade::Containers;

/** An empty folder on the disk that goes with the object. */
class TestFolder {
public:
    TestFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "quorvane-XXXXXX").string();
        EXPECT_NE(mkdtemp(pattern.data()), nullptr);
        path = pattern;
    }
    ~TestFolder() {
        std::error_code error;
        std::filesystem::permissions(path, std::filesystem::perms::owner_all, error);
        std::filesystem::remove_all(path, error);
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    std::string operator/(const std::string& name) const { return path + '/' + name; }

    void write(const std::string& name, const std::string& bytes) const {
        const std::filesystem::path file = path + '/' + name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream{file, std::ios::binary} << bytes;
    }

    std::string read(const std::string& name) const {
        std::ifstream file{path + '/' + name, std::ios::binary};
        return {std::istreambuf_iterator<char>{file}, {}};
    }

    /** Contents of all files by their relative paths; folders are there with a "/" at the end. */
    std::map<std::string, std::string> files() const {
        std::map<std::string, std::string> found;
        for(const auto& entry: std::filesystem::recursive_directory_iterator{path}) {
            const std::string name = std::filesystem::relative(entry.path(), path).string();
            if(entry.is_directory()) found[name + '/'];
            else found[name] = read(name);
        }
        return found;
    }

    std::string path;
};

}
