# s390x (LP64, big-endian) with Debian's cross compiler (s390x-linux-gnu-g++) and multiarch
# libraries (libjsoncpp-dev:s390x, libgtest-dev:s390x); used by tools/check-abi.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR s390x)
set(CMAKE_C_COMPILER s390x-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER s390x-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE s390x-linux-gnu)
# Tests and test discovery run under qemu-user without -L: the program's interpreter is the
# multiarch loader, which loads the multiarch libc and libstdc++ it belongs with.
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-s390x)
