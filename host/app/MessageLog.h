#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>

#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Keeps what the calling thread prints through Debug, Warning and Error while this object lives, line by line, and still passes
    it on to standard output and error output. */
class QUORVANE_API MessageLog {
public:
    enum class Severity : std::uint8_t { Detail, Note, Warning, Error };

    struct Message {
        Severity severity;
        Containers::String text;
        std::chrono::system_clock::time_point when;
    };

    /** Tells what time it is. */
    using Clock = std::chrono::system_clock::time_point (*)();

    /** @param capacity     the number of lines kept; older ones are dropped */
    explicit MessageLog(std::size_t capacity = 1000, Clock clock = std::chrono::system_clock::now);

    /** Output goes where it went before. Logs end in the reverse order of their beginning. */
    ~MessageLog();

    MessageLog(const MessageLog&) = delete;
    MessageLog& operator=(const MessageLog&) = delete;

    /** Tells the user that something was done; also printed as Debug. */
    void note(Containers::StringView text);

    const std::deque<Message>& messages() const { return _messages; }

    /** The number of messages so far, dropped ones included. */
    std::size_t count() const { return _count; }

    /** The last message that is meant for the user's eyes, that is, anything but a detail; null when there is none. */
    const Message* last() const { return _last.text.isEmpty() ? nullptr : &_last; }

    /** The warnings and errors from message @p first on, counted from the beginning, one per line; those dropped are left out. */
    Containers::String problemsSince(std::size_t first) const;

private:
    struct Redirection;

    void add(Severity severity, Containers::StringView text);

    std::size_t _capacity;
    Clock _clock;
    std::size_t _count = 0;
    std::deque<Message> _messages;
    Message _last{Severity::Detail, {}, {}};
    Containers::Pointer<Redirection> _redirection;
};

}
