#include "app/WindowTitle.h"

#include <string>
#include <string_view>
#include <utility>

namespace QuorvaneEngine {

bool WindowTitle::update(const Containers::StringView folder, const bool isUnsaved, const bool isReadOnly) {
    if(folder == _folder && isUnsaved == _isUnsaved && isReadOnly == _isReadOnly) return false;
    _folder = Containers::String{folder};
    _isUnsaved = isUnsaved;
    _isReadOnly = isReadOnly;
    std::string title;
    if(!folder.isEmpty()) {
        const std::string_view path{folder.data(), folder.size()};
        if(isUnsaved) title += "* ";
        title += path.substr(path.rfind('/') + 1);
        if(isReadOnly) title += " (read-only)";
        title += " - ";
    }
    title += "Quorvane";
    Containers::String text{title.data(), title.size()};
    const bool isOther = text != _text;
    _text = std::move(text);
    return isOther;
}

}
