# Everything that can be chosen at configure time, and the defaults that every target gets.

option(QUORVANE_TESTS "Build the tests; needs GoogleTest" ON)
option(QUORVANE_BENCHMARKS "Build the benchmark programs" ${QUORVANE_TESTS})
option(QUORVANE_FUZZERS "Build the fuzzers of fuzz/ with Clang's, and not just their seeds; needs QUORVANE_SANITIZE with fuzzer-no-link" OFF)
option(QUORVANE_WERROR "Turn warnings into errors" OFF)
set(QUORVANE_SANITIZE "" CACHE STRING "Sanitizers for everything, as a list: \"address;undefined\"")
set(QUORVANE_COMPAT AUTO CACHE STRING "Corrade and Magnum: AUTO takes installed ones, else compat/; ON forces compat/; OFF asks for installed ones")
set_property(CACHE QUORVANE_COMPAT PROPERTY STRINGS AUTO ON OFF)

set(QUORVANE_DEPS_DIR ${CMAKE_SOURCE_DIR}/.deps CACHE PATH "Where scripts/setup.sh unpacks the pinned source archive")
set(QUORVANE_BUNDLE_DIR ${QUORVANE_DEPS_DIR}/imgui-bundle-1.93.0)
set(IMGUI_DIR "" CACHE PATH "Another Dear ImGui checkout; empty for the pinned one")
set(PFD_DIR "" CACHE PATH "Another folder with portable_file_dialogs.h or portable-file-dialogs.h; empty for the pinned one")

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Release, Debug or RelWithDebInfo" FORCE)
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# Nothing here is a C++20 module, and looking for them costs a compiler call per file in newer CMake versions.
set(CMAKE_CXX_SCAN_FOR_MODULES OFF)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib/static)
set(QUORVANE_TEST_BIN_DIR ${CMAKE_BINARY_DIR}/bin/tests)

# Below the prefix, and below the build folder just so: programs find what is theirs by the way from their own folder.
set(QUORVANE_INSTALL_INCLUDE ${CMAKE_INSTALL_INCLUDEDIR}/quorvane)
set(QUORVANE_INSTALL_PACKAGE ${CMAKE_INSTALL_LIBDIR}/cmake/QuorvaneEditor)
set(QUORVANE_INSTALL_MODULES ${CMAKE_INSTALL_LIBDIR}/quorvane/modules)
set(QUORVANE_INSTALL_SHARE share/quorvane)
set(QUORVANE_MODULE_DIR ${CMAKE_BINARY_DIR}/${QUORVANE_INSTALL_MODULES})
set(QUORVANE_SHARE_DIR ${CMAKE_BINARY_DIR}/${QUORVANE_INSTALL_SHARE})
set(CMAKE_INSTALL_RPATH $ORIGIN $ORIGIN/../${CMAKE_INSTALL_LIBDIR})
# Corrade and Magnum may be where the system does not look.
set(CMAKE_INSTALL_RPATH_USE_LINK_PATH ON)

find_program(QUORVANE_CCACHE ccache)
mark_as_advanced(QUORVANE_CCACHE)
if(QUORVANE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_C_COMPILER_LAUNCHER ${QUORVANE_CCACHE})
    # Without this it caches nothing that a precompiled header goes into.
    set(CMAKE_CXX_COMPILER_LAUNCHER env CCACHE_SLOPPINESS=pch_defines,time_macros ${QUORVANE_CCACHE})
endif()
