# The chapters of the main window that run the maintenance procedures, and what they stand on: one line each.
set(PROCEDURE_SOURCES
    devicecase.h
    devicecase.cpp
    foldertools.h
    foldertools.cpp
    operationwidgets.cpp
    maintenanceslots.cpp)
