include(GNUInstallDirs)

# Settings that every target of this project builds with, and none of its users.
add_library(tessalink_settings INTERFACE)
target_compile_features(tessalink_settings INTERFACE cxx_std_20)
target_compile_options(tessalink_settings INTERFACE
  -Wall -Wextra -Wconversion -fno-math-errno -ffp-contract=off
  $<$<BOOL:${TESSALINK_WERROR}>:-Werror>)
if(TESSALINK_SANITIZE)
  target_compile_options(tessalink_settings INTERFACE
    -fsanitize=${TESSALINK_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tessalink_settings INTERFACE -fsanitize=${TESSALINK_SANITIZE})
endif()

# tessalink_library(NAME FOLDERS folder... [DEPENDS library...]): the library tessalink::NAME from
# every source in the folders and in their detail/ folders.
function(tessalink_library name)
  cmake_parse_arguments(ARG "" "" "FOLDERS;DEPENDS" ${ARGN})
  set(patterns "")
  foreach(folder IN LISTS ARG_FOLDERS)
    list(APPEND patterns ${PROJECT_SOURCE_DIR}/${folder}/*.cpp
                         ${PROJECT_SOURCE_DIR}/${folder}/detail/*.cpp)
  endforeach()
  file(GLOB sources CONFIGURE_DEPENDS ${patterns})
  add_library(tessalink_${name} ${sources})
  add_library(tessalink::${name} ALIAS tessalink_${name})
  set_target_properties(tessalink_${name} PROPERTIES
    EXPORT_NAME ${name} CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  target_compile_features(tessalink_${name} PUBLIC cxx_std_20)
  target_include_directories(tessalink_${name} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/tessalink>)
  target_link_libraries(tessalink_${name} PRIVATE $<BUILD_INTERFACE:tessalink_settings>)
  if(BUILD_SHARED_LIBS)
    target_compile_definitions(tessalink_${name} PUBLIC TESSALINK_SHARED)
  endif()
  foreach(dependency IN LISTS ARG_DEPENDS)
    target_link_libraries(tessalink_${name} PUBLIC tessalink_${dependency})
  endforeach()
  set_property(GLOBAL APPEND PROPERTY TESSALINK_LIBRARIES tessalink_${name})
  set_property(GLOBAL APPEND PROPERTY TESSALINK_HEADER_FOLDERS ${ARG_FOLDERS})
endfunction()
