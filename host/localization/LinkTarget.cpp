#include "LinkTarget.h"

#include <filesystem>
#include <string>
#include <system_error>

namespace QuorvaneEngine {

Containers::String linkTarget(const Containers::StringView path) {
    std::error_code error;
    const std::string target = std::filesystem::canonical(std::string{path.data(), path.size()}, error).string();
    return error ? Containers::String{} : Containers::String{target.data(), target.size()};
}

Containers::String linkTargetBelow(const Containers::StringView folder, const Containers::StringView file) {
    const Containers::String base = linkTarget(folder);
    const Containers::String target = linkTarget(file);
    if(base.isEmpty() || !target.hasPrefix(base)) return {};
    const Containers::StringView below = target.exceptPrefix(base.size());
    if(base.hasSuffix('/')) return below;
    return below.hasPrefix('/') ? below.exceptPrefix(1) : Containers::StringView{};
}

}
