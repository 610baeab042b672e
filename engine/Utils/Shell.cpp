#include "Utils/Shell.h"

#include <unistd.h>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StaticArray.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Format.h>

#include "Utils/ShellProcess.h"
#include "Utils/StringWriter.h"

namespace QuorvaneEngine {

using namespace Corrade::Containers::Literals;
using Corrade::Containers::Optional;
using Corrade::Containers::String;
using Corrade::Containers::StringView;

namespace {

constexpr int NotStarted = 1;

int capture(Optional<ShellProcess> shell, const String& script, String& output) {
    if(!shell) return NotStarted;
    output = shell->communicate(script.data());
    return shell->wait();
}

}

int runCommandCapture(const StringView command, String& output) {
    const String redirected = command + " 2>&1"_s;
    return capture(ShellProcess::run(redirected.data()), {}, output);
}

int getShellEnvironment(String& environment) {
    if(const int status = runCommandCapture("$SHELL --login -c export -p", environment)) return status;
    // With room for the line end that the last line may lack, and for the zero byte, it never grows.
    Utils::StringWriter lines{environment.size() + 2};
    for(StringView rest = environment; !rest.isEmpty();) {
        const auto parts = rest.partition('\n');
        if(parts[0].contains('=')) {
            lines.append(parts[0]);
            lines.append("\n");
        }
        rest = parts[2];
    }
    // The text is not kept while its successor is made.
    environment = {};
    environment = lines.text();
    return 0;
}

int runShellCommandCapture(const StringView command, const StringView preamble, String& output) {
    return capture(ShellProcess::open(), "\n"_s.join({preamble, command, "exit $?\n"}), output);
}

int runShellCommandCapture(
    const StringView command, const StringView environment, const StringView path, String& output) {
    return runShellCommandCapture(command, Corrade::Utility::format("{}\nPATH={}:$PATH", environment, path), output);
}

int changeDirectory(const StringView path) { return chdir(String::nullTerminatedView(path).data()); }

}
