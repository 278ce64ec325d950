# Makes the Debian package and looks what is in it. Wants BUILD, WORK.
cmake_policy(VERSION 3.25)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
execute_process(COMMAND ${CMAKE_CPACK_COMMAND} -G DEB --config ${BUILD}/CPackConfig.cmake -B ${WORK}
  OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE status)
file(GLOB packages ${WORK}/vantrel-fld_*.deb)
list(LENGTH packages count)
if(NOT status EQUAL 0 OR NOT count EQUAL 1)
  message(FATAL_ERROR "cpack: ${status}, ${count} packages\n${output}")
endif()
execute_process(COMMAND dpkg-deb --contents ${packages} OUTPUT_VARIABLE contents COMMAND_ERROR_IS_FATAL ANY)
foreach(file bin/fldtool libuserd-fld.so libfld_host.a host/session.h interface/userd_api.h man1/fldtool.1
    vantrel-fldConfig.cmake copyright)
  if(NOT contents MATCHES "/usr/[^\n]*${file}\n")
    message(FATAL_ERROR "not in the package: ${file}\n${contents}")
  endif()
endforeach()
execute_process(COMMAND dpkg-deb --field ${packages} Package Version Depends OUTPUT_VARIABLE fields
  COMMAND_ERROR_IS_FATAL ANY)
if(NOT fields MATCHES "Package: vantrel-fld\nVersion: 1[.]02[^\n]*\nDepends: [^\n]*libc6")
  message(FATAL_ERROR "the package's fields:\n${fields}")
endif()
