# cmake -DPROGRAM=... -P CheckSize.cmake: fails when the program is larger than it may be.
cmake_minimum_required(VERSION 3.22)

set(largest 500000) # bytes

file(SIZE ${PROGRAM} size)
if(size GREATER largest)
  message(FATAL_ERROR "${PROGRAM} has ${size} bytes; at most ${largest} are allowed")
endif()
