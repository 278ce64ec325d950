# Run by CPack between installing and packing: adds what Debian wants of a package's files. Manual pages are compressed, there
# is a changelog of the package, whose date is SOURCE_DATE_EPOCH when that is set, lintian is told about the plug-in, and the
# permissions of folders do not follow the file mask of whoever packs.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()
find_program(GZIP gzip REQUIRED)

file(GLOB_RECURSE manual_pages ${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/man/man[1-9]/*.[1-9])
foreach(page ${manual_pages})
  execute_process(COMMAND ${GZIP} -9 --no-name --force ${page} COMMAND_ERROR_IS_FATAL ANY)
endforeach()

# One folder per package, with the documents in share/doc.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(GLOB document_folders ${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/doc/*)
foreach(folder ${document_folders})
  get_filename_component(package ${folder} NAME)
  file(WRITE ${folder}/changelog "${package} (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium

  * Version ${CPACK_PACKAGE_VERSION}.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
  execute_process(COMMAND ${GZIP} -9 --no-name --force ${folder}/changelog COMMAND_ERROR_IS_FATAL ANY)
  file(CHMOD ${folder}/changelog.gz PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
endforeach()

# The plug-in lies among the system's libraries, where hosts are told to find it.
file(GLOB_RECURSE plugins RELATIVE ${CPACK_TEMPORARY_DIRECTORY} ${CPACK_TEMPORARY_DIRECTORY}/*/libuserd-fld.so)
foreach(plugin ${plugins})
  if(plugin MATCHES "^([^/]+)/(usr/lib(/[^/]+-linux-[^/]+)?/libuserd-fld[.]so)$")
    set(overrides ${CPACK_TEMPORARY_DIRECTORY}/${CMAKE_MATCH_1}/usr/share/lintian/overrides/vantrel-fld)
    file(WRITE ${overrides}
      "# Hosts load it by its path; no program is linked with it.\n"
      "vantrel-fld: sharedobject-in-library-directory-missing-soname [${CMAKE_MATCH_2}]\n")
    file(CHMOD ${overrides} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
  endif()
endforeach()

file(GLOB_RECURSE folders LIST_DIRECTORIES true ${CPACK_TEMPORARY_DIRECTORY}/*)
foreach(folder ${folders})
  if(IS_DIRECTORY ${folder} AND NOT IS_SYMLINK ${folder})
    file(CHMOD ${folder} PERMISSIONS
      OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
  endif()
endforeach()
