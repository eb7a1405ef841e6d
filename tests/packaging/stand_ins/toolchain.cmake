# LLVM as a compiler for macOS, for programs that use nothing of the system: no SDK is needed.
include(${CMAKE_CURRENT_LIST_DIR}/../../../cmake/MacOS.cmake)
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR arm64)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_CXX_COMPILER_TARGET arm64-apple-macos${CMAKE_OSX_DEPLOYMENT_TARGET})
# It cannot link what CMake would try it with.
set(CMAKE_CXX_COMPILER_WORKS TRUE)
set(CMAKE_CXX_FLAGS_INIT -stdlib=libc++)
# The linker's version says which options lld is given; the pad is room for a search path.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-nostdlib -fuse-ld=lld -mlinker-version=609 -Wl,-headerpad,0x400")
foreach(version "" -22 -21 -20 -19 -18 -17 -16 -15 -14 -13)
    find_program(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool${version})
endforeach()
# CMake asks the Mac that it runs on whether programs can have search paths for libraries.
set(CMAKE_SHARED_LIBRARY_RUNTIME_CXX_FLAG -Wl,-rpath,)
