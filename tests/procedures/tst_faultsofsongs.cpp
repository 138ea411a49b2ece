#include "faulttable.h"

/// An update, a backup, a restore, an optimisation or a transfer in which one thing goes wrong loses nothing of the
/// user's.
class TestFaultsOfSongs : public QObject
{
    Q_OBJECT

    static QList<Fault> updating() {
        return cuts(kUpdateArchivePath) + toolFaults() +
               QList<Fault>{fullPcAt(Status::kDownloading, 4),
                            pulledAt(Status::kDownloading, 0),
                            pulledAt(Status::kCopyingUpdate, 1),
                            looseAt(Status::kCopyingUpdate, 1),
                            stoppedAt(Status::kCopyingUpdate, 1),
                            closedAt(Status::kCopyingUpdate, 1),
                            fullPlayer(0),
                            fullPlayer(4096),
                            elsewhere()};
    }
    static QList<Fault> backingUp() {
        return {pulledAt(Status::kReading, 0),
                pulledAt(Status::kBackingUp, 300),
                looseAt(Status::kBackingUp, 300),
                stoppedAt(Status::kBackingUp, 300),
                closedAt(Status::kBackingUp, 300),
                fullPcAt(Status::kBackingUp, 400),
                elsewhere()};
    }
    static QList<Fault> restoring() {
        return {pulledAt(Status::kRestoring, 20),
                looseAt(Status::kRestoring, 20),
                stoppedAt(Status::kRestoring, 20),
                closedAt(Status::kRestoring, 20),
                fullPlayer(0),
                fullPlayer(40960),
                elsewhere()};
    }
    static QList<Fault> optimising() {
        QList<Fault> all;
        for (const QString &place :
             {Places::kScan, Places::kDeleting, Places::kTitles, Places::kSubfolders, Places::kDatabase}) {
            const int value = place == Places::kScan ? 0 : 1;
            all += {pulledAt(place, value), stoppedAt(place, value), closedAt(place, value)};
        }
        for (const QString &place : {Places::kTitles, Places::kSubfolders, Places::kDatabase})
            all += looseAt(place, 300);
        for (const qint64 bytes : {0, 4096, 12288, 40960})
            all += fullPlayer(bytes);
        return all + QList<Fault>{elsewhere()};
    }
    static QList<Fault> transferring() {
        return {pulledAt(Places::kDropping, 30),
                looseAt(Places::kDropping, 30),
                stoppedAt(Places::kDropping, 30),
                closedAt(Places::kDropping, 30),
                fullPlayer(0),
                fullPlayer(40960),
                elsewhere()};
    }

private slots:
    void initTestCase() {
        QString why;
        NEEDS(canTryFaults(&why), qPrintable("SKIPPED WHOLE: "_s + why));
    }
    TRY_EACH_FAULT(update, Work::Update, updating())
    TRY_EACH_FAULT(backup, Work::BackUp, backingUp())
    TRY_EACH_FAULT(restore, Work::Restore, restoring())
    TRY_EACH_FAULT(optimisation, Work::Optimise, optimising())
    TRY_EACH_FAULT(transfer, Work::Transfer, transferring())
};

PAGE_TEST_MAIN(TestFaultsOfSongs)
#include "tst_faultsofsongs.moc"
