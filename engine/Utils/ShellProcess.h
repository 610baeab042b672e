#pragma once

#include <sys/types.h>

#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/String.h>

namespace QuorvaneEngine {

/** A /bin/sh that runs beside this process, its standard output in a pipe.

    Of the pipes, the shell and other children of this process get nothing but the shell's own ends, as its standard streams. What else
    the process has open, and does not close at exec, the shell inherits. */
class ShellProcess {
public:
    /** Runs a command, with the standard input and error output of this process. A command ends at its first zero byte.
        @return nothing where the shell could not be started */
    static Corrade::Containers::Optional<ShellProcess> run(const char* command);

    /** Lets a shell read its commands from a pipe. Its error output goes where its standard output goes.
        @return nothing where the shell could not be started */
    static Corrade::Containers::Optional<ShellProcess> open();

    ShellProcess(ShellProcess&& other) noexcept;
    ShellProcess& operator=(ShellProcess&& other) noexcept;

    /** Closes the pipes and waits for the shell, which would otherwise stay as a zombie. */
    ~ShellProcess();

    /** Reads all that the shell prints until nobody is left who could. Meanwhile a shell from @ref open() gets its script, and then the
        end of it; what the shell does not want to read is dropped. Call it once.
        @param script   up to the first zero byte; of no use to a shell from @ref run() */
    Corrade::Containers::String communicate(const char* script = "");

    /** Waits for the end of the shell. Call it once.
        @return its raw wait status, -1 where the system keeps none because the process ignores `SIGCHLD` */
    int wait();

private:
    explicit ShellProcess() = default;

    static Corrade::Containers::Optional<ShellProcess> start(const char* const* arguments, bool readsScript);

    void writeSome(const char*& script, std::size_t& left);
    void closeInput();

    pid_t _process = -1;
    int _input = -1;
    int _output = -1;
};

}
