#pragma once

#include <condition_variable>
#include <mutex>

#include "../document/MemoryFileSystem.h"

namespace QuorvaneEngine {

/** A file system in memory in which whoever reads a file waits while a gate is closed: so a test decides how long work beside its
    thread takes. */
class GatedFileSystem: public MemoryFileSystem {
public:
    /** Nobody may be left waiting. */
    ~GatedFileSystem() override { open(); }

    void close() {
        const std::lock_guard lock{_mutex};
        _isClosed = true;
    }

    void open() {
        const std::lock_guard lock{_mutex};
        _isClosed = false;
        _changed.notify_all();
    }

    /** Blocks until somebody waits at the gate. */
    void awaitReader() {
        std::unique_lock lock{_mutex};
        _changed.wait(lock, [this] { return _waiting != 0; });
    }

    /** How many files were read. */
    int reads() const {
        const std::lock_guard lock{_mutex};
        return _reads;
    }

    int readFile(Containers::StringView path, Containers::String& bytes, std::size_t maxSize) override {
        std::unique_lock lock{_mutex};
        ++_waiting;
        _changed.notify_all();
        _changed.wait(lock, [this] { return !_isClosed; });
        --_waiting;
        ++_reads;
        return MemoryFileSystem::readFile(path, bytes, maxSize);
    }

private:
    mutable std::mutex _mutex;
    std::condition_variable _changed;
    bool _isClosed = false;
    int _waiting = 0;
    int _reads = 0;
};

}
