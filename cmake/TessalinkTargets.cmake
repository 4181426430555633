include(GNUInstallDirs)

# tessalink_library(NAME FOLDERS folder... [SYSTEM folder] [DEPENDS library...] [WHEN variable]
#                   [HEADERS regex] [PACKAGE package...] [MODULES module...]): the library tessalink::NAME.
#
#   FOLDERS  whole folders with their detail/ folders; each includes itself and those before it
#   SYSTEM   one of them that has sources for the system in posix/ or windows/
#   DEPENDS  libraries of this project whose headers it includes: it is linked to them
#   WHEN     the variable that says whether it is built; by default that of a library it depends on
#   HEADERS  what its sources include besides this project and the standard library
#   PACKAGE  what its users must find, too: the arguments of find_package. Its headers show HEADERS.
#   MODULES  the same for pkg-config
#
# What is said here is written to libraries.json in the build folder, for the checks of the tree and
# the coverage, and to the package that is installed.
function(tessalink_library name)
  cmake_parse_arguments(ARG "" "WHEN;HEADERS;SYSTEM" "FOLDERS;DEPENDS;PACKAGE;MODULES" ${ARGN})
  tessalink_record(${name})
  foreach(dependency IN LISTS ARG_DEPENDS)
    if(NOT TARGET tessalink_${dependency})
      return()
    endif()
  endforeach()
  if(ARG_WHEN AND NOT ${ARG_WHEN})
    message(STATUS "Not built: tessalink::${name} (${ARG_WHEN} is off)")
    return()
  endif()

  set(patterns ${ARG_FOLDERS})
  if(ARG_SYSTEM)
    if(WIN32)
      list(APPEND patterns ${ARG_SYSTEM}/windows)
    else()
      list(APPEND patterns ${ARG_SYSTEM}/posix)
    endif()
  endif()
  list(TRANSFORM patterns REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/\\1/*.cpp" OUTPUT_VARIABLE own)
  list(TRANSFORM patterns REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/\\1/detail/*.cpp")
  file(GLOB sources CONFIGURE_DEPENDS ${own} ${patterns})
  add_library(tessalink_${name} ${sources})
  add_library(tessalink::${name} ALIAS tessalink_${name})
  set_target_properties(tessalink_${name} PROPERTIES
    EXPORT_NAME ${name} LINKER_LANGUAGE CXX
    CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON POSITION_INDEPENDENT_CODE ON
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  target_compile_features(tessalink_${name} PUBLIC cxx_std_20)
  target_include_directories(tessalink_${name} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/tessalink>)
  target_link_libraries(tessalink_${name} PRIVATE $<BUILD_INTERFACE:tessalink_settings>)
  if(BUILD_SHARED_LIBS)
    target_compile_definitions(tessalink_${name} PUBLIC TESSALINK_SHARED)
  endif()
  foreach(dependency IN LISTS ARG_DEPENDS)
    target_link_libraries(tessalink_${name} PUBLIC tessalink_${dependency})
  endforeach()
  set_property(GLOBAL APPEND PROPERTY TESSALINK_LIBRARIES ${name})
  set_property(GLOBAL APPEND PROPERTY TESSALINK_FOLDERS ${ARG_FOLDERS})
  list(TRANSFORM ARG_DEPENDS PREPEND tessalink- OUTPUT_VARIABLE modules)
  set_property(GLOBAL PROPERTY TESSALINK_MODULES_${name} ${modules} ${ARG_MODULES})
  get_property(plain GLOBAL PROPERTY TESSALINK_PLAIN_LIBRARIES)
  list(REMOVE_ITEM ARG_DEPENDS ${plain} "")
  if(NOT ARG_DEPENDS AND NOT ARG_PACKAGE)
    set_property(GLOBAL APPEND PROPERTY TESSALINK_PLAIN_LIBRARIES ${name})
  endif()
endfunction()

# Keeps what tessalink_library was told: an entry of libraries.json, and a line for the configuration
# of the package.
macro(tessalink_record name)
  foreach(dependency IN LISTS ARG_DEPENDS)
    if(NOT ARG_WHEN)
      get_property(ARG_WHEN GLOBAL PROPERTY TESSALINK_WHEN_${dependency})
    endif()
  endforeach()
  set_property(GLOBAL PROPERTY TESSALINK_WHEN_${name} "${ARG_WHEN}")
  string(REPLACE ";" "\", \"" folders "${ARG_FOLDERS}")
  string(REPLACE ";" "\", \"" depends "${ARG_DEPENDS}")
  string(REPLACE ";" " " package "${ARG_PACKAGE}")
  string(CONCAT entry "  \"${name}\": {\"folders\": [\"${folders}\"], \"depends\": [\"${depends}\"], "
                      "\"headers\": \"${ARG_HEADERS}\", \"package\": \"${package}\"}")
  string(REPLACE "[\"\"]" "[]" entry "${entry}")
  set_property(GLOBAL APPEND PROPERTY TESSALINK_JSON "${entry}")
  string(REPLACE ";" " " depends "${ARG_DEPENDS}")
  set_property(GLOBAL APPEND_STRING PROPERTY TESSALINK_COMPONENTS
    "tessalink_component(${name} \"${ARG_WHEN}\" \"${ARG_PACKAGE}\" ${depends})\n")
endmacro()

# tessalink_write_libraries(): libraries.json, when all libraries are known.
function(tessalink_write_libraries)
  get_property(entries GLOBAL PROPERTY TESSALINK_JSON)
  list(JOIN entries ",\n" entries)
  file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/libraries.json CONTENT "{\n${entries}\n}\n" @ONLY)
endfunction()

# tessalink_program(NAME source... [LIBRARIES library...]): a program of this project, not installed,
# over these libraries; without LIBRARIES over all that need no package of others.
function(tessalink_program name)
  cmake_parse_arguments(ARG "" "" "LIBRARIES" ${ARGN})
  if(NOT ARG_LIBRARIES)
    get_property(ARG_LIBRARIES GLOBAL PROPERTY TESSALINK_PLAIN_LIBRARIES)
  endif()
  list(TRANSFORM ARG_LIBRARIES PREPEND tessalink_)
  add_executable(${name} ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} tessalink_settings)
  if(WIN32)
    # As much as programs have elsewhere: constructs of templates nest by recursion.
    target_link_options(${name} PRIVATE -Wl,--stack,8388608)
  endif()
endfunction()
