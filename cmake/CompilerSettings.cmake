# Settings that every target takes: zt_compiler_settings everywhere, zt_windows_settings for the
# targets that call Windows.
add_library(zt_compiler_settings INTERFACE)
target_include_directories(zt_compiler_settings INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(zt_compiler_settings INTERFACE -Wall -Wextra -Wpedantic -Werror)
# GCC 12 takes the inlined operator+ of its own std::string for an overlapping copy (its bug 105651);
# later versions know better.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(zt_compiler_settings INTERFACE -Wno-restrict)
endif()
target_compile_definitions(zt_compiler_settings INTERFACE $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)
if(ZT_SANITIZE)
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
  target_link_options(zt_windows_settings INTERFACE -static -municode)
endif()

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

# zt_measure_coverage(target ...): the targets' code counts what runs; whatever links them writes it
# to a profile as it ends. Tests and stand-ins are not measured.
function(zt_measure_coverage)
  if(ZT_COVERAGE)
    foreach(target IN LISTS ARGN)
      target_compile_options(${target} PRIVATE --coverage -O0)
      target_link_options(${target} INTERFACE --coverage)
    endforeach()
  endif()
endfunction()
