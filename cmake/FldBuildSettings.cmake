# Compiler settings shared by every target of the project.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()
# Programs and the plug-in land side by side, where the programs look for it first.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

# What is installed is the same bytes whatever folder it was built in: no paths of sources in it, nor in the build IDs the
# programs' paths to libraries of the build.
add_compile_options("$<$<CONFIG:Release>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

include(GNUInstallDirs)

add_compile_options(-Wall -Wextra -Wconversion)
add_compile_definitions(_FILE_OFFSET_BITS=64)
if(FLD_WARNINGS_AS_ERRORS)
  add_compile_options(-Werror)
endif()
if(FLD_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(FLD_SANITIZE_THREADS)
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
endif()

# fld_add_module(NAME SOURCES...): one module of the reader, compiled once for the plug-in and the static library.
function(fld_add_module name)
  add_library(fld_${name} OBJECT ${ARGN})
  target_include_directories(fld_${name} PUBLIC ${PROJECT_SOURCE_DIR})
  if(FLD_BUILD_FUZZERS)
    target_compile_options(fld_${name} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
endfunction()
