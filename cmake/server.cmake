# The files of the probe server that name hosts, made in the build directory from the host slots: the laboratory uses
# them too. "cmake --install BUILD --component server" installs them with the rest of server/; a device gets none.
# A device's image build may copy only the sources that it needs.
if(NOT EXISTS ${PROJECT_SOURCE_DIR}/server)
  return()
endif()

host_option(TOLVANE_FALLBACK_HOST "the fallback document's server, if there is one")

# Slots may share a host. As in DNS, case and a final dot make no difference.
function(tolvane_distinct_hosts result)
  set(hosts ${ARGN})
  list(TRANSFORM hosts TOLOWER)
  list(TRANSFORM hosts REPLACE "[.]$" "")
  list(REMOVE_DUPLICATES hosts)
  set(${result} ${hosts} PARENT_SCOPE)
endfunction()

function(tolvane_server_files)
  foreach(family V4 V6)
    tolvane_distinct_hosts(${family}_hosts
      ${TOLVANE_${family}_HOST_A} ${TOLVANE_${family}_HOST_B} ${TOLVANE_${family}_HOST_C} ${TOLVANE_FALLBACK_HOST})
  endforeach()
  # The addresses are the laboratory's, which are reserved for documentation (RFC 5737, RFC 3849).
  foreach(host IN LISTS V4_hosts)
    string(APPEND zone_records "\n${host}.\t60\tIN\tA\t203.0.113.80")
    string(APPEND hosts_lines "\n203.0.113.80 ${host}")
  endforeach()
  foreach(host IN LISTS V6_hosts)
    string(APPEND zone_records "\n${host}.\t60\tIN\tAAAA\t2001:db8:80::80")
    string(APPEND hosts_lines "\n2001:db8:80::80 ${host}")
  endforeach()

  # nginx refuses a name that does not fit one bucket of its hash table; the usual 64 bytes hold 46 characters.
  tolvane_distinct_hosts(all_hosts ${V4_hosts} ${V6_hosts})
  foreach(host IN LISTS all_hosts)
    string(APPEND nginx_names "\n\t\t${host}")
    string(LENGTH ${host} length)
    if(length GREATER 46)
      set(nginx_bucket_size "server_names_hash_bucket_size 512;\n")
    endif()
  endforeach()

  set(made ${PROJECT_BINARY_DIR}/server)
  foreach(file nginx.conf probe.zone hosts tolvane-documents.service)
    configure_file(${PROJECT_SOURCE_DIR}/server/${file}.in ${made}/${file} @ONLY)
  endforeach()

  set(as_server COMPONENT server EXCLUDE_FROM_ALL)
  install_directories("${as_server}"
    ${CMAKE_INSTALL_BINDIR} ${CMAKE_INSTALL_DATADIR}/tolvane-server lib/systemd/system)
  install(PROGRAMS server/make-probe-documents server/check-probe-server
    DESTINATION ${CMAKE_INSTALL_BINDIR} ${as_server})
  install(FILES ${made}/nginx.conf ${made}/probe.zone ${made}/hosts server/lighttpd.conf server/README.md
    DESTINATION ${CMAKE_INSTALL_DATADIR}/tolvane-server ${as_server})
  install(FILES ${made}/tolvane-documents.service server/tolvane-documents.timer
    DESTINATION lib/systemd/system ${as_server})
endfunction()

tolvane_server_files()
