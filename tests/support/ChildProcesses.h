#pragma once

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <iterator>

#include <sys/wait.h>

namespace QuorvaneEngine::Test {

/** The number of file descriptors that this process has open, with the one that counts them. */
inline std::size_t openDescriptors() {
    const std::filesystem::directory_iterator all{"/proc/self/fd"};
    return std::size_t(std::distance(begin(all), end(all)));
}

/** Whether this process has no child, not even one that has ended. */
inline bool isChildless() { return waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD; }

}
