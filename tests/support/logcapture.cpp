#include "logcapture.h"

#include <algorithm>

namespace {
LogCapture *g_current = nullptr;
}

LogCapture::LogCapture() {
    if (g_current)
        qFatal("A second LogCapture would take the messages of the first");
    g_current = this;
    m_previous = qInstallMessageHandler(&LogCapture::handle);
}

LogCapture::~LogCapture() {
    qInstallMessageHandler(m_previous);
    g_current = nullptr;
}

QStringList LogCapture::textsStartingWith(const QString &prefix) const {
    QStringList found;
    for (const Line &line : m_lines) {
        if (line.text.startsWith(prefix))
            found.append(line.text);
    }
    return found;
}

bool LogCapture::contains(QtMsgType type, const QString &text) const {
    return std::any_of(m_lines.cbegin(), m_lines.cend(),
                       [&](const Line &line) { return line.type == type && line.text == text; });
}

void LogCapture::handle(QtMsgType type, const QMessageLogContext &context, const QString &text) {
    g_current->m_lines.append({type, text});
    if (type == QtFatalMsg && g_current->m_previous)
        g_current->m_previous(type, context, text);
}
