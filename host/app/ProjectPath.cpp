#include "app/ProjectPath.h"

#include <cerrno>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "document/FileSystem.h"

namespace QuorvaneEngine {

namespace {

using Corrade::Utility::format;
namespace Path = Corrade::Utility::Path;

constexpr const char* File = "project.json";

}

Containers::String pathProblem(const Containers::StringView path) {
    if(path.isEmpty()) return "Type the path of a folder";
    return path.hasPrefix('/') ? Containers::String{} : format("{}: has to begin with \"/\" or \"~\"", path);
}

Containers::String findProject(FileSystem& files, const Containers::StringView path, Containers::String& problem) {
    problem = pathProblem(path);
    if(!problem.isEmpty()) return {};
    Containers::Array<Containers::String> names;
    const int error = files.listFolder(path, names);
    const auto parts = Path::split(path);
    if(error == ENOTDIR && parts.second() == File) return parts.first();
    if(error) problem = format("{}: {}", path, systemReason("read", error));
    else {
        for(const Containers::String& name: names)
            if(name == File) return path;
        problem = format("{}: there is no {} in this folder, so it is no project", path, File);
    }
    return {};
}

Containers::String findDroppedProject(
    FileSystem& files, const Containers::ArrayView<const Containers::String> paths, Containers::String& problem) {
    if(paths.size() == 1) return findProject(files, paths[0], problem);
    problem = format("{} files were dropped here. A project is one folder, or the file {} in it.", paths.size(), File);
    return {};
}

}
