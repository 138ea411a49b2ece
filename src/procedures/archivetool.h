#pragma once

#include <QString>

/// The program that unpacks archives: "unar.exe" in @p programFolder (absolute, no closing slash) where it lies there;
/// else, on systems other than Windows, "unar" from the PATH. Where neither is there the first path is returned, which
/// then cannot be started.
QString archiveTool(const QString &programFolder);

/// Deletes every link below @p folder, never what it points to. A tool that makes the links an archive holds would let
/// its names lead out of the folder it was unpacked into. Nothing to do where the tool makes none.
void removeUnpackedLinks(const QString &folder);
