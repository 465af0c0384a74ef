# The DNS names of the probe servers, which a deployment chooses when it is configured: TOLVANE_V4_HOST and
# TOLVANE_V6_HOST for a whole address family, TOLVANE_V4_HOST_A and so on for a slot, which serves some device classes.

# A name that no device could resolve must not reach the devices: RFC 1035 2.3.4 and the 126 characters of a query.
function(check_host_name option host)
  set(problem "")
  string(LENGTH "${host}" length)
  if(length GREATER 126)
    set(problem "it has ${length} characters; at most 126 are allowed")
  elseif(NOT host MATCHES "^[A-Za-z0-9_-]+(\\.[A-Za-z0-9_-]+)*\\.?$")
    set(problem
      "it is not a DNS name: letters, digits and hyphens in labels between dots, no scheme, port, path or blank")
  elseif(host MATCHES "(^|\\.)-|-(\\.|$)")
    set(problem "a label begins or ends with a hyphen")
  elseif(host MATCHES "(^|\\.)[0-9]+\\.?$")
    set(problem "it is an address, not a DNS name")
  endif()
  string(REPLACE "." ";" labels "${host}")
  foreach(label IN LISTS labels)
    string(LENGTH "${label}" length)
    if(length GREATER 63)
      set(problem "one of its labels has ${length} characters; at most 63 are allowed")
    endif()
  endforeach()
  if(problem)
    message(FATAL_ERROR "${option} cannot be \"${host}\": ${problem}.")
  endif()
endfunction()

# An empty option is one that is not set.
function(host_option name use)
  set(${name} "" CACHE STRING "DNS name of ${use}")
  if(NOT ${name} STREQUAL "")
    check_host_name(${name} "${${name}}")
  endif()
endfunction()

set(CLASSES_OF_SLOT_A "0 (products made before 2017-03-03)")
set(CLASSES_OF_SLOT_B "1 and 2 (network devices, NAS boxes)")
set(CLASSES_OF_SLOT_C "3 to 5 (cameras, sensors, others)")

# Gives each slot of the family, V4 or V6, its host: its own, else the family's, else a reserved one.
macro(choose_hosts family family_name)
  host_option(TOLVANE_${family}_HOST "the ${family_name} probe server of every device class")
  set(unreachable "")
  foreach(slot A B C)
    set(classes "device classes ${CLASSES_OF_SLOT_${slot}}")
    set(option TOLVANE_${family}_HOST_${slot})
    host_option(${option} "the ${family_name} probe server of ${classes}, if it is another")
    if("${${option}}" STREQUAL "")
      set(${option} "${TOLVANE_${family}_HOST}")
    endif()
    if("${${option}}" STREQUAL "")
      string(TOLOWER ${family}-${slot}.probe.varnoko.example ${option})
    endif()
    target_compile_definitions(tolvane_options INTERFACE ${option}="${${option}}")
    if(${option} MATCHES "[.][Ee][Xx][Aa][Mm][Pp][Ll][Ee][.]?$")
      list(APPEND unreachable "\n  ${option}, ${classes}: ${${option}}")
    endif()
  endforeach()
  list(LENGTH unreachable count)
  if(count EQUAL 3)
    message(WARNING "No ${family_name} check can succeed: its hosts are in the reserved domain .example. "
      "TOLVANE_${family}_HOST names your probe server.")
  elseif(count GREATER 0)
    message(FATAL_ERROR "${family_name} checks of some device classes can never succeed, because their hosts are in "
      "the reserved domain .example. TOLVANE_${family}_HOST names the host of every class that has no other."
      ${unreachable})
  endif()
endmacro()

choose_hosts(V4 IPv4)
choose_hosts(V6 IPv6)
