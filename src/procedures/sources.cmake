# The chapters of the main window that run the maintenance procedures, and what they stand on: one line each.
set(PROCEDURE_SOURCES
    diskformat.cpp
    songbackup.cpp
    foldercopy.cpp
    backupchoice.cpp
    backupchoice.h
    archivetool.h
    backupcheck.h
    backupcheck.cpp
    downloadmanager.h
    downloadmanager.cpp
    extraction.cpp
    filedownload.cpp
    reinstall.cpp
    reinstallsteps.cpp
    systemattributes.h
    systemattributes.cpp
    systemtransfer.cpp
    systemupdate.cpp
    unpackedfolder.h
    unpackedfolder.cpp
    updateserver.h
    updateserver.cpp
    operationwidgets.cpp)

if(WIN32)
  list(APPEND PROCEDURE_SOURCES archivetool_win.cpp systemattributes_win.cpp)
else()
  list(APPEND PROCEDURE_SOURCES archivetool_unix.cpp systemattributes_unix.cpp)
endif()
set_source_files_properties(${CMAKE_SOURCE_DIR}/src/procedures/updateserver.cpp
                            PROPERTIES COMPILE_DEFINITIONS CORVIN_UPDATE_SERVER="${CORVIN_UPDATE_SERVER}")
