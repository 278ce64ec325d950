# What is installed besides programs and plug-in, and the packages that are made of it.
include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/vantrel-fld)
configure_package_config_file(
  ${CMAKE_CURRENT_LIST_DIR}/vantrel-fldConfig.cmake.in
  ${PROJECT_BINARY_DIR}/vantrel-fldConfig.cmake
  INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/vantrel-fldConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/vantrel-fldConfig.cmake
  ${PROJECT_BINARY_DIR}/vantrel-fldConfigVersion.cmake
  DESTINATION ${package_folder})
install(EXPORT vantrel-fld NAMESPACE vantrel-fld:: FILE vantrel-fldTargets.cmake DESTINATION ${package_folder})
install(FILES ${PROJECT_SOURCE_DIR}/interface/userd_api.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vantrel-fld/interface)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright)
install(FILES
  ${PROJECT_SOURCE_DIR}/docs/findings.md
  ${PROJECT_SOURCE_DIR}/docs/format.md
  ${PROJECT_SOURCE_DIR}/docs/messages.md
  DESTINATION ${CMAKE_INSTALL_DOCDIR})

# What the packages are made of, as SPDX.
include(FldSbom)

# The Debian packages: vantrel-fld, and python3-vantrel-fld for the Python package.
set(CPACK_PACKAGE_NAME vantrel-fld)
set(CPACK_PACKAGE_VENDOR "Vantrel FLD")
set(CPACK_PACKAGE_CONTACT "Vantrel FLD maintainers <maintainers@vantrel-fld.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Reader for FLD result files, with tools")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_GENERATOR DEB)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/FldDebianFiles.cmake)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL Unspecified)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_UNSPECIFIED_PACKAGE_NAME vantrel-fld)
# The first line comes from the summary.
set(CPACK_DEBIAN_UNSPECIFIED_DESCRIPTION
  "The reader plug-in for post-processing programs, fldtool for the command line,
and a C++ library for hosts.")

if(FLD_BUILD_PYTHON AND NOT SKBUILD)
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/python3-vantrel-fld RENAME copyright COMPONENT python)
  install_sbom(${CMAKE_INSTALL_DATADIR}/doc/python3-vantrel-fld python)
  list(APPEND CPACK_COMPONENTS_ALL python)
  # The compiled module is for this version of Python alone.
  math(EXPR next_minor "${Python_VERSION_MINOR} + 1")
  string(JOIN ", " CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
    "vantrel-fld (= ${PROJECT_VERSION})"
    "python3 (>= ${Python_VERSION_MAJOR}.${Python_VERSION_MINOR}~)"
    "python3 (<< ${Python_VERSION_MAJOR}.${next_minor})"
    "python3-numpy")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-vantrel-fld)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
  set(CPACK_DEBIAN_PYTHON_DESCRIPTION
    "The Python package vantrel_fld, which gives the meshes and values of FLD result
files as NumPy arrays.")
  set(CPACK_COMPONENT_PYTHON_DESCRIPTION "${CPACK_DEBIAN_PYTHON_DESCRIPTION}")
endif()
include(CPack)
