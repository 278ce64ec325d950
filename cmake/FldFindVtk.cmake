# Looks for VTK 9, first where CMake finds packages, then among the packages of ParaView, which carries its own, and for
# the ways to OpenGL and fonts that pictures need. Sets FLD_HAS_VTK when VTK's data is there, and FLD_BUILD_VTK to OFF unless all
# that draws is there too.
include(FldParaViewPython)

set(data COMPONENTS CommonCore CommonDataModel)
set(drawing ChartsCore FiltersCore FiltersExtraction FiltersFlowPaths FiltersGeneral FiltersGeometry FiltersSources IOExport
  IOImage IOXML RenderingAnnotation RenderingContext2D RenderingContextOpenGL2 RenderingCore RenderingFreeType RenderingOpenGL2)
# The newest ParaView first.
file(GLOB paraview_folders /usr/lib/*/cmake/paraview-*)
list(SORT paraview_folders COMPARE NATURAL ORDER DESCENDING)
foreach(folder ${paraview_folders})
  fld_skip_python_targets(${folder})
endforeach()
find_package(VTK 9.1 QUIET ${data} OPTIONAL_COMPONENTS ${drawing} CommonTransforms)
if(NOT VTK_FOUND)
  list(TRANSFORM paraview_folders APPEND /vtk OUTPUT_VARIABLE paraview_vtk)
  find_package(VTK 9.1 QUIET ${data} OPTIONAL_COMPONENTS ${drawing} CommonTransforms PATHS ${paraview_vtk} NO_DEFAULT_PATH)
endif()
if(NOT VTK_FOUND)
  message(STATUS "VTK was not found: fldtool is built without convert and render, and the plug-in for ParaView is left out")
  set(FLD_BUILD_VTK OFF)
  return()
endif()
message(STATUS "VTK ${VTK_VERSION}: ${VTK_DIR}")
set(FLD_HAS_VTK ON)
# A VTK with a JSON library of its own has a header that renames nlohmann to vtknlohmann wherever VTK is included, so that
# our JSON values would be of another type in these sources. VTK's headers only name the type: they get Debian's.
if(TARGET VTK::nlohmannjson)
  set_property(TARGET VTK::nlohmannjson APPEND PROPERTY INTERFACE_COMPILE_OPTIONS
    -Dvtk_nlohmannjson_h "-DVTK_NLOHMANN_JSON(file)=<nlohmann/file>")
endif()

find_package(OpenGL QUIET COMPONENTS EGL GLX)
find_package(X11 QUIET)
find_package(Fontconfig QUIET)
set(missing "")
foreach(component ${drawing})
  if(NOT TARGET VTK::${component})
    list(APPEND missing "VTK's ${component}")
  endif()
endforeach()
foreach(package OpenGL_EGL OpenGL_GLX X11 Fontconfig)
  if(NOT ${package}_FOUND)
    string(REPLACE "OpenGL_" "" name ${package})
    list(APPEND missing ${name})
  endif()
endforeach()
if(missing)
  list(JOIN missing ", " missing)
  message(STATUS "not found: ${missing}: fldtool is built without convert and render; the plug-in for ParaView does without")
  set(FLD_BUILD_VTK OFF)
endif()
