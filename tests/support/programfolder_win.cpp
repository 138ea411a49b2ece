#include "programfolder.h"

namespace {

const QString kProgramSuffix = ".exe"_s;

/// What a test that was killed left here would be found by the next one.
void removeLeftOvers(const QDir &folder) {
    const QFileInfo own(QCoreApplication::applicationFilePath());
    if (own.completeBaseName().compare(folder.dirName(), Qt::CaseInsensitive) != 0)
        qFatal("%s is not a folder of this test's own", qPrintable(folder.path()));
    const QFileInfoList files = folder.entryInfoList({QLatin1Char('*') + kProgramSuffix, "*.does"_s}, QDir::Files);
    for (const QFileInfo &file : files) {
        if (file != own)
            QFile::remove(file.filePath());
    }
}

} // namespace

ProgramFolder::ProgramFolder() : m_before(qgetenv("PATH")) {
    static const bool first = (removeLeftOvers(QDir(folder())), true);
    Q_UNUSED(first)
    qputenv("PATH", QFile::encodeName(QDir::toNativeSeparators(folder())) + ';' + m_before);
}

QString ProgramFolder::folder() const {
    return QCoreApplication::applicationDirPath();
}

QString ProgramFolder::path(const QString &name) const {
    const bool isComplete = name.endsWith(kProgramSuffix, Qt::CaseInsensitive);
    return folder() + QLatin1Char('/') + name + (isComplete ? QString() : kProgramSuffix);
}
