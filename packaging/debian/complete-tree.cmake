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

file(COPY ${copyright_file} ${debian}/changelog ${debian}/README.Debian DESTINATION ${documents}
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)

file(COPY ${debian}/tolvane.service ${debian}/tolvane.timer
  DESTINATION ${CPACK_TEMPORARY_DIRECTORY}/usr/lib/systemd/system
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
set(defaults ${CPACK_TEMPORARY_DIRECTORY}/etc/default)
file(COPY ${debian}/tolvane.default DESTINATION ${defaults}
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
file(RENAME ${defaults}/tolvane.default ${defaults}/tolvane)

file(GLOB pages ${manuals}/man*/*)
execute_process(COMMAND gzip -9n ${documents}/changelog ${pages} RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "gzip ended with ${status}")
endif()

# Directories were made by the user's umask.
execute_process(COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -type d -exec chmod 755 {} + RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "chmod ended with ${status}")
endif()
