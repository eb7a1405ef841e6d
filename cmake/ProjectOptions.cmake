# How every target of ours is compiled. The strict warnings live in one interface target,
# zorvane_options; generated QML code is built without it.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)

option(ZORVANE_WERROR "Treat warnings as errors" OFF)
option(ZORVANE_BUILD_TESTS "Build the tests" ON)
option(ZORVANE_BUILD_BENCH "Build the benchmarks" OFF)
option(ZORVANE_BUILD_FUZZ "Build the libFuzzer targets (clang only)" OFF)
set(ZORVANE_SANITIZE "" CACHE STRING "Sanitizers for the whole build, as -fsanitize= takes them")

# Whose ports are built: a Mac's own, elsewhere those of the simulated system, which uses what Linux
# has.
if(APPLE)
    set(ZORVANE_PLATFORM macos)
else()
    set(ZORVANE_PLATFORM simulated)
endif()

if(APPLE)
    enable_language(OBJCXX)
    set(CMAKE_OBJCXX_STANDARD 20)
    set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
    set(CMAKE_OBJCXX_EXTENSIONS OFF)
    add_compile_options("$<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-arc;-Wnullable-to-nonnull-conversion;\
-Wunguarded-availability-new;-Wimplicit-retain-self>")
endif()

# What nothing calls stays out of the programs, and so out of memory.
add_compile_options($<$<CONFIG:Release>:-ffunction-sections> $<$<CONFIG:Release>:-fdata-sections>)
add_link_options(
    $<$<CONFIG:Release>:$<IF:$<BOOL:${APPLE}>,-Wl$<COMMA>-dead_strip,-Wl$<COMMA>--gc-sections>>)

if(ZORVANE_SANITIZE)
    add_compile_options(-fsanitize=${ZORVANE_SANITIZE} -fno-omit-frame-pointer -g)
    add_link_options(-fsanitize=${ZORVANE_SANITIZE})
    if(ZORVANE_SANITIZE MATCHES undefined)
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
endif()

add_library(zorvane_options INTERFACE)
target_compile_options(zorvane_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wold-style-cast
    -Woverloaded-virtual -Wnon-virtual-dtor
    # What GCC 12 concludes while optimising is wrong about std::string and std::optional (its bugs
    # 105651 and 80635); the sanitizers look for the real thing.
    "$<$<CXX_COMPILER_ID:GNU>:-Wno-restrict;-Wno-stringop-overflow;-Wno-array-bounds;-Wno-maybe-uninitialized>"
    $<$<BOOL:${ZORVANE_WERROR}>:-Werror>)
target_compile_definitions(zorvane_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_DISABLE_DEPRECATED_BEFORE=0x060400)
target_include_directories(zorvane_options INTERFACE ${CMAKE_SOURCE_DIR})
if(ZORVANE_SANITIZE STREQUAL "thread" AND CMAKE_SYSTEM_NAME STREQUAL "Linux")
    target_sources(zorvane_options INTERFACE
        $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:${CMAKE_CURRENT_LIST_DIR}/sanitizers/clone.cpp>)
endif()
