#pragma once

#include <cstdint>
#include <type_traits>

#include "Corrade/Containers/Containers.h"
#include "Corrade/Containers/EnumSet.h"
#include "Corrade/Utility/Utility.h"

/**
 * Paths and files. Paths are UTF-8 with "/" between their parts; what is asked of the file system fails with a message
 * to the error output and an empty or false result.
 */
namespace Corrade::Utility::Path {

/** Between "/" and what the system writes; the same on Unix. */
Containers::StringView fromNativeSeparators(Containers::StringView path);
Containers::StringView toNativeSeparators(Containers::StringView path);

/** The folder, without its last "/" unless that is the root, and the last part. */
Containers::Pair<Containers::StringView, Containers::StringView> split(Containers::StringView path);
/** First and second part of split(). */
Containers::StringView path(Containers::StringView filename);
Containers::StringView filename(Containers::StringView path);
/** All up to the last dot of the last part, and the rest with the dot. Dots at the beginning of a name do not count. */
Containers::Pair<Containers::StringView, Containers::StringView> splitExtension(Containers::StringView path);

/** With a "/" between; the second one alone if it is absolute or the first is empty. */
Containers::String join(Containers::StringView path, Containers::StringView filename);
Containers::String join(const Containers::StringIterable& paths);

/** Whether there is such a file or folder; both follow links. */
bool exists(Containers::StringView filename);
bool isDirectory(Containers::StringView path);

/** Makes a folder and those above it. True if it is there already. */
bool make(Containers::StringView path);
/** Removes a file, a link or an empty folder. */
bool remove(Containers::StringView path);
/** Renames; replaces a file that is there. */
bool move(Containers::StringView from, Containers::StringView to);
/** Copies the bytes of a file; replaces those of a file that is there. */
bool copy(Containers::StringView from, Containers::StringView to);

/** The library whose code or data is at the address. */
Containers::Optional<Containers::String> libraryLocation(const void* address);
Containers::Optional<Containers::String> executableLocation();
Containers::Optional<Containers::String> currentDirectory();
/** $HOME. */
Containers::Optional<Containers::String> homeDirectory();
/** $XDG_CONFIG_HOME, or .config in the home, joined with the name in lower case. */
Containers::Optional<Containers::String> configurationDirectory(Containers::StringView name);
Containers::Optional<Containers::String> temporaryDirectory();

enum class ListFlag : unsigned char {
    SkipDotAndDotDot = 1 << 0,
    SkipFiles = 1 << 1,
    SkipDirectories = 1 << 2,
    SkipSpecial = 1 << 3,
    /** By bytes; wins over SortDescending. */
    SortAscending = (1 << 4) | (1 << 5),
    SortDescending = 1 << 5
};
using ListFlags = Containers::EnumSet<ListFlag>;
CORRADE_ENUMSET_OPERATORS(ListFlags)

/** Names in a folder, in the file system's order unless sorted. Links count as what they lead to. */
Containers::Optional<Containers::Array<Containers::String>> list(Containers::StringView path, ListFlags flags = {});

/** In bytes. */
Containers::Optional<std::size_t> size(Containers::StringView filename);
/** In nanoseconds since 1970. */
Containers::Optional<std::int64_t> lastModification(Containers::StringView filename);
Containers::Optional<Containers::Array<char>> read(Containers::StringView filename);
Containers::Optional<Containers::String> readString(Containers::StringView filename);
/** Makes or overwrites a file. Only opening it can fail. */
bool write(Containers::StringView filename, Containers::ArrayView<const void> data);
bool append(Containers::StringView filename, Containers::ArrayView<const void> data);
// A literal would be written with its zero byte.
template <class T>
requires(std::is_same_v<std::decay_t<T>, const char*> || std::is_same_v<std::decay_t<T>, char*>) bool write(
    const Containers::StringView& filename, T&& string) = delete;
template <class T>
requires(std::is_same_v<std::decay_t<T>, const char*> || std::is_same_v<std::decay_t<T>, char*>) bool append(
    const Containers::StringView& filename, T&& string) = delete;

} // namespace Corrade::Utility::Path
