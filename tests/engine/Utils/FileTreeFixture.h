#pragma once

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <unistd.h>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>

#include "Utils/FileTree.h"
#include "host/localization/TestFolder.h"

namespace QuorvaneEngine {

using Files = std::map<std::string, std::string>;
using Lines = std::vector<std::string>;

inline Lines linesOf(const std::string& text) {
    Lines lines;
    std::size_t begin = 0;
    while(begin < text.size()) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

inline Lines sorted(Lines lines) {
    std::sort(lines.begin(), lines.end());
    return lines;
}

/** Nothing is printed while this lives. */
class Silence {
private:
    Corrade::Utility::Debug _debug{nullptr};
    Corrade::Utility::Warning _warning{nullptr};
    Corrade::Utility::Error _error{nullptr};
};

/** A folder for the trees of a test. */
class FileTree: public testing::Test {
protected:
    /** Copies "from" to "to", both in the folder of the test. */
    bool copy() const { return copyRecursive((folder / "from").c_str(), (folder / "to").c_str()); }
    bool remove(const std::string& name) const { return deleteRecursive((folder / name).c_str()); }

    /** Contents of all files below a folder. Links that lead nowhere are not files. */
    Files filesIn(const std::string& name) const {
        Files found;
        for(const auto& [path, text]: folder.files())
            if(path.compare(0, name.size() + 1, name + '/') == 0 && path.size() > name.size() + 1)
                found[path.substr(name.size() + 1)] = text;
        return found;
    }

    void link(const std::string& target, const std::string& name) const {
        std::filesystem::create_directories(std::filesystem::path{folder / name}.parent_path());
        ASSERT_EQ(symlink(target.c_str(), (folder / name).c_str()), 0);
    }

    std::string copying(const std::string& name) const {
        return "Copying " + (folder / "from/" + name) + " to " + (folder / "to/" + name);
    }
    std::string skipped(const std::string& name, const std::string& reason) const {
        return "copyRecursive(): skipped " + (folder / "from/" + name) + ": " + reason + "\n";
    }

    const TestFolder folder;
};

}
