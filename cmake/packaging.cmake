# What is installed where, and the Debian package that is made of it.
install_directories("" ${CMAKE_INSTALL_SBINDIR} ${CMAKE_INSTALL_BINDIR}
  ${CMAKE_INSTALL_MANDIR}/man1 ${CMAKE_INSTALL_MANDIR}/man8 ${CMAKE_INSTALL_DOCDIR}/examples)

# What names the probe hosts is made below the build directory, never in place of a source: Buildroot and OpenWrt build
# in the source tree itself.
set(with_hosts ${PROJECT_BINARY_DIR}/with-hosts)
foreach(file docs/tolvane.8 scripts/tolvane-explain)
  configure_file(${PROJECT_SOURCE_DIR}/${file} ${with_hosts}/${file} @ONLY)
endforeach()

install(TARGETS tolvane DESTINATION ${CMAKE_INSTALL_SBINDIR})
install(PROGRAMS scripts/tolvane-run DESTINATION ${CMAKE_INSTALL_SBINDIR})
install(PROGRAMS ${with_hosts}/scripts/tolvane-explain scripts/tolvane-wait
  DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES docs/tolvane-explain.1 docs/tolvane-wait.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${with_hosts}/docs/tolvane.8 docs/tolvane-run.8 DESTINATION ${CMAKE_INSTALL_MANDIR}/man8)
set(examples ${CMAKE_INSTALL_DOCDIR}/examples)
install(PROGRAMS scripts/prometheus-hook DESTINATION ${examples})
install(FILES docs/tolvane.rules.yml DESTINATION ${examples})
# An example only: a file at /etc/tolvane.cfg would change how a failed check ends.
install(FILES docs/tolvane.cfg.example DESTINATION ${examples} RENAME tolvane.cfg)

# The source package: the committed tree, with the same bytes each time; and OpenWrt's package directory with its hash.
set(dist ${PROJECT_NAME}-${PROJECT_VERSION})
add_custom_target(dist
  COMMAND git -C ${CMAKE_CURRENT_SOURCE_DIR} -c tar.umask=0022 archive --prefix=${dist}/
    --output=${CMAKE_BINARY_DIR}/${dist}.tar HEAD
  COMMAND gzip -9nf ${dist}.tar
  COMMAND ${CMAKE_COMMAND} -E sha256sum ${dist}.tar.gz > ${dist}.tar.gz.sha256
  COMMAND ${CMAKE_COMMAND} -E cat ${dist}.tar.gz.sha256
  COMMAND ${CMAKE_COMMAND} -E rm -rf openwrt
  COMMAND tar -xzf ${dist}.tar.gz --strip-components=2 ${dist}/packaging/openwrt
  COMMAND sh -c "read -r hash _ <$1.tar.gz.sha256; sed -i \"s/^PKG_HASH:=.*/PKG_HASH:=$hash/\" openwrt/tolvane/Makefile"
    sh ${dist}
  WORKING_DIRECTORY ${CMAKE_BINARY_DIR} VERBATIM)

# dpkg-shlibdeps looks for the libraries among the packages of the build machine. An older CPack would leave out what
# CPACK_PRE_BUILD_SCRIPTS adds.
if(CMAKE_CROSSCOMPILING OR CMAKE_VERSION VERSION_LESS 3.19)
  return()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tolvane)
set(CPACK_DEBIAN_PACKAGE_RELEASE "" CACHE STRING "Debian's revision: 1, 2 and so on for builds with other hosts")
set(CPACK_PACKAGE_VENDOR Varnoko)
set(CPACK_PACKAGE_CONTACT "Varnoko <support@varnoko.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Internet connection checker for embedded devices")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
  "tells by its exit status whether the maker's probe servers are reached over
IPv4, over IPv6 or over both, and if not, which stage fails: the interface,
DNS, the connection, or the document that the server sends.
.
On Debian it needs BusyBox as /sbin/ifconfig, since the ifconfig of net-tools
prints another form; see README.Debian.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION net)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "busybox | busybox-static")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(debian_control_files conffiles postinst prerm postrm)
list(TRANSFORM debian_control_files PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/packaging/debian/)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${debian_control_files})
set(CPACK_TOLVANE_SOURCE ${CMAKE_CURRENT_SOURCE_DIR})
set(CPACK_TOLVANE_DOCDIR usr/${CMAKE_INSTALL_DOCDIR})
set(CPACK_TOLVANE_MANDIR usr/${CMAKE_INSTALL_MANDIR})
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/packaging/debian/complete-tree.cmake)
include(CPack)
# CPack's own source package would contain every build directory; the target "dist" makes one.
file(REMOVE ${CMAKE_BINARY_DIR}/CPackSourceConfig.cmake)
