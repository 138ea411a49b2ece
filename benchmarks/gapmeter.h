#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVector>

/// Tells how long a busy window left its events waiting. A timer asks to be served every few milliseconds; the time
/// between two services is a gap, and belongs to the step whose status text was shown when it began.
class GapMeter : public QObject
{
    Q_OBJECT

public:
    /// What one step took.
    struct Step
    {
        QString name;
        qint64 totalNs = 0;
        qint64 longestGapMs = 0;
        qint64 totalMs() const { return totalNs / 1000000; }
        QString worstPlace; ///< full status text when the longest gap began
    };

    explicit GapMeter(QObject *parent = nullptr);

    /// Begins to measure; the first step bears this name.
    void start(const QString &firstStep);
    /// Ends the last step.
    void stop();

    qint64 totalMs() const { return m_totalMs; }
    qint64 longestGapMs() const;
    /// In the order in which they began first; a step that came again is one entry.
    const QVector<Step> &steps() const { return m_steps; }

public slots:
    /// The status line changed: numbers and paths behind the text of a step do not make it another step.
    void onStatusText(const QString &text);

private:
    void served();
    void closeStep();
    int indexOfStep(const QString &name);

    QTimer m_timer;
    QElapsedTimer m_total;
    QElapsedTimer m_sinceServed;
    qint64 m_stepBeganNs = 0;
    QVector<Step> m_steps;
    int m_current = 0;      ///< step that is running
    int m_stepAtServed = 0; ///< step that was running at the last service
    QString m_text;
    QString m_textAtServed;
    qint64 m_totalMs = 0;
};
