#include "faulttable.h"

/// A reinstallation of any kind in which one thing goes wrong loses nothing of the user's.
class TestFaultsOfReinstall : public QObject
{
    Q_OBJECT

    static QList<Fault> anyKind() {
        return cuts(kSystemArchivePath) + toolFaults() +
               QList<Fault>{cutAt(kUpdateArchivePath, 50),       fullPcAt(Status::kDownloading, 4),
                            fullPcAt(Status::kUnpacking, 4),     pulledAt(Status::kDownloading, 0),
                            pulledAt(Status::kTransferring, 2),  looseAt(Status::kTransferring, 2),
                            stoppedAt(Status::kTransferring, 2), closedAt(Status::kTransferring, 2),
                            closedAt(Status::kDownloading, 0),   elsewhere()};
    }
    static QList<Fault> formatting() {
        return {{"no format command"_s, [](FaultWorld &w) { w.programs.addBroken("cmd.exe"_s); }},
                {"format that may not"_s, [](FaultWorld &w) { w.refuseFormat(); }},
                stoppedAt(Status::kFormatting, 0)};
    }
    static QList<Fault> restoring() {
        return {pulledAt(Status::kReading, 0),      pulledAt(Status::kBackingUp, 300),
                looseAt(Status::kBackingUp, 300),   stoppedAt(Status::kBackingUp, 300),
                closedAt(Status::kBackingUp, 300),  fullPcAt(Status::kBackingUp, 400),
                pulledAt(Status::kRestoring, 300),  looseAt(Status::kRestoring, 300),
                stoppedAt(Status::kRestoring, 300), closedAt(Status::kRestoring, 300)};
    }

private slots:
    void initTestCase() {
        QString why;
        NEEDS(canTryFaults(&why), qPrintable("SKIPPED WHOLE: "_s + why));
    }
    TRY_EACH_FAULT(systemAlone, Work::Reinstall, anyKind() + QList<Fault>{fullPlayer(4096)})
    TRY_EACH_FAULT(erasingTheSongs, Work::ReinstallErasing, anyKind() + formatting())
    TRY_EACH_FAULT(restoringTheSongs, Work::ReinstallRestoring, anyKind() + formatting() + restoring())
};

PAGE_TEST_MAIN(TestFaultsOfReinstall)
#include "tst_faultsofreinstall.moc"
