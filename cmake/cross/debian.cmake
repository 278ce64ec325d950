# What the toolchains of Debian's cross compilers have in common. The processor's own C and C++ libraries come with the
# compiler. It sees /usr/include after them, so that libraries which are headers alone need nothing of their own.
set(CMAKE_SYSTEM_NAME Linux)
set(triplet ${CMAKE_SYSTEM_PROCESSOR}-linux-gnu)
set(CMAKE_C_COMPILER ${triplet}-gcc)
set(CMAKE_CXX_COMPILER ${triplet}-g++)
find_program(FLD_EMULATOR NAMES qemu-${CMAKE_SYSTEM_PROCESSOR}-static qemu-${CMAKE_SYSTEM_PROCESSOR} REQUIRED)
set(CMAKE_CROSSCOMPILING_EMULATOR ${FLD_EMULATOR} -L /usr/${triplet})

# Libraries that would be this machine's are found here instead.
set(fmt_DIR ${CMAKE_CURRENT_LIST_DIR})
set(GTest_DIR ${CMAKE_CURRENT_LIST_DIR})
