#pragma once

/** @file
 * What the platform is, as preprocessor definitions. This subset knows Unix alone, and defines only the names that
 * code above it asks for.
 */

#define CORRADE_TARGET_UNIX
#define CORRADE_TARGET_GCC

#ifdef __clang__
#define CORRADE_TARGET_CLANG
#endif

#ifdef __APPLE__
#define CORRADE_TARGET_APPLE
#endif
