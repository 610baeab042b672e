#pragma once

/** @file Checks that cost too much for release builds (index checks): active only where NDEBUG is not defined. */

#ifndef NDEBUG

#include "Corrade/Utility/Assert.h"

#define CORRADE_DEBUG_ASSERT(condition, message, returnValue) CORRADE_ASSERT(condition, message, returnValue)
#define CORRADE_CONSTEXPR_DEBUG_ASSERT(condition, message) CORRADE_CONSTEXPR_ASSERT(condition, message)
#define CORRADE_INTERNAL_DEBUG_ASSERT(condition) CORRADE_INTERNAL_ASSERT(condition)

#else

#define CORRADE_NO_DEBUG_ASSERT
#define CORRADE_DEBUG_ASSERT(condition, message, returnValue)                                                          \
    do {                                                                                                               \
    } while(false)
#define CORRADE_CONSTEXPR_DEBUG_ASSERT(condition, message) static_cast<void>(0)
#define CORRADE_INTERNAL_DEBUG_ASSERT(condition)                                                                       \
    do {                                                                                                               \
    } while(false)

#endif
