#pragma once

#include "optimizerrun.h"

/// Where these files lie on the player of a run, each path relative to its root.
inline QStringList places(const OptimizerRun &run, const QList<QFileInfo> &files) {
    QStringList paths;
    for (const QFileInfo &file : files)
        paths.append(file.absoluteFilePath().mid(run.player.root().size()));
    return paths;
}
