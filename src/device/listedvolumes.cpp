#include "listedvolumes.h"

#include "playernames.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

const char kVariable[] = "CORVIN_VOLUMES";
const QString kLabelFile = QStringLiteral(".windows-label");
/// Far more than a label can be long: a huge file without a line end is not read whole.
constexpr qint64 kLongestLabelLine = 1024;

} // namespace

bool isPlayerLabel(const QString &label)
{
    return label.trimmed().compare(PlayerNames::kLabel, Qt::CaseInsensitive) == 0;
}

QString withClosingSlash(const QString &path)
{
    return path.endsWith(QLatin1Char('/')) ? path : path + QLatin1Char('/');
}

bool ListedVolumes::areInForce()
{
    return qEnvironmentVariableIsSet(kVariable);
}

QStringList ListedVolumes::roots()
{
    QStringList found;
    const QStringList folders = qEnvironmentVariable(kVariable).split(QDir::listSeparator(), Qt::SkipEmptyParts);
    for (const QString &folder : folders) {
        const QFileInfo info(folder);
        if (info.isDir())
            found.append(withClosingSlash(info.canonicalFilePath()));
    }
    return found;
}

QString ListedVolumes::label(const QString &root)
{
    if (!roots().contains(root))
        return {};
    QFile file(root + kLabelFile);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readLine(kLongestLabelLine)).trimmed();
}
