#include "support/CapturedOutput.h"

namespace QuorvaneEngine::Test {

namespace {

std::string text(const Corrade::Containers::String& string) { return {string.data(), string.size()}; }

}

CapturedOutput::CapturedOutput(): _debugGuard{&_debug}, _warningGuard{&_warning}, _errorGuard{&_error} {}

CapturedOutput::~CapturedOutput() = default;

std::string CapturedOutput::debug() const { return text(_debug); }

std::string CapturedOutput::warning() const { return text(_warning); }

std::string CapturedOutput::error() const { return text(_error); }

}
