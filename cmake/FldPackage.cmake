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

set(CPACK_PACKAGE_NAME vantrel-fld)
set(CPACK_PACKAGE_VENDOR "Vantrel FLD")
set(CPACK_PACKAGE_CONTACT "Vantrel FLD maintainers <maintainers@vantrel-fld.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Reader for FLD result files, with tools")
set(CPACK_PACKAGE_DESCRIPTION
  "The reader plug-in for post-processing programs, fldtool for the command line, and a C++ library for hosts.")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_GENERATOR DEB)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
include(CPack)
