# quorvane_add_view(<name> SOURCES <files> [LIBRARIES <targets>] [TITLE <text>] [DESCRIPTION <text>] [EXPORTS <symbols>])
#
# A view plug-in: the target <name>, a library <name>.so with its metadata <name>.conf beside it, in the folder
# ${QUORVANE_MODULE_DIR}, which is `modules` in the build folder where nobody says otherwise. One of the sources holds
#
#     CORRADE_PLUGIN_REGISTER(<name>, <class>, QUORVANE_MODULE_INTERFACE)
#
# The metadata carry a stamp of what a module and the editor that loads it have to have in common: compiler, Dear ImGui with
# its configuration, and which Corrade and Magnum. The editor refuses a module with another one before it loads it. The stamp's
# number of the framework alone may differ.
#
#   TITLE, DESCRIPTION   in the metadata, each one line; the title is <name> where none is given
#   EXPORTS              symbols beside the five entry points that the library shows, for tests

# quorvane_stamp(<variable>): the stamp of what is compiled here, as the lines of a group of a metadata file.
function(quorvane_stamp variable)
    # Versions of a compiler that differ in the last numbers only lay out everything alike.
    string(REGEX MATCH "^[0-9]+" version "${CMAKE_CXX_COMPILER_VERSION}")
    get_property(libraries GLOBAL PROPERTY QUORVANE_STAMP)
    # The framework's number goes up with each virtual function that its classes get; an editor calls none that a module lacks.
    set(framework "framework=2")
    set(${variable} "compiler=${CMAKE_CXX_COMPILER_ID} ${version}\n${framework}\n${libraries}" PARENT_SCOPE)
endfunction()

function(quorvane_add_view name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "TITLE;DESCRIPTION" "SOURCES;LIBRARIES;EXPORTS")
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "quorvane_add_view(${name}): unknown arguments ${arg_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT arg_SOURCES)
        message(FATAL_ERROR "quorvane_add_view(${name}): no SOURCES given")
    endif()
    set(title "${name}")
    if(arg_TITLE)
        set(title "${arg_TITLE}")
    endif()
    foreach(text IN ITEMS "${title}" "${arg_DESCRIPTION}")
        if(text MATCHES "[\r\n\"]")
            message(FATAL_ERROR "quorvane_add_view(${name}): a text of the metadata has several lines or a quotation mark: ${text}")
        endif()
    endforeach()
    set(folder ${CMAKE_BINARY_DIR}/modules)
    if(QUORVANE_MODULE_DIR)
        set(folder ${QUORVANE_MODULE_DIR})
    endif()

    set(symbols pluginVersion pluginInterface pluginInstancer pluginInitializer pluginFinalizer ${arg_EXPORTS})
    list(JOIN symbols "; " symbols)
    set(map ${CMAKE_CURRENT_BINARY_DIR}/${name}.map)
    file(CONFIGURE OUTPUT ${map} CONTENT "{ global: @symbols@; local: *; };\n" @ONLY)
    quorvane_stamp(stamp)
    file(CONFIGURE OUTPUT ${folder}/${name}.conf CONTENT
        "[metadata]\ntitle=\"@title@\"\ndescription=\"@arg_DESCRIPTION@\"\n\n[stamp]\n@stamp@" @ONLY)

    add_library(${name} MODULE ${arg_SOURCES})
    target_compile_features(${name} PRIVATE cxx_std_20)
    target_compile_definitions(${name} PRIVATE CORRADE_DYNAMIC_PLUGIN)
    target_link_libraries(${name} PRIVATE QuorvaneEditor::framework ${arg_LIBRARIES})
    # The functions of the editor are found in the process that loads the module: it names no library of the editor's own.
    # Hidden visibility alone would let unique symbols out, which keep a library from ever leaving the process.
    target_link_options(${name} PRIVATE
        -Wl,-z,undefs
        -Wl,--version-script=${map}
        -Wl,--exclude-libs,ALL)
    set_target_properties(${name} PROPERTIES
        PREFIX ""
        SUFFIX .so
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        LIBRARY_OUTPUT_DIRECTORY ${folder}
        LINK_DEPENDS ${map})
endfunction()
