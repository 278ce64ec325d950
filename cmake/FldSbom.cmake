# The software bill of materials, vantrel-fld.spdx.json (SPDX 2.3): what is installed, and the libraries and tools that it
# was made with, in the versions that were found. Its date is that of the installation, or SOURCE_DATE_EPOCH when that is
# set.
set(sbom_packages "[]")
set(sbom_relationships "[]")

# append_json(LIST NAME VALUE...): appends an object of these strings to the JSON array LIST.
function(append_json list)
  set(object "{}")
  while(ARGN)
    list(POP_FRONT ARGN name value)
    string(REPLACE "\\" "\\\\" value "${value}")
    string(REPLACE "\"" "\\\"" value "${value}")
    if(NOT value MATCHES "^(false|true)$")
      set(value "\"${value}\"")
    endif()
    string(JSON object SET "${object}" ${name} "${value}")
  endwhile()
  string(JSON length LENGTH "${${list}}")
  string(JSON ${list} SET "${${list}}" ${length} "${object}")
  set(${list} "${${list}}" PARENT_SCOPE)
endfunction()

# add_to_sbom(RELATIONSHIP NAME VERSION LICENSE SUPPLIER): a package, and what it is to the one in sbom_owner: STATIC_LINK,
# DYNAMIC_LINK or CONTAINS for libraries, BUILD_TOOL_OF for tools, DESCRIBES for the one itself.
macro(add_to_sbom relationship name version license supplier)
  string(REGEX REPLACE "[^A-Za-z0-9.-]" "-" id "SPDXRef-${name}")
  set(known_version "${version}")
  if(known_version STREQUAL "")  # not every library says
    set(known_version NOASSERTION)
  endif()
  append_json(sbom_packages
    SPDXID ${id} name "${name}" versionInfo "${known_version}" supplier "${supplier}" downloadLocation NOASSERTION
    filesAnalyzed false licenseConcluded NOASSERTION licenseDeclared "${license}" copyrightText NOASSERTION)
  if("${relationship}" STREQUAL "DESCRIBES")
    set(from SPDXRef-DOCUMENT)
    set(to ${id})
  elseif("${relationship}" MATCHES "_OF$")
    set(from ${id})
    set(to SPDXRef-${sbom_owner})
  else()
    set(from SPDXRef-${sbom_owner})
    set(to ${id})
  endif()
  append_json(sbom_relationships spdxElementId ${from} relationshipType ${relationship} relatedSpdxElement ${to})
endmacro()

# version_in(FOLDER PACKAGE): the version that find_package found in a folder of the sources.
macro(version_in folder package)
  get_directory_property(${package}_VERSION DIRECTORY ${PROJECT_SOURCE_DIR}/${folder} DEFINITION ${package}_VERSION)
endmacro()

set(sbom_owner vantrel-fld)
add_to_sbom(DESCRIBES vantrel-fld "${PROJECT_VERSION}" MIT "Organization: Vantrel FLD")
set(compiler ${CMAKE_CXX_COMPILER_ID})
set(compiler_license NOASSERTION)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  set(compiler GCC)
  set(compiler_license "GPL-3.0-or-later WITH GCC-exception-3.1")
endif()
add_to_sbom(BUILD_TOOL_OF CMake "${CMAKE_VERSION}" BSD-3-Clause "Organization: Kitware")
add_to_sbom(BUILD_TOOL_OF ${compiler} "${CMAKE_CXX_COMPILER_VERSION}" "${compiler_license}" NOASSERTION)
if(FLD_BUILD_TOOLS OR FLD_BUILD_TESTS OR FLD_BUILD_BENCHMARKS)
  foreach(package CLI11 fmt nlohmann_json)
    version_in(tool ${package})
  endforeach()
  add_to_sbom(STATIC_LINK CLI11 "${CLI11_VERSION}" BSD-3-Clause NOASSERTION)
  add_to_sbom(STATIC_LINK nlohmann-json "${nlohmann_json_VERSION}" MIT NOASSERTION)
  add_to_sbom(DYNAMIC_LINK fmt "${fmt_VERSION}" MIT NOASSERTION)
endif()
if(FLD_BUILD_VTK OR FLD_BUILD_PARAVIEW)
  add_to_sbom(DYNAMIC_LINK VTK "${VTK_VERSION}" BSD-3-Clause "Organization: Kitware")
endif()
if(FLD_BUILD_VTK)
  add_to_sbom(DYNAMIC_LINK fontconfig "${Fontconfig_VERSION}" NOASSERTION NOASSERTION)
endif()
if(FLD_BUILD_VTK AND FLD_HAS_HDF5)
  add_to_sbom(DYNAMIC_LINK HDF5 "${FLD_HDF5_VERSION}" BSD-3-Clause "Organization: The HDF Group")
endif()
if(FLD_BUILD_PAGE)
  add_to_sbom(DYNAMIC_LINK zlib "${ZLIB_VERSION_STRING}" Zlib NOASSERTION)
  # Bundled into the pages that fldtool writes, which carry the licences of all that is in them.
  file(READ ${PROJECT_SOURCE_DIR}/page/package-lock.json lock)
  string(JSON vtkjs GET "${lock}" packages node_modules/@kitware/vtk.js version)
  add_to_sbom(CONTAINS vtk.js "${vtkjs}" BSD-3-Clause "Organization: Kitware")
endif()
if(FLD_BUILD_PARAVIEW)
  add_to_sbom(DYNAMIC_LINK ParaView "${ParaView_VERSION}" BSD-3-Clause "Organization: Kitware")
endif()

if(FLD_BUILD_PYTHON)
  set(sbom_owner python3-vantrel-fld)
  add_to_sbom(DESCRIBES python3-vantrel-fld "${PROJECT_VERSION}" MIT "Organization: Vantrel FLD")
  append_json(sbom_relationships spdxElementId SPDXRef-vantrel-fld
    relationshipType RUNTIME_DEPENDENCY_OF relatedSpdxElement SPDXRef-python3-vantrel-fld)
  add_to_sbom(STATIC_LINK pybind11 "${pybind11_VERSION}" BSD-3-Clause NOASSERTION)
  if(FLD_PYTHON_HDF5)
    append_json(sbom_relationships spdxElementId SPDXRef-python3-vantrel-fld
      relationshipType DYNAMIC_LINK relatedSpdxElement SPDXRef-HDF5)
  endif()
  add_to_sbom(RUNTIME_DEPENDENCY_OF Python "${Python_VERSION}" PSF-2.0 NOASSERTION)
endif()

# The name of the document's space is its own: it changes with what the document lists.
string(SHA256 content "${PROJECT_VERSION} ${CMAKE_SYSTEM_NAME} ${CMAKE_SYSTEM_PROCESSOR} ${sbom_packages} ${sbom_relationships}")
string(UUID content NAMESPACE 6ba7b811-9dad-11d1-80b4-00c04fd430c8 NAME ${content} TYPE SHA1)
set(sbom_namespace https://vantrel-fld.invalid/spdx/vantrel-fld-${PROJECT_VERSION}-${content})

set(sbom ${PROJECT_BINARY_DIR}/vantrel-fld.spdx.json.in)
set(sbom_created @sbom_created@)  # filled in when it is installed
configure_file(${CMAKE_CURRENT_LIST_DIR}/vantrel-fld.spdx.json.in ${sbom} @ONLY)

# install_sbom(FOLDER COMPONENT): installs it below the prefix, in FOLDER.
function(install_sbom folder component)
  install(CODE "
    string(TIMESTAMP sbom_created UTC)
    set(installed \"\${CMAKE_INSTALL_PREFIX}/${folder}/vantrel-fld.spdx.json\")
    configure_file(\"${sbom}\" \"\$ENV{DESTDIR}\${installed}\" @ONLY NO_SOURCE_PERMISSIONS)
    list(APPEND CMAKE_INSTALL_MANIFEST_FILES \"\${installed}\")"
    COMPONENT ${component})
endfunction()
install_sbom(${CMAKE_INSTALL_DOCDIR} Unspecified)
