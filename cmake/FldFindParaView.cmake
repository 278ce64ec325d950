# Looks for ParaView where its own VTK is the one in use, for a program cannot have two. Sets FLD_BUILD_PARAVIEW to OFF
# when there is none.
if(NOT VTK_DIR MATCHES "paraview")
  message(STATUS "VTK is not ParaView's own: the plug-in for ParaView is left out")
  set(FLD_BUILD_PARAVIEW OFF)
  return()
endif()
find_package(ParaView 5.11 QUIET COMPONENTS
  ProcessXML RemotingClientServerStream RemotingCore RemotingServerManager VTKExtensionsCore WrapClientServer)
if(ParaView_FOUND)
  message(STATUS "ParaView ${ParaView_VERSION}: ${ParaView_DIR}")
else()
  message(STATUS "ParaView was not found: its plug-in is left out")
  set(FLD_BUILD_PARAVIEW OFF)
endif()

# ParaView 5.13 names the headers of Python in its link interfaces, for programs that call Python; nothing here does.
# Declared last, so that it does not stand in the way of a search for Python.
function(fld_declare_python_headers)
  if(NOT TARGET Python3::Module)
    add_library(Python3::Module INTERFACE IMPORTED)
  endif()
endfunction()
if(FLD_BUILD_PARAVIEW)
  cmake_language(DEFER CALL fld_declare_python_headers)
endif()
