# Installs ${package}, a part of a build, under a prefix in ${folder} whose name is hard on a unit's
# command line, and looks at the units of the user's systemd there.
cmake_minimum_required(VERSION 3.25)

set(prefix "${folder}/a b 100%")
set(units "${prefix}/share/systemd/user")
set(service "${units}/zorvane-update-agent.service")
set(timer "${units}/zorvane-update-agent.timer")
set(wanted "${units}/timers.target.wants/zorvane-update-agent.timer")

function(expect_line file line)
    file(STRINGS "${file}" lines)
    if(NOT line IN_LIST lines)
        message(FATAL_ERROR "${file} has no line\n${line}\nbut\n${lines}")
    endif()
endfunction()

file(REMOVE_RECURSE "${folder}")
unset(ENV{DESTDIR})
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${package}" --prefix "${prefix}"
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

expect_line("${service}" "ExecStart=\"${folder}/a b 100%%/bin/zorvane-update-agent\"")
expect_line("${timer}" "WantedBy=timers.target")
file(READ_SYMLINK "${wanted}" target)
if(NOT target STREQUAL "../zorvane-update-agent.timer")
    message(FATAL_ERROR "${wanted} leads to ${target}")
endif()

find_program(systemd_analyze systemd-analyze)
if(NOT systemd_analyze)
    message(STATUS "There is no systemd-analyze here: the units were not verified")
    return()
endif()
file(MAKE_DIRECTORY "${folder}/runtime")
set(ENV{XDG_RUNTIME_DIR} "${folder}/runtime")
execute_process(COMMAND "${systemd_analyze}" --user --man=no verify "${service}" "${timer}"
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0 OR output MATCHES "zorvane-update-agent")
    message(FATAL_ERROR "systemd-analyze (${result}):\n${output}")
endif()
