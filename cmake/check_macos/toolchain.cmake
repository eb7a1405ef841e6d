# For scripts/check-macos: the tree as a Mac builds it, but by Debian's clang, with the platform's
# own headers ($MACOS_SDK) and with Debian's Qt, whose headers serve every platform. What comes out
# is for looking at: Qt's part of it is left open.
foreach(variable MACOS_SDK MACOS_CHECK_HEADERS)
    if(NOT IS_DIRECTORY "$ENV{${variable}}")
        message(FATAL_ERROR "${variable} names no folder; see scripts/check-macos")
    endif()
endforeach()

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR arm64)
set(CMAKE_OSX_SYSROOT $ENV{MACOS_SDK} CACHE PATH "")
set(CMAKE_OSX_ARCHITECTURES arm64 CACHE STRING "")
set(CMAKE_OSX_DEPLOYMENT_TARGET 12.0 CACHE STRING "")
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
# What is built here cannot be run here: a step that would do so is passed over.
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/bin/true)

set(CMAKE_C_COMPILER /usr/bin/clang-15)
set(CMAKE_CXX_COMPILER /usr/bin/clang++-15)
set(CMAKE_OBJCXX_COMPILER /usr/bin/clang++-15)
set(CMAKE_AR /usr/bin/llvm-ar-14 CACHE FILEPATH "")
set(CMAKE_RANLIB /usr/bin/llvm-ranlib-14 CACHE FILEPATH "")
set(CMAKE_INSTALL_NAME_TOOL /usr/bin/llvm-install-name-tool-14 CACHE FILEPATH "")
# A younger standard library than that of the headers, which has no std::ranges; in this one they
# still had to be asked for.
string(JOIN " " library -stdlib=libc++ -nostdinc++
    "-isystem /usr/lib/llvm-15/include/c++/v1" -D_LIBCPP_ENABLE_EXPERIMENTAL)
set(others "-isystem $ENV{MACOS_CHECK_HEADERS}")
string(JOIN " " linker "-fuse-ld=${CMAKE_CURRENT_LIST_DIR}/ld64" -mlinker-version=609
    -Wno-unused-command-line-argument)
foreach(kind EXE SHARED MODULE)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT "${linker}")
endforeach()
foreach(language C CXX OBJCXX)
    set(CMAKE_${language}_COMPILER_TARGET arm64-apple-macos12)
    set(CMAKE_${language}_COMPILER_WORKS TRUE)
endforeach()
set(CMAKE_C_FLAGS_INIT "${others}")
set(CMAKE_CXX_FLAGS_INIT "${library} ${others}")
set(CMAKE_OBJCXX_FLAGS_INIT "${library} ${others}")

# Debian's packages describe themselves here. Their folder /usr/include itself holds the headers of
# another system and must not be searched, so what is needed of it is linked into a folder of its own.
set(CMAKE_PREFIX_PATH /usr)
set(CMAKE_LIBRARY_ARCHITECTURE x86_64-linux-gnu)
set(Vulkan_INCLUDE_DIR $ENV{MACOS_CHECK_HEADERS} CACHE PATH "")
set(PNG_PNG_INCLUDE_DIR $ENV{MACOS_CHECK_HEADERS} CACHE PATH "")
set(PNG_LIBRARY /usr/lib/${CMAKE_LIBRARY_ARCHITECTURE}/libpng.so CACHE FILEPATH "")
set(ZLIB_INCLUDE_DIR $ENV{MACOS_SDK}/usr/include CACHE PATH "")
set(ZLIB_LIBRARY $ENV{MACOS_SDK}/usr/lib/libz.tbd CACHE FILEPATH "")
set(open_gl $ENV{MACOS_SDK}/System/Library/Frameworks/OpenGL.framework)
set(OPENGL_INCLUDE_DIR ${open_gl}/Headers CACHE PATH "")
set(OPENGL_gl_LIBRARY ${open_gl} CACHE PATH "")
