#pragma once

#include "playerdisk.h"
#include "systemfixture.h"

inline constexpr int kManyFiles = 60; ///< songs, and as many files of the system
inline const QByteArray kAlone = Slots::kReinstall;
inline const QByteArray kClean = Slots::kReinstallClean;
inline const QByteArray kRestoring = Slots::kReinstallRestoring;

/// The procedures that reinstall, of a player with an old system and songs on a disk of its own, with a format command
/// for that disk.
struct FormatReinstall : Maintenance
{
    FormatReinstall() : record(pc.path("format.txt"_s)) {
        serve();
        for (const QString &file : words("AUTOEXEC.BAT System/old.exe System/Playlist/mine.pls"))
            putFile(disk.path(file), "old");
        for (int i = 0; i < kManyFiles; ++i)
            putFile(disk.path("My Songs/%1.mid"_s.arg(i)), QByteArray::number(i));
        disk.addFormatCommand(programs, record);
    }
    /// Serves the system with many files, and what else is given.
    void serve(Entries more = {}) {
        for (int i = 0; i < kManyFiles; ++i)
            more.insert("System/many/%1.dat"_s.arg(i), "x");
        serveSystem(more);
    }
    /// Runs a procedure with these boxes after its first question, which is agreed to, and with the backup folder that
    /// it asks for.
    void runAgreed(const QByteArray &procedure, const QList<Answer> &answers) {
        const QList<Answer> first = procedure == kClean ? QList<Answer>{Titles::kErase} : QList<Answer>();
        run(procedure.constData(), first + answers, procedure == kRestoring ? std::optional(backup) : std::nullopt);
    }
    void expectOldDisk() const {
        QVERIFY(!QFile::exists(record));
        QCOMPARE(disk.content("AUTOEXEC.BAT"_s), QByteArray("old"));
        QCOMPARE(disk.content("System/old.exe"_s), QByteArray("old"));
        QCOMPARE(disk.files().size(), kManyFiles + 3);
    }
    /// The disk was formatted and has the new system, and nothing is left behind on the PC.
    void expectNewSystem() const {
        QCOMPARE(disk.content("AUTOEXEC.BAT"_s), QByteArray("new"));
        QCOMPARE(disk.content("System/Corvin/Corvin.exe"_s), QByteArray("new"));
        QVERIFY(!isOnDisk("System/old.exe"_s));
        QCOMPARE(filesBelow(disk.path("System/many"_s)).size(), kManyFiles);
        QVERIFY(!QFile::exists(pc.downloads()));
    }
    void expectBackupIsNamed() const {
        QVERIFY2(lastBox().informativeText.contains(QDir::toNativeSeparators(backup)),
                 qPrintable(lastBox().informativeText));
    }
    int savedFiles() const { return filesBelow(backup).size(); }
    bool isOnDisk(const QString &relative) const { return QFile::exists(disk.path(relative)); }

    PlayerDisk disk;
    /// Programs that a test has hidden are back before the disk is taken away by them.
    const Environment path{"PATH", qgetenv("PATH")};
    const QString record; ///< what the format command was given
};

inline void addBothProcedures() {
    columns<QByteArray>("procedure");
    row("clean", kClean);
    row("restore", kRestoring);
}
