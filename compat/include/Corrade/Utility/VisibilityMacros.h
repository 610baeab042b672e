#pragma once

/** @file
 * What a library shows and hides. Classes with virtual functions need CORRADE_VISIBILITY_EXPORT, so that code compiled
 * with hidden visibility still finds their one virtual table.
 */

#define CORRADE_VISIBILITY_EXPORT __attribute__((visibility("default")))
#define CORRADE_VISIBILITY_IMPORT __attribute__((visibility("default")))
#define CORRADE_VISIBILITY_LOCAL __attribute__((visibility("hidden")))
