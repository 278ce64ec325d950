# Makes the Debian packages and looks what is in them. Wants BUILD, WORK; PYTHON, whether there is a Python package; LINTIAN,
# the program that checks packages, if there is one.
cmake_policy(VERSION 3.25)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
set(ENV{SOURCE_DATE_EPOCH} 1000000000)
execute_process(COMMAND ${CMAKE_CPACK_COMMAND} -G DEB --config ${BUILD}/CPackConfig.cmake -B ${WORK}
  OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "cpack: ${status}\n${output}")
endif()

# expect_package(NAME FIELDS FILE...): there is one such package, its fields Package, Version and Depends match FIELDS, and it
# has these files.
function(expect_package name fields)
  file(GLOB package ${WORK}/${name}_*.deb)
  list(LENGTH package count)
  if(NOT count EQUAL 1)
    message(FATAL_ERROR "${count} packages ${name}\n${output}")
  endif()
  execute_process(COMMAND dpkg-deb --field ${package} Package Version Depends OUTPUT_VARIABLE found
    COMMAND_ERROR_IS_FATAL ANY)
  if(NOT found MATCHES "^Package: ${name}\nVersion: 1[.]02\nDepends: [^\n]*${fields}")
    message(FATAL_ERROR "the fields of ${name}:\n${found}")
  endif()
  execute_process(COMMAND dpkg-deb --contents ${package} OUTPUT_VARIABLE contents COMMAND_ERROR_IS_FATAL ANY)
  foreach(file ${ARGN} ${name}/copyright ${name}/changelog.gz ${name}/vantrel-fld.spdx.json)
    if(NOT contents MATCHES "/usr/[^\n]*${file}[^\n]*\n")
      message(FATAL_ERROR "not in ${name}: ${file}\n${contents}")
    endif()
  endforeach()
  # Of the system's owner, and for everybody to read, whatever the file mask was.
  if(NOT contents MATCHES "drwxr-xr-x root/root[^\n]* ./usr/share/doc/${name}/\n" OR
     NOT contents MATCHES "-rw-r--r-- root/root[^\n]* 2001-09-09 [^\n]* ./usr/share/doc/${name}/vantrel-fld.spdx.json\n")
    message(FATAL_ERROR "owners, permissions or times in ${name}:\n${contents}")
  endif()
endfunction()

expect_package(vantrel-fld "libc6 "
  bin/fldtool libuserd-fld.so libfld_host.a host/session.h interface/userd_api.h man1/fldtool.1.gz
  vantrel-fldConfig.cmake findings.md)
if(PYTHON)
  expect_package(python3-vantrel-fld "vantrel-fld [(]= 1[.]02[)], python3 [(]>= 3[.][0-9]+~[)], python3 [(]<< 3[.][0-9]+[)], python3-numpy"
    vantrel_fld/__init__.py vantrel_fld/py.typed "vantrel_fld/_core[.]" "vantrel_fld/libuserd-fld.so -> [^\n]*/libuserd-fld.so")
endif()

# The bill of materials: dated as told, with what the package was made with.
file(GLOB package ${WORK}/vantrel-fld_*.deb)
execute_process(COMMAND dpkg-deb --extract ${package} ${WORK}/files COMMAND_ERROR_IS_FATAL ANY)
file(READ ${WORK}/files/usr/share/doc/vantrel-fld/vantrel-fld.spdx.json sbom)
string(JSON created GET "${sbom}" creationInfo created)
if(NOT created STREQUAL "2001-09-09T01:46:40Z")
  message(FATAL_ERROR "the bill of materials is of ${created}")
endif()
string(JSON count LENGTH "${sbom}" packages)
math(EXPR last "${count} - 1")
set(versions "")
foreach(i RANGE ${last})
  string(JSON name GET "${sbom}" packages ${i} name)
  string(JSON version GET "${sbom}" packages ${i} versionInfo)
  string(APPEND versions "${name} ${version}\n")
endforeach()
foreach(line "vantrel-fld 1[.]02" "CLI11 [0-9]" "fmt [0-9]" "nlohmann-json [0-9]" "CMake ${CMAKE_VERSION}")
  if(NOT versions MATCHES "${line}")
    message(FATAL_ERROR "not in the bill of materials: ${line}\n${versions}")
  endif()
endforeach()

if(LINTIAN)
  file(GLOB packages ${WORK}/*.deb)
  execute_process(COMMAND ${LINTIAN} --fail-on error --no-cfg ${packages} OUTPUT_VARIABLE output ERROR_VARIABLE output
    RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "lintian: ${status}\n${output}")
  endif()
endif()
