#pragma once

#include <string>

/* Marks what is counted when a benchmark runs below valgrind; nothing where that was not there to build with. */
#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#else
#define CALLGRIND_START_INSTRUMENTATION
#define CALLGRIND_STOP_INSTRUMENTATION
#endif

/* Runs this program once more, below valgrind.
   @param arguments     behind "--instructions", as a shell reads them
   @return the instructions between the two marks, 0 where there is no working valgrind */
double instructionsOf(const std::string& arguments);
