# A test runs for less than it takes to compile: what is asked of the compiler and the linker is to be quick. Lines can
# still be told in a debugger; what is tested is compiled as the preset says.
include(CheckLinkerFlag)
check_linker_flag(CXX "-fuse-ld=gold;LINKER:--detect-odr-violations" CORVIN_LINKER_GOLD)
add_library(corvin_testflags INTERFACE)
target_compile_options(corvin_testflags INTERFACE -O0 $<$<CONFIG:RelWithDebInfo>:-g1>)
# Two classes of one name, one of the program and one of its test, are taken for one: the build that counts lines, where
# nothing is compiled into its callers, must not link them.
target_link_options(corvin_testflags INTERFACE
                    "$<$<BOOL:${CORVIN_LINKER_GOLD}>:-fuse-ld=gold;LINKER:--detect-odr-violations,--fatal-warnings>")
target_link_libraries(corvin_testflags INTERFACE corvin_flags)

# QtTest would tell every test where the build lies, for those that look for files there. None does, and ccache would
# find nothing in another checkout.
get_target_property(test_definitions Qt5::Test INTERFACE_COMPILE_DEFINITIONS)
list(FILTER test_definitions EXCLUDE REGEX "QT_TESTCASE_BUILDDIR")
set_target_properties(Qt5::Test PROPERTIES INTERFACE_COMPILE_DEFINITIONS "${test_definitions}")

corvin_headers_ahead(corvin_testheaders HEADERS QtTest QtWidgets USES corvin_testflags Qt5::Widgets Qt5::Network Qt5::Test)

# All tests, and nothing that they do not need.
add_custom_target(corvin_tests)

# Sanitizers, counting and soaking take longer: the presets say how many times as long a test may take.
set(CORVIN_TIMEOUT_FACTOR 1 CACHE STRING "Multiplies the time limit of every test")

# corvin_moc(<target> <source> <output>): moc by itself. CMake's own AUTOMOC starts itself for each target before moc, and
# there are more than a hundred tests. What moc cannot know without the headers of Qt is told to it: the system.
function(corvin_moc target source output)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target}_moc)
  set(made ${folder}/${output})
  file(MAKE_DIRECTORY ${folder})
  set(system -DQ_OS_UNIX -DQ_OS_LINUX -D__linux__)
  if(WIN32)
    set(system -DQ_OS_WIN)
  endif()
  add_custom_command(
    OUTPUT ${made}
    COMMAND Qt5::moc ${system} ${source} -o ${made}
    DEPENDS ${source}
    VERBATIM)
  target_sources(${target} PRIVATE ${made})
  target_include_directories(${target} PRIVATE ${folder})
endfunction()

# corvin_test(<name> [SOURCES <file>...] [MOC_HEADERS <file>...] [USES <target>...] [LABELS <label>...] [TIMEOUT <seconds>] [RUN_SERIAL])
#
# One QtTest executable, <name>.cpp, registered with CTest. It runs without a display, in a UTF-8 locale, and with
# settings, data and temporary files in a folder of its own below the build tree. MOC_HEADERS are those of its headers
# that have Q_OBJECT in them.
function(corvin_test name)
  cmake_parse_arguments(ARG "RUN_SERIAL" "TIMEOUT" "SOURCES;MOC_HEADERS;USES;LABELS" ${ARGN})
  # What may take long starts first: at the end it would run alone.
  set(cost 0)
  if(ARG_TIMEOUT)
    set(cost ${ARG_TIMEOUT})
  else()
    set(ARG_TIMEOUT 120)
  endif()
  math(EXPR ARG_TIMEOUT "${CORVIN_TIMEOUT_FACTOR} * ${ARG_TIMEOUT}")
  add_executable(${name} ${name}.cpp ${ARG_SOURCES})
  add_dependencies(corvin_tests ${name})
  set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF)
  corvin_moc(${name} ${CMAKE_CURRENT_SOURCE_DIR}/${name}.cpp ${name}.moc)
  foreach(header IN LISTS ARG_MOC_HEADERS)
    cmake_path(ABSOLUTE_PATH header)
    cmake_path(GET header STEM stem)
    corvin_moc(${name} ${header} moc_${stem}.cpp)
  endforeach()
  target_link_libraries(${name} PRIVATE corvin_testflags ${ARG_USES} corvin_testsupport Qt5::Test)
  corvin_reuse_headers(${name} corvin_testheaders)
  set(folder ${CMAKE_BINARY_DIR}/tests)
  if(WIN32)
    # Under Wine files and the first window take longer.
    math(EXPR ARG_TIMEOUT "2 * ${ARG_TIMEOUT}")
    # Programs are looked for in the folder of the program that starts them: there each test puts its own.
    string(APPEND folder /${name})
  endif()
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${folder})
  # QtTest's own limit would end a long test of many rows; CTest's is the one that counts.
  math(EXPR limit_ms "1000 * ${ARG_TIMEOUT}")
  set(home ${CMAKE_BINARY_DIR}/testhome/${name})
  file(MAKE_DIRECTORY ${home}/tmp ${home}/config ${home}/data ${home}/cache)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(
    ${name}
    PROPERTIES
      ENVIRONMENT
      "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;HOME=${home};TMPDIR=${home}/tmp;XDG_CONFIG_HOME=${home}/config;XDG_DATA_HOME=${home}/data;XDG_CACHE_HOME=${home}/cache;CORVIN_VOLUMES=;QTEST_FUNCTION_TIMEOUT=${limit_ms}"
      TIMEOUT ${ARG_TIMEOUT}
      COST ${cost}
      SKIP_REGULAR_EXPRESSION "SKIPPED WHOLE:"
      LABELS "${ARG_LABELS}")
  if(ARG_RUN_SERIAL)
    set_tests_properties(${name} PROPERTIES RUN_SERIAL TRUE)
  endif()
endfunction()
