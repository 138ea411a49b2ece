#pragma once

#include "signalrecorder.h"
#include "testing.h"

/// The lines of a recorder without those of Qt's platform, which says of each window what it cannot do without a
/// screen.
inline QStringList ownLines(SignalRecorder &recorder) {
    return recorder.lines().filter(QRegularExpression("^(?!log This plugin does not support)"_s));
}
