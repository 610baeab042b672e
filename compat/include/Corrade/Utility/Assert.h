#pragma once

/** @file
 * Checks of preconditions. A failed one prints its message to the error output as it was when the program started (a
 * redirection does not swallow it) and aborts.
 */

#include <cstdlib>
#include <utility>

#include "Corrade/Utility/Debug.h"
#include "Corrade/Utility/Macros.h"

// Two statements: the message is complete only when its stream is destroyed.
#define CORRADE_COMPAT_ABORT_(...)                                                                                     \
    {                                                                                                                  \
        Corrade::Utility::Error{Corrade::Utility::Error::defaultOutput()} << __VA_ARGS__;                              \
        std::abort();                                                                                                  \
    }

#define CORRADE_COMPAT_PLACE_ " failed at " __FILE__ ":" CORRADE_LINE_STRING

/** Abort with `message` (any chain of `<<` items) unless `condition`; `returnValue` is for builds without aborting. */
#define CORRADE_ASSERT(condition, message, returnValue)                                                                \
    do {                                                                                                               \
        if(!(condition)) {                                                                                             \
            CORRADE_COMPAT_ABORT_(message)                                                                             \
            return returnValue;                                                                                        \
        }                                                                                                              \
    } while(false)

/** The same as an expression, for functions that are constant expressions. */
#define CORRADE_CONSTEXPR_ASSERT(condition, message)                                                                   \
    static_cast<void>((condition) ? 0 : ([&]() { CORRADE_COMPAT_ABORT_(message) }(), 0))

#define CORRADE_ASSERT_OUTPUT(call, message, returnValue) CORRADE_ASSERT(call, message, returnValue)
#define CORRADE_ASSERT_UNREACHABLE(message, returnValue)                                                               \
    do {                                                                                                               \
        CORRADE_COMPAT_ABORT_(message)                                                                                 \
    } while(false)

/** Abort with the expression itself and its place, for what no caller can get wrong. */
#define CORRADE_INTERNAL_ASSERT(condition)                                                                             \
    do {                                                                                                               \
        if(!(condition)) CORRADE_COMPAT_ABORT_("Assertion " #condition CORRADE_COMPAT_PLACE_)                          \
    } while(false)
#define CORRADE_INTERNAL_ASSERT_OUTPUT(call) CORRADE_INTERNAL_ASSERT(call)
#define CORRADE_INTERNAL_ASSERT_UNREACHABLE()                                                                          \
    do {                                                                                                               \
        CORRADE_COMPAT_ABORT_("Reached unreachable code at " __FILE__ ":" CORRADE_LINE_STRING)                         \
    } while(false)

namespace Corrade::Utility::Implementation {

template <class T> T assertExpression(T&& value, const char* message) {
    if(!value) CORRADE_COMPAT_ABORT_(message)
    return std::forward<T>(value);
}

} // namespace Corrade::Utility::Implementation

/** The value of the expression; aborts if it is false. */
#define CORRADE_INTERNAL_ASSERT_EXPRESSION(...)                                                                        \
    Corrade::Utility::Implementation::assertExpression(__VA_ARGS__, "Assertion " #__VA_ARGS__ CORRADE_COMPAT_PLACE_)
