# What Debian wants of a package's files beyond those that are installed everywhere (Debian Policy 12): CPack runs this
# on the tree that it is about to pack.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()

set(documents ${CPACK_TEMPORARY_DIRECTORY}/${CPACK_TOLVANE_DOCDIR})
set(manuals ${CPACK_TEMPORARY_DIRECTORY}/${CPACK_TOLVANE_MANDIR})
set(debian ${CPACK_TOLVANE_SOURCE}/packaging/debian)

# In the machine-readable format a licence text is indented, and its blank lines are dots.
file(READ ${CPACK_TOLVANE_SOURCE}/LICENSE license)
string(REGEX REPLACE "^[^\n]*\n\nCopyright \\(c\\) ([^\n]*)\n\n" "" text "${license}")
set(copyright ${CMAKE_MATCH_1})
string(REGEX REPLACE "\n+$" "" text "${text}")
string(REPLACE "\n\n" "\n.\n" text "${text}")
string(REPLACE "\n" "\n " text " ${text}")
set(copyright_file ${CPACK_TOPLEVEL_DIRECTORY}/copyright)
file(WRITE ${copyright_file}
  "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/\n\n"
  "Files: *\nCopyright: ${copyright}\nLicense: Expat\n${text}\n")

# A version with a revision has a changelog of another name (Debian Policy 12.7), which knows the revision.
set(changelog ${debian}/changelog)
if(CPACK_DEBIAN_PACKAGE_RELEASE)
  set(changelog ${CPACK_TOPLEVEL_DIRECTORY}/changelog.Debian)
  string(TIMESTAMP now "%a, %d %b %Y %H:%M:%S +0000" UTC)
  file(READ ${debian}/changelog changes)
  file(WRITE ${changelog}
    "tolvane (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; urgency=medium\n\n"
    "  * Another build.\n\n -- ${CPACK_PACKAGE_CONTACT}  ${now}\n\n${changes}")
endif()

file(COPY ${copyright_file} ${changelog} ${debian}/README.Debian DESTINATION ${documents}
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)

file(GLOB units ${debian}/../systemd/*)
file(COPY ${units}
  DESTINATION ${CPACK_TEMPORARY_DIRECTORY}/usr/lib/systemd/system
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
set(defaults ${CPACK_TEMPORARY_DIRECTORY}/etc/default)
file(COPY ${debian}/tolvane.default DESTINATION ${defaults}
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
file(RENAME ${defaults}/tolvane.default ${defaults}/tolvane)

get_filename_component(changelog_name ${changelog} NAME)
file(GLOB pages ${manuals}/man*/*)
execute_process(COMMAND gzip -9n ${documents}/${changelog_name} ${pages} RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "gzip ended with ${status}")
endif()

# Directories were made by the user's umask.
execute_process(COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -type d -exec chmod 755 {} + RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "chmod ended with ${status}")
endif()
