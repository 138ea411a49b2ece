#pragma once

#include "device/devicefilters.h"
#include "device/volumemodel.h"

#include <QDir>
#include <QLocale>
#include <QModelIndex>
#include <QObject>
#include <QString>

/// What one view of the transfer page stands on: the player's volume behind the filter that leaves the player alone to
/// be seen. Paths are absolute with forward slashes; the root may bear a closing slash or not.
class FilteredVolume : public QObject
{
    Q_OBJECT

public:
    /// Shows the volume at @p deviceRoot (empty: nothing) under the name @p label, of its entries the @p shown ones.
    /// Sizes and dates are written as in @p locale.
    FilteredVolume(const QString &deviceRoot, const QString &label, QDir::Filters shown, const QLocale &locale);

    /// The model for the view.
    QAbstractItemModel *model() { return &m_filter; }
    /// The index of model() for a path, whose entries are then being read; invalid when the path is not shown.
    QModelIndex index(const QString &path);
    /// The path of an index of model(); empty for an invalid one.
    QString path(const QModelIndex &index) const;
    /// Whether an index of model() is a folder.
    bool isDir(const QModelIndex &index) const;

    /// Stops following the disk and tells nobody of anything any more. There is no way back: to follow the disk again
    /// a new object is made. A view that stands on the model may go on showing what it shows.
    void freeze();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    VolumeModel m_volume;
    Corvin4DriveFilter m_filter;
};
