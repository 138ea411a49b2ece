#pragma once

#include "systemfixture.h"

/// What goes from the player to the PC and back.
struct Backup : Maintenance
{
    void addToPlayer(const QStringList &files, const QByteArray &content = "on the player") {
        for (const QString &file : files)
            player.addFile(file, content);
    }
    void addToFolder(const QStringList &files) {
        for (const QString &file : files)
            pc.addFile("backup/"_s + file, "saved");
    }
    /// A player with something of everything.
    void fillPlayer() {
        player.addSystemFiles();
        addToPlayer({"root.mid"_s, "My Songs/a.mid"_s, "My Songs/deep/b.mp3"_s, "MyBridges/c.mid"_s, "Images/d.jpg"_s,
                     "bridges/e.mid"_s, "My Songs/BRIDGES/f.mid"_s, "EFFECTS/g.fx"_s, "AUTOEXEC.BAT"_s,
                     "My Songs/autoexec.bat"_s, "System/Corvin/data.fastDB"_s, "System/playlist/one.pls"_s,
                     "System/playlist/nodot"_s, "System/playlist/.hidden.pls"_s, "My Songs/nodot"_s,
                     "My Songs/.hidden.mid"_s, ".hiddenfolder/n.mid"_s});
        player.addFolder("Empty"_s);
    }
};

inline QStringList numbered(int count) {
    QStringList names;
    for (int i = 1; i <= count; ++i)
        names.append("Songs/%1.mid"_s.arg(i));
    return names;
}
