#include "listedvolumes.h"

#include "playernames.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>

namespace {

const char kVariable[] = "CORVIN_VOLUMES";
const QString kLabelFile = QStringLiteral(".windows-label");
/// Bytes, far more than a label can be long: a huge file without a line end is not read whole.
constexpr int kLongestLabelLine = 1024;

QStringList listedFolders()
{
    return qEnvironmentVariable(kVariable).split(QDir::listSeparator(), Qt::SkipEmptyParts);
}

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
    for (const QString &folder : listedFolders()) {
        const QFileInfo info(folder);
        if (info.isDir())
            found.append(withClosingSlash(info.canonicalFilePath()));
    }
    return found;
}

QString ListedVolumes::label(const QString &root)
{
    if (root.isEmpty())
        return {};
    // Asked for every file that is written: a path that is listed as it is need not be followed again.
    const QStringList listed = listedFolders();
    const bool isListed = listed.contains(root) || listed.contains(root.chopped(1));
    if (!isListed && !roots().contains(root))
        return {};
    QFile file(root + kLabelFile);
    // Unbuffered: Qt would make room for 16 KiB each time.
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {};
    std::array<char, kLongestLabelLine> start;
    const auto bytes = static_cast<int>(qMax<qint64>(0, file.read(start.data(), kLongestLabelLine)));
    const auto lineEnd =
        std::find_if(start.cbegin(), start.cbegin() + bytes, [](char byte) { return byte == '\n' || byte == '\0'; });
    return QString::fromUtf8(start.data(), static_cast<int>(lineEnd - start.cbegin())).trimmed();
}
