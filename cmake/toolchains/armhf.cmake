# armhf (ILP32, a double 8-byte aligned) with Debian's cross compiler (arm-linux-gnueabihf-g++) and
# multiarch libraries (libjsoncpp-dev:armhf, libgtest-dev:armhf); used by tools/check-abi.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
# Tests and test discovery run under qemu-user without -L: the program's interpreter is the
# multiarch loader, which loads the multiarch libc and libstdc++ it belongs with.
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm)
