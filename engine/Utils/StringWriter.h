#pragma once

#include <cstdint>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringView.h>

namespace QuorvaneEngine::Utils {

/** Text that grows at its end, in one buffer.

    After any append a zero byte stands behind the text, which is not part of it: a buffer that holds anything has room for at
    least one byte more. A moved-from writer is empty. */
class StringWriter {
public:
    /** One without a buffer. */
    StringWriter() = default;

    /** @param capacity     bytes of the buffer to begin with; 0 for none */
    explicit StringWriter(std::uint64_t capacity) { reserve(capacity); }

    StringWriter(StringWriter&& other) noexcept;
    StringWriter& operator=(StringWriter&& other) noexcept;
    ~StringWriter() = default;

    /** Appends text that fits, or aborts. What is left must be larger than the text, for the zero byte behind it. */
    void appendInto(Corrade::Containers::StringView text);

    /** Makes the buffer as large as this, in bytes, if it is smaller; it never shrinks. What was written stays. */
    void reserve(std::uint64_t capacity);

    /** Appends text. A buffer that is too small grows by half, or to what the text and the zero byte need, whichever is more; the
        text may lie in the buffer itself. */
    void append(Corrade::Containers::StringView text);

    /** What was written; valid until the next call that writes or grows. Null data where there never was a buffer. */
    Corrade::Containers::StringView text() const;

    /** The buffer, which comes from `new[]` and has no deleter. */
    const Corrade::Containers::Array<char>& data() const { return _data; }

    /** Bytes written, without the zero byte. */
    std::uint64_t size() const { return _size; }

    /** Bytes of the buffer. */
    std::uint64_t capacity() const { return _data.size(); }

    /** Bytes of the buffer behind what was written. */
    std::uint64_t available() const { return _data.size() - _size; }

private:
    Corrade::Containers::Array<char> grow(std::uint64_t capacity);

    Corrade::Containers::Array<char> _data;
    std::uint64_t _size = 0;
};

}
