# What the bundle for macOS is built for, and says it needs. To be included before project(); other
# systems do not look at it, and a toolchain file says itself what it is for.
set(CMAKE_OSX_DEPLOYMENT_TARGET 13.0 CACHE STRING "The oldest macOS that the program runs on")
set(CMAKE_OSX_ARCHITECTURES arm64 CACHE STRING "The processors that the program is built for")
