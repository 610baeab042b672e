#include "LockNote.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <unistd.h>

#include "FileSystem.h"
#include "PrintableText.h"
#include "TextLines.h"

namespace QuorvaneEngine::LockNote {

namespace {

constexpr std::string_view Format{"quorvane-lock 1"};

/** Bytes; nobody has names that need more. */
constexpr std::size_t LargestFile = 4096;

Containers::String string(const std::string_view text) { return {text.data(), text.size()}; }

Containers::String fileOf(const Containers::StringView folder) {
    return string(std::string{folder.data(), folder.size()} + "/.editor/lock");
}

bool isElsewhere(FileSystem& files, const Containers::StringView folder) {
    return files.isLink(string(std::string{folder.data(), folder.size()} + "/.editor"));
}

std::string hostName() {
    char name[256]{};
    return ::gethostname(name, sizeof(name) - 1) == 0 ? name : "";
}

std::string programName() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).filename().string();
}

template <class T> bool readNumber(const std::string_view text, T& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc{} && end == text.data() + text.size() && number > 0;
}

std::string shownTime(const std::time_t seconds) {
    std::tm local{};
    char text[32];
    if(!::localtime_r(&seconds, &local) || !std::strftime(text, sizeof(text), "%Y-%m-%d %H:%M", &local)) return {};
    return text;
}

}

void write(FileSystem& files, const Containers::StringView folder) {
    std::string text{Format};
    for(const std::string& line:
        {programName(), std::to_string(::getpid()), hostName(), std::to_string(std::time(nullptr))})
        text.append("\n").append(line);
    text += '\n';
    if(!isElsewhere(files, folder)) files.writeFile(fileOf(folder), string(text), {});
}

void remove(FileSystem& files, const Containers::StringView folder) {
    if(!isElsewhere(files, folder)) files.removeFile(fileOf(folder));
}

namespace {

Containers::String read(FileSystem& files, const Containers::StringView folder, const pid_t ignored) {
    Containers::String text;
    if(isElsewhere(files, folder) || files.readFile(fileOf(folder), text, LargestFile)) return {};
    const std::vector<std::string_view> lines = linesOf({text.data(), text.size()});
    pid_t process = 0;
    std::time_t since = 0;
    if(lines.size() != 5 || lines[0] != Format || !readNumber(lines[2], process) || !readNumber(lines[4], since))
        return {};
    if(lines[3] == hostName() && (process == ignored || (::kill(process, 0) && errno == ESRCH))) return {};
    const std::string time = shownTime(since);
    if(time.empty()) return {};
    std::string who{lines[1].empty() ? std::string_view{"a program"} : lines[1]};
    if(!lines[3].empty()) who.append(" on ").append(lines[3]);
    return printable(string(who.append(", process ").append(lines[2]).append(", since ").append(time)));
}

}

Containers::String read(FileSystem& files, const Containers::StringView folder) { return read(files, folder, 0); }

Containers::String readOther(FileSystem& files, const Containers::StringView folder) {
    return read(files, folder, ::getpid());
}

}
