#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <sys/types.h>

/* A program that runs beside the benchmark. It ends with the object. */
class ChildProgram {
public:
    /* @param command       the program and its arguments
       @param environment   beside that of the benchmark, as "NAME=value" */
    ChildProgram(const std::vector<std::string>& command, const std::vector<std::string>& environment);
    ~ChildProgram();
    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;

    /* Waits for the end.
       @return whether it ended by itself, with 0 */
    bool wait();

    /* Instructions of all its threads until now, less the system's; 0 where the processor's counter is not handed out. */
    double instructions() const;

    /* Seconds for which all its threads have had a processor, negative where it has ended. */
    double processorSeconds() const;

private:
    pid_t _process = -1;
    int _counter = -1;
};
