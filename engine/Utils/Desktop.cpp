#include "Utils/Desktop.h"

#include <cstdlib>

#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "Utils/StringWriter.h"

namespace QuorvaneEngine {

using namespace Corrade::Containers::Literals;
using Corrade::Containers::Optional;
using Corrade::Containers::String;
using Corrade::Containers::StringView;
namespace Path = Corrade::Utility::Path;

namespace {

#ifdef __APPLE__
constexpr StringView Opener = "open"_s;
#else
constexpr StringView Opener = "xdg-open"_s;
#endif

/** Where programs keep data of the user; empty without a home. */
String dataFolder() {
#ifndef __APPLE__
    const char* const folder = std::getenv("XDG_DATA_HOME");
    if(folder && StringView{folder}.hasPrefix('/')) return folder;
#endif
    const Optional<String> home = Path::homeDirectory();
    if(!home || home->isEmpty()) return {};
#ifdef __APPLE__
    return Path::join({*home, "Library", "Application Support"});
#else
    return Path::join({*home, ".local", "share"});
#endif
}

void run(const String& command) {
    // Nobody wants to know how it went.
    [[maybe_unused]] const int status = std::system(command.data());
}

}

String appDirectory() {
    const String folder = dataFolder();
    return folder.isEmpty() ? String{} : String{Path::fromNativeSeparators(Path::join(folder, "QuorvaneEngine"))};
}

void openBrowser(const StringView url) { run(Corrade::Utility::format("{} {}", Opener, url)); }

void openWithSystemFilebrowser(const StringView path) { run(Corrade::Utility::format("{} \"{}\"", Opener, path)); }

void openWithSystemDefault(const StringView path) { run(Corrade::Utility::format("{} \"{}\"", Opener, path)); }

String escapedForDoubleQuotes(const StringView text) {
    Utils::StringWriter escaped{text.size() + 1};
    for(const char& character: text) {
        if("\"$`\\"_s.contains(character)) escaped.append("\\"_s);
        escaped.append(StringView{&character, 1});
    }
    return escaped.text();
}

}
