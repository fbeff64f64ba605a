# The native build also cross-builds the Windows tree, so that one ctest runs
# the unit tests under Wine and the end-to-end cases against sasfwctl.exe.
find_program(MINGW_CXX x86_64-w64-mingw32-g++-posix)
find_program(WINE wine)
if(MINGW_CXX AND WINE)
  set(default_windows ON)
else()
  set(default_windows OFF)
endif()
option(SASFWCTL_WINDOWS "Cross-build for Windows and test it under Wine" ${default_windows})

if(SASFWCTL_WINDOWS)
  include(ExternalProject)
  set(SASFWCTL_WINDOWS_DIR ${CMAKE_BINARY_DIR}/windows)
  ExternalProject_Add(windows_build
    SOURCE_DIR ${CMAKE_SOURCE_DIR}
    BINARY_DIR ${SASFWCTL_WINDOWS_DIR}
    CMAKE_ARGS -DCMAKE_TOOLCHAIN_FILE=${CMAKE_SOURCE_DIR}/cmake/mingw-w64.cmake
               -DCMAKE_BUILD_TYPE=${CMAKE_BUILD_TYPE}
    INSTALL_COMMAND ""
    BUILD_ALWAYS ON)
endif()
