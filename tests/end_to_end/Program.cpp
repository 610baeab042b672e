#include "Program.h"

#include <array>
#include <cstdlib>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

namespace QuorvaneEngine::Test {

namespace {

/** A pipe whose reading end is ours. */
class Pipe {
public:
    Pipe() {
        if(pipe(_ends.data())) std::abort();
    }
    ~Pipe() { close(_ends[0]); }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    /** In the child: takes the place of a file descriptor. */
    void become(int descriptor) { dup2(_ends[1], descriptor); }

    /** In the parent: everything that comes, until the child closes its end. */
    std::string read() {
        close(_ends[1]);
        std::string text;
        std::array<char, 4096> buffer;
        for(ssize_t size; (size = ::read(_ends[0], buffer.data(), buffer.size())) > 0;)
            text.append(buffer.data(), size);
        return text;
    }

private:
    std::array<int, 2> _ends;
};

}

void becomeProgram(
    const std::vector<std::string>& command, const std::string& folder, const std::vector<std::string>& environment) {
    for(const std::string& variable: environment) {
        const std::size_t equals = variable.find('=');
        if(equals == std::string::npos) unsetenv(variable.c_str());
        else setenv(variable.substr(0, equals).c_str(), variable.substr(equals + 1).c_str(), 1);
    }
    std::vector<char*> arguments;
    for(const std::string& argument: command) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    if(!chdir(folder.c_str())) execv(arguments[0], arguments.data());
    _exit(127);
}

ProgramResult runProgram(
    const std::vector<std::string>& command, const std::string& folder, const std::vector<std::string>& environment) {
    ProgramResult result{};
    Pipe out;
    Pipe error;
    const pid_t child = fork();
    if(child == 0) {
        out.become(STDOUT_FILENO);
        error.become(STDERR_FILENO);
        becomeProgram(command, folder, environment);
    }
    std::thread reader{[&] { result.error = error.read(); }};
    result.out = out.read();
    reader.join();
    int status = 0;
    waitpid(child, &status, 0);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

}
