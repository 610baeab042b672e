#pragma once

#include <ostream>
#include <string>

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/Debug.h>

/** What Debug writes for a value, without the newline. */
template <class T> std::string printed(const T& value) {
    Corrade::Containers::String out;
    Corrade::Utility::Debug{&out, Corrade::Utility::Debug::Flag::NoNewlineAtTheEnd} << value;
    return std::string(out.data(), out.size());
}

namespace Corrade::Containers {

// So that a failed comparison shows the text.
inline void PrintTo(StringView value, std::ostream* out) {
    *out << '"' << std::string(value.data(), value.size()) << '"';
}
inline void PrintTo(const String& value, std::ostream* out) { PrintTo(StringView{value}, out); }

} // namespace Corrade::Containers
