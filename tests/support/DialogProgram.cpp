#include "support/DialogProgram.h"

#include <cstdlib>
#include <fstream>

#include <gtest/gtest.h>

namespace QuorvaneEngine::Test {

namespace fs = std::filesystem;

DialogProgram::DialogProgram(): _path{std::getenv("PATH")} {
    std::string pattern = (fs::temp_directory_path() / "quorvane-view-XXXXXX").string();
    EXPECT_TRUE(mkdtemp(pattern.data()));
    _folder = pattern;
    fs::create_directories(_folder / "bin");
    const fs::path program = _folder / "bin/zenity";
    std::ofstream{program} << "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" << (_folder / "arguments").string()
                           << "'\nexec cat '" << (_folder / "answer").string() << "'\n";
    fs::permissions(program, fs::perms::owner_all);
    setenv("PATH", ((_folder / "bin").string() + ":" + _path).c_str(), 1);
    setenv("XDG_SESSION_DESKTOP", "gnome", 1);
}

DialogProgram::~DialogProgram() {
    setenv("PATH", _path.c_str(), 1);
    fs::remove_all(_folder);
}

void DialogProgram::choose(const std::string& path) { std::ofstream{_folder / "answer"} << path << "\n"; }

void DialogProgram::cancel() { fs::remove(_folder / "answer"); }

std::vector<std::string> DialogProgram::takeArguments() {
    std::vector<std::string> arguments;
    std::ifstream file{_folder / "arguments"};
    for(std::string line; std::getline(file, line);) arguments.push_back(line);
    fs::remove(_folder / "arguments");
    return arguments;
}

}
