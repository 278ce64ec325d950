# Looks for VTK 9, first where CMake finds packages, then among the packages of ParaView, which carries its own, and for
# the ways to OpenGL that pictures need.
set(FLD_VTK_COMPONENTS CommonCore CommonDataModel FiltersCore FiltersGeometry IOImage IOXML
  RenderingAnnotation RenderingCore RenderingFreeType RenderingOpenGL2)
find_package(VTK 9.1 QUIET COMPONENTS ${FLD_VTK_COMPONENTS})
if(NOT VTK_FOUND)
  file(GLOB fld_paraview_vtk /usr/lib/*/cmake/paraview-*/vtk)
  find_package(VTK 9.1 QUIET COMPONENTS ${FLD_VTK_COMPONENTS} PATHS ${fld_paraview_vtk} NO_DEFAULT_PATH)
endif()
if(VTK_FOUND)
  message(STATUS "VTK ${VTK_VERSION}: ${VTK_DIR}")
endif()
find_package(OpenGL QUIET COMPONENTS EGL GLX)
find_package(X11 QUIET)
