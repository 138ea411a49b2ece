#pragma once

#include "systemfixture.h"

inline const QStringList kOldFiles = {"AUTOEXEC.BAT"_s, "My Songs/a.mid"_s, "System/old.exe"_s};
inline const QString kNewFile = "System/Corvin/Corvin.exe"_s;

/// The reinstall of a player with an old system and a song.
struct SystemReinstall : Maintenance
{
    SystemReinstall() {
        for (const QString &file : kOldFiles)
            player.addFile(file, "old");
    }
    void run(const QList<Answer> &answers) { Maintenance::run(Slots::kReinstall, answers); }
    bool isInstalled() const { return player.content(kNewFile) == "new"; }
    bool isDownloadThere() const { return QFile::exists(pc.downloads()); }
};

inline const QStringList kSystemAlone = {kSystemArchivePath};
