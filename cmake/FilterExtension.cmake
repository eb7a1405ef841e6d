# zorvane_embed_filter_extension(<path> <identifier>)
#
# Installs the system extension at <path> into Zorvane.app. Stops the configuration unless it is one
# with this identifier: the system would find out only when protection is turned on.
find_program(ZORVANE_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH)

function(zorvane_embed_filter_extension path identifier)
    if(NOT ZORVANE_PYTHON)
        message(FATAL_ERROR "No /usr/bin/python3 to look at the filter extension with")
    endif()
    cmake_path(NORMAL_PATH path)
    string(REGEX REPLACE "/$" "" path "${path}")
    execute_process(
        COMMAND ${ZORVANE_PYTHON} -B "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../scripts/lib/macos/bundle.py"
            extension "${path}" ${identifier}
        RESULT_VARIABLE result ERROR_VARIABLE problem)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "ZORVANE_FILTER_EXTENSION cannot be embedded.\n${problem}")
    endif()
    install(DIRECTORY "${path}"
        DESTINATION Zorvane.app/Contents/Library/SystemExtensions
        USE_SOURCE_PERMISSIONS)
endfunction()
