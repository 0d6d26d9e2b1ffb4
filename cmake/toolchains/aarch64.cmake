# aarch64 (LP64) with Debian's cross compiler (aarch64-linux-gnu-g++) and multiarch libraries
# (libjsoncpp-dev:arm64, libgtest-dev:arm64); used by tools/check-abi.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
# Tests and test discovery run under qemu-user without -L: the program's interpreter is the
# multiarch loader, which loads the multiarch libc and libstdc++ it belongs with.
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64)
