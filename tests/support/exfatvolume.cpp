#include "exfatvolume.h"

#include "testing.h"

namespace {

constexpr qint64 kBytesPerMegabyte = qint64(1024) * 1024;
constexpr int kProgramTimeoutMs = 60000;

const QString kDiskFolder = "/dev/disk"_s;
const QString kLabelFolder = "/dev/disk/by-label"_s;

QString program(const QString &name) {
    const QString found = QStandardPaths::findExecutable(name);
    return found.isEmpty() ? QStandardPaths::findExecutable(name, words("/usr/sbin /sbin")) : found;
}

bool canOpen(const QString &device) {
    QFile file(device);
    return file.open(QIODevice::ReadWrite | QIODevice::Unbuffered | QIODevice::ExistingOnly);
}

} // namespace

bool ExFatVolume::isPossible(QString *why) {
    QString missing;
    for (const QString &tool : words("mkfs.exfat mount.exfat-fuse losetup umount")) {
        if (program(tool).isEmpty())
            missing = "%1 is not installed"_s.arg(tool);
    }
    if (!canOpen("/dev/loop-control"_s))
        missing = "no loop devices here (or not root)"_s;
    else if (!canOpen("/dev/fuse"_s))
        missing = "no fuse here (or not root)"_s;
    else if (!QFileInfo("/dev"_s).isWritable())
        missing = "/dev cannot be written (not root)"_s;
    if (why)
        *why = missing;
    return missing.isEmpty();
}

ExFatVolume::ExFatVolume(int megabytes, const QString &label, int clusterBytes) : m_label(label) {
    QFile file(image());
    if (!file.open(QIODevice::WriteOnly) || !file.resize(megabytes * kBytesPerMegabyte)) {
        m_error = "no room for an image in "_s + m_dir.path();
        return;
    }
    file.close();
    const QStringList clusters =
        clusterBytes > 0 ? QStringList({"-c"_s, QString::number(clusterBytes)}) : QStringList();
    if (run("mkfs.exfat"_s, clusters + QStringList({"-L"_s, label, image()})) && attach())
        mount();
}

ExFatVolume::ExFatVolume(const QString &model, const QString &label) : m_label(label) {
    if (run("cp"_s, {"--sparse=always"_s, model, image()}) && attach())
        mount();
}

std::unique_ptr<ExFatVolume> ExFatVolume::copyOf(const QString &model) {
    return std::unique_ptr<ExFatVolume>(new ExFatVolume(model, "CORVIN4"_s));
}

bool ExFatVolume::attach() {
    const QString point = m_dir.filePath("mnt"_s);
    QDir().mkpath(point);
    m_root = QFileInfo(point).canonicalFilePath() + "/"_s;
    QString device;
    if (!run("losetup"_s, {"--find"_s, "--show"_s, image()}, &device))
        return false;
    m_device = device.trimmed();
    return true;
}

ExFatVolume::~ExFatVolume() {
    unlinkLabel();
    if (m_mounted && !unmount())
        pull();
    if (!m_device.isEmpty())
        run("losetup"_s, {"--detach"_s, m_device});
}

bool ExFatVolume::mount() {
    m_mounted = m_mounted || run("mount.exfat-fuse"_s, {m_device, QDir::cleanPath(m_root)});
    return m_mounted;
}

bool ExFatVolume::unmount() {
    m_mounted = m_mounted && !run("umount"_s, {QDir::cleanPath(m_root)});
    return !m_mounted;
}

bool ExFatVolume::pull() {
    m_mounted = m_mounted && !run("umount"_s, {"--lazy"_s, QDir::cleanPath(m_root)});
    return !m_mounted;
}

bool ExFatVolume::linkLabel(const QString &linkName) {
    unlinkLabel();
    for (const QString &folder : {kDiskFolder, kLabelFolder}) {
        if (QDir().mkdir(folder))
            m_madeFolders.prepend(folder);
    }
    const QString link = kLabelFolder + "/"_s + (linkName.isEmpty() ? m_label : linkName);
    const QString target = QFile::symLinkTarget(link);
    // A link left behind by a test that was killed may go; a real player's may not.
    if (QFileInfo::exists(target) && !target.startsWith("/dev/loop"_s))
        return false;
    QFile::remove(link);
    // Relative, as udev writes it.
    if (!QFile::link("../../"_s + QFileInfo(m_device).fileName(), link))
        return false;
    m_link = link;
    return true;
}

void ExFatVolume::unlinkLabel() {
    if (!m_link.isEmpty())
        QFile::remove(m_link);
    m_link.clear();
    // Only empty ones go: somebody else may use them by now.
    for (const QString &folder : qAsConst(m_madeFolders))
        QDir().rmdir(folder);
    m_madeFolders.clear();
}

bool ExFatVolume::run(const QString &name, const QStringList &arguments, QString *output) {
    QProcess process;
    process.start(program(name), arguments);
    const bool good = process.waitForFinished(kProgramTimeoutMs) && process.exitStatus() == QProcess::NormalExit &&
                      process.exitCode() == 0;
    if (output)
        *output = QString::fromLocal8Bit(process.readAllStandardOutput());
    if (!good)
        m_error = name + ": "_s + QString::fromLocal8Bit(process.readAllStandardError()).trimmed();
    return good;
}
