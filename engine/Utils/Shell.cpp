#include "Utils/Shell.h"

#include <unistd.h>

#include <Corrade/Containers/Array.h>
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
    Utils::StringWriter lines{environment.size()};
    for(const StringView line: environment.split('\n')) {
        if(!line.contains('=')) continue;
        lines.append(line);
        lines.append("\n");
    }
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
