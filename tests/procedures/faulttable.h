#pragma once

#include "faultworld.h"

/// One thing that goes wrong at one place.
struct Fault
{
    QString name;
    std::function<void(FaultWorld &world)> arm;
};

// Places, as the status line names them.
namespace Places {
inline const QString kScan = "Scansione cartelle"_s;
inline const QString kDeleting = "Cancellazione file non supportati"_s;
inline const QString kTitles = "Ricerca dei titoli"_s;
inline const QString kSubfolders = "Organizzazione in sottocartelle"_s;
inline const QString kDatabase = "Creazione database"_s;
inline const QString kCounting = "Conteggio numero file"_s;
inline const QString kDropping = "file su Corvin4 in corso"_s;
} // namespace Places

inline Fault pulledAt(const QString &status, int value) {
    return {"pulled at %1 %2"_s.arg(status).arg(value),
            [=](FaultWorld &w) { w.when(status, value, [&w] { w.pull(); }); }};
}
/// The cable has a loose contact: out, and in again a moment later.
inline Fault looseAt(const QString &status, int value) {
    return {"pulled and pushed in again at %1 %2"_s.arg(status).arg(value), [=](FaultWorld &w) {
                w.when(status, value, [&w] {
                    w.pull();
                    QTimer::singleShot(300, w.window.window.get(), [&w] { w.pushIn(); });
                });
            }};
}
inline Fault stoppedAt(const QString &status, int value) {
    return {"stopped at %1 %2"_s.arg(status).arg(value),
            [=](FaultWorld &w) { w.when(status, value, [&w] { w.window.stop()->click(); }); }};
}
inline Fault closedAt(const QString &status, int value) {
    return {"closed at %1 %2"_s.arg(status).arg(value),
            [=](FaultWorld &w) { w.when(status, value, [&w] { w.window->close(); }); }};
}
inline Fault cutAt(const QString &path, int percent) {
    return {"%1 cut at %2 %"_s.arg(path).arg(percent), [=](FaultWorld &w) { w.cut(path, percent); }};
}
inline Fault fullPlayer(qint64 bytesFree) {
    return {"player with %1 bytes free"_s.arg(bytesFree), [=](FaultWorld &w) { w.fillPlayer(bytesFree); }};
}
inline Fault elsewhere() {
    return {"another window works"_s, [](FaultWorld &w) { w.workElsewhere(); }};
}
/// The PC's temporary folder has so little room when the work comes to this place.
inline Fault fullPcAt(const QString &status, int kilobytes) {
    return {"PC with %1 kB at %2"_s.arg(kilobytes).arg(status),
            [=](FaultWorld &w) { w.when(status, 0, [&w, kilobytes] { w.fillPc(kilobytes); }); }};
}
inline QList<Fault> toolFaults() {
    return {{"no tool"_s, [](FaultWorld &w) { w.hideTool(); }},
            {"tool that fails"_s, [](FaultWorld &w) { w.programs.addStandIn("unar"_s, {Does::exitWith(1)}); }},
            {"tool that dies"_s, [](FaultWorld &w) { w.programs.addStandIn("unar"_s, {Does::die()}); }},
            {"tool that does half"_s, [](FaultWorld &w) { w.halveTool(); }}};
}
inline QList<Fault> cuts(const QString &path) {
    return {cutAt(path, 10), cutAt(path, 50), cutAt(path, 99)};
}

/// Does the work once for each of the faults, and looks each time whether anything is lost.
#define TRY_EACH_FAULT(slot, work, faults)                                                                             \
    void slot##_data() {                                                                                               \
        columns<int>("index");                                                                                         \
        const QList<Fault> all = faults;                                                                               \
        for (int i = 0; i < all.size(); ++i)                                                                           \
            row(qPrintable(all.at(i).name), i);                                                                        \
    }                                                                                                                  \
    void slot() {                                                                                                      \
        QFETCH(int, index);                                                                                            \
        const QList<Fault> all = faults;                                                                               \
        FaultWorld world(work);                                                                                        \
        all.at(index).arm(world);                                                                                      \
        world.doWork();                                                                                                \
        world.expectNothingLost();                                                                                     \
    }
