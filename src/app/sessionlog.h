#pragma once

#include <QString>
#include <QtGlobal>

/// Opens today's session log and writes its banner: from here to the end of the process every message of Qt's message
/// functions becomes one line of the file "log_yyyy-MM-dd.txt" and goes on to the handler that was in force before
/// main() began.
///
/// The file lies in QStandardPaths::AppDataLocation as it is at the moment of the call; its last folder is made when it
/// is missing. Lines are appended in the system's 8-bit code page with the platform's line end. Neither a folder that
/// cannot be made nor a file that cannot be opened is reported: messages then reach the previous handler alone.
/// Deliberate: no log is ever cut or deleted, however old; there is one for each day of use.
/// Needs an application object. GUI thread only.
void startSessionLog();

/// Full path of the session log, with forward slashes; empty before startSessionLog().
QString sessionLogPath();

/// The installed message handler. Writes "[hh:mm:ss.zzz] ", the level's tag ("DBG ", "INF ", "WRN ", "CRT ", "FTL ";
/// none for another type) and the text, flushes the line, then hands the same message to the previous handler.
/// Never fails visibly.
void sessionMessageHandler(QtMsgType type, const QMessageLogContext &context, const QString &message);
