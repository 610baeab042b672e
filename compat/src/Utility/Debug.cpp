#include "Corrade/Utility/Debug.h"

#include <cstdint>
#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <type_traits>

#include "Corrade/Containers/String.h"
#include "Corrade/Containers/StringView.h"

namespace Corrade::Utility {

namespace {

// One output for each channel.
thread_local std::ostream* outputs[]{&std::cout, &std::cerr, &std::cerr};

// Collects characters and hands them to a string whenever a line ends.
class StringStream: std::stringbuf, public std::ostream {
public:
    explicit StringStream(Containers::String& out): std::ostream(static_cast<std::stringbuf*>(this)), _out(out) {}
    ~StringStream() override { StringStream::sync(); }

private:
    int sync() override {
        const auto text = std::stringbuf::view();
        if(!text.empty()) {
            _out = _out + Containers::StringView(text.data(), text.size());
            std::stringbuf::str({});
        }
        return 0;
    }

    Containers::String& _out;
};

void put(std::ostream& output, Containers::StringView value) {
    output.write(value.data(), std::streamsize(value.size()));
}

template <class T>
requires std::is_arithmetic_v<T>
void put(std::ostream& output, T value) { output << value; }

} // namespace

void Debug::nospace(Debug& debug) { debug._immediateFlags |= Flag::NoSpace; }

void Debug::newline(Debug& debug) {
    if(debug._output) *debug._output << std::endl;
    debug._immediateFlags |= Flag::NoSpace;
}

void Debug::space(Debug& debug) { debug << nospace << " " << nospace; }

void Debug::packed(Debug& debug) { debug._immediateFlags |= Flag::Packed; }

void Debug::hex(Debug& debug) { debug._immediateFlags |= Flag::Hex; }

std::ostream* Debug::defaultOutput() { return &std::cout; }

std::ostream* Warning::defaultOutput() { return &std::cerr; }

std::ostream* Error::defaultOutput() { return &std::cerr; }

std::ostream* Debug::output() { return current(Channel::Debug); }

std::ostream* Warning::output() { return current(Channel::Warning); }

std::ostream* Error::output() { return current(Channel::Error); }

std::ostream* Debug::current(Channel channel) { return outputs[int(channel)]; }

std::ostream* Debug::redirected(Containers::String* output) { return output ? new StringStream(*output) : nullptr; }

Debug::Debug(Channel channel, std::ostream* output, bool owned, Flags flags)
    : _output(output),
      _previous(std::exchange(outputs[int(channel)], output)),
      _flags(flags),
      _channel(channel),
      _owned(owned) {}

Debug::Debug(Channel channel, Flags flags): Debug(channel, current(channel), false, flags) {}

Debug::Debug(Flags flags): Debug(Channel::Debug, flags) {}

Debug::Debug(std::ostream* output, Flags flags): Debug(Channel::Debug, output, false, flags) {}

Debug::Debug(Containers::String* output, Flags flags): Debug(Channel::Debug, redirected(output), true, flags) {}

Warning::Warning(Flags flags): Debug(Channel::Warning, flags) {}

Warning::Warning(std::ostream* output, Flags flags): Debug(Channel::Warning, output, false, flags) {}

Warning::Warning(Containers::String* output, Flags flags): Debug(Channel::Warning, redirected(output), true, flags) {}

Error::Error(Flags flags): Debug(Channel::Error, flags) {}

Error::Error(std::ostream* output, Flags flags): Debug(Channel::Error, output, false, flags) {}

Error::Error(Containers::String* output, Flags flags): Debug(Channel::Error, redirected(output), true, flags) {}

Debug::Debug(Debug&& other) noexcept
    : _output(other._output),
      _previous(other._previous),
      _flags(other._flags),
      _immediateFlags(other._immediateFlags),
      _channel(other._channel),
      _owned(other._owned),
      _written(other._written),
      _active(std::exchange(other._active, false)) {}

Debug::~Debug() { finish(); }

void Debug::finish() {
    if(!std::exchange(_active, false)) return;
    if(_output && _written && !(_flags >= Flag::NoNewlineAtTheEnd)) *_output << std::endl;
    outputs[int(_channel)] = _previous;
    if(_owned) delete _output;
}

Fatal::~Fatal() {
    finish();
    std::exit(_exitCode);
}

template <class T> Debug& Debug::print(const T& value) {
    if(!_output) return *this;
    const Flags flags = immediateFlags();
    if(!(flags >= Flag::NoSpace)) *_output << ' ';
    put(*_output, value);
    _immediateFlags = {};
    _written = true;
    return *this;
}

template <class T> Debug& Debug::printNumber(T value) {
    if(!_output) return *this;
    if constexpr(std::is_floating_point_v<T>) {
        *_output << std::setprecision(sizeof(T) == 4 ? 6 : sizeof(T) == 8 ? 15 : 18);
        return print(value);
    } else {
        if(!(immediateFlags() >= Flag::Hex)) return print(value);
        // The prefix and the number are one item.
        print(Containers::StringView("0x"));
        *_output << std::hex << value << std::dec;
        return *this;
    }
}

Debug& Debug::operator<<(const char* value) { return print(Containers::StringView(value)); }

Debug& Debug::operator<<(Containers::StringView value) { return print(value); }

Debug& Debug::operator<<(Containers::MutableStringView value) { return print(Containers::StringView(value)); }

Debug& Debug::operator<<(const Containers::String& value) { return print(Containers::StringView(value)); }

Debug& Debug::operator<<(const void* value) { return *this << hex << reinterpret_cast<std::uintptr_t>(value); }

Debug& Debug::operator<<(std::nullptr_t) { return print(Containers::StringView("nullptr")); }

Debug& Debug::operator<<(bool value) { return print(Containers::StringView(value ? "true" : "false")); }

Debug& Debug::operator<<(char value) { return printNumber(int(value)); }

Debug& Debug::operator<<(unsigned char value) { return printNumber(int(value)); }

Debug& Debug::operator<<(int value) { return printNumber(value); }

Debug& Debug::operator<<(long value) { return printNumber(value); }

Debug& Debug::operator<<(long long value) { return printNumber(value); }

Debug& Debug::operator<<(unsigned value) { return printNumber(value); }

Debug& Debug::operator<<(unsigned long value) { return printNumber(value); }

Debug& Debug::operator<<(unsigned long long value) { return printNumber(value); }

Debug& Debug::operator<<(float value) { return printNumber(value); }

Debug& Debug::operator<<(double value) { return printNumber(value); }

Debug& Debug::operator<<(long double value) { return printNumber(value); }

} // namespace Corrade::Utility
