# Writes ${zorvane_service}, which starts ${zorvane_program}: at installation, when it is known where
# that will be. In a unit's command line a blank ends a word and a percent sign begins a specifier.

set(program "${zorvane_program}")
string(REPLACE "\\" "\\\\" program "${program}")
string(REPLACE "\"" "\\\"" program "${program}")
string(REPLACE "%" "%%" program "${program}")
configure_file("${CMAKE_CURRENT_LIST_DIR}/zorvane-update-agent.service.in" "${zorvane_service}" @ONLY)
