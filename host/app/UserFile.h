#pragma once

#include <cstdint>

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

struct JsonError;

/** A small JSON file in a folder for the program's own settings, or in one of a project. */
class QUORVANE_API UserFile {
public:
    /** What becomes of a file whose name is a link. */
    enum class Links : std::uint8_t {
        Follow, /**< the file that it leads to is replaced, as users wish who keep all their settings in one place */
        Refuse /**< nothing is written, as the link may be a stranger's, and lead anywhere */
    };

    /** @param folder   made by the first @ref write() ; empty where nothing is kept
        @param name     in the folder */
    explicit UserFile(Containers::StringView folder, Containers::StringView name, Links links = Links::Follow);

    enum class Found : std::uint8_t { Nothing, Document, Error };

    /** @param document     left as it is unless one is found
        @param error        set where there is a file that cannot be read */
    Found read(rapidjson::Document& document, JsonError& error) const;

    /** Prints a warning that names the file and the place in it.
        @param function     whose warning it is */
    void warn(const char* function, const JsonError& error) const;

    /** Replaces the file, so that nobody ever finds half of it, also where two programs write at once or the power goes. Where its name is a link, that
        stays. The file's rights stay, but who writes it may read it from then on. On failure prints a warning with
        the reason.
        @param function     whose warning it is */
    void write(const char* function, const rapidjson::Value& value) const;

    bool isKept() const { return !_path.isEmpty(); }

private:
    /** @return why it cannot be; empty where all went well */
    Containers::String replace(const rapidjson::Value& value) const;

    Containers::String _folder;
    Containers::String _path;
    Links _links;
};

}
