#include "mounttable.h"

#include <QDir>
#include <QFile>

namespace {

const QByteArray kDeviceFolder = QByteArrayLiteral("/dev/");
const QByteArray kWholeVolume = QByteArrayLiteral("/");

// Fields of a line: id, parent id, device numbers, folder of the volume that is shown, mount point, options, optional
// fields in any number, then after a lone dash the file system, its source and its options.
constexpr int kShownFolderField = 3;
constexpr int kMountPointField = 4;
constexpr int kFirstOptionalField = 6;
constexpr int kSourceAfterDash = 2;

constexpr int kOctalDigits = 3;
constexpr int kHexDigits = 2;
constexpr int kOctal = 8;
constexpr int kHex = 16;
constexpr int kLargestByte = 0xff;

/// One line of the table, whatever it mounts.
struct Entry
{
    QByteArray shownFolder;
    QByteArray source;
    QString point;
};

/// QByteArray::toInt() takes a sign for a part of the number.
bool isSign(char c)
{
    return c == '-' || c == '+' || c == ' ';
}

/// Replaces every @p lead that @p digits digits of @p base follow by the byte they stand for; the rest stays.
QByteArray unescape(const QByteArray &text, const QByteArray &lead, int digits, int base)
{
    QByteArray plain;
    plain.reserve(text.size());
    int at = 0;
    while (at < text.size()) {
        const QByteArray number = text.mid(at + lead.size(), digits);
        bool ok = text.mid(at, lead.size()) == lead && number.size() == digits && !isSign(number.at(0));
        const int value = ok ? number.toInt(&ok, base) : 0;
        if (ok && value <= kLargestByte) {
            plain.append(static_cast<char>(value));
            at += lead.size() + digits;
        } else {
            plain.append(text.at(at));
            ++at;
        }
    }
    return plain;
}

QList<Entry> readEntries(const QByteArray &mountInfo)
{
    QList<Entry> entries;
    const QList<QByteArray> lines = mountInfo.split('\n');
    for (const QByteArray &line : lines) {
        const QList<QByteArray> fields = line.split(' ');
        const int dash = fields.indexOf(QByteArrayLiteral("-"), kFirstOptionalField);
        if (dash < 0 || dash + kSourceAfterDash >= fields.size())
            continue;
        const QString point = decodeMountField(fields.at(kMountPointField));
        if (point.startsWith(QLatin1Char('/')))
            entries.append({fields.at(kShownFolderField), fields.at(dash + kSourceAfterDash), point});
    }
    return entries;
}

bool isWholeBlockVolume(const Entry &entry)
{
    return entry.shownFolder == kWholeVolume && entry.source.startsWith(kDeviceFolder);
}

bool isHiddenByLaterMount(const QList<Entry> &entries, int position)
{
    for (int later = position + 1; later < entries.size(); ++later) {
        if (entries.at(later).point == entries.at(position).point)
            return true;
    }
    return false;
}

bool isAtOrBelow(const QString &path, const QString &point)
{
    const bool isRoot = point == QLatin1String("/");
    return path == point || path.startsWith(isRoot ? point : point + QLatin1Char('/'));
}

} // namespace

QList<Mount> parseMountTable(const QByteArray &mountInfo)
{
    QList<Mount> mounts;
    const QList<Entry> entries = readEntries(mountInfo);
    for (int i = 0; i < entries.size(); ++i) {
        const Entry &entry = entries.at(i);
        if (isWholeBlockVolume(entry) && !isHiddenByLaterMount(entries, i))
            mounts.append({decodeMountField(entry.source), entry.point});
    }
    return mounts;
}

QList<LabelledMount> labelledMounts(const QByteArray &mountInfo, const LabelsByDevice &labels,
                                    const DeviceResolver &resolve)
{
    QList<LabelledMount> found;
    if (labels.isEmpty())
        return found;
    const QList<Mount> mounts = parseMountTable(mountInfo);
    for (const Mount &mount : mounts) {
        const QString device = labels.contains(mount.device) ? mount.device : resolve(mount.device);
        const auto label = labels.constFind(device);
        if (label != labels.constEnd())
            found.append({mount.point, *label});
    }
    return found;
}

QString deviceOfPath(const QByteArray &mountInfo, const QString &path)
{
    const QList<Entry> entries = readEntries(mountInfo);
    const Entry *nearest = nullptr;
    for (const Entry &entry : entries) {
        // Of two mounts on one point the later one is the one that is seen.
        if (isAtOrBelow(path, entry.point) && (!nearest || entry.point.size() >= nearest->point.size()))
            nearest = &entry;
    }
    return nearest && isWholeBlockVolume(*nearest) ? decodeMountField(nearest->source) : QString();
}

QString decodeMountField(const QByteArray &field)
{
    return QFile::decodeName(unescape(field, QByteArrayLiteral("\\"), kOctalDigits, kOctal));
}

QString decodeUdevName(const QByteArray &name)
{
    return QString::fromUtf8(unescape(name, QByteArrayLiteral("\\x"), kHexDigits, kHex));
}

LabelsByDevice readLabelFolder(const QString &folder)
{
    LabelsByDevice labels;
    // QDir::System also lists links that lead nowhere.
    const QStringList names = QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        const QString device = QFile::symLinkTarget(folder + QLatin1Char('/') + name);
        if (!device.isEmpty())
            labels.insert(QDir::cleanPath(device), decodeUdevName(QFile::encodeName(name)));
    }
    return labels;
}

bool isRemovableBlockDevice(const QString &kernelFolder)
{
    for (const char *place : {"/removable", "/../removable"}) {
        QFile file(kernelFolder + QLatin1String(place));
        if (file.open(QIODevice::ReadOnly))
            return file.readAll().trimmed() == QByteArrayLiteral("1");
    }
    return false;
}
