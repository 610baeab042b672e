#include "ChildProgram.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <linux/perf_event.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

int countInstructions(const pid_t process) {
    perf_event_attr attributes{};
    attributes.type = PERF_TYPE_HARDWARE;
    attributes.size = sizeof(attributes);
    attributes.config = PERF_COUNT_HW_INSTRUCTIONS;
    attributes.exclude_kernel = 1;
    attributes.exclude_hv = 1;
    attributes.inherit = 1;
    attributes.disabled = 1;
    attributes.enable_on_exec = 1;
    return int(syscall(SYS_perf_event_open, &attributes, process, -1, -1, 0));
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for(std::string& text: texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

}

ChildProgram::ChildProgram(const std::vector<std::string>& command, const std::vector<std::string>& environment) {
    std::vector<std::string> words = command;
    const std::vector<char*> arguments = pointersTo(words);
    std::vector<std::string> variables = environment;
    int gate[2];
    if(pipe(gate)) return;
    _process = fork();
    if(_process == 0) {
        // The counter is there before the program is.
        char ready = 0;
        close(gate[1]);
        if(read(gate[0], &ready, 1) != 0) _exit(127);
        close(gate[0]);
        // What it says is no measure.
        if(!std::freopen("/dev/null", "w", stdout)) _exit(127);
        for(std::string& variable: variables) putenv(variable.data());
        execv(arguments[0], arguments.data());
        _exit(127);
    }
    close(gate[0]);
    if(_process > 0) _counter = countInstructions(_process);
    close(gate[1]);
}

ChildProgram::~ChildProgram() {
    if(_counter >= 0) close(_counter);
    if(_process <= 0) return;
    kill(_process, SIGKILL);
    waitpid(_process, nullptr, 0);
}

bool ChildProgram::wait() {
    int status = -1;
    if(_process <= 0 || waitpid(_process, &status, 0) != _process) return false;
    _process = -1;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

double ChildProgram::instructions() const {
    std::uint64_t count = 0;
    return _counter >= 0 && read(_counter, &count, sizeof(count)) == sizeof(count) ? double(count) : 0.0;
}

double ChildProgram::processorSeconds() const {
    std::ifstream file{"/proc/" + std::to_string(_process) + "/stat"};
    std::string line;
    if(_process <= 0 || !std::getline(file, line)) return -1.0;
    // The name of the program, which may hold anything, ends with the last parenthesis; two fields further there are times.
    std::istringstream fields{line.substr(line.rfind(')') + 1)};
    std::string state;
    fields >> state;
    if(state == "Z") return -1.0;
    long long skipped = 0;
    for(int i = 0; i != 10; ++i) fields >> skipped;
    double user = 0.0;
    double system = 0.0;
    fields >> user >> system;
    return (user + system) / double(sysconf(_SC_CLK_TCK));
}
