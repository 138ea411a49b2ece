#include "setasidefolder.h"

#include "disk/aside.h"
#include "disk/tree.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>

namespace {

/// Of the folder's name so much is kept that the other name is never too long for a disk.
constexpr int kMostOfName = 60;

bool isThere(const QString &path)
{
    return QFileInfo::exists(path) || isLink(QFileInfo(path));
}

bool rename(const QString &from, const QString &to)
{
    return doAsidePatiently([from, to] { return QDir().rename(from, to); });
}

} // namespace

SetAsideFolder::SetAsideFolder(const QString &folder) : m_folder(QDir::cleanPath(folder))
{
    if (isThere(m_folder)) {
        const QFileInfo info(m_folder);
        QString name = info.fileName().left(kMostOfName);
        if (name.endsWith(QLatin1Char(' ')) || name.at(name.size() - 1).isHighSurrogate())
            name.chop(1);
        const QString aside = info.path() + QLatin1Char('/') + tr("%1 (copia precedente)").arg(name);
        m_aside = aside;
        for (int number = 2; isThere(m_aside); ++number)
            m_aside = aside + QStringLiteral(" %1").arg(number);
        if (!rename(m_folder, m_aside)) {
            m_aside.clear();
            return;
        }
    }
    m_good = doAsidePatiently([this] { return QDir().mkdir(m_folder); });
}

SetAsideFolder::~SetAsideFolder()
{
    if (m_aside.isEmpty() || !isThere(m_aside))
        return;
    // Only an empty folder can be removed so.
    if (m_good)
        doAsidePatiently([this] { return QDir().rmdir(m_folder); });
    if (!rename(m_aside, m_folder))
        qWarning().noquote() << "SongBackup : the former content of" << m_folder << "is kept as" << m_aside;
}

bool SetAsideFolder::drop(const std::function<bool()> &goOn)
{
    return m_aside.isEmpty() || removeTree(m_aside, goOn);
}
