# What comes from others: options for it, and one message that names everything that is missing.

# tessalink_automatic(OPTION "what for" PACKAGE [argument of find_package...]): an option that is ON,
# OFF or AUTO: ON when the package is found. AUTO stays in the cache, so that a package installed later
# is seen.
macro(tessalink_automatic option purpose package)
  set(${option} AUTO CACHE STRING "${purpose}: ON, OFF, or AUTO (when ${package} is found)")
  if(${option} STREQUAL "AUTO")
    if(NOT ${package}_FOUND)
      find_package(${package} QUIET ${ARGN})
    endif()
    set(${option} OFF)
    if(${package}_FOUND)
      set(${option} ON)
    endif()
  endif()
endmacro()

# tessalink_needs(OPTION debian-package PACKAGE [argument of find_package...]): what the option builds
# needs the package.
macro(tessalink_needs option debian package)
  if(${option})
    if(NOT ${package}_FOUND OR NOT "${ARGN}" STREQUAL "")
      find_package(${package} QUIET ${ARGN})
    endif()
    if(NOT ${package}_FOUND)
      list(APPEND tessalink_missing ${debian})
      list(APPEND tessalink_unmet ${option})
    endif()
  endif()
endmacro()

# Stops when something is missing.
function(tessalink_check_needs)
  if(tessalink_missing)
    list(REMOVE_DUPLICATES tessalink_missing)
    list(REMOVE_DUPLICATES tessalink_unmet)
    list(JOIN tessalink_missing " " packages)
    list(JOIN tessalink_unmet "=OFF -D" options)
    message(FATAL_ERROR "Packages are missing. Install them, on Debian:\n"
                        "  apt-get install ${packages}\n"
                        "or leave out what needs them:\n"
                        "  -D${options}=OFF\n")
  endif()
endfunction()
