#include "app/NewProject.h"

#include <cerrno>

#include <Corrade/Containers/Array.h>
#include <Corrade/Utility/Format.h>

#include "app/ProjectPath.h"
#include "document/FileSet.h"
#include "document/FileSystem.h"

namespace QuorvaneEngine::NewProject {

namespace {

using Corrade::Utility::format;

constexpr const char* File = "project.json";

/** As saving lays it out, so that the first change is the only one that version control sees. */
constexpr const char* Content = R"({
  "languages": {
    "en": {
      "isDefault": true
    }
  }
}
)";

/** What keeps a project from being begun in a folder that is there. */
Outcome look(const Containers::StringView folder, const Containers::Array<Containers::String>& names,
    Containers::String& problem) {
    const Containers::String* other = nullptr;
    for(const Containers::String& name: names) {
        if(name == File) {
            problem = format("{}: there is a project in this folder already", folder);
            return Outcome::HasProject;
        }
        if(!other && !name.hasPrefix('.')) other = &name;
    }
    if(!other) return Outcome::Written;
    problem = format("{}: the folder is not empty, \"{}\" is in it", folder, *other);
    return Outcome::Refused;
}

}

Outcome write(FileSystem& files, const Containers::StringView folder, Containers::String& problem) {
    problem = pathProblem(folder);
    if(!problem.isEmpty()) return Outcome::Refused;
    Containers::Array<Containers::String> names;
    int error = files.listFolder(folder, names);
    const bool isMade = error == ENOENT;
    if(isMade) error = files.makeFolder(folder);
    if(error) {
        problem = format("{}: {}", folder, systemReason(isMade ? "made" : "read", error));
        return Outcome::Refused;
    }
    const Outcome outcome = look(folder, names, problem);
    if(outcome != Outcome::Written) return outcome;

    FileSet set{files, folder};
    set.write(File, Content);
    FileError failure;
    if(set.commit(failure)) return Outcome::Written;
    if(isMade) files.removeFolder(folder);
    problem = format("{}: {}", failure.path, failure.reason);
    return Outcome::Refused;
}

}
