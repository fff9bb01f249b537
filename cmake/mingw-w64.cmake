# Builds for 64-bit Windows with mingw-w64. On a Windows machine the same file takes the
# mingw-w64 compiler that stands on the PATH.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

# The "posix" variant of the compiler brings std::thread and std::mutex.
find_program(ZT_MINGW_CXX NAMES x86_64-w64-mingw32-g++-posix x86_64-w64-mingw32-g++ REQUIRED)
find_program(ZT_MINGW_C NAMES x86_64-w64-mingw32-gcc-posix x86_64-w64-mingw32-gcc REQUIRED)
find_program(ZT_MINGW_RC NAMES x86_64-w64-mingw32-windres windres REQUIRED)
set(CMAKE_C_COMPILER ${ZT_MINGW_C})
set(CMAKE_CXX_COMPILER ${ZT_MINGW_CXX})
set(CMAKE_RC_COMPILER ${ZT_MINGW_RC})

if(NOT CMAKE_HOST_WIN32)
  set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
  set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
  set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
  set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
  set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
  # Lets CTest start the Windows test programs.
  set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tests/run-windows)
endif()
