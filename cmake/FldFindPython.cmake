# Looks for what the Python package is built with: Python's headers and pybind11. Sets FLD_HAS_PYTHON. Debian's Python is
# taken unless another one is named, because pybind11 and numpy are installed for that one.
if(NOT SKBUILD AND NOT DEFINED Python_EXECUTABLE AND EXISTS /usr/bin/python3)
  set(Python_EXECUTABLE /usr/bin/python3)
endif()
find_package(Python 3.9 QUIET COMPONENTS Interpreter Development.Module)
set(FLD_HAS_PYTHON OFF)
if(Python_Interpreter_FOUND AND Python_Development.Module_FOUND)
  find_package(pybind11 2.10 QUIET CONFIG)
  if(pybind11_FOUND)
    set(FLD_HAS_PYTHON ON)
  endif()
endif()
