if(CORVIN_HEADERS_AHEAD)
  corvin_headers_ahead(corvin_roomheaders HEADERS QtCore USES corvin_flags Qt5::Core)
endif()

# corvin_room(<target> ROOM <folder> SOURCES <file>... [HEADERS <file>...] [FORMS <file>...] [USES <target>...])
#
# A room is one static library. Its headers are reached as "<folder>/<header>" through a folder of links made in the
# build tree, and only by targets that name the room in USES: an include of a room that is not named does not compile.
# Of what USES names only Qt is handed on to those who use the room.
# HEADERS are the headers that others may include; headers that stand in SOURCES are the room's own.
function(corvin_room target)
  cmake_parse_arguments(ARG "" "ROOM" "SOURCES;HEADERS;FORMS;USES" ${ARGN})
  set(root ${CMAKE_BINARY_DIR}/rooms/${target})
  file(REMOVE_RECURSE ${root})
  file(MAKE_DIRECTORY ${root}/${ARG_ROOM})
  foreach(header IN LISTS ARG_HEADERS)
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${header} ${root}/${ARG_ROOM}/${header} SYMBOLIC)
  endforeach()
  add_library(${target} STATIC ${ARG_SOURCES} ${ARG_HEADERS} ${ARG_FORMS})
  target_include_directories(${target} PUBLIC ${root})
  set(qt ${ARG_USES})
  list(FILTER qt INCLUDE REGEX "^Qt5::")
  list(FILTER ARG_USES EXCLUDE REGEX "^Qt5::")
  target_link_libraries(${target} PUBLIC ${qt} PRIVATE ${ARG_USES} corvin_flags)
  # Those of Qt Core alone: with more of them a room would compile that includes what it may not.
  if(CORVIN_HEADERS_AHEAD)
    corvin_reuse_headers(${target} corvin_roomheaders)
  endif()
endfunction()
