#include "droptally.h"

#include <QDir>

namespace {
constexpr int kMostNames = 20;
}

void DropTally::addCopied(const QString &source)
{
    ++m_copied;
    m_lastCopied = source;
}

void DropTally::addMissing(const QString &source)
{
    ++m_missing;
    addMissingFolder(source);
}

void DropTally::addMissingFolder(const QString &source)
{
    if (m_firstMissing.size() < kMostNames)
        m_firstMissing.append(QDir::toNativeSeparators(source));
}

void DropTally::addFormerKept(const QString &path)
{
    m_formerKept.append(QDir::toNativeSeparators(path));
}

void DropTally::doubtTheLast()
{
    if (m_lastCopied.isEmpty())
        return;
    --m_copied;
    addMissing(m_lastCopied);
    m_lastCopied.clear();
}

int DropTally::wantedFiles() const
{
    return qMax(m_counted, m_copied + m_missing);
}
