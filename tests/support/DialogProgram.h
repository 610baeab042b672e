#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace QuorvaneEngine::Test {

/** Stands in for the desktop's program that shows file dialogs: the first zenity on PATH while the object lives. It keeps what it
    was called with and answers as it was told. Owns a folder for whatever else a test writes. */
class DialogProgram {
public:
    DialogProgram();
    ~DialogProgram();

    DialogProgram(const DialogProgram&) = delete;
    DialogProgram& operator=(const DialogProgram&) = delete;

    /** What the user chooses from now on. */
    void choose(const std::string& path);

    /** From now on the user cancels, which is so at the beginning, too. */
    void cancel();

    /** What the program was called with last; empty when it has not been called since the last question. */
    std::vector<std::string> takeArguments();

    const std::filesystem::path& folder() const { return _folder; }

private:
    std::filesystem::path _folder;
    std::string _path;
};

}
