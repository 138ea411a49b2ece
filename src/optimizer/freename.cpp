#include "freename.h"

#include <QFileInfo>

namespace {

/// front + n + back for the first n = 1, 2, 3, … that names nothing on the disk.
QString firstFreeNumbered(const QString &front, const QString &back)
{
    for (int number = 1;; ++number) {
        QString path = front + QString::number(number) + back;
        if (!QFileInfo::exists(path))
            return path;
    }
}

} // namespace

QString freeRootFileTarget(const QString &folder, const QString &fileName)
{
    const QString start = folder + QLatin1Char('/');
    if (!QFileInfo::exists(start + fileName))
        return start + fileName;
    // Deliberate: a name without a suffix gets a trailing dot (readme_1.).
    const QFileInfo name(fileName);
    return firstFreeNumbered(start + name.completeBaseName() + QLatin1Char('_'), QLatin1Char('.') + name.suffix());
}

QString freeMediaTarget(const QString &folder, const QString &fileName)
{
    const QString start = folder + QLatin1Char('/');
    if (!QFileInfo::exists(start + fileName))
        return start + fileName;
    // Deliberate: unlike elsewhere the name is parted at its first dot (photo.2019.jpg, photo_1.2019.jpg).
    const QFileInfo name(fileName);
    return firstFreeNumbered(start + name.baseName() + QLatin1Char('_'), QLatin1Char('.') + name.completeSuffix());
}

QString freeSplitBase(const QString &folder, const QString &baseName, const QString &suffix)
{
    QString base = folder + QLatin1Char('/') + baseName;
    const QString end = QLatin1Char('.') + suffix;
    if (!QFileInfo::exists(base + end))
        return base;
    const QString path = firstFreeNumbered(base + QLatin1Char('('), QLatin1Char(')') + end);
    return path.left(path.size() - end.size());
}

QString freeOldFolderName(const QString &folder)
{
    QString name = folder + QLatin1String(".old");
    // Deliberate: the numbers pile up (X.old, X.old1, X.old12, X.old123).
    for (int number = 1; QFileInfo::exists(name); ++number)
        name += QString::number(number);
    return name;
}
