#pragma once

#include <filesystem>
#include <vector>

/// A stand-in for a program that the product starts. It does what the text file beside it says: named after the
/// program's own path with ".does" at its end, UTF-8, done from top to bottom, a verb a line and after a blank what
/// belongs to it.
///
///     record FILE        adds the arguments to FILE, one a line, all at once
///     record-folder FILE writes the working folder into FILE, with forward slashes
///     print TEXT         a line on the standard output
///     complain TEXT      a line on the standard error output
///     make FILE          makes an empty file
///     empty N            empties the folder or drive that argument N names (from 1), but for the volume's label file
///     wait-for FILE      goes on when FILE is there
///     wait-forever       does not go on
///     read-input         reads the standard input to its end; when anything comes, ends with exit code 1
///     exit N             ends with exit code N
///     die                ends as one that is killed
///
/// Both waits end with kStandInFailed after ten minutes, so that nothing outlives a test for long.
///
/// @p program is its own path. Returns the exit code: 0, what a verb says, or kStandInFailed with a word about it on
/// the standard error output when something cannot be done.
int standIn(const std::filesystem::path &program, const std::vector<std::filesystem::path> &arguments);

constexpr int kStandInFailed = 99;

/// Ends this process as something from outside does, without a chance to clean up.
[[noreturn]] void dieAtOnce();
