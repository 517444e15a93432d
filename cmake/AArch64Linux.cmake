# Cross build for 64-bit ARM Linux: Debian's cross compiler, and a Debian arm64 system
# root that scripts/test_aarch64.sh makes. Programs of the target run under emulation.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)

get_filename_component(_default_root ${CMAKE_CURRENT_LIST_DIR}/../build-aarch64/root ABSOLUTE)
set(JQ_AARCH64_ROOT ${_default_root} CACHE PATH "System root of the target")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES JQ_AARCH64_ROOT)

set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
set(CMAKE_SYSROOT ${JQ_AARCH64_ROOT})
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64-static -L ${JQ_AARCH64_ROOT})

# Programs come from the building machine, everything else from the root alone.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
