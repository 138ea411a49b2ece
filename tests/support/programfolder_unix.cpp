#include "programfolder.h"

ProgramFolder::ProgramFolder() : m_before(qgetenv("PATH")) {
    qputenv("PATH", QFile::encodeName(folder()) + ':' + m_before);
}

QString ProgramFolder::folder() const {
    return m_dir.path();
}

QString ProgramFolder::path(const QString &name) const {
    return m_dir.filePath(name);
}
