#pragma once

#include "disk/datafolder.h"
#include "optimizer/ottimizza.h"
#include "procedures/songrestore.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"
#include "support/jobrecorder.h"
#include "transfer/opentransfer.h"

#include <csignal>

// What a child does: the job CORVIN_TEST_JOB on the connected player, with the folder CORVIN_TEST_SOURCE of the PC, and
// CORVIN_TEST_KILL microseconds after it has begun to work, if that is set, its end. An optimisation begins with the
// first status text that has CORVIN_TEST_FROM in it.

/// Runs from the moment from which kills are counted.
inline QElapsedTimer &sinceBegin() {
    static QElapsedTimer timer;
    return timer;
}

/// Ends this process at a moment that nothing announces, once, counted from the first call.
inline void killLater() {
    if (sinceBegin().isValid())
        return;
    sinceBegin().start();
    if (!qEnvironmentVariableIsSet("CORVIN_TEST_KILL"))
        return;
    const auto moment = qEnvironmentVariable("CORVIN_TEST_KILL").toULong();
    QThread::create([moment] {
        QThread::usleep(moment);
        std::raise(SIGKILL);
    })->start();
}

inline bool transferInChild(const QString &source) {
    BoxAnswerer boxes;
    boxes.answerAlways(Titles::kTransferExists, Buttons::kSiTutti);
    OpenTransfer transfer(Player::find().root());
    transfer.atEachStep(&killLater);
    transfer.drop({source});
    return transfer.hasTold(kEnd);
}

inline bool restoreInChild(const QString &source) {
    JobRecorder view;
    view.folder = source;
    view.answers = {{Titles::kCopyExists, JobAnswer::YesToAll}};
    view.then = [](const QString &) { killLater(); };
    return SongRestore(view).run().isDone();
}

inline bool optimiseInChild() {
    Ottimizza page;
    page.show();
    QObject::connect(&page, &Ottimizza::updateLabelAction, &page, [](const QString &text) {
        if (text.contains(qEnvironmentVariable("CORVIN_TEST_FROM")))
            killLater();
    });
    page.startAllOptimization();
    return page.failCode == Ottimizza::Success;
}

/// Returns the child's exit code and prints how long the job took from where kills are counted, 0 if it did not get
/// there.
inline int workInChild() {
    setDataFolder(qEnvironmentVariable("CORVIN_TEST_DATA"));
    const QString job = qEnvironmentVariable("CORVIN_TEST_JOB");
    const QString source = qEnvironmentVariable("CORVIN_TEST_SOURCE");
    const bool good = job == "transfer"_s  ? transferInChild(source)
                      : job == "restore"_s ? restoreInChild(source)
                                           : optimiseInChild();
    printf("took %lld\n", static_cast<long long>(sinceBegin().isValid() ? sinceBegin().nsecsElapsed() / 1000 : 0));
    return good ? 0 : 1;
}
