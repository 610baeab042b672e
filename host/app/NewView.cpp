#include "app/NewView.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/DebugStl.h>

namespace QuorvaneEngine {

namespace {

namespace fs = std::filesystem;
using Corrade::Utility::Debug;
using Corrade::Utility::Error;

/** A file to fill in, and what it is called in the view's folder behind the view's name. */
struct Template {
    const char* file;
    const char* name;
    bool startsWithName;
};

constexpr Template Templates[]{
    {"CMakeLists.txt.in", "CMakeLists.txt", false},
    {"View.h.in", "View.h", true},
    {"View.cpp.in", "View.cpp", true},
    {"gitignore.in", ".gitignore", false},
};

constexpr const char* Keywords[]{"alignas", "alignof", "and", "and_eq", "asm", "auto", "bitand", "bitor", "bool",
    "break", "case", "catch", "char", "char16_t", "char32_t", "char8_t", "class", "co_await", "co_return", "co_yield",
    "compl", "concept", "const", "const_cast", "consteval", "constexpr", "constinit", "continue", "decltype", "default",
    "delete", "do", "double", "dynamic_cast", "else", "enum", "explicit", "export", "extern", "false", "float", "for",
    "friend", "goto", "if", "inline", "int", "long", "mutable", "namespace", "new", "noexcept", "not", "not_eq",
    "nullptr", "operator", "or", "or_eq", "private", "protected", "public", "register", "reinterpret_cast", "requires",
    "return", "short", "signed", "sizeof", "static", "static_assert", "static_cast", "struct", "switch", "template",
    "this", "thread_local", "throw", "true", "try", "typedef", "typeid", "typename", "union", "unsigned", "using",
    "virtual", "void", "volatile", "wchar_t", "while", "xor", "xor_eq"};

/** Targets that builds have without being told, so that none for a module may be called like them. */
constexpr const char* BuildTargets[]{"ALL_BUILD", "INSTALL", "PACKAGE", "RUN_TESTS", "ZERO_CHECK", "all", "clean",
    "edit_cache", "help", "install", "package", "package_source", "preinstall", "rebuild_cache", "test"};

/** Letters of a name: the names of files begin with it, and file systems have 255 bytes for them. */
constexpr std::size_t MaxNameSize = 200;

/** Letters, digits and "_" without a digit in front: of ASCII alone, since it becomes the name of files, too. */
bool isIdentifier(const std::string& name) {
    const auto isPart = [](char c) { return (c & 0x80) == 0 && (std::isalnum(c) || c == '_'); };
    return !name.empty() && !std::isdigit(name[0]) && std::all_of(name.begin(), name.end(), isPart);
}

/** Why a name is none for a view, empty when it is one. */
std::string nameProblem(const std::string& name) {
    if(!isIdentifier(name)) return "is no C++ identifier";
    if(std::find(std::begin(Keywords), std::end(Keywords), name) != std::end(Keywords)) return "is a word of C++";
    if(name[0] == '_' || name.find("__") != std::string::npos) return "is reserved by C++";
    if(std::find(std::begin(BuildTargets), std::end(BuildTargets), name) != std::end(BuildTargets))
        return "is reserved by CMake";
    if(name.size() > MaxNameSize) return "is longer than " + std::to_string(MaxNameSize) + " letters";
    return {};
}

std::string filledIn(std::string text, const std::string& name) {
    const std::pair<const char*, std::string> values[]{{"@NAME@", name}, {"@VERSION@", QUORVANE_VERSION}};
    for(const auto& [key, value]: values) {
        const std::size_t length = std::string{key}.size();
        for(std::size_t at = 0; (at = text.find(key, at)) != std::string::npos; at += value.size())
            text.replace(at, length, value);
    }
    return text;
}

bool fail(const fs::path& path, const std::string& problem) {
    Error{} << "writeNewView():" << path.string() << Error::nospace << ":" << problem;
    return false;
}

bool prepareFolder(const fs::path& folder) {
    std::error_code error;
    if(fs::exists(folder, error)) {
        if(!fs::is_directory(folder, error)) return fail(folder, "is no folder");
        if(!fs::is_empty(folder, error)) return fail(folder, error ? error.message() : "is not empty");
        return true;
    }
    fs::create_directories(folder, error);
    return error ? fail(folder, error.message()) : true;
}

/** Behind which a shell takes the text as one word. */
std::string quoted(const std::string& text) {
    const bool isPlain = std::all_of(text.begin(), text.end(), [](char c) {
        return (c & 0x80) != 0 || std::isalnum(c) || std::string{"/._-+,:@%"}.find(c) != std::string::npos;
    });
    if(isPlain && !text.empty()) return text;
    std::string out = "'";
    for(const char c: text) out += c == '\'' ? std::string{"'\\''"} : std::string{c};
    return out + "'";
}

}

bool writeNewView(const NewView& view) {
    const std::string name = view.name;
    const fs::path folder{std::string{view.folder}};
    const std::string problem = nameProblem(name);
    if(!problem.empty()) {
        Error{} << "writeNewView(): the name \"" << Error::nospace << name << Error::nospace << "\"" << problem;
        return false;
    }

    std::vector<std::pair<fs::path, std::string>> files;
    for(const Template& one: Templates) {
        const fs::path path = fs::path{std::string{view.templates}} / one.file;
        std::ifstream stream{path, std::ios::binary};
        if(!stream) return fail(path, "cannot be read; the editor is not installed as a whole");
        const std::string text{std::istreambuf_iterator<char>{stream}, {}};
        files.emplace_back(folder / ((one.startsWithName ? name : "") + one.name), filledIn(text, name));
    }
    if(!prepareFolder(folder)) return false;
    for(const auto& [path, text]: files) {
        std::ofstream stream{path, std::ios::binary};
        stream << text;
        stream.close();
        if(stream) continue;
        // A folder with half of them would be refused the next time, because it is not empty.
        std::error_code error;
        for(const auto& written: files) fs::remove(written.first, error);
        return fail(path, "cannot be written");
    }

    const std::string where = quoted(folder.string());
    const std::string program = view.program.isEmpty() ? "quorvane-editor" : quoted(view.program);
    const std::string build = quoted((folder / "build").string());
    Debug{} << "Wrote the view" << name << "to" << folder.string();
    Debug{} << "Build it:  cmake -S" << where << "-B" << build << "-DCMAKE_PREFIX_PATH=" << Debug::nospace
            << (view.prefix.isEmpty() ? std::string{"PREFIX"} : quoted(view.prefix)) << "&& cmake --build" << build;
    Debug{} << "See it:   " << program << "--more-modules" << quoted((folder / "build/modules").string()) << "PROJECT";
    if(view.prefix.isEmpty()) Debug{} << "PREFIX is the folder that the editor gets installed to.";
    return true;
}

}
