# Packages for a cross build from the machine that builds: libraries of headers alone, seen through a
# folder of links, since the other headers of that machine must not be seen; GoogleTest from its sources.

# tessalink_cross_headers(PACKAGE folder): the package of headers in this folder of /usr/include.
macro(tessalink_cross_headers package folder)
  if(EXISTS /usr/include/${folder})
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/headers)
    file(CREATE_LINK /usr/include/${folder} ${PROJECT_BINARY_DIR}/headers/${folder} SYMBOLIC)
    set(${package}_FOUND TRUE)
    set(${package}_INCLUDE_DIRS ${PROJECT_BINARY_DIR}/headers)
  endif()
endmacro()

tessalink_cross_headers(RapidJSON rapidjson)
tessalink_cross_headers(CLI11 CLI)
if(CLI11_FOUND)
  add_library(CLI11::CLI11 INTERFACE IMPORTED)
  target_include_directories(CLI11::CLI11 SYSTEM INTERFACE ${CLI11_INCLUDE_DIRS})
endif()

if(TESSALINK_BUILD_TESTS AND EXISTS /usr/src/googletest/CMakeLists.txt)
  set(shared ${BUILD_SHARED_LIBS})
  set(BUILD_SHARED_LIBS OFF)
  set(INSTALL_GTEST OFF)
  add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  set(BUILD_SHARED_LIBS ${shared})
  set(GTest_FOUND TRUE)
endif()
