# cmake -DPROGRAM=... -DOBJDUMP=... -P CheckImports.cmake: fails when the program imports a DLL that
# is no part of the system, and would not start where the compiler's own DLLs are missing.
cmake_minimum_required(VERSION 3.22)

set(system_dlls
    advapi32.dll
    gdi32.dll
    kernel32.dll
    msvcrt.dll
    ole32.dll
    oleaut32.dll
    shell32.dll
    user32.dll
    version.dll
    ws2_32.dll)

execute_process(COMMAND ${OBJDUMP} -p ${PROGRAM} OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "DLL Name: [^\r\n]+" imports "${headers}")
if(NOT imports)
  message(FATAL_ERROR "${PROGRAM}: no imports found")
endif()
foreach(import IN LISTS imports)
  string(REPLACE "DLL Name: " "" dll "${import}")
  string(TOLOWER "${dll}" name)
  if(NOT name IN_LIST system_dlls)
    message(FATAL_ERROR "${PROGRAM} imports ${dll}, which is not among the system's DLLs")
  endif()
endforeach()
