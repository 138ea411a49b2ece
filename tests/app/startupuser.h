#pragma once

/// What the child process returns when the main window outlived the program's run.
constexpr int kExitCodeWindowAlive = 90;

/// Runs the program in this process and plays its user: a timer, made together with the application object, presses the
/// language button TEST_CLICKS times, writes what it sees as JSON into the file TEST_REPORT, and closes the window or
/// ends the event loop with TEST_EXIT_CODE. The names are environment variables. Returns the program's exit code.
int runProgramWithUser(int argc, char **argv);
