#pragma once

#include <cstdio>
#include <initializer_list>
#include <string>

#include <sys/types.h>

/** A running Node that does what it is told, and takes the time itself: how long it takes to start does not count. */
class NodeProcess {
public:
    /** Starts it with a script; see @ref isRunning(). */
    explicit NodeProcess(const std::string& script);
    ~NodeProcess();
    NodeProcess(const NodeProcess&) = delete;
    NodeProcess& operator=(const NodeProcess&) = delete;

    /** False where there is no Node, or it ended. */
    bool isRunning() const { return _answers; }

    /** Does something and waits for the end of it.
        @return seconds, negative where it did not answer */
    double run(std::initializer_list<std::string> command);

private:
    pid_t _process = -1;
    std::FILE* _commands = nullptr;
    std::FILE* _answers = nullptr;
};
