# Warnings for our own targets, sanitizers for all.

if(QUORVANE_SANITIZE)
    list(JOIN QUORVANE_SANITIZE "," sanitizers)
    add_compile_options(-fsanitize=${sanitizers} -fno-omit-frame-pointer -g)
    add_link_options(-fsanitize=${sanitizers})
    if("undefined" IN_LIST QUORVANE_SANITIZE)
        # The framework's classes are compiled into the module and into the host, each with hidden visibility. They have
        # two typeinfo objects, which the vptr check takes for a wrong type.
        add_compile_options(-fno-sanitize=vptr -fno-sanitize-recover=all)
        add_link_options(-fno-sanitize=vptr)
        # RapidJSON's parser adds to the null pointer of its empty stack, which Clang sees and which does no harm.
        add_compile_options($<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=pointer-overflow>)
    endif()
    message(STATUS "Quorvane: sanitizers: ${sanitizers}")
else()
    # A shared library that forgot a dependency fails here and not when it is loaded. A view module may have undefined
    # symbols, which the program that loads it has. Sanitizers leave their own symbols to the program, too.
    add_link_options($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY>:-Wl,--no-undefined>)
endif()
add_compile_definitions($<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)

# quorvane_apply_policy(<target>): for every target whose sources are ours.
function(quorvane_apply_policy target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic $<$<BOOL:${QUORVANE_WERROR}>:-Werror>)
    # RapidJSON's iterators are compared by operators that C++20 finds in two orders; both mean the same.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:Clang>:-Wno-ambiguous-reversed-operator>)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # GCC 12 sees overlapping copies in the standard library's own sums of strings once it optimizes.
        target_compile_options(${target} PRIVATE -Wno-restrict)
    endif()
    if(QUORVANE_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # The sanitizers' own code makes GCC see uninitialized values in the standard library.
        target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
    endif()
endfunction()
