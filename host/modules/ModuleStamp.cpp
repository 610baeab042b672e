#include "modules/ModuleStamp.h"

#include <algorithm>
#include <cstdlib>
#include <string>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StaticArray.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/Configuration.h>

#include "OwnStamp.h"

namespace QuorvaneEngine {

namespace {

namespace Utility = Corrade::Utility;

struct Line {
    const char* key;
    const char* theirs;
    const char* ours;
};

constexpr Line Lines[]{
    {"compiler", "it was built with ", ", this editor with "},
    {"imgui", "it was built for Dear ImGui ", ", this editor for "},
    {"imguiConfiguration", "its Dear ImGui is configured with ", ", this editor's with "},
    {"corrade", "its Corrade and Magnum are the ", ", this editor's the "},
};

/** What this program was built with, under a key. */
Containers::StringView own(const Containers::StringView key) {
    for(Containers::StringView line: Containers::StringView{OwnStamp}.splitWithoutEmptyParts('\n')) {
        const auto parts = line.partition('=');
        if(parts[0] == key) return parts[2];
    }
    return {};
}

}

Containers::String stampProblem(const Containers::StringView metadataFile) {
    const Utility::Configuration metadata{metadataFile, Utility::Configuration::Flag::ReadOnly};
    const Utility::ConfigurationGroup* const stamp = metadata.group("stamp");
    if(!stamp)
        return "its metadata do not say what it was built with, as they do when it is built with quorvane_add_view()";
    Containers::String problems;
    for(const Line& line: Lines) {
        const std::string told = stamp->value(line.key);
        const Containers::StringView theirs = told;
        const Containers::StringView ours = own(line.key);
        if(theirs == ours) continue;
        if(!problems.isEmpty()) problems = problems + "; ";
        problems = problems + line.theirs + (told.empty() ? "(nothing)" : theirs) + line.ours + ours;
    }
    return problems;
}

Int moduleFramework(const Containers::StringView metadataFile) {
    const Utility::Configuration metadata{metadataFile, Utility::Configuration::Flag::ReadOnly};
    const Utility::ConfigurationGroup* const stamp = metadata.group("stamp");
    return stamp ? std::max(std::atoi(stamp->value("framework").c_str()), 1) : 1;
}

}
