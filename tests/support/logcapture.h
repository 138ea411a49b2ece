#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>

/// Catches every message of Qt's message functions while it lives, in order, with its level; at its end the handler
/// that was in force before is back. One at a time.
class LogCapture
{
public:
    struct Line
    {
        QtMsgType type;
        QString text;
    };

    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    const QList<Line> &lines() const { return m_lines; }
    /// The texts alone, in order.
    QStringList texts() const { return textsStartingWith(QString()); }
    /// The texts that begin with @p prefix, in order.
    QStringList textsStartingWith(const QString &prefix) const;
    bool contains(const QString &text) const { return texts().contains(text); }
    /// Whether a message of this level with exactly this text came.
    bool contains(QtMsgType type, const QString &text) const;
    void clear() { m_lines.clear(); }

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text);

    QList<Line> m_lines;
    QtMessageHandler m_previous;
};
