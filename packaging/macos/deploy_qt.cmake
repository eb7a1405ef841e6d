# Brings the parts of Qt that the programs use into the installed bundle. Qt's own function for it
# looks for the QML that is used in the program's folder only; ours is in ui/.
find_program(ZORVANE_MACDEPLOYQT macdeployqt HINTS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS})
install(CODE "
    if(\"${ZORVANE_MACDEPLOYQT}\" MATCHES NOTFOUND)
        message(FATAL_ERROR \"macdeployqt is missing: it comes with Qt, beside its other programs\")
    endif()
    set(bundle \"\${CMAKE_INSTALL_PREFIX}/Zorvane.app\")
    execute_process(
        COMMAND \"${ZORVANE_MACDEPLOYQT}\" \"\${bundle}\" -always-overwrite
            \"-qmldir=${source}/ui\"
            \"-executable=\${bundle}/Contents/MacOS/zorvane-update-agent\"
        COMMAND_ERROR_IS_FATAL ANY)")
