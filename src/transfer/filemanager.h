#pragma once

/// Opens the user's home folder in the PC's file manager and returns at once. False when none could be started.
bool openHomeInFileManager();
