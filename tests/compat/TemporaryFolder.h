#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

#include <Corrade/Containers/String.h>

/** An empty folder that is gone, with all that is in it, at the end of the test. */
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "compat-XXXXXX";
        _path = mkdtemp(pattern.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(_path); }

    /** The folder, or a path in it. */
    Corrade::Containers::String operator()(const std::string& name = {}) const {
        return Corrade::Containers::String{(name.empty() ? _path : _path + "/" + name).c_str()};
    }

private:
    std::string _path;
};
