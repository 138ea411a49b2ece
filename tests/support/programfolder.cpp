#include "programfolder.h"

#include "files.h"

namespace {
const QString kListSuffix = ".does"_s;
} // namespace

ProgramFolder::~ProgramFolder() {
    qputenv("PATH", m_before);
    const QStringList names = m_names;
    for (const QString &name : names)
        remove(name);
}

void ProgramFolder::addStandIn(const QString &name, const QStringList &does) {
    addCopy(name, QStringLiteral(STANDIN_PROGRAM));
    putFile(path(name) + kListSuffix, does.join(QLatin1Char('\n')).toUtf8() + '\n');
}

void ProgramFolder::addCopy(const QString &name, const QString &program) {
    remove(name);
    m_names.append(name);
    if (!QFile::copy(program, path(name)))
        failTest("Cannot copy %1 to %2"_s.arg(program, path(name)));
}

void ProgramFolder::addFile(const QString &name, const QByteArray &content) {
    remove(name);
    m_names.append(name);
    putFile(path(name), content);
    QFile::setPermissions(path(name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void ProgramFolder::remove(const QString &name) {
    // Windows keeps the file of a program until it has ended.
    if (!QTest::qWaitFor([program = path(name)] { return QFile::remove(program) || !QFile::exists(program); }))
        failTest("Cannot remove "_s + path(name));
    QFile::remove(path(name) + kListSuffix);
    m_names.removeAll(name);
}

void ProgramFolder::hideOthers() {
    qputenv("PATH", QFile::encodeName(QDir::toNativeSeparators(folder())));
}
