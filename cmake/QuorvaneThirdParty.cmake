# Libraries that the system has, Corrade and Magnum real or from compat/, and the header-only ones of the pinned archive.

find_package(Threads REQUIRED)
find_package(PkgConfig REQUIRED)
find_package(Freetype REQUIRED)

find_path(QUORVANE_RAPIDJSON_DIR rapidjson/pointer.h DOC "Folder that holds rapidjson/" REQUIRED)
add_library(rapidjson INTERFACE)
# In an installed package it is looked for anew.
target_include_directories(rapidjson SYSTEM INTERFACE $<BUILD_INTERFACE:${QUORVANE_RAPIDJSON_DIR}>)

# Corrade and Magnum. Everything links Corrade::Containers, Corrade::Utility, Corrade::PluginManager, Magnum::Magnum,
# Magnum::GL and Magnum::GLXContext, whichever it is.
set(QUORVANE_USES_COMPAT ON)
if(NOT QUORVANE_COMPAT STREQUAL "ON")
    if(QUORVANE_COMPAT STREQUAL "OFF")
        set(wish REQUIRED)
    else()
        set(wish QUIET)
    endif()
    find_package(Corrade ${wish} COMPONENTS Containers Utility PluginManager)
    if(Corrade_FOUND)
        find_package(Magnum ${wish} COMPONENTS GL GlxContext)
    endif()
    if(Corrade_FOUND AND Magnum_FOUND)
        set(QUORVANE_USES_COMPAT OFF)
        add_library(Magnum::GLXContext ALIAS Magnum::GlxContext)
        get_target_property(where Corrade::Utility INTERFACE_INCLUDE_DIRECTORIES)
        list(GET where 0 where)
        message(STATUS "Quorvane: Corrade and Magnum: the installed ones, ${where}")
    endif()
endif()
if(QUORVANE_USES_COMPAT)
    message(STATUS "Quorvane: Corrade and Magnum: the subset in compat/")
endif()

# What the pinned archive holds, or what the user points to.
function(quorvane_require_file path what option)
    if(NOT EXISTS ${path})
        message(FATAL_ERROR
            "${what} is not at ${path}. Run scripts/setup.sh, which downloads and unpacks the pinned source archive"
            ", or give ${option}.")
    endif()
endfunction()

set(bundle ${QUORVANE_BUNDLE_DIR}/external)
set(icon_font ${bundle}/hello_imgui/hello_imgui/hello_imgui_assets/fonts/Font_Awesome_6_Free-Solid-900.otf)
set(icon_header ${bundle}/hello_imgui/hello_imgui/src/hello_imgui/icons_font_awesome_6.h)
quorvane_require_file(${icon_font} "The icon font" -DQUORVANE_DEPS_DIR=FOLDER)
quorvane_require_file(${icon_header} "The icon font's table" -DQUORVANE_DEPS_DIR=FOLDER)
set(QUORVANE_ICON_FONT ${QUORVANE_SHARE_DIR}/icons.otf)
configure_file(${icon_font} ${QUORVANE_ICON_FONT} COPYONLY)
# The header lies among many others that nobody should find by accident.
configure_file(${icon_header} ${CMAKE_BINARY_DIR}/include/icons/icons_font_awesome_6.h COPYONLY)
add_library(quorvane-icons INTERFACE)
add_library(QuorvaneEditor::icons ALIAS quorvane-icons)
target_include_directories(quorvane-icons SYSTEM INTERFACE
    $<BUILD_INTERFACE:${CMAKE_BINARY_DIR}/include/icons>
    $<INSTALL_INTERFACE:${QUORVANE_INSTALL_INCLUDE}/icons>)

# The upstream header is called portable-file-dialogs.h, the archive's copy portable_file_dialogs.h; ours is the former.
set(pfd ${PFD_DIR})
if(NOT pfd)
    set(pfd ${bundle}/portable_file_dialogs/portable_file_dialogs)
endif()
set(pfd_header ${pfd}/portable-file-dialogs.h)
if(NOT EXISTS ${pfd_header})
    set(pfd_header ${pfd}/portable_file_dialogs.h)
endif()
quorvane_require_file(${pfd_header} "portable-file-dialogs" -DPFD_DIR=FOLDER)
configure_file(${pfd_header} ${CMAKE_BINARY_DIR}/include/pfd/portable-file-dialogs.h COPYONLY)
add_library(portable-file-dialogs INTERFACE)
target_include_directories(portable-file-dialogs SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/include/pfd)
target_link_libraries(portable-file-dialogs INTERFACE Threads::Threads)
