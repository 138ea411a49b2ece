#pragma once

#include "optimizer/ottimizza.h"
#include "support/logcapture.h"

#include <QObject>
#include <QStringList>

/// Writes down what the optimisation page tells the window and the log while it lives, each as one line and all in the
/// order in which they came: "visible 1", "min 0", "max 12", "format %p%", "value 3", "label …", "back", "end 0", and
/// "log …" for the lines of the log.
class RunRecorder : public QObject
{
public:
    explicit RunRecorder(Ottimizza &page)
    {
        connect(&page, &Ottimizza::setProgressBarVisible, this,
                [this](bool visible) { add(QStringLiteral("visible %1").arg(int(visible))); });
        connect(&page, &Ottimizza::setProgressBarMinVal, this,
                [this](int value) { add(QStringLiteral("min %1").arg(value)); });
        connect(&page, &Ottimizza::setProgressBarMaxVal, this,
                [this](int value) { add(QStringLiteral("max %1").arg(value)); });
        connect(&page, &Ottimizza::setProgressBarFormat, this,
                [this](const QString &format) { add(QStringLiteral("format ") + format); });
        connect(&page, &Ottimizza::updateProgressBarVal, this,
                [this](int value) { add(QStringLiteral("value %1").arg(value)); });
        connect(&page, &Ottimizza::updateLabelAction, this,
                [this](const QString &text) { add(QStringLiteral("label ") + text); });
        connect(&page, &Ottimizza::backFromOttimizzaToFirstMenu, this, [this] { add(QStringLiteral("back")); });
        connect(&page, &Ottimizza::backFromOttimizzaToEndOttimizza, this,
                [this](int code) { add(QStringLiteral("end %1").arg(code)); });
    }

    /// Everything so far.
    QStringList lines()
    {
        takeLog();
        return m_lines;
    }
    /// The lines that begin with @p kind and a blank, without that beginning.
    QStringList of(const QString &kind)
    {
        QStringList found;
        const QString start = kind + QLatin1Char(' ');
        const QStringList all = lines();
        for (const QString &line : all) {
            if (line.startsWith(start))
                found.append(line.mid(start.size()));
        }
        return found;
    }
    QStringList labels() { return of(QStringLiteral("label")); }
    QStringList logged() { return of(QStringLiteral("log")); }
    const LogCapture &log() const { return m_log; }

    void clear()
    {
        m_log.clear();
        m_logTaken = 0;
        m_lines.clear();
    }

private:
    void add(const QString &line)
    {
        takeLog();
        m_lines.append(line);
    }
    void takeLog()
    {
        for (; m_logTaken < m_log.lines().size(); ++m_logTaken)
            m_lines.append(QStringLiteral("log ") + m_log.lines().at(m_logTaken).text);
    }

    LogCapture m_log;
    int m_logTaken = 0;
    QStringList m_lines;
};
