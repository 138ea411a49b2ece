#pragma once

#include <QString>
#include <QStringList>

/// The songs that the player listed in System/Corvin/data.fastDB below @p root (with a closing slash), relative to the
/// root, each once; empty without the file. Everything between the paths is skipped.
QStringList songsListedByPlayer(const QString &root);
