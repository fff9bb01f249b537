# GoogleTest from the machine's own sources, built with the toolchain at hand.
include(GoogleTest)
find_path(ZT_GOOGLETEST_SOURCES googletest/CMakeLists.txt PATHS /usr/src/googletest
          NO_CMAKE_FIND_ROOT_PATH REQUIRED)
set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
add_subdirectory(${ZT_GOOGLETEST_SOURCES} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)

if(WIN32)
  target_compile_options(gtest PRIVATE -O1)
  target_compile_options(gmock PRIVATE -O1)
endif()

# All test programs; and those of the program itself without the development installation's and the
# tools'.
add_custom_target(zt_tests)
add_custom_target(zt_program_tests)

# zt_add_tests(NAME target SOURCES ... LIBRARIES ...): a test program whose tests CTest knows one by
# one, under "target.Suite.Test".
function(zt_add_tests)
  cmake_parse_arguments(arg "" "NAME" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${arg_NAME} ${arg_SOURCES})
  # Only the code under test is optimised: the tests' own sources compile in half the time.
  target_compile_options(${arg_NAME} PRIVATE -O0)
  if(WIN32)
    target_compile_definitions(${arg_NAME} PRIVATE _GLIBCXX_ASSERTIONS)
    target_sources(${arg_NAME} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support/Main.cpp)
    target_link_libraries(${arg_NAME} PRIVATE ${arg_LIBRARIES} zt_windows_settings GTest::gmock)
  else()
    target_link_libraries(${arg_NAME} PRIVATE ${arg_LIBRARIES} GTest::gmock_main)
  endif()
  add_dependencies(zt_tests ${arg_NAME})
  if(NOT "${arg_LIBRARIES}" MATCHES "zt_dev|zt_cms_client")
    add_dependencies(zt_program_tests ${arg_NAME})
  endif()
  gtest_discover_tests(${arg_NAME} TEST_PREFIX "${arg_NAME}." DISCOVERY_MODE PRE_TEST
                       DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120)
endfunction()
