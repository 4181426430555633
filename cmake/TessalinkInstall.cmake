# Libraries, public headers, command line, and what find_package(tessalink) and pkg-config read.
include(CMakePackageConfigHelpers)

file(RELATIVE_PATH up /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
set(shared "")
if(BUILD_SHARED_LIBS)
  set(shared " -DTESSALINK_SHARED")
endif()
get_property(libraries GLOBAL PROPERTY TESSALINK_LIBRARIES)
get_property(folders GLOBAL PROPERTY TESSALINK_FOLDERS)
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/tessalink)

# Each library is a component with a file of its own: a program finds those that it asks for even
# where the others' packages are missing.
foreach(library IN LISTS libraries)
  # Shared libraries find each other wherever the package is moved to. A static build needs no search
  # path, and a padded empty one would search the current folder.
  if(BUILD_SHARED_LIBS)
    set_target_properties(tessalink_${library} PROPERTIES INSTALL_RPATH $ORIGIN)
  endif()
  install(TARGETS tessalink_${library} EXPORT tessalink-${library})
  install(EXPORT tessalink-${library} NAMESPACE tessalink:: DESTINATION ${package})
  get_property(modules GLOBAL PROPERTY TESSALINK_MODULES_${library})
  list(JOIN modules ", " modules)
  configure_file(cmake/tessalink.pc.in ${PROJECT_BINARY_DIR}/tessalink-${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/tessalink-${library}.pc
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
foreach(folder IN LISTS folders)
  file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.h)
  install(FILES ${headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tessalink/${folder})
endforeach()
if(WIN32)
  install(FILES ${PROJECT_SOURCE_DIR}/platform/base/windows/PlatformNames.h
          DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tessalink/platform/base/windows)
endif()
if(TARGET tessalink)
  if(BUILD_SHARED_LIBS)
    set_target_properties(tessalink PROPERTIES INSTALL_RPATH $ORIGIN/../${CMAKE_INSTALL_LIBDIR})
  endif()
  install(TARGETS tessalink)
  install(FILES apps/tessalink/share/tessalink.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  if(TARGET tessalink_qt_module)
    if(BUILD_SHARED_LIBS)
      set_target_properties(tessalink_qt_module PROPERTIES INSTALL_RPATH $ORIGIN/..)
    endif()
    install(TARGETS tessalink_qt_module LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/tessalink)
  endif()
  if(TARGET tessalink_win32_module)
    install(TARGETS tessalink_win32_module LIBRARY DESTINATION ${CMAKE_INSTALL_BINDIR})
  endif()
endif()

if(WIN32 AND CMAKE_CROSSCOMPILING AND BUILD_SHARED_LIBS)
  # The compiler's own libraries.
  install(DIRECTORY ${PROJECT_BINARY_DIR}/bin/ DESTINATION ${CMAKE_INSTALL_BINDIR}
          FILES_MATCHING PATTERN "libstdc++*.dll" PATTERN "libgcc*.dll" PATTERN "libwinpthread*.dll")
endif()

install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES docs/questionnaire.schema.json docs/graph-file.schema.json
        DESTINATION ${CMAKE_INSTALL_DATADIR}/tessalink/schemas)

# Questionnaires as data.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/instruments/ DESTINATION ${CMAKE_INSTALL_DATADIR}/tessalink/instruments)

get_property(components GLOBAL PROPERTY TESSALINK_COMPONENTS)
configure_package_config_file(cmake/tessalinkConfig.cmake.in
  ${PROJECT_BINARY_DIR}/tessalinkConfig.cmake INSTALL_DESTINATION ${package})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/tessalinkConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/tessalinkConfig.cmake
              ${PROJECT_BINARY_DIR}/tessalinkConfigVersion.cmake DESTINATION ${package})

# Takes away what the last installation from this build folder put there.
if(PROJECT_IS_TOP_LEVEL)
  add_custom_target(uninstall COMMAND ${CMAKE_COMMAND} -P ${PROJECT_SOURCE_DIR}/cmake/uninstall.cmake
                    VERBATIM)
endif()
