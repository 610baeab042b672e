#include "NodeProcess.h"

#include <csignal>
#include <cstdlib>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

NodeProcess::NodeProcess(const std::string& script) {
    int commands[2], answers[2];
    if(pipe(commands)) return;
    if(pipe(answers)) {
        close(commands[0]);
        close(commands[1]);
        return;
    }
    // A process that is gone is noticed by its answers.
    std::signal(SIGPIPE, SIG_IGN);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, commands[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, answers[1], STDOUT_FILENO);
    for(const int unneeded: {commands[0], commands[1], answers[0], answers[1]})
        posix_spawn_file_actions_addclose(&actions, unneeded);
    std::string name = "node", collects = "--expose-gc", path = script;
    char* const arguments[]{name.data(), collects.data(), path.data(), nullptr};
    if(posix_spawnp(&_process, "node", &actions, nullptr, arguments, environ)) _process = -1;
    posix_spawn_file_actions_destroy(&actions);

    close(commands[0]);
    close(answers[1]);
    _commands = fdopen(commands[1], "w");
    _answers = fdopen(answers[0], "r");
    // Programs that could not be started show by the end of the answers.
    if(_process == -1 || run({"start"}) < 0.0) {
        std::fclose(_answers);
        _answers = nullptr;
    }
}

NodeProcess::~NodeProcess() {
    if(_commands) std::fclose(_commands);
    if(_answers) std::fclose(_answers);
    if(_process != -1) waitpid(_process, nullptr, 0);
}

double NodeProcess::run(const std::initializer_list<std::string> command) {
    std::string line;
    for(const std::string& word: command) line += (line.empty() ? "" : "\t") + word;
    line += '\n';
    std::fputs(line.c_str(), _commands);
    std::fflush(_commands);
    char answer[64];
    return std::fgets(answer, sizeof(answer), _answers) ? std::atof(answer) / 1000.0 : -1.0;
}
