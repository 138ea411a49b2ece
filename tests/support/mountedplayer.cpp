#include "mountedplayer.h"

#include "simulatedplayer.h"
#include "testing.h"

MountedPlayer::MountedPlayer(int megabytes, int clusterBytes)
    : volume(std::make_unique<ExFatVolume>(megabytes, "CORVIN4"_s, clusterBytes)) {
    if (!isMounted())
        return;
    putFile(path(".windows-label"_s), "CORVIN4\n");
    qputenv("CORVIN_VOLUMES", QFile::encodeName(QDir::cleanPath(root())));
}

MountedPlayer::~MountedPlayer() {
    SimulatedPlayer::disconnect();
}

FolderMount::FolderMount(const QString &folder, int kilobytes)
    : m_folder(folder),
      m_mounted(runProgram("mount"_s, words("-t tmpfs -o") << "size=%1k"_s.arg(kilobytes) << "none"_s << folder)) {}

FolderMount::FolderMount(const QString &folder)
    : m_folder(folder), m_mounted(runProgram("mount"_s, {"--bind"_s, folder, folder})) {
    m_good = m_mounted && runProgram("mount"_s, {"-o"_s, "remount,bind,ro"_s, folder});
}

FolderMount::~FolderMount() {
    if (m_mounted)
        runProgram("umount"_s, {m_folder});
}
