#pragma once

#include <string>

#include <Corrade/Containers/StringView.h>

namespace Gallery {

namespace Containers = Corrade::Containers;

/** The lines between the braces of a function, as they stand in a source but without the indentation of the first. Empty where there is
    no such function, which returns nothing and stands at the beginning of a line.
    @param source   formatted as this project's are */
std::string bodyOf(Containers::StringView source, Containers::StringView function);

}
