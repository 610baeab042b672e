#include "batch/Terminal.h"

#include <clocale>
#include <cstdlib>
#include <string_view>

#include <langinfo.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace QuorvaneEngine {

namespace {

bool isSet(const char* const variable) {
    const char* const value = std::getenv(variable);
    return value && *value;
}

/** Whether the user's locale writes UTF-8. That of the process stays what it is: messages do not depend on it. */
bool isUtf8Locale() {
    const locale_t locale = newlocale(LC_CTYPE_MASK, "", locale_t{});
    if(!locale) return false;
    const bool isUtf8 = std::string_view{nl_langinfo_l(CODESET, locale)} == "UTF-8";
    freelocale(locale);
    return isUtf8;
}

}

Terminal Terminal::of(const int descriptor) {
    Terminal terminal;
    terminal.isUtf8 = isUtf8Locale();
    if(!isatty(descriptor)) return terminal;
    terminal.isTerminal = true;
    constexpr UnsignedInt UsualWidth = 80;
    winsize size{};
    terminal.width = ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col ? size.ws_col : UsualWidth;
    const char* const kind = std::getenv("TERM");
    terminal.hasColors = !isSet("NO_COLOR") && kind && std::string_view{kind} != "dumb";
    return terminal;
}

}
