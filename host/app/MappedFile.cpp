#include "app/MappedFile.h"

#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace QuorvaneEngine {

MappedFile::MappedFile(const Containers::StringView path) {
    const int file = open(path.data(), O_RDONLY | O_CLOEXEC);
    if(file == -1) return;
    struct stat status {};
    if(fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0) {
        const auto size = std::size_t(status.st_size);
        void* const data = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
        if(data != MAP_FAILED) _bytes = {static_cast<const char*>(data), size};
    }
    close(file);
}

MappedFile::~MappedFile() {
    if(!_bytes.isEmpty()) munmap(const_cast<char*>(_bytes.data()), _bytes.size());
}

MappedFile::MappedFile(MappedFile&& other) noexcept: _bytes{std::exchange(other._bytes, {})} {}

}
