include(GNUInstallDirs)

# tessalink_library(NAME [TOOLKIT] FOLDERS folder... [DEPENDS library...]): the library
# tessalink::NAME from every source in the folders and in their detail/ folders. One that needs the
# toolkit is linked and exported apart from the others.
function(tessalink_library name)
  cmake_parse_arguments(ARG "TOOLKIT" "" "FOLDERS;DEPENDS" ${ARGN})
  set(kind "")
  if(ARG_TOOLKIT)
    set(kind TOOLKIT_)
  endif()
  set(patterns ${ARG_FOLDERS})
  list(TRANSFORM patterns REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/\\1/*.cpp" OUTPUT_VARIABLE own)
  list(TRANSFORM patterns REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/\\1/detail/*.cpp")
  file(GLOB sources CONFIGURE_DEPENDS ${own} ${patterns})
  add_library(tessalink_${name} ${sources})
  add_library(tessalink::${name} ALIAS tessalink_${name})
  set_target_properties(tessalink_${name} PROPERTIES
    EXPORT_NAME ${name} LINKER_LANGUAGE CXX
    CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON POSITION_INDEPENDENT_CODE ON
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
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
  set_property(GLOBAL APPEND PROPERTY TESSALINK_${kind}LIBRARIES tessalink_${name})
  set_property(GLOBAL APPEND PROPERTY TESSALINK_FOLDERS ${ARG_FOLDERS})
endfunction()

# tessalink_program(NAME source...): a program of this project, not installed, over all libraries but
# those of the toolkit.
function(tessalink_program name)
  get_property(libraries GLOBAL PROPERTY TESSALINK_LIBRARIES)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE ${libraries} tessalink_settings)
endfunction()
