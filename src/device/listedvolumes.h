#pragma once

#include <QString>
#include <QStringList>

/// Whether @p label, as it was read from a volume, names the player: trimmed and in lower case it equals "corvin4".
bool isPlayerLabel(const QString &label);

/// @p path with exactly one closing slash; the root "/" stays as it is.
QString withClosingSlash(const QString &path);

/// The volumes that the environment variable CORVIN_VOLUMES lists in place of the mounted ones.
namespace ListedVolumes {

/// Whether the variable is set, even to nothing.
bool areInForce();
/// The roots of the listed folders that exist: canonical, with a closing slash, in the order of the list.
QStringList roots();
/// The first line of ".windows-label" in @p root (with a closing slash), trimmed; empty without that file, or when the
/// folder is not listed.
QString label(const QString &root);

} // namespace ListedVolumes
