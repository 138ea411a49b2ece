#pragma once

#include "support/signalrecorder.h"
#include "support/simulatedplayer.h"
#include "support/testing.h"

#include "optimizer/ottimizza.h"

/// The optimisation page, a player to work on, and all that the page tells the window and the log.
struct OptimizerRun
{
    /// @p files as put() takes them.
    explicit OptimizerRun(const QStringList &files = {}) { put(files); }
    /// Writes files of the player, each "path" or "path=content".
    void put(const QStringList &files) {
        for (const QString &file : files)
            player.addFile(file.section(QLatin1Char('='), 0, 0),
                           file.contains(QLatin1Char('=')) ? file.section(QLatin1Char('='), 1).toUtf8() : "x");
    }
    /// Writes files whose names end in a number of five digits: @p front "A/b" makes "A/b00000.mid" and so on.
    void addNumbered(const QString &front, int count, const QString &suffix = "mid"_s,
                     const QByteArray &content = "x") {
        for (int i = 0; i < count; ++i)
            player.addFile("%1%2.%3"_s.arg(front).arg(i, 5, 10, QLatin1Char('0')).arg(suffix), content);
    }
    /// All files of the player as put() takes them, in the order of their paths.
    QStringList disk() const {
        QStringList files = player.files();
        for (QString &file : files) {
            const QByteArray content = player.content(file);
            if (content != "x")
                file += "="_s + QString::fromUtf8(content);
        }
        return files;
    }
    void scan() {
        page.rootPath = player.root();
        page.scan_directories();
    }

    /// Does something each time the status line gets a text with this in it.
    template <typename Action> void atLabel(const QString &part, const Action &action) {
        QObject::connect(&page, &Ottimizza::updateLabelAction, &page, [part, action](const QString &text) {
            if (text.contains(part))
                action();
        });
    }
    void stopAtLabel(const QString &part) {
        atLabel(part, [this] { page.on_stopActionPressed(); });
    }
    void stopAtValue(int wanted) {
        QObject::connect(&page, &Ottimizza::updateProgressBarVal, &page, [this, wanted](int value) {
            if (value == wanted)
                page.on_stopActionPressed();
        });
    }
    /// Does something when the run processes events for the first time.
    template <typename Action> void atFirstEvents(const Action &action) {
        QMetaObject::invokeMethod(&page, action, Qt::QueuedConnection);
    }
    void stopAtFirstEvents() { QMetaObject::invokeMethod(&page, "on_stopActionPressed", Qt::QueuedConnection); }

    bool logged(const QString &text, QtMsgType type = QtInfoMsg) const { return told.log().contains(type, text); }
    bool loggedOnlyInfos() const {
        const QList<LogCapture::Line> &lines = told.log().lines();
        return std::all_of(lines.begin(), lines.end(), [](const auto &line) { return line.type == QtInfoMsg; });
    }
    QString lastLine() { return told.lines().last(); }
    /// The codes that the result page got.
    QStringList ends() { return told.of("backFromOttimizzaToEndOttimizza"_s); }

    SimulatedPlayer player;
    Ottimizza page;
    SignalRecorder told{page};
};
