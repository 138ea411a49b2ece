#pragma once

/// Waits at least @p milliseconds while keeping the interface alive: events are processed, at most 100 ms of them per
/// round, until the time is reached. Values of zero or less process pending events once and return.
/// Slots may run during the wait; the caller must be prepared for that. GUI thread only.
void waitMs(int milliseconds);
