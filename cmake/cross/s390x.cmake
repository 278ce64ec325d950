# Debian's cross compiler for s390x, which is big-endian; programs run under qemu-user.
set(CMAKE_SYSTEM_PROCESSOR s390x)
include(${CMAKE_CURRENT_LIST_DIR}/debian.cmake)
