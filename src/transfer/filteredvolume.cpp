#include "filteredvolume.h"

#include <QEvent>
#include <QFileSystemModel>

FilteredVolume::FilteredVolume(const QString &deviceRoot, const QString &label, QDir::Filters shown,
                               const QLocale &locale)
{
    QFileSystemModel *files = m_volume.fileSystemModel();
    files->setFilter(shown);
    // Own icons of folders would be looked for in every folder of the disk.
    files->setOption(QFileSystemModel::DontUseCustomDirectoryIcons);
    m_volume.setLocale(locale);
    m_volume.open(deviceRoot, label);
    m_filter.setSourceModel(m_volume.model());
}

QModelIndex FilteredVolume::index(const QString &path)
{
    const QModelIndex found = m_filter.mapFromSource(m_volume.indexForPath(path));
    if (found.isValid() && m_filter.canFetchMore(found))
        m_filter.fetchMore(found);
    return found;
}

QString FilteredVolume::path(const QModelIndex &index) const
{
    return m_volume.filePath(m_filter.mapToSource(index.siblingAtColumn(0)));
}

bool FilteredVolume::isDir(const QModelIndex &index) const
{
    return m_volume.isDir(m_filter.mapToSource(index.siblingAtColumn(0)));
}

void FilteredVolume::freeze()
{
    QFileSystemModel *files = m_volume.fileSystemModel();
    // Nothing more is read for the model while the disk has other work; and what was read is held back (see below).
    files->setOption(QFileSystemModel::DontWatchForChanges);
    files->installEventFilter(this);
    files->blockSignals(true);
    m_volume.model()->blockSignals(true);
    m_filter.blockSignals(true);
}

bool FilteredVolume::eventFilter(QObject *watched, QEvent *event)
{
    // What the reading thread has found comes as an event, and the model looks at the disk by a timer: that is how
    // QFileSystemModel of Qt 5 works inside, and nothing in its interface promises it. A model that changed while its
    // signals are blocked would leave the view with indexes to rows that are gone.
    if (event->type() == QEvent::MetaCall || event->type() == QEvent::Timer)
        return true;
    return QObject::eventFilter(watched, event);
}
