# What both have in common: compilers by the processor's name, and packages of the target only.
set(mingw ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32)
set(CMAKE_C_COMPILER ${mingw}-gcc-posix)
set(CMAKE_CXX_COMPILER ${mingw}-g++-posix)
if(BUILD_SHARED_LIBS)
  # The compiler's own libraries are put beside those of the project.
  foreach(library IN ITEMS libstdc++-6.dll libgcc_s_seh-1.dll libgcc_s_dw2-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${mingw}-g++-posix -print-file-name=${library}
                    OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(EXISTS ${path})
      file(COPY ${path} DESTINATION ${CMAKE_BINARY_DIR}/bin)
    endif()
  endforeach()
else()
  set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
  set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
  set(CMAKE_MODULE_LINKER_FLAGS_INIT -static)
endif()
# Its programs run here under wine.
find_program(WINE NAMES wine NO_CMAKE_FIND_ROOT_PATH)
if(WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/run_under_wine)
endif()
if(CMAKE_SYSTEM_PROCESSOR STREQUAL "i686")
  # Doubles are computed as doubles, as everywhere else.
  set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
endif()
set(CMAKE_RC_COMPILER ${mingw}-windres)
# Packages are those of the target: of the cross compiler, and where the user says.
set(CMAKE_FIND_ROOT_PATH /usr/${mingw} ${CMAKE_PREFIX_PATH})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
