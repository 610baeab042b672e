#include "app/DesktopOpener.h"

#include <thread>

#include <Corrade/Containers/String.h>

#include "Utils/Desktop.h"

namespace QuorvaneEngine::DesktopOpener {

namespace {

void handOver(void (*call)(Containers::StringView), Containers::StringView path) {
    // Whoever ends the editor does not want to wait for other programs.
    std::thread{[call, escaped = escapedForDoubleQuotes(path)] { call(escaped); }}.detach();
}

}

void showFolder(Containers::StringView path) { handOver(openWithSystemFilebrowser, path); }

void open(Containers::StringView path) { handOver(openWithSystemDefault, path); }

}
