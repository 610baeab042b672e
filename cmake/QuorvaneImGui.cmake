# Dear ImGui as one shared library for host and plug-ins, in two flavours with one SONAME:
#
#   imgui-plain   what is installed and what the programs use
#   imgui-test    the same with the Test Engine and its hooks, in lib/test; only where the host's tests are built
#
# Everybody links `imgui`: it becomes the test flavour in programs made by quorvane_test() and the plain one in all
# others. So a test program loads the very same module file as the editor does.

set(imgui_dir ${IMGUI_DIR})
if(NOT imgui_dir)
    set(imgui_dir ${QUORVANE_BUNDLE_DIR}/external/hello_imgui/hello_imgui/external/imgui)
endif()
quorvane_require_file(${imgui_dir}/imgui.h "Dear ImGui" -DIMGUI_DIR=FOLDER)

file(STRINGS ${imgui_dir}/imgui.h imgui_version REGEX "^#define IMGUI_VERSION[ \t]")
file(STRINGS ${imgui_dir}/imgui.h imgui_docks REGEX "^#define IMGUI_HAS_DOCK")
file(STRINGS ${imgui_dir}/imgui.h imgui_views REGEX "^#define IMGUI_HAS_IMSTR")
string(REGEX MATCH "\"[^\"]*\"" imgui_version "${imgui_version}")
set(QUORVANE_WITH_HOST ON)
if(imgui_docks)
    message(STATUS "Quorvane: Dear ImGui ${imgui_version} with docking, ${imgui_dir}")
elseif(imgui_views)
    set(QUORVANE_WITH_HOST OFF)
    message(STATUS "Quorvane: Dear ImGui ${imgui_version} with string views and without docking, ${imgui_dir}: "
                   "view framework and module are built, the host and its tests are not")
else()
    message(FATAL_ERROR
        "Dear ImGui at ${imgui_dir} has no docking, and the editor docks its views. Check out Dear ImGui's branch "
        "\"docking\" and give its folder with -DIMGUI_DIR=FOLDER, or leave IMGUI_DIR empty to take the pinned one.")
endif()

set(imgui_sources
    ${imgui_dir}/imgui.cpp
    ${imgui_dir}/imgui_demo.cpp
    ${imgui_dir}/imgui_draw.cpp
    ${imgui_dir}/imgui_tables.cpp
    ${imgui_dir}/imgui_widgets.cpp
    ${imgui_dir}/misc/freetype/imgui_freetype.cpp)

function(quorvane_imgui_flavour target folder)
    add_library(${target} SHARED ${imgui_sources} ${ARGN})
    set_target_properties(${target} PROPERTIES
        OUTPUT_NAME quorvane-imgui
        LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/${folder}
        CXX_VISIBILITY_PRESET default
        VISIBILITY_INLINES_HIDDEN OFF)
    target_include_directories(${target} SYSTEM PUBLIC
        $<BUILD_INTERFACE:${imgui_dir}>
        $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}/cmake/imgui>
        $<INSTALL_INTERFACE:${QUORVANE_INSTALL_INCLUDE}/imgui>)
    target_compile_definitions(${target} PUBLIC IMGUI_USER_CONFIG="QuorvaneImGuiConfig.h")
    target_link_libraries(${target} PRIVATE Freetype::Freetype)
    if("undefined" IN_LIST QUORVANE_SANITIZE)
        # The address sanitizer shows what we do wrong with it; how it computes is not ours to test, and takes long to
        # compile.
        target_compile_options(${target} PRIVATE -fno-sanitize=undefined)
    endif()
endfunction()

quorvane_imgui_flavour(imgui-plain lib)

# The Test Engine speaks the released branches' labels only, so there are no GUI tests with string views.
if(QUORVANE_TESTS AND QUORVANE_WITH_HOST)
    set(engine ${QUORVANE_BUNDLE_DIR}/external/imgui_test_engine/imgui_test_engine/imgui_test_engine)
    quorvane_require_file(${engine}/imgui_te_engine.h "Dear ImGui's Test Engine" -DQUORVANE_DEPS_DIR=FOLDER)
    file(GLOB engine_sources ${engine}/*.cpp)
    quorvane_imgui_flavour(imgui-test lib/test ${engine_sources})
    target_include_directories(imgui-test SYSTEM PUBLIC ${engine})
    target_compile_definitions(imgui-test PUBLIC IMGUI_ENABLE_TEST_ENGINE)
    target_link_libraries(imgui-test PRIVATE Threads::Threads)
endif()

add_library(imgui INTERFACE)
target_link_libraries(imgui INTERFACE
    $<BUILD_INTERFACE:$<IF:$<AND:$<TARGET_EXISTS:imgui-test>,$<BOOL:$<TARGET_PROPERTY:QUORVANE_TEST_PROGRAM>>>,imgui-test,imgui-plain>>
    $<INSTALL_INTERFACE:QuorvaneEditor::imgui-plain>)

# The window and renderer back ends, for the desktop editor alone.
if(QUORVANE_WITH_HOST)
    find_package(glfw3 3.3 REQUIRED)
    add_library(imgui-backends STATIC
        ${imgui_dir}/backends/imgui_impl_glfw.cpp
        ${imgui_dir}/backends/imgui_impl_opengl3.cpp)
    target_include_directories(imgui-backends SYSTEM PUBLIC ${imgui_dir}/backends)
    set_target_properties(imgui-backends PROPERTIES CXX_VISIBILITY_PRESET default VISIBILITY_INLINES_HIDDEN OFF)
    target_link_libraries(imgui-backends PUBLIC imgui glfw PRIVATE ${CMAKE_DL_LIBS})
endif()
