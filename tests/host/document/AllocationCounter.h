#pragma once

#include <cstddef>

/** How many times `operator new` has been called in this program. */
std::size_t allocationCount();
