#pragma once

#include "logcapture.h"

#include <QObject>
#include <QStringList>

/// Writes down every signal of one object and every line of the log while it lives, each as one line and all in the
/// order in which they came. A signal is its name and its arguments ("reinstallOpSysOnly", "checkDone"); those of the
/// progress contract go by a short name: "visible 1", "min 0", "max 12", "format %p%", "value 3", "increase",
/// "label …", "stop 0". A log line is "log …".
class SignalRecorder : public QObject
{
public:
    explicit SignalRecorder(QObject &sender);

    /// Everything so far.
    QStringList lines();
    /// The lines that begin with @p kind and a blank, without that beginning.
    QStringList of(const QString &kind);
    QStringList labels() { return of(QStringLiteral("label")); }
    QStringList logged() { return of(QStringLiteral("log")); }
    /// How many lines are exactly this.
    int count(const QString &line) { return lines().count(line); }
    const LogCapture &log() const { return m_log; }
    void clear();

    /// Receives the signals; called by Qt.
    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override;

private:
    void takeLog();

    QObject &m_sender;
    QList<int> m_signals;
    LogCapture m_log;
    int m_logTaken = 0;
    QStringList m_lines;
};
