#pragma once

#include "procedures/downloadmanager.h"
#include "systemfixture.h"

inline constexpr int kSize = 50000;
inline const QString kFile = "/a.zip"_s;
inline const QString kOther = "/b.zip"_s;

/// A server, and a PC with its download folder.
struct Downloads
{
    Downloads() { pc.addFolder("Corvin"_s); }
    QString url(const QString &path = kFile) const { return server.url(path); }
    QString saved(const QString &name = "a.zip"_s) const { return pc.downloads(name); }
    QByteArray content(const QString &name = "a.zip"_s) const { return contentOf(saved(name)); }

    /// Starts a download and waits for its end.
    void fetch() {
        QVERIFY(manager.download(url()));
        QTRY_VERIFY(manager.done);
    }

    TemporaryPc pc;
    HttpServer server;
    DownloadManager manager;
};
