#include "localfiles.h"

#include <QDateTime>

namespace {
constexpr int kDecimals = 1;
} // namespace

LocalFiles::LocalFiles(QObject *parent) : QFileSystemModel(parent) {}

QVariant LocalFiles::data(const QModelIndex &index, int role) const
{
    if (role == Qt::DisplayRole && index.isValid()) {
        if (index.column() == SizeColumn)
            return isDir(index) ? QString() : sizeText(size(index), m_locale);
        if (index.column() == DateColumn)
            return dateText(lastModified(index), m_locale);
    }
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    return QFileSystemModel::data(index, role);
}

QString LocalFiles::sizeText(qint64 bytes, const QLocale &locale)
{
    return locale.formattedDataSize(bytes, kDecimals, QLocale::DataSizeTraditionalFormat);
}

QString LocalFiles::dateText(const QDateTime &time, const QLocale &locale)
{
    return locale.toString(time, QLocale::ShortFormat);
}
