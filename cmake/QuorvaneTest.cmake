# quorvane_test(<name> SOURCES <files> [LIBRARIES <targets>] [DEFINITIONS <definitions>] [GUI] [DISPLAY])
#
# One GoogleTest program per folder of tests. Each case becomes a CTest test and runs in a process of its own, so that
# process-wide state never leaks from one into the next.
#   GUI       links the GUI harness of tests/support
#   DISPLAY   each case gets a virtual X server of its own, with software OpenGL

if(QUORVANE_TESTS)
    find_package(GTest REQUIRED)
    include(GoogleTest)
endif()

# What most tests include takes a third of the time to compile them, so GCC reads it once. Clang compiles each test by
# itself, which sees a test that forgets to include what it uses.
function(quorvane_precompile_tests target)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        return()
    endif()
    if(NOT TARGET quorvane-test-headers)
        set(main ${CMAKE_BINARY_DIR}/test-headers.cpp)
        file(CONFIGURE OUTPUT ${main} CONTENT "int main() {}\n")
        add_executable(quorvane-test-headers EXCLUDE_FROM_ALL ${main})
        target_link_libraries(quorvane-test-headers PRIVATE GTest::gtest)
        quorvane_test_options(quorvane-test-headers)
        target_precompile_headers(quorvane-test-headers PRIVATE
            <gtest/gtest.h> <algorithm> <cstring> <filesystem> <fstream> <map> <memory> <random> <set> <sstream>
            <string> <utility> <vector> <rapidjson/document.h>)
    endif()
    target_precompile_headers(${target} REUSE_FROM quorvane-test-headers)
endfunction()

function(quorvane_test_options target)
    quorvane_apply_policy(${target})
    # The compiler cache asks for it where a header is precompiled.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
    # Checks are many in a test, and the optimizer takes half of the time to compile one. What is tested is optimized.
    target_compile_options(${target} PRIVATE -O0)
endfunction()

function(quorvane_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "GUI;DISPLAY" "" "SOURCES;LIBRARIES;DEFINITIONS")
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "quorvane_test(${name}): unknown arguments ${arg_UNPARSED_ARGUMENTS}")
    endif()
    if(arg_GUI AND NOT QUORVANE_WITH_HOST)
        message(STATUS "Quorvane: ${name}: left out, GUI tests need the Test Engine")
        return()
    endif()
    add_executable(${name} ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES
        QUORVANE_TEST_PROGRAM ON
        RUNTIME_OUTPUT_DIRECTORY ${QUORVANE_TEST_BIN_DIR})
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gtest_main)
    target_compile_definitions(${name} PRIVATE
        ${arg_DEFINITIONS}
        QUORVANE_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
        QUORVANE_BINARY_DIR="${CMAKE_BINARY_DIR}"
        QUORVANE_MODULE_DIR="${QUORVANE_MODULE_DIR}")
    quorvane_test_options(${name})
    quorvane_precompile_tests(${name})
    if(arg_GUI)
        target_link_libraries(${name} PRIVATE quorvane-test-support)
    endif()
    if(arg_DISPLAY)
        set_target_properties(${name} PROPERTIES
            CROSSCOMPILING_EMULATOR "${CMAKE_SOURCE_DIR}/scripts/with-display.sh")
    endif()
    # A parameter without a printer of its own would put its bytes, addresses among them, into the test's name.
    gtest_discover_tests(${name}
        DISCOVERY_MODE PRE_TEST
        NO_PRETTY_VALUES
        DISCOVERY_TIMEOUT 60
        TEST_PREFIX ${name}:
        PROPERTIES TIMEOUT 120 LABELS ${name})
endfunction()

# quorvane_benchmark(<name> SOURCES <files> [LIBRARIES <targets>]): the program bench-<name>, which bench.sh finds.
function(quorvane_benchmark name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
    add_executable(bench-${name} ${arg_SOURCES})
    target_link_libraries(bench-${name} PRIVATE ${arg_LIBRARIES})
    target_compile_definitions(bench-${name} PRIVATE
        QUORVANE_SOURCE_DIR="${CMAKE_SOURCE_DIR}" QUORVANE_MODULE_DIR="${QUORVANE_MODULE_DIR}")
    quorvane_apply_policy(bench-${name})
    set_property(GLOBAL APPEND PROPERTY QUORVANE_BENCHMARKS bench-${name})
endfunction()

# quorvane_log_attachments(<target>): gives a program the log of tests/editor/AttachmentLog.h. The linker hands over the calls
# that attach textures to framebuffers, so that they can be counted whichever library does the rest.
function(quorvane_log_attachments target)
    target_sources(${target} PRIVATE ${CMAKE_SOURCE_DIR}/tests/editor/AttachmentLog.cpp)
    target_link_libraries(${target} PRIVATE Magnum::GL Magnum::GLXContext)
    target_link_options(${target} PRIVATE
        -Wl,--wrap=_ZN6Magnum2GL11Framebuffer13attachTextureENS1_16BufferAttachmentERNS0_7TextureILj2EEEi
        -Wl,--wrap=_ZN6Magnum2GL11Framebuffer6detachENS1_16BufferAttachmentE)
endfunction()
