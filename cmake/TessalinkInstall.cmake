# Libraries, public headers, command line and the package that find_package(tessalink) reads.
include(CMakePackageConfigHelpers)

get_property(libraries GLOBAL PROPERTY TESSALINK_LIBRARIES)
get_property(toolkit_libraries GLOBAL PROPERTY TESSALINK_TOOLKIT_LIBRARIES)
get_property(folders GLOBAL PROPERTY TESSALINK_FOLDERS)
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/tessalink)

# Shared libraries and the command line find each other wherever the package is moved to. A static
# build needs no search path, and a padded empty one would search the current folder.
if(BUILD_SHARED_LIBS)
  set_target_properties(${libraries} ${toolkit_libraries} PROPERTIES INSTALL_RPATH $ORIGIN)
endif()
install(TARGETS ${libraries} EXPORT tessalinkTargets)
install(EXPORT tessalinkTargets NAMESPACE tessalink:: DESTINATION ${package})
# A program that wants no toolkit finds the package where there is none.
if(toolkit_libraries)
  install(TARGETS ${toolkit_libraries} EXPORT tessalinkToolkitTargets)
  install(EXPORT tessalinkToolkitTargets NAMESPACE tessalink:: DESTINATION ${package})
endif()
foreach(folder IN LISTS folders)
  install(DIRECTORY ${folder}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tessalink/${folder}
          FILES_MATCHING PATTERN *.h PATTERN detail EXCLUDE)
endforeach()
if(TARGET tessalink)
  if(BUILD_SHARED_LIBS)
    set_target_properties(tessalink PROPERTIES INSTALL_RPATH $ORIGIN/../${CMAKE_INSTALL_LIBDIR})
  endif()
  install(TARGETS tessalink)
  if(TARGET tessalink_qt_module)
    if(BUILD_SHARED_LIBS)
      set_target_properties(tessalink_qt_module PROPERTIES INSTALL_RPATH $ORIGIN)
    endif()
    install(TARGETS tessalink_qt_module LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
  endif()
endif()

configure_package_config_file(cmake/tessalinkConfig.cmake.in
  ${PROJECT_BINARY_DIR}/tessalinkConfig.cmake INSTALL_DESTINATION ${package})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/tessalinkConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/tessalinkConfig.cmake
              ${PROJECT_BINARY_DIR}/tessalinkConfigVersion.cmake DESTINATION ${package})
