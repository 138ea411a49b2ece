#pragma once

#include <QString>

/// The full URL of @p path ("/download/…", as the server knows it) on the update server.
/// The server's address is set when the program is built; the environment variable CORVIN_UPDATE_SERVER, when it holds
/// anything, overrides it. Slashes at the address's end are forgiven. The result is not checked to be a valid URL.
QString updateServerUrl(const QString &path);

/// Path of the latest release, an archive with the folder "CorvinUpdate".
inline const QString kUpdateArchivePath = QStringLiteral("/download/Corvin4/CorvinUpdate.c4");
/// Path of the whole system, an archive with everything but the songs.
inline const QString kSystemArchivePath = QStringLiteral("/download/Corvin4/CorvinAll.zip");
