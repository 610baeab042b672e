#pragma once

#include <cstddef>

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** JSON text that is being written, behind which more is put. */
class QUORVANE_API JsonOutput {
public:
    JsonOutput();
    ~JsonOutput();
    JsonOutput(const JsonOutput&) = delete;
    JsonOutput& operator=(const JsonOutput&) = delete;

    std::size_t size() const { return _size; }

    /** Takes back all that was put since the text had this size. */
    void truncate(std::size_t size) { _size = size; }

    void put(char character);
    void put(Containers::StringView text);

    /** A line feed, and two blanks for each level. */
    void putNewLine(std::size_t depth);

    /** A string with its quotation marks: characters as they are, but quotation marks, backslashes and control characters escaped. */
    void putString(Containers::StringView text);

    /** Hands the text over; nothing may be put any more. */
    Containers::String take();

private:
    void reserve(std::size_t more);

    char* _data = nullptr;
    std::size_t _size = 0;
    std::size_t _capacity = 0;
};

}
