#include "ExampleCode.h"

namespace Gallery {

namespace {

constexpr std::size_t Indentation = 4;

}

std::string bodyOf(
    const Containers::StringView source, const Containers::StringView function) {
    const std::string text{source.data(), source.size()};
    const std::size_t head =
        text.find("\nvoid " + std::string{function.data(), function.size()} + '(');
    if(head == std::string::npos) return {};
    // After the arguments, which have no braces.
    const std::size_t open = text.find('{', head);
    const std::size_t headEnd = text.find('\n', head + 1);
    if(open == std::string::npos || headEnd == std::string::npos) return {};
    if(open + 1 < headEnd)
        return text.substr(open + 2, headEnd - open - std::string{"{  }"}.size());

    const std::size_t end = text.find("\n}\n", head);
    if(end == std::string::npos) return {};
    std::string body;
    for(std::size_t at = headEnd + 1; at <= end;) {
        const std::size_t lineEnd = text.find('\n', at);
        if(lineEnd - at > Indentation)
            body.append(text, at + Indentation, lineEnd - at - Indentation);
        body += '\n';
        at = lineEnd + 1;
    }
    body.pop_back();
    return body;
}

}
