# What `cmake --install` puts down, below any prefix:
#
#   bin/                      the programs
#   lib/                      the libraries that programs and modules share
#   lib/quorvane/             the libraries that a view compiles in
#   lib/quorvane/modules/     the module, with its metadata
#   lib/cmake/QuorvaneEditor/ the package that find_package(QuorvaneEditor) finds
#   include/quorvane/         the headers that a view is compiled against, a folder for each room
#   share/quorvane/           what the editor reads when it runs
#   share/doc/Quorvane/       licences, and an example of a view
#
# Nothing names the folder that it was built in, so a prefix can be moved.

include(CMakePackageConfigHelpers)

foreach(folder BINDIR LIBDIR INCLUDEDIR)
    if(IS_ABSOLUTE "${CMAKE_INSTALL_${folder}}")
        message(FATAL_ERROR "CMAKE_INSTALL_${folder} is ${CMAKE_INSTALL_${folder}}, and has to be a folder below the prefix")
    endif()
endforeach()

set(archive_dir ${CMAKE_INSTALL_LIBDIR}/quorvane)

# --- What others link ------------------------------------------------------------------------------------------------

set(linked imgui imgui-plain rapidjson quorvane-icons engine-utils editor-changes editor-framework quorvane-host-interface)
if(QUORVANE_USES_COMPAT)
    list(APPEND linked compat compat-gl)
endif()
set_target_properties(editor-framework PROPERTIES EXPORT_NAME framework)
set_target_properties(editor-changes PROPERTIES EXPORT_NAME changes)
set_target_properties(engine-utils PROPERTIES EXPORT_NAME utils)
set_target_properties(quorvane-host-interface PROPERTIES EXPORT_NAME host-interface)
set_target_properties(quorvane-icons PROPERTIES EXPORT_NAME icons)
install(TARGETS ${linked} EXPORT QuorvaneEditorTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${archive_dir})
install(EXPORT QuorvaneEditorTargets NAMESPACE QuorvaneEditor:: DESTINATION ${QUORVANE_INSTALL_PACKAGE})

get_property(QUORVANE_STAMP GLOBAL PROPERTY QUORVANE_STAMP)
configure_package_config_file(
    ${CMAKE_SOURCE_DIR}/cmake/package/QuorvaneEditorConfig.cmake.in
    ${CMAKE_BINARY_DIR}/package/QuorvaneEditorConfig.cmake
    INSTALL_DESTINATION ${QUORVANE_INSTALL_PACKAGE}
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/package/QuorvaneEditorConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
    ${CMAKE_BINARY_DIR}/package/QuorvaneEditorConfig.cmake
    ${CMAKE_BINARY_DIR}/package/QuorvaneEditorConfigVersion.cmake
    ${CMAKE_SOURCE_DIR}/cmake/QuorvaneView.cmake
    DESTINATION ${QUORVANE_INSTALL_PACKAGE})

# --- Headers ---------------------------------------------------------------------------------------------------------

# quorvane_install_headers(<folder> <room>): all headers of a folder of the source tree, with the folders below it.
function(quorvane_install_headers folder room)
    install(DIRECTORY ${folder}/ DESTINATION ${QUORVANE_INSTALL_INCLUDE}/${room} FILES_MATCHING PATTERN *.h)
endfunction()

quorvane_install_headers(${CMAKE_SOURCE_DIR}/host/include host)
quorvane_install_headers(${CMAKE_SOURCE_DIR}/editor editor)
quorvane_install_headers(${CMAKE_SOURCE_DIR}/engine engine)
if(QUORVANE_USES_COMPAT)
    quorvane_install_headers(${CMAKE_SOURCE_DIR}/compat/include compat)
endif()
foreach(header imgui imgui_internal imconfig imstb_rectpack imstb_textedit imstb_truetype)
    if(EXISTS ${imgui_dir}/${header}.h)
        install(FILES ${imgui_dir}/${header}.h DESTINATION ${QUORVANE_INSTALL_INCLUDE}/imgui)
    endif()
endforeach()
install(FILES ${CMAKE_SOURCE_DIR}/cmake/imgui/QuorvaneImGuiConfig.h DESTINATION ${QUORVANE_INSTALL_INCLUDE}/imgui)
install(FILES ${CMAKE_BINARY_DIR}/include/icons/icons_font_awesome_6.h DESTINATION ${QUORVANE_INSTALL_INCLUDE}/icons)

# --- What runs -------------------------------------------------------------------------------------------------------

# No plug-in names these: what it calls of them is found in the process.
set(programs)
foreach(target quorvane-project quorvane-host quorvane-editor quorvane-localize)
    if(TARGET ${target})
        list(APPEND programs ${target})
    endif()
endforeach()
install(TARGETS ${programs} RUNTIME LIBRARY)

set_target_properties(Localization PROPERTIES INSTALL_RPATH "$ORIGIN/../..")
install(TARGETS Localization LIBRARY DESTINATION ${QUORVANE_INSTALL_MODULES})
install(FILES ${QUORVANE_MODULE_DIR}/Localization.conf DESTINATION ${QUORVANE_INSTALL_MODULES})

install(DIRECTORY ${QUORVANE_SHARE_DIR}/ DESTINATION ${QUORVANE_INSTALL_SHARE})
install(FILES LICENSE THIRD_PARTY.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY samples/inspector DESTINATION ${CMAKE_INSTALL_DOCDIR} PATTERN build EXCLUDE)
foreach(file ${imgui_dir}/LICENSE.txt ${QUORVANE_BUNDLE_DIR}/external/hello_imgui/hello_imgui/hello_imgui_assets/fonts/LICENSE-FontAwesome.txt)
    if(EXISTS ${file})
        get_filename_component(name ${file} NAME)
        string(REPLACE "LICENSE.txt" "LICENSE-DearImGui.txt" name ${name})
        install(FILES ${file} DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME ${name})
    endif()
endforeach()
