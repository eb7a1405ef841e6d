# zorvane_room(<name> SOURCES <file>... [LINKS <target>...])
#
# One folder of the house as one static library, zorvane_<name>. LINKS are public: they are the
# rooms and libraries that its headers may speak of, and so the floors that it stands on.
function(zorvane_room name)
    cmake_parse_arguments(PARSE_ARGV 1 room "" "" "SOURCES;LINKS")
    add_library(zorvane_${name} STATIC ${room_SOURCES})
    target_link_libraries(zorvane_${name} PUBLIC ${room_LINKS} PRIVATE zorvane_options)
    target_include_directories(zorvane_${name} PUBLIC ${CMAKE_SOURCE_DIR})
    target_precompile_headers(zorvane_${name} REUSE_FROM zorvane_precompiled)
    # Those headers were compiled as C++.
    list(FILTER room_SOURCES INCLUDE REGEX "\\.mm$")
    set_source_files_properties(${room_SOURCES} PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
endfunction()
