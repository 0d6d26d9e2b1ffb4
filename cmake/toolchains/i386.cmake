# i386 (ILP32, a double 4-byte aligned inside records) with Debian's cross compiler
# (i686-linux-gnu-g++) and multiarch libraries (libjsoncpp-dev:i386, libgtest-dev:i386); used by
# tools/check-abi.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER i686-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER i686-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
# Tests and test discovery run under qemu-user without -L: the program's interpreter is the
# multiarch loader, which loads the multiarch libc and libstdc++ it belongs with.
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-i386)
