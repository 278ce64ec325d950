# Installs the build into a folder of its own and uses it from there as anybody would: the program with its plug-in, the
# manual page, and the package, with which an outside program is built. Wants BUILD, SOURCE, WORK, COMPILER, LIBDIR, VTK.
cmake_policy(VERSION 3.25)
set(prefix ${WORK}/prefix)
file(REMOVE_RECURSE ${WORK})

# run(COMMAND...): the command's output in `output`; ends the test when it fails.
macro(run)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGN}: ${status}\n${output}${errors}")
  endif()
endmacro()

# expect(TEXT): `output` has it.
function(expect text)
  string(FIND "${output}" "${text}" place)
  if(place EQUAL -1)
    message(FATAL_ERROR "no '${text}' in:\n${output}")
  endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})
foreach(file
    bin/fldtool ${LIBDIR}/libuserd-fld.so ${LIBDIR}/libfld_host.a ${LIBDIR}/cmake/vantrel-fld/vantrel-fldConfig.cmake
    include/vantrel-fld/interface/userd_api.h include/vantrel-fld/host/session.h share/man/man1/fldtool.1
    share/doc/vantrel-fld/copyright share/doc/vantrel-fld/findings.md)
  if(NOT EXISTS ${prefix}/${file})
    message(FATAL_ERROR "not installed: ${file}")
  endif()
endforeach()

# The program finds the plug-in that was installed with it, with nothing of the build around.
run(${CMAKE_COMMAND} -E env --unset=FLD_PLUGIN ${prefix}/bin/fldtool sample ${WORK}/samples)
set(dataset ${WORK}/samples/channel/channel.fld)
run(${CMAKE_COMMAND} -E env --unset=FLD_PLUGIN ${prefix}/bin/fldtool info --json ${dataset})
expect("\"library\": \"${prefix}/${LIBDIR}/libuserd-fld.so\"")
# So does the one that it becomes for what needs VTK.
if(VTK)
  run(${CMAKE_COMMAND} -E env --unset=FLD_PLUGIN ${prefix}/bin/fldtool probe ${dataset} --at 0,0,0)
  expect("step")
endif()

run(${CMAKE_COMMAND} -S ${SOURCE}/outside -B ${WORK}/outside -DCMAKE_CXX_COMPILER=${COMPILER}
    -DCMAKE_PREFIX_PATH=${prefix})
run(${CMAKE_COMMAND} --build ${WORK}/outside)
run(${WORK}/outside/outside ${dataset})
expect("12 parts, 18341 nodes, 10240 of the first shape")

# Errors of the reader arrive as the library's own.
execute_process(COMMAND ${WORK}/outside/outside ${WORK}/none.fld OUTPUT_VARIABLE output RESULT_VARIABLE status)
if(NOT status EQUAL 1)
  message(FATAL_ERROR "a missing file: ${status}")
endif()
expect("error: FILE NOT FOUND : ${WORK}/none.fld")
