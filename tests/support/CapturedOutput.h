#pragma once

#include <string>

#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>

namespace QuorvaneEngine::Test {

/** Catches what this thread prints through Debug, Warning and Error while the object lives. */
class CapturedOutput {
public:
    CapturedOutput();
    ~CapturedOutput();

    /** What was printed so far, line ends included. */
    std::string debug() const;
    std::string warning() const;
    std::string error() const;

private:
    Corrade::Containers::String _debug;
    Corrade::Containers::String _warning;
    Corrade::Containers::String _error;
    Corrade::Utility::Debug _debugGuard;
    Corrade::Utility::Warning _warningGuard;
    Corrade::Utility::Error _errorGuard;
};

}
