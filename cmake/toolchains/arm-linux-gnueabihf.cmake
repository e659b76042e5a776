# 32-bit ARM Linux, the library's home: Debian's cross compiler, Debian's armhf packages, and QEMU to
# run what was built.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
# The loader and the C library of the armhf packages lie in the root of the file system.
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm;-L;/)
