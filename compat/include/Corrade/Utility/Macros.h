#pragma once

#include "Corrade/configure.h"

#define CORRADE_COMPAT_STRINGIFY2_(x) #x
#define CORRADE_COMPAT_STRINGIFY_(x) CORRADE_COMPAT_STRINGIFY2_(x)

/** The line number as a string literal. */
#define CORRADE_LINE_STRING CORRADE_COMPAT_STRINGIFY_(__LINE__)

/** The name of the function around it. */
#define CORRADE_FUNCTION __func__
