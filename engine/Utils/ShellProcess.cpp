#include "Utils/ShellProcess.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/GrowableArray.h>

// NOLINTNEXTLINE(readability-redundant-declaration)
extern char** environ;

namespace QuorvaneEngine {

namespace {

using Corrade::Containers::Array;
using Corrade::Containers::Optional;
using Corrade::Containers::String;

constexpr std::size_t ChunkSize = 8192;

/** Calls a function of the system again for as long as a signal cuts it short. */
template <class T> auto uninterrupted(T&& call) {
    auto result = call();
    while(result == -1 && errno == EINTR) result = call();
    return result;
}

/** A file descriptor that is closed at its end. */
class Descriptor {
public:
    Descriptor() = default;
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { reset(); }

    void reset(const int descriptor = -1) {
        if(_descriptor != -1) close(_descriptor);
        _descriptor = descriptor;
    }

    int get() const { return _descriptor; }
    int release() { return std::exchange(_descriptor, -1); }

private:
    int _descriptor = -1;
};

struct Pipe {
    Descriptor reading;
    Descriptor writing;
};

/** Moves a descriptor away from the standard streams, whose places it takes where this process has closed them: the child puts its own
    ends there. */
bool moveUp(Descriptor& descriptor) {
    if(descriptor.get() > STDERR_FILENO) return true;
    descriptor.reset(fcntl(descriptor.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    return descriptor.get() != -1;
}

/** Makes a pipe that no child inherits. */
bool makePipe(Pipe& pipe) {
    int ends[2];
#ifdef __APPLE__
    if(::pipe(ends)) return false;
    for(const int end: ends) fcntl(end, F_SETFD, FD_CLOEXEC);
#else
    if(pipe2(ends, O_CLOEXEC)) return false;
#endif
    pipe.reading.reset(ends[0]);
    pipe.writing.reset(ends[1]);
    return moveUp(pipe.reading) && moveUp(pipe.writing);
}

/** What the child does with its descriptors before it becomes the shell. */
class FileActions {
public:
    FileActions() { posix_spawn_file_actions_init(&_actions); }
    ~FileActions() { posix_spawn_file_actions_destroy(&_actions); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    void put(const Descriptor& descriptor, const int stream) {
        posix_spawn_file_actions_adddup2(&_actions, descriptor.get(), stream);
    }
    const posix_spawn_file_actions_t* get() const { return &_actions; }

private:
    posix_spawn_file_actions_t _actions{};
};

/** Keeps a broken pipe from ending the process, on this thread alone, while the object lives. */
class BrokenPipeGuard {
public:
    BrokenPipeGuard() {
        sigemptyset(&_brokenPipe);
        sigaddset(&_brokenPipe, SIGPIPE);
        _wasPending = isPending();
        pthread_sigmask(SIG_BLOCK, &_brokenPipe, &_before);
    }
    ~BrokenPipeGuard() {
        int signal = 0;
        if(!_wasPending && isPending()) sigwait(&_brokenPipe, &signal);
        pthread_sigmask(SIG_SETMASK, &_before, nullptr);
    }
    BrokenPipeGuard(const BrokenPipeGuard&) = delete;
    BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;

private:
    static bool isPending() {
        sigset_t pending;
        sigpending(&pending);
        return sigismember(&pending, SIGPIPE);
    }

    sigset_t _brokenPipe{};
    sigset_t _before{};
    bool _wasPending;
};

/** Reads once.
    @return whether there may be more */
bool readSome(const int descriptor, Array<char>& text) {
    char chunk[ChunkSize];
    const ssize_t count = uninterrupted([&] { return read(descriptor, chunk, ChunkSize); });
    if(count <= 0) return false;
    Corrade::Containers::arrayAppend(text, Corrade::Containers::arrayView(chunk, std::size_t(count)));
    return true;
}

/** Hands the bytes over as they are, without a copy. */
String handOver(Array<char>&& text) {
    Corrade::Containers::arrayAppend(text, '\0');
    const std::size_t size = text.size() - 1;
    const auto deleter = text.deleter();
    return String{text.release(), size, deleter};
}

}

Optional<ShellProcess> ShellProcess::run(const char* const command) {
    const char* const arguments[]{"sh", "-c", "--", command, nullptr};
    return start(arguments, false);
}

Optional<ShellProcess> ShellProcess::open() {
    const char* const arguments[]{"/bin/sh", nullptr};
    return start(arguments, true);
}

Optional<ShellProcess> ShellProcess::start(const char* const* const arguments, const bool readsScript) {
    Pipe input;
    Pipe output;
    if((readsScript && !makePipe(input)) || !makePipe(output)) return {};
    FileActions actions;
    actions.put(output.writing, STDOUT_FILENO);
    if(readsScript) {
        actions.put(input.reading, STDIN_FILENO);
        actions.put(output.writing, STDERR_FILENO);
        // The script may be larger than the pipe, and the shell print more than its own before it reads on.
        fcntl(input.writing.get(), F_SETFL, O_NONBLOCK);
    }
    ShellProcess shell;
    if(posix_spawn(&shell._process, "/bin/sh", actions.get(), nullptr, const_cast<char* const*>(arguments), environ) !=
        0) {
        shell._process = -1;
        return {};
    }
    shell._input = input.writing.release();
    shell._output = output.reading.release();
    return Corrade::Containers::optional(std::move(shell));
}

ShellProcess::ShellProcess(ShellProcess&& other) noexcept
    : _process{std::exchange(other._process, -1)},
      _input{std::exchange(other._input, -1)},
      _output{std::exchange(other._output, -1)} {}

ShellProcess& ShellProcess::operator=(ShellProcess&& other) noexcept {
    std::swap(_process, other._process);
    std::swap(_input, other._input);
    std::swap(_output, other._output);
    return *this;
}

ShellProcess::~ShellProcess() {
    closeInput();
    if(_output != -1) close(_output);
    if(_process != -1) wait();
}

void ShellProcess::closeInput() {
    if(_input != -1) close(std::exchange(_input, -1));
}

void ShellProcess::writeSome(const char*& script, std::size_t& left) {
    const BrokenPipeGuard guard;
    const ssize_t count = uninterrupted([&] { return write(_input, script, left); });
    if(count > 0) {
        script += count;
        left -= std::size_t(count);
    }
    const bool isFull = count == -1 && errno == EAGAIN;
    if(!left || (count == -1 && !isFull)) closeInput();
}

String ShellProcess::communicate(const char* script) {
    std::size_t left = std::strlen(script);
    if(!left) closeInput();
    Array<char> text;
    // A shell may close its output and read on. Negative descriptors are left out.
    while(_input != -1 || _output != -1) {
        pollfd ends[]{{_input, POLLOUT, 0}, {_output, POLLIN, 0}};
        if(uninterrupted([&] { return poll(ends, 2, -1); }) == -1) break;
        if(ends[0].revents) writeSome(script, left);
        if(ends[1].revents && !readSome(_output, text)) close(std::exchange(_output, -1));
    }
    return handOver(std::move(text));
}

int ShellProcess::wait() {
    int status = 0;
    const pid_t process = std::exchange(_process, -1);
    return uninterrupted([&] { return waitpid(process, &status, 0); }) == -1 ? -1 : status;
}

}
