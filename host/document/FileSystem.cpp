#include "FileSystem.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <memory>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "LargeText.h"

namespace QuorvaneEngine {

namespace {

/** They wait for the disk, and do not compute. */
constexpr std::size_t SyncThreads = 8;

/** A path as the C library takes it. */
class Name {
public:
    explicit Name(Containers::StringView path): _path{path.data(), path.size()} {}
    operator const char*() const { return _path.c_str(); }

private:
    std::string _path;
};

class Descriptor {
public:
    Descriptor(const char* path, int flags): _descriptor{::open(path, flags | O_CLOEXEC, 0666)} {}
    ~Descriptor() {
        if(_descriptor != -1) ::close(_descriptor);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    operator int() const { return _descriptor; }

    /** Closes, which on some disks is what tells that a write failed. */
    int close() { return ::close(release()) ? errno : 0; }

    /** @return what the caller has to close */
    int release() { return std::exchange(_descriptor, -1); }

private:
    int _descriptor;
};

std::int64_t nanoseconds(const timespec& time) { return std::int64_t(time.tv_sec) * 1'000'000'000 + time.tv_nsec; }

int resultOf(int returned) { return returned ? errno : 0; }

int writeAll(int descriptor, Containers::StringView bytes) {
    while(!bytes.isEmpty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if(written < 0 && errno != EINTR) return errno;
        if(written > 0) bytes = bytes.exceptPrefix(std::size_t(written));
    }
    return 0;
}

int sync(const char* path, int flags) {
    Descriptor file{path, O_RDONLY | flags};
    if(file == -1) return errno;
    // Some file systems cannot synchronize folders, and need not.
    return ::fsync(file) && errno != EINVAL ? errno : 0;
}

class Disk: public FileSystem {
public:
    bool canReadAtOnce() const override { return true; }

    int readFile(Containers::StringView path, Containers::String& bytes, std::size_t maxSize) override {
        // A pipe that nobody writes to would block without this flag.
        Descriptor file{Name{path}, O_RDONLY | O_NONBLOCK};
        // A socket cannot be opened.
        if(file == -1) return errno == ENXIO ? EINVAL : errno;
        struct stat status {};
        if(::fstat(file, &status)) return errno;
        if(S_ISDIR(status.st_mode)) return EISDIR;
        if(!S_ISREG(status.st_mode)) return EINVAL;
        if(std::size_t(status.st_size) > maxSize) return EFBIG;

        // The file may change its size meanwhile; what was read is what counts.
        Containers::String read = largeText(std::size_t(status.st_size), true);
        std::string more;
        std::size_t size = 0;
        for(char surplus[4096];;) {
            const bool isFull = size == read.size();
            const ssize_t count =
                isFull ? ::read(file, surplus, sizeof(surplus)) : ::read(file, read.data() + size, read.size() - size);
            if(count < 0 && errno != EINTR) return errno;
            if(count == 0) break;
            if(count < 0) continue;
            if(isFull) more.append(surplus, std::size_t(count));
            else size += std::size_t(count);
            if(size + more.size() > maxSize) return EFBIG;
        }
        if(size == read.size() && more.empty()) bytes = std::move(read);
        else bytes = read.prefix(size) + Containers::StringView{more.data(), more.size()};
        return 0;
    }

    int writeFile(Containers::StringView path, Containers::StringView bytes, Containers::StringView modeOf) override {
        Descriptor file{Name{path}, O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW};
        if(file == -1) return errno;
        struct stat status {};
        // Where the disk keeps no permissions there is nothing to lose.
        if(!modeOf.isEmpty() && ::stat(Name{modeOf}, &status) == 0) ::fchmod(file, status.st_mode & 0777);
        if(const int error = writeAll(file, bytes)) return error;
        return file.close();
    }

    int syncFile(Containers::StringView path) override { return sync(Name{path}, 0); }
    int syncFolder(Containers::StringView path) override { return sync(Name{path}, O_DIRECTORY); }

    void syncAll(Containers::ArrayView<const Containers::String> files,
        Containers::ArrayView<const Containers::String> folders, Containers::ArrayView<int> results) override {
        std::atomic<std::size_t> next{0};
        const auto work = [&] {
            for(std::size_t i; (i = next++) < results.size();)
                results[i] = i < files.size() ? syncFile(files[i]) : syncFolder(folders[i - files.size()]);
        };
        std::vector<std::jthread> threads;
        // A system that is short of threads does the work with those that it has.
        try {
            while(threads.size() + 1 < std::min(SyncThreads, results.size())) threads.emplace_back(work);
        } catch(const std::system_error&) {
        }
        work();
    }

    int linkFile(Containers::StringView path, Containers::StringView name) override {
        return resultOf(::link(Name{path}, Name{name}));
    }

    int renameFile(Containers::StringView from, Containers::StringView to) override {
        return resultOf(::rename(Name{from}, Name{to}));
    }

    int removeFile(Containers::StringView path) override { return resultOf(::unlink(Name{path})); }
    int makeFolder(Containers::StringView path) override { return resultOf(::mkdir(Name{path}, 0777)); }
    int removeFolder(Containers::StringView path) override { return resultOf(::rmdir(Name{path})); }

    int listFolder(Containers::StringView path, Containers::Array<Containers::String>& names) override {
        const std::unique_ptr<DIR, int (*)(DIR*)> folder{::opendir(Name{path}), ::closedir};
        if(!folder) return errno;
        std::vector<std::string> found;
        errno = 0;
        while(const dirent* const entry = ::readdir(folder.get())) {
            const std::string name{entry->d_name};
            if(name != "." && name != "..") found.push_back(name);
        }
        if(errno) return errno;
        std::sort(found.begin(), found.end());
        names = Containers::Array<Containers::String>{Corrade::ValueInit, found.size()};
        for(std::size_t i = 0; i != found.size(); ++i) names[i] = Containers::String{found[i].data(), found[i].size()};
        return 0;
    }

    bool isLink(Containers::StringView path) override {
        struct stat status {};
        return ::lstat(Name{path}, &status) == 0 && S_ISLNK(status.st_mode);
    }

    int stampOf(Containers::StringView path, FileStamp& stamp) override {
        struct stat status {};
        const bool isTerminated = path.flags() >= Containers::StringViewFlag::NullTerminated;
        if(isTerminated ? ::stat(path.data(), &status) : ::stat(Name{path}, &status)) return errno;
        stamp = {std::uint64_t(status.st_dev), std::uint64_t(status.st_ino), std::uint64_t(status.st_size),
            nanoseconds(status.st_mtim), nanoseconds(status.st_ctim)};
        return 0;
    }

    int lockFolder(Containers::StringView path, int& lock) override {
        Descriptor folder{Name{path}, O_RDONLY | O_DIRECTORY};
        if(folder == -1) return errno;
        // Disks of a network may know no locks, or none of folders.
        if(::flock(folder, LOCK_EX | LOCK_NB)) return errno == EWOULDBLOCK ? EWOULDBLOCK : ENOLCK;
        lock = folder.release();
        return 0;
    }

    void unlockFolder(int lock) override { ::close(lock); }
};

}

FileSystem& FileSystem::disk() {
    static Disk disk;
    return disk;
}

FileSystem::~FileSystem() = default;

int FileSystem::stampOf(Containers::StringView, FileStamp&) { return ENOSYS; }
int FileSystem::lockFolder(Containers::StringView, int&) { return 0; }
void FileSystem::unlockFolder(int) {}

void FileSystem::syncAll(const Containers::ArrayView<const Containers::String> files,
    const Containers::ArrayView<const Containers::String> folders, const Containers::ArrayView<int> results) {
    for(std::size_t i = 0; i != results.size(); ++i)
        results[i] = i < files.size() ? syncFile(files[i]) : syncFolder(folders[i - files.size()]);
}

Containers::String systemReason(const Containers::StringView what, const int error) {
    if(error == EINVAL && what == "read") return "is no file";
    const std::string reason =
        "cannot be " + std::string{what.data(), what.size()} + ": " + std::string{std::strerror(error)};
    return Containers::String{reason.data(), reason.size()};
}

}
