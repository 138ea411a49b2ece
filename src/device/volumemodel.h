#pragma once

#include <QAbstractItemModel>
#include <QObject>
#include <QString>

class LocalFiles;
class QFileSystemModel;
class QLocale;

/// The files of the player as a source model for views: the player's volume as a top node named by its label, and
/// what lies under it. On Windows the model is a QFileSystemModel as it is (node "CORVIN4 (E:)", beside the PC's other
/// drives); elsewhere a proxy over one shows the volume's folder as the only top node. Either way Corvin4DriveFilter
/// leaves the player alone to be seen.
///
/// The file system is read by a thread of its own: rows appear after a while and follow what happens on the disk.
class VolumeModel : public QObject
{
    Q_OBJECT

public:
    explicit VolumeModel(QObject *parent = nullptr); ///< shows nothing yet
    ~VolumeModel() override;

    /// Shows the volume at @p deviceRoot (as DeviceLocator::findDeviceRoot() gives it) under the name @p label, in
    /// place of what was shown before. An empty or missing root shows no volume.
    void open(const QString &deviceRoot, const QString &label);

    /// The model to give to a filter or a view; the same object for the whole life of this one. Four columns, as
    /// QFileSystemModel has them.
    QAbstractItemModel *model() const;
    /// The model of the file system behind it: for filters, sorting and "directoryLoaded(QString)".
    QFileSystemModel *fileSystemModel() const;
    /// The language that sizes and dates are written in; at first the program's default.
    void setLocale(const QLocale &locale);

    /// The index in model() of an absolute path on the volume (forward slashes), column 0; the drive's own node for
    /// the root. Invalid when the path does not exist or lies elsewhere.
    QModelIndex indexForPath(const QString &path) const;
    /// The absolute path of an index of model(), forward slashes; a closing slash only where a root has one by nature
    /// ("E:/"). Empty for an invalid index.
    QString filePath(const QModelIndex &index) const;
    /// Whether an index of model() is a folder or the drive's node.
    bool isDir(const QModelIndex &index) const;

private:
    // What each system does in its own way; constructor and open() too.
    QModelIndex toFiles(const QModelIndex &index) const;
    QModelIndex fromFiles(const QModelIndex &index) const;

    LocalFiles *m_files = nullptr;
    QAbstractItemModel *m_model = nullptr;
};
