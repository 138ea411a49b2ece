#include "signalrecorder.h"

#include "testing.h"

namespace {

QString shortName(const QByteArray &signal) {
    static const QMap<QByteArray, QString> kNames = {
        {"setProgressBarVisible", "visible"_s}, {"setProgressBarMinVal", "min"_s},
        {"setProgressBarMaxVal", "max"_s},      {"setProgressBarFormat", "format"_s},
        {"updateProgressBarVal", "value"_s},    {"increaseProgressBarVal", "increase"_s},
        {"updateLabelAction", "label"_s},       {"setPushButtonStopVisible", "stop"_s}};
    return kNames.value(signal, QString::fromLatin1(signal));
}

QString argumentText(const QVariant &argument) {
    return argument.type() == QVariant::Bool ? QString::number(int(argument.toBool())) : argument.toString();
}

} // namespace

SignalRecorder::SignalRecorder(QObject &sender) : m_sender(sender) {
    const QMetaObject *meta = sender.metaObject();
    const int own = QWidget::staticMetaObject.methodCount();
    const int slot = QObject::staticMetaObject.methodCount();
    const int first = sender.isWidgetType() ? own : slot;
    for (int i = first; i < meta->methodCount(); ++i) {
        if (meta->method(i).methodType() != QMetaMethod::Signal)
            continue;
        QMetaObject::connect(&sender, i, this, slot + m_signals.size(), Qt::DirectConnection);
        m_signals.append(i);
    }
}

QStringList SignalRecorder::lines() {
    takeLog();
    return m_lines;
}

QStringList SignalRecorder::of(const QString &kind) {
    QStringList found;
    const QString start = kind + QLatin1Char(' ');
    const QStringList all = lines();
    for (const QString &line : all) {
        if (line.startsWith(start))
            found.append(line.mid(start.size()));
    }
    return found;
}

void SignalRecorder::clear() {
    m_log.clear();
    m_logTaken = 0;
    m_lines.clear();
}

// The signals were connected to slots that only their numbers make: one a signal, in the order of m_signals.
int SignalRecorder::qt_metacall(QMetaObject::Call call, int id, void **arguments) {
    const int slot = QObject::qt_metacall(call, id, arguments);
    if (slot < 0 || call != QMetaObject::InvokeMetaMethod || slot >= m_signals.size())
        return slot;
    takeLog();
    const QMetaMethod signal = m_sender.metaObject()->method(m_signals.at(slot));
    QString line = shortName(signal.name());
    for (int i = 0; i < signal.parameterCount(); ++i)
        line += QLatin1Char(' ') + argumentText(QVariant(signal.parameterType(i), arguments[i + 1]));
    m_lines.append(line);
    return -1;
}

void SignalRecorder::takeLog() {
    for (; m_logTaken < m_log.lines().size(); ++m_logTaken)
        m_lines.append("log "_s + m_log.lines().at(m_logTaken).text);
}
