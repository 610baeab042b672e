# What a module and the editor that loads it have to have in common, beside the compiler: the global property QUORVANE_STAMP,
# as lines of a metadata file, for quorvane_add_view(), the host and the installed package.

include(QuorvaneView)

# Of Dear ImGui's configuration all that the checkout and this project define. Only the compiler knows what that is.
set(includes)
foreach(header ${imgui_dir}/imconfig.h ${CMAKE_SOURCE_DIR}/cmake/imgui/QuorvaneImGuiConfig.h)
    if(EXISTS ${header})
        string(APPEND includes "#include \"${header}\"\n")
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
    endif()
endforeach()
set(source ${CMAKE_BINARY_DIR}/CMakeFiles/imgui-configuration.cpp)
file(WRITE ${source} "${includes}")
execute_process(
    COMMAND ${CMAKE_CXX_COMPILER} -E -dM ${source}
    OUTPUT_VARIABLE defines
    COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "#define Im[A-Za-z]+[^\n]*|#define IM[A-Z]*_[^\n]*" configuration "${defines}")
list(TRANSFORM configuration REPLACE "^#define " "")
list(TRANSFORM configuration STRIP)
list(SORT configuration)
if(imgui_docks)
    list(PREPEND configuration docking)
endif()
if(imgui_views)
    list(PREPEND configuration "string views")
endif()
list(JOIN configuration ", " configuration)
string(REPLACE "\"" "" version "${imgui_version}")
set(corrade "installed ones")
if(QUORVANE_USES_COMPAT)
    set(corrade "editor's subset")
endif()
set_property(GLOBAL PROPERTY QUORVANE_STAMP
    "imgui=${version}\nimguiConfiguration=${configuration}\ncorrade=${corrade}\n")
