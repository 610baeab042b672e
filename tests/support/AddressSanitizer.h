#pragma once

/** @file
    Defines QUORVANE_ADDRESS_SANITIZER where the address sanitizer is compiled in. GCC and Clang tell it in different ways. */

#if defined(__SANITIZE_ADDRESS__)
#define QUORVANE_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUORVANE_ADDRESS_SANITIZER
#endif
#endif
