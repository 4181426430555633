# The configuration when nothing is said, and tessalink_settings: what every target of this project
# builds with, and none of its users.

if(PROJECT_IS_TOP_LEVEL)
  get_property(multi_config GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
  if(NOT CMAKE_BUILD_TYPE AND NOT multi_config)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Debug, Release, RelWithDebInfo" FORCE)
  endif()
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
endif()

if((TESSALINK_BUILD_FUZZERS OR TESSALINK_COVERAGE) AND NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  message(FATAL_ERROR "TESSALINK_BUILD_FUZZERS and TESSALINK_COVERAGE need Clang: "
                      "add -DCMAKE_CXX_COMPILER=clang++")
endif()

add_library(tessalink_settings INTERFACE)
target_compile_features(tessalink_settings INTERFACE cxx_std_20)
target_compile_options(tessalink_settings INTERFACE
  -Wall -Wextra -Wconversion -fno-math-errno -ffp-contract=off
  $<$<BOOL:${TESSALINK_WERROR}>:-Werror>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 sees overlaps in std::string that are not there, and strings of temporary structures that
  # are not initialized; Clang looks for the latter, too.
  target_compile_options(tessalink_settings INTERFACE -Wno-restrict -Wno-maybe-uninitialized)
  if(CMAKE_UNITY_BUILD)
    # It takes the sources that are compiled together for headers, whose classes have no local parts.
    target_compile_options(tessalink_settings INTERFACE -Wno-subobject-linkage)
  endif()
endif()

# tessalink_instrument(OPTION...): compiles and links everything with the options.
function(tessalink_instrument)
  target_compile_options(tessalink_settings INTERFACE ${ARGN})
  target_link_options(tessalink_settings INTERFACE ${ARGN})
endfunction()

if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  # Lengths of files are put into std::size_t where they are known to fit.
  target_compile_options(tessalink_settings INTERFACE -Wno-conversion)
endif()

if(TESSALINK_SANITIZE)
  tessalink_instrument(-fsanitize=${TESSALINK_SANITIZE} -fno-sanitize-recover=all
                       -fno-omit-frame-pointer)
  target_compile_definitions(tessalink_settings INTERFACE _GLIBCXX_ASSERTIONS)
endif()
if(TESSALINK_BUILD_FUZZERS)
  tessalink_instrument(-fsanitize=fuzzer-no-link)
endif()
if(TESSALINK_COVERAGE)
  # What is run is written down when LLVM_PROFILE_FILE says where.
  tessalink_instrument(-fprofile-instr-generate=/dev/null -fcoverage-mapping)
endif()
