# Settings that every target takes: zt_compiler_settings everywhere, zt_windows_settings for the
# targets that call Windows. For Windows each kind of target has its own optimisation: see
# zt_compile_program and zt_compile_checked.
if(WIN32)
  set(CMAKE_CXX_FLAGS_RELEASE "-DNDEBUG")
endif()
add_library(zt_compiler_settings INTERFACE)
target_include_directories(zt_compiler_settings INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(zt_compiler_settings INTERFACE -Wall -Wextra -Wpedantic -Werror)
# GCC 12 takes the inlined operator+ of its own std::string for an overlapping copy (its bug 105651);
# later versions know better.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(zt_compiler_settings INTERFACE -Wno-restrict)
endif()
if(ZT_SANITIZE AND NOT WIN32)
  target_compile_definitions(zt_compiler_settings INTERFACE _GLIBCXX_ASSERTIONS)
  set(zt_sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(zt_compiler_settings INTERFACE ${zt_sanitizers})
  target_link_options(zt_compiler_settings INTERFACE ${zt_sanitizers})
endif()
if(ZT_FUZZ)
  target_compile_options(zt_compiler_settings INTERFACE -fsanitize=fuzzer-no-link)
endif()

if(WIN32)
  add_library(zt_windows_settings INTERFACE)
  target_link_libraries(
    zt_windows_settings
    INTERFACE zt_compiler_settings ole32 oleaut32 uuid shell32 version ws2_32 advapi32 user32 gdi32)
  target_compile_definitions(
    zt_windows_settings INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601)
  # Nothing here is optimised at link time, and the linker takes a third longer with its plugin.
  target_link_options(zt_windows_settings INTERFACE -static -municode -fno-use-linker-plugin)
endif()

# Ends the process at the first undefined operation; Windows targets have no runtime that reports it.
set(zt_traps -fsanitize=undefined -fsanitize-undefined-trap-on-error)
# The compiler takes the paths behind its own traps for real ones; warnings of this kind are errors in
# the program as it is shipped.
foreach(kind array-bounds maybe-uninitialized nonnull null-dereference stringop-overflow
             stringop-overread use-after-free)
  list(APPEND zt_traps -Wno-error=${kind})
endforeach()

# zt_compile_checked(target ...): what only tests and the sample use is always compiled with the
# standard library's assertions, and alike in every preset, so that a compiler cache has it for all.
# Not optimised: it compiles in half the time.
function(zt_compile_checked)
  if(WIN32)
    foreach(target IN LISTS ARGN)
      target_compile_options(${target} PRIVATE -O0 -D_GLIBCXX_ASSERTIONS)
    endforeach()
  endif()
endfunction()

# zt_compile_program(target ...): the program's own code. It is shipped without checks; with
# ZT_SANITIZE it has them for the unit tests. With ZT_COVERAGE it counts what runs, and whatever links
# it writes that to a profile as it ends.
function(zt_compile_program)
  foreach(target IN LISTS ARGN)
    if(ZT_COVERAGE)
      target_compile_options(${target} PRIVATE --coverage -O0)
      target_link_options(${target} INTERFACE --coverage)
    elseif(ZT_SANITIZE)
      if(WIN32)
        target_compile_options(${target} PRIVATE -O1 -D_GLIBCXX_ASSERTIONS ${zt_traps})
      endif()
    elseif(WIN32)
      target_compile_options(${target} PRIVATE -O2 -g1 -ffunction-sections -fdata-sections)
    endif()
  endforeach()
endfunction()

# zt_ship(program): ships the program without what nothing calls, its symbols in a file of their own
# beside it, and checks what came of it.
function(zt_ship program)
  set(file $<TARGET_FILE:${program}>)
  set(script ${CMAKE_COMMAND} -DPROGRAM=${file})
  set(commands COMMAND ${script} -DOBJDUMP=${CMAKE_OBJDUMP} -P
               ${PROJECT_SOURCE_DIR}/cmake/CheckImports.cmake)
  zt_compile_program(${program})
  if(NOT ZT_COVERAGE AND NOT ZT_SANITIZE)
    # Without a time stamp the same sources make the same program.
    target_link_options(${program} PRIVATE -Wl,--gc-sections -Wl,--no-insert-timestamp)
    list(PREPEND commands
         COMMAND ${CMAKE_OBJCOPY} --only-keep-debug ${file} ${file}.debug
         COMMAND ${CMAKE_STRIP} --strip-all ${file}
         COMMAND ${CMAKE_OBJCOPY} --add-gnu-debuglink=${file}.debug ${file})
    list(APPEND commands COMMAND ${script} -P ${PROJECT_SOURCE_DIR}/cmake/CheckSize.cmake)
  endif()
  add_custom_command(TARGET ${program} POST_BUILD ${commands} VERBATIM)
endfunction()

# zt_precompile(header target ...): compiles the header once, for all the targets, which must be
# compiled alike.
function(zt_precompile header first)
  # The option lets a compiler cache see what a source takes from the precompiled header.
  target_compile_options(${first} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
  target_precompile_headers(${first} PRIVATE ${header})
  foreach(target IN LISTS ARGN)
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
    target_precompile_headers(${target} REUSE_FROM ${first})
  endforeach()
endfunction()
