# The programs in the bundle and, when it is installed, the parts of Qt that they use.

set(zorvane_programs ${CMAKE_BINARY_DIR}/app/${zorvane_contents}/MacOS)

set_target_properties(zorvane PROPERTIES
    MACOSX_BUNDLE TRUE
    MACOSX_BUNDLE_INFO_PLIST ${zorvane_information}
    OUTPUT_NAME Zorvane
    INSTALL_RPATH "@executable_path/../Frameworks")
# Beside the program: the system knows it by the bundle that it stands in.
set_target_properties(zorvane-update-agent PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY ${zorvane_programs}
    INSTALL_RPATH "@executable_path/../Frameworks")
add_dependencies(zorvane zorvane-update-agent)

install(TARGETS zorvane BUNDLE DESTINATION . COMPONENT macos)
install(TARGETS zorvane-update-agent
    RUNTIME DESTINATION ${zorvane_contents}/MacOS COMPONENT macos)

# Qt's own script for this looks for QML imports in the program's folder only; ours are in ui/.
find_program(ZORVANE_MACDEPLOYQT macdeployqt HINTS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS})
if(NOT ZORVANE_MACDEPLOYQT)
    message(FATAL_ERROR "macdeployqt is missing; it comes with Qt, in the folder of its programs")
endif()
install(CODE "
    set(bundle \"\${CMAKE_INSTALL_PREFIX}/Zorvane.app\")
    execute_process(
        COMMAND \"${ZORVANE_MACDEPLOYQT}\" \"\${bundle}\" -always-overwrite
            \"-qmldir=${CMAKE_SOURCE_DIR}/ui\"
            \"-executable=\${bundle}/Contents/MacOS/zorvane-update-agent\"
        COMMAND_ERROR_IS_FATAL ANY)"
    COMPONENT macos)
