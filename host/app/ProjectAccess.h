#pragma once

#include <cstdint>

#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"
#include "document/FileSystem.h"

namespace QuorvaneEngine {

class EditorSession;
class MessageLog;

/** What the open project may be used for. The right to write it is held by one program at a time; it may be lost, as with the folder `.editor`
    that it hangs on, and it becomes free when the other program ends. */
class QUORVANE_API ProjectAccess {
public:
    enum class Kind : std::uint8_t {
        Write, /**< other programs are kept from saving the project */
        Read, /**< another program has it; it is taken as soon as that one has closed it */
        Picture /**< nothing is written but the end of a save that was cut short, and nobody is asked */
    };

    /** @param session  must outlive this object */
    explicit ProjectAccess(EditorSession& session): _session{&session} {}

    /** Takes the right to write a project that is about to be opened.
        @return false where another program has it; @ref refusal() says which one */
    bool take(Containers::StringView folder);

    /** A project has been opened. */
    void begin(Kind kind);

    /** Looks whether the right to write is held still, or free by now, and takes it, with the folder `.editor`, where it can. What has happened is
        told.
        @return whether @ref kind() has changed */
    bool update(MessageLog& log);

    Kind kind() const { return _kind; }

    /** Which program refused the project that was asked for last. */
    const FileError& refusal() const { return _refusal; }

    /** Why the open project is read-only, in words; empty where it is not. */
    Containers::StringView obstacle() const { return _obstacle; }

private:
    void set(Kind kind);

    EditorSession* _session;
    Kind _kind = Kind::Write;
    FileError _refusal;
    Containers::String _obstacle;
};

}
