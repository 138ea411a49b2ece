#include "archivetool.h"

QString archiveTool(const QString &programFolder)
{
    return programFolder + QStringLiteral("/unar.exe");
}

void removeUnpackedLinks(const QString &)
{
    // The tool shipped with the program refuses links, and a ".lnk" file of a release is an ordinary file.
}
