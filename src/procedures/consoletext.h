#pragma once

#include <QByteArray>
#include <QString>

/// What a command of the system has written to its output, as text: on Windows such commands write in the console's
/// code page, which is not that of the windows.
QString consoleText(const QByteArray &output);
