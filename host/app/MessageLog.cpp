#include "app/MessageLog.h"

#include <algorithm>
#include <iostream>
#include <ostream>
#include <streambuf>
#include <string>

#include <Corrade/Utility/Debug.h>

namespace QuorvaneEngine {

namespace Utility = Corrade::Utility;

namespace {

/** Passes everything on as it is and hands over each line that is complete. */
template <class Sink> class LineBuffer: public std::streambuf {
public:
    explicit LineBuffer(std::ostream& target, Sink&& sink): _target{target}, _sink{std::move(sink)} {}

protected:
    int_type overflow(int_type character) override {
        if(traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(character);
        const char byte = traits_type::to_char_type(character);
        xsputn(&byte, 1);
        return character;
    }

    std::streamsize xsputn(const char* data, std::streamsize size) override {
        _target.write(data, size);
        for(const char* const end = data + size; data != end;) {
            const char* const newline = std::find(data, end, '\n');
            _line.append(data, newline);
            if(newline == end) break;
            _target.flush();
            _sink(_line);
            _line.clear();
            data = newline + 1;
        }
        return size;
    }

private:
    std::ostream& _target;
    Sink _sink;
    std::string _line;
};

}

struct MessageLog::Redirection {
    struct Sink {
        MessageLog* log;
        Severity severity;

        void operator()(const std::string& line) const {
            log->add(severity, Containers::StringView{line.data(), line.size()});
        }
    };

    explicit Redirection(MessageLog* log)
        : debugBuffer{std::cout, Sink{log, Severity::Detail}},
          warningBuffer{std::cerr, Sink{log, Severity::Warning}},
          errorBuffer{std::cerr, Sink{log, Severity::Error}} {}

    LineBuffer<Sink> debugBuffer;
    LineBuffer<Sink> warningBuffer;
    LineBuffer<Sink> errorBuffer;
    std::ostream debugStream{&debugBuffer};
    std::ostream warningStream{&warningBuffer};
    std::ostream errorStream{&errorBuffer};
    Utility::Debug debug{&debugStream};
    Utility::Warning warning{&warningStream};
    Utility::Error error{&errorStream};
};

MessageLog::MessageLog(const std::size_t capacity, const Clock clock): _capacity{capacity}, _clock{clock} {
    _redirection.emplace(this);
}

MessageLog::~MessageLog() = default;

void MessageLog::note(Containers::StringView text) {
    std::cout.write(text.data(), std::streamsize(text.size())) << std::endl;
    add(Severity::Note, text);
}

void MessageLog::add(Severity severity, Containers::StringView text) {
    if(text.isEmpty()) return;
    const auto now = _clock();
    if(severity != Severity::Detail) _last = Message{severity, text, now};
    _messages.push_back(Message{severity, text, now});
    if(_messages.size() > _capacity) _messages.pop_front();
    ++_count;
}

Containers::String MessageLog::problemsSince(std::size_t first) const {
    const std::size_t dropped = _count - _messages.size();
    Containers::String text;
    for(std::size_t i = std::max(first, dropped); i < _count; ++i) {
        const Message& message = _messages[i - dropped];
        if(message.severity < Severity::Warning) continue;
        text = text.isEmpty() ? message.text : text + "\n" + message.text;
    }
    return text;
}

}
