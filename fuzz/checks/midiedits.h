#pragma once

#include "checks.h"

class Draws;
class RawMidiFile;

namespace FuzzChecks {

/// Drives a dozen edits drawn from @p draws, every writer in any order, and says what was wrong after one of them.
Verdict editMidi(RawMidiFile &file, Draws &draws);

} // namespace FuzzChecks
