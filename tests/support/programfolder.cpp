#include "programfolder.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace {

const QString kListSuffix = QStringLiteral(".does");

void fail(const QString &why)
{
    QTest::qFail(qPrintable(why), __FILE__, __LINE__);
}

bool isGone(const QString &path)
{
    return QFile::remove(path) || !QFile::exists(path);
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        fail(QStringLiteral("Cannot write ") + path);
}

} // namespace

QString Does::record(const QString &file)
{
    return QStringLiteral("record ") + file;
}

QString Does::recordFolder(const QString &file)
{
    return QStringLiteral("record-folder ") + file;
}

QString Does::print(const QString &text)
{
    return QStringLiteral("print ") + text;
}

QString Does::complain(const QString &text)
{
    return QStringLiteral("complain ") + text;
}

QString Does::make(const QString &file)
{
    return QStringLiteral("make ") + file;
}

QString Does::emptyArgument(int number)
{
    return QStringLiteral("empty %1").arg(number);
}

QString Does::waitFor(const QString &file)
{
    return QStringLiteral("wait-for ") + file;
}

QString Does::waitForever()
{
    return QStringLiteral("wait-forever");
}

QString Does::readInput()
{
    return QStringLiteral("read-input");
}

QString Does::exitWith(int code)
{
    return QStringLiteral("exit %1").arg(code);
}

QString Does::die()
{
    return QStringLiteral("die");
}

ProgramFolder::~ProgramFolder()
{
    qputenv("PATH", m_before);
    const QStringList names = m_names;
    for (const QString &name : names)
        remove(name);
}

void ProgramFolder::addStandIn(const QString &name, const QStringList &does)
{
    addCopy(name, QStringLiteral(STANDIN_PROGRAM));
    write(path(name) + kListSuffix, does.join(QLatin1Char('\n')).toUtf8() + '\n');
}

void ProgramFolder::addCopy(const QString &name, const QString &program)
{
    remove(name);
    m_names.append(name);
    if (!QFile::copy(program, path(name)))
        fail(QStringLiteral("Cannot copy %1 to %2").arg(program, path(name)));
}

void ProgramFolder::addScript(const QString &name, const QByteArray &lines)
{
    addFile(name, "#!/bin/sh\n" + lines);
}

void ProgramFolder::addBroken(const QString &name)
{
    addFile(name, "#!/no/such/interpreter\n");
}

void ProgramFolder::addFile(const QString &name, const QByteArray &content)
{
    remove(name);
    m_names.append(name);
    write(path(name), content);
    QFile::setPermissions(path(name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void ProgramFolder::remove(const QString &name)
{
    // Windows keeps the file of a program until it has ended.
    if (!QTest::qWaitFor([program = path(name)] { return isGone(program); }))
        fail(QStringLiteral("Cannot remove ") + path(name));
    QFile::remove(path(name) + kListSuffix);
    m_names.removeAll(name);
}

void ProgramFolder::hideOthers()
{
    qputenv("PATH", QFile::encodeName(QDir::toNativeSeparators(folder())));
}
