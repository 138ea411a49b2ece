#pragma once

#include "playerdisk.h"
#include "systemfixture.h"

#include "support/httpserver.h"

#include <QDir>
#include <QObject>
#include <QScopedPointer>
#include <QString>

class LogCapture;

// The texts by which the tests follow a reinstall that formats.
inline const QString kLooking = QStringLiteral("Cerco se Corvin4 è connesso via USB...");
inline const QString kReading = QStringLiteral("Lettura del contenuto di Corvin...");
inline const QString kBackingUp = QStringLiteral("Copia di backup dei files sul PC...");
inline const QString kDownloading = QStringLiteral("Scarico l' ultima release dal sito Q-Arte...");
inline const QString kUnpacking = QStringLiteral("Creazione della copia del sistema operativo...");
inline const QString kFormatting = QStringLiteral("Sto formattando Corvin...");
inline const QString kTransferring = QStringLiteral("Trasferimento del sistema operativo...");
inline const QString kRestoring = QStringLiteral("Ripristino copia di backup sul Corvin...");
inline const QString kCopyingUpdate = QStringLiteral("Copia dei files dell' aggiornamento...");

inline const QString kEraseTitle = QStringLiteral("Azzeramento HD Corvin4");
inline const QString kDriveTitle = QStringLiteral("Cancellazione Drive");
inline const QString kFormatErrorTitle = QStringLiteral("Errore di formattazione");
inline const QString kBackupErrorTitle = QStringLiteral("Errore durante il BackUp");
inline const QString kRestoreErrorTitle = QStringLiteral("Errore durante il Restore");
inline const QString kCopyErrorTitle = QStringLiteral("Errore sulla copia");
inline const QString kStopTitle = QStringLiteral("Interrompi Operazione");
inline const QString kEndTitle = QStringLiteral("Fine operazioni");
inline const QString kErrorTitle = QStringLiteral("ERRORE");
inline const QString kCodeOne = QStringLiteral("Download Error , Cod 1");
inline const QString kYes = QStringLiteral("Si");
inline const QString kNo = QStringLiteral("No");
inline const QString kOk = QStringLiteral("OK");
inline constexpr int kLeast = 10000;
inline constexpr int kManyFiles = 60;

inline constexpr char kClean[] = "reinstallOpSysAndCleanSongs";
inline constexpr char kRestore[] = "reinstallOpSysAndRestoreSongs";

/// What the tests of the two procedures with format share: a player with songs on a disk of its own, an update server
/// with both archives, and a format command for that disk. Made anew for each test.
class ReinstallFormatTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

protected:
    static Entries systemEntries();
    /// The disk is as init() made it, and the window at rest.
    void expectOldDisk() const;
    /// The disk was formatted and has the new system, and nothing is left behind on the PC or in the window.
    void expectNewSystem() const;
    /// Unpacking that only ends when it is stopped.
    void useSlowTool();
    /// An empty folder of the PC.
    QString backup() const { return m_pc->path(QStringLiteral("backup")); }
    /// How the user is told of it.
    QString shownBackup() const { return QDir::toNativeSeparators(backup()); }
    static QStringList statusTexts(const LogCapture &log);

    QScopedPointer<TemporaryPc> m_pc;
    QScopedPointer<ProgramFolder> m_programs;
    QScopedPointer<HttpServer> m_server;
    QScopedPointer<PlayerDisk> m_player;
    QScopedPointer<ProcedureWindow> m_window;
    QString m_formatRecord;
};
