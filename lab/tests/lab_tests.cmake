# The lab's own tests. Included rather than added as a folder, because in
# the sasfwctl tree they join at the end of its top level (see ../CMakeLists.txt).
if(NOT TARGET GTest::gtest)
  if(CMAKE_CROSSCOMPILING)
    # No packaged GoogleTest for Windows: build it from Debian's sources.
    set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
    # Its own CMake files name the targets GTest::gtest and GTest::gtest_main.
    add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  else()
    find_package(GTest REQUIRED)
  endif()
endif()

file(GLOB LAB_TEST_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.cpp)
# Files and their lines are read as in the utility's tests.
set(TEST_COMMON_DIR ${CMAKE_CURRENT_LIST_DIR}/../../tests/common)
add_executable(lab_tests ${LAB_TEST_SOURCES} ${TEST_COMMON_DIR}/files.cpp)
target_include_directories(lab_tests PRIVATE ${TEST_COMMON_DIR})
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  # As the utility's tests: the stand-ins keep their optimisation, the tests need none.
  target_compile_options(lab_tests PRIVATE -O0 -g0)
endif()
target_link_libraries(lab_tests PRIVATE sasfwctl_lab sasfwctl_core GTest::gtest GTest::gtest_main)
if(WIN32)
  target_link_options(lab_tests PRIVATE -static)
endif()
# The process tests run the built programs. Under Wine the absolute paths
# of the sources resolve on drive Z:, the Linux root.
target_compile_definitions(lab_tests PRIVATE
  LAB_STORCLI="$<TARGET_FILE:lab_storcli64>" LAB_ARCCONF="$<TARGET_FILE:lab_arcconf>" LAB_LABCTL="$<TARGET_FILE:labctl>"
  LAB_SCENARIO_DIR="${CMAKE_CURRENT_LIST_DIR}/../scenarios" LAB_FIXTURE_DIR="${CMAKE_CURRENT_LIST_DIR}/fixtures")
add_dependencies(lab_tests lab_storcli64 lab_arcconf labctl)
set(LAB_TEST_DIR ${CMAKE_BINARY_DIR}/lab_tests)
set_target_properties(lab_tests PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${LAB_TEST_DIR})
# Each test works in a scratch folder of its own below the working directory.
add_test(NAME lab COMMAND lab_tests)
set_tests_properties(lab PROPERTIES WORKING_DIRECTORY ${LAB_TEST_DIR})
