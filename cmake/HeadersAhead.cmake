# Qt's headers, compiled once for many sources.

# Not where the release is built: an include that a source forgets shows there.
option(CORVIN_HEADERS_AHEAD "Compile the headers of Qt Core once for all rooms" OFF)

# corvin_headers_ahead(<target> HEADERS <header>... USES <target>...): a program that is never run, with <header>... compiled
# as USES says.
function(corvin_headers_ahead target)
  cmake_parse_arguments(ARG "" "" "HEADERS;USES" ${ARGN})
  set(folder ${CMAKE_BINARY_DIR}/headers)
  file(WRITE ${folder}/main.cpp "int main() { return 0; }\n")
  add_executable(${target} ${folder}/main.cpp)
  set_target_properties(${target} PROPERTIES AUTOMOC OFF AUTOUIC OFF RUNTIME_OUTPUT_DIRECTORY ${folder})
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
  target_link_libraries(${target} PRIVATE ${ARG_USES})
  list(TRANSFORM ARG_HEADERS REPLACE "(.+)" "<\\1>" OUTPUT_VARIABLE headers)
  target_precompile_headers(${target} PRIVATE ${headers})
  # ccache tells what was compiled ahead by this text instead of its bytes, in which the path of the checkout stands. The
  # headers themselves it compares all the same.
  file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${target}.dir/cmake_pch.hxx.gch.sum
       CONTENT "${ARG_HEADERS} ${Qt5Core_VERSION} ${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION}\n")
endfunction()

# corvin_reuse_headers(<target> <headers>): compiles the sources of <target> with what corvin_headers_ahead has made as
# <headers>.
function(corvin_reuse_headers target headers)
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
  target_precompile_headers(${target} REUSE_FROM ${headers})
endfunction()
