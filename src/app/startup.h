#pragma once

/// Runs the whole program: builds the application object, the session log, the settings, the fonts, the language and
/// the main window, in that order, and runs the event loop until the window is closed.
/// @p argc and @p argv are those of main(); Qt takes its own options out of them. Returns the event loop's exit code.
/// Call it once a process, before any other application object exists.
int runCorvin4Manager(int &argc, char **argv);
