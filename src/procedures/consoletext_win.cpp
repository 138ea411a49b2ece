#include "consoletext.h"

#include <windows.h>

QString consoleText(const QByteArray &output)
{
    // A program without a console starts its commands in a new one, which has the system's code page for consoles.
    const UINT ownPage = GetConsoleOutputCP();
    const UINT page = ownPage != 0 ? ownPage : GetOEMCP();
    const int length = MultiByteToWideChar(page, 0, output.constData(), output.size(), nullptr, 0);
    QString text(length, QChar());
    MultiByteToWideChar(page, 0, output.constData(), output.size(), reinterpret_cast<wchar_t *>(text.data()), length);
    return text;
}
