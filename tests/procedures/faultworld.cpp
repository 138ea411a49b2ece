#include "faultworld.h"

#include "playermodel.h"

#include "disk/datafolder.h"
#include "disk/worklock.h"
#include "optimizer/endottimizza.h"
#include "transfer/opentransfer.h"

namespace {

constexpr int kReplaced = 20;
constexpr int kDropped = 300;

const char *slotOf(Work work) {
    switch (work) {
    case Work::Update:
        return Slots::kUpdate;
    case Work::Reinstall:
        return Slots::kReinstall;
    case Work::ReinstallErasing:
        return Slots::kReinstallClean;
    case Work::ReinstallRestoring:
        return Slots::kReinstallRestoring;
    case Work::BackUp:
        return Slots::kBackUp;
    default:
        return Slots::kRestore;
    }
}

} // namespace

bool canTryFaults(QString *why) {
    if (!ExFatVolume::isPossible(why))
        return false;
    playerModel(); // before anything temporary has another place
    return true;
}

FaultDisks::FaultDisks() : volume(ExFatVolume::copyOf(playerModel().image)) {
    if (!volume->isMounted() || !mount.isGood())
        qFatal("%s", qPrintable(volume->error()));
}

FaultWorld::FaultWorld(Work workToDo) : m_work(workToDo), m_moments(std::make_unique<QObject>()) {
    m_mountPoint = QDir::cleanPath(volume->root());
    qputenv("CORVIN_VOLUMES", QFile::encodeName(m_mountPoint));
    setDataFolder(own.path("data"_s));
    const QMap<QString, QByteArray> &before = playerModel().content;
    for (auto file = before.begin(); file != before.end(); ++file) {
        if (!isSystems(file.key()) && file.key() != ".windows-label"_s)
            m_userContents.insert(file.value());
    }
    own.addFile("Desktop/letter.txt"_s, "a letter");
    own.addFile("CorvinUpdate/mine.txt"_s, "a folder of the PC that is named so");
    const QString dropped = own.path("dropped/My Songs/"_s);
    for (int i = 0; i < kDropped; ++i)
        putFile(dropped + "Album/%1.mid"_s.arg(i), titledSong("Dropped %1"_s.arg(i)));
    // The user agrees to replace these; an old one may only go for a whole new one.
    for (int i = 0; i < kReplaced; ++i) {
        const QString path = "My Songs/Grandi/%1.mid"_s.arg(i + 1, 5, 10, QLatin1Char('0'));
        const QByteArray newer = titledSong("Newer %1"_s.arg(i));
        putFile(own.path("dropped/"_s + path), newer);
        if (m_work == Work::Restore || m_work == Work::Transfer) {
            m_userContents.remove(before.value(path));
            m_replaced.insert(path, {before.value(path), newer});
        }
    }
    for (const QString &title : {Titles::kCopyExists, Titles::kCopyFailed, Titles::kTransferExists})
        boxes.answerAlways(title, Buttons::kSiTutti);
    for (const QString &title : {Titles::kStop, Titles::kErase, Titles::kEraseDrive})
        boxes.answerAlways(title, Buttons::kSi);
    for (const QString &title : {Titles::kManyFiles, Titles::kBackupNotEmpty})
        boxes.answerAlways(title, Buttons::kYes);
    for (const QString &title :
         {Titles::kNotClosed, Titles::kDone, Titles::kDeviceNotFound, Titles::kFormatError, Titles::kBackupError,
          Titles::kRestoreError, Titles::kFinished, Titles::kDownloadError1, Titles::kDownloadError2,
          Titles::kDownloadError3, Titles::kNoDatabase, Titles::kError, "Corvin4 Manager"_s})
        boxes.answerAlways(title, Buttons::kOk);
    programs.addScript("cmd.exe"_s, "PATH=/usr/sbin:/usr/bin:/sbin:/bin\n"
                                    "for once in $(seq 50); do umount \"$3\" && break; sleep 0.1; done\n"
                                    "for once in $(seq 50); do mkfs.exfat -L CORVIN4 %1 && break; sleep 0.1; done\n"
                                    "mount.exfat-fuse %1 \"$3\" && echo CORVIN4 > \"$3/.windows-label\"\n"
                                    "echo > '%2'\n"_s.arg(volume->device(), own.path("formatted"_s))
                                        .toUtf8());
}

FaultWorld::~FaultWorld() {
    setDataFolder(QString());
    SimulatedPlayer::disconnect();
}

void FaultWorld::doWork() {
    if (m_work == Work::Restore) {
        // What the player has in another version, and what it lacks.
        runProgram("cp"_s, {"-r"_s, own.path("dropped/."_s), backup});
        m_backupBefore = contentBelow(backup);
    }
    m_ownBefore = contentBelow(own.path());
    if (m_work == Work::Optimise) {
        window->on_gotoOptimizer();
        click(*window.window, "Btn_Opt_Ok");
    } else if (m_work == Work::Transfer) {
        drop();
    } else {
        const bool asks = m_work == Work::BackUp || m_work == Work::Restore || m_work == Work::ReinstallRestoring;
        const FolderDialogAnswerer dialogs(asks ? backup : QString());
        window.run(slotOf(m_work));
    }
    if (m_pendingMoments > 0)
        failTest("A fault had no moment to happen"_s);
    m_moments = std::make_unique<QObject>();
}

void FaultWorld::drop() {
    const FakeFileManager fileManager;
    window->on_gotoTransfer();
    auto *page = pageOf<Transfer>(*window.window);
    click(*page, "pButPc");
    auto *area = child<QWidget>(*page, "dropArea");
    const QPoint where = area->mapTo(page, area->rect().center());
    Drag drag(*page, fileUrls({own.path("dropped/My Songs"_s)}));
    drag.enter(where);
    drag.move(where);
    drag.drop(where);
}

void FaultWorld::when(const QString &status, int value, const std::function<void()> &action) {
    ++m_pendingMoments;
    whenever(status, value, [this, action] {
        --m_pendingMoments;
        action();
    });
}

void FaultWorld::whenever(const QString &status, int value, const std::function<void()> &action) {
    auto *timer = new QTimer(m_moments.get());
    QObject::connect(timer, &QTimer::timeout, timer, [this, timer, status, value, action] {
        if (!window.status().contains(status) || window.bar()->value() < value)
            return;
        timer->stop();
        action();
    });
    timer->start(0);
}

void FaultWorld::fillPlayer(qint64 bytesFree) {
    QFile filler(volume->path("System/filler.bin"_s));
    if (!filler.open(QIODevice::WriteOnly))
        return failTest("The player cannot be filled"_s);
    qint64 left = QStorageInfo(volume->root()).bytesAvailable() - bytesFree;
    const QByteArray block(1 << 20, 'f');
    for (; left > 0; left -= block.size())
        filler.write(block.constData(), qMin(left, qint64(block.size())));
}

void FaultWorld::fillPc(int kilobytes) {
    QFile filler(pc.path("filler"_s));
    if (!filler.open(QIODevice::WriteOnly))
        return failTest("The PC cannot be filled"_s);
    qint64 left = QStorageInfo(pc.path()).bytesAvailable() - qint64(kilobytes) * 1024;
    const QByteArray block(1 << 20, 'f');
    for (; left > 0; left -= block.size())
        filler.write(block.constData(), qMin(left, qint64(block.size())));
}

void FaultWorld::cut(const QString &path, int percent) {
    const bool update = path == kUpdateArchivePath;
    const QByteArray whole = update ? zipOf({{"CorvinUpdate/a.exe"_s, noise(40000)}, {"CorvinUpdate/b.exe"_s, "new"}})
                                    : zipOf({{"System/big.bin"_s, noise(400000)}, {"AUTOEXEC.BAT"_s, "new"}});
    server.serveCut(path, whole, whole.size() * percent / 100);
}

void FaultWorld::halveTool() {
    programs.addScript("unar"_s, "'%1' \"$@\"\n"
                                 "find \"$3\" -type f ! -name '*.zip' ! -name '*.c4' | sort | awk 'NR % 2' | "
                                 "while read -r file; do rm \"$file\"; done\n"
                                 "exit 1\n"_s.arg(QStringLiteral(UNAR_PROGRAM))
                                     .toUtf8());
}

void FaultWorld::refuseFormat() {
    programs.addScript("cmd.exe"_s, "echo Accesso negato.\nexit 5\n");
}

void FaultWorld::workElsewhere() {
    m_elsewhere = std::make_unique<WorkLock>();
}

QStringList FaultWorld::namedFolders() const {
    QStringList folders;
    const QStringList lines = allBoxTexts().split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (line.startsWith(QLatin1Char('/')) && QFileInfo(line).isDir())
            folders.append(line);
    }
    static const QRegularExpression link("<a [^>]*>([^<]*)</a>"_s);
    const auto *page = pageOf<EndOttimizza>(*window.window);
    const auto labels = page->findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        const QString folder = link.match(label->text()).captured(1).remove(QChar(0x200B));
        if (!label->isHidden() && !page->isHidden() && !folder.isEmpty())
            folders.append(folder);
    }
    // Without a result page, after a STOP or a closing, nobody is told: what was kept lies there all the same.
    if (m_work == Work::Optimise && page->isHidden())
        folders.append(own.path("data/removed"_s));
    return folders;
}

QString FaultWorld::allBoxTexts() const {
    QString texts;
    for (const BoxAnswerer::Seen &box : boxes.seen())
        texts += box.text + "\n"_s + box.informativeText + "\n"_s;
    return texts;
}

QSet<QByteArray> FaultWorld::contentsThatRemain() const {
    QSet<QByteArray> contents;
    for (const QString &folder : namedFolders() + QStringList{volume->root()}) {
        const QMap<QString, QByteArray> files = contentBelow(folder);
        for (const QByteArray &content : files)
            contents.insert(content);
    }
    return contents;
}

void FaultWorld::expectSystem() const {
    QStringList old;
    QStringList fresh;
    const QMap<QString, QByteArray> files = contentBelow(volume->root());
    for (auto file = files.begin(); file != files.end(); ++file) {
        if (file.key().endsWith("filler.bin"_s) || !isSystems(file.key()) || isPlaylist(file.key()))
            continue;
        (file.value() == "old" ? old : fresh).append(file.key());
    }
    const auto update = [](const QString &path) { return path.startsWith("CorvinUpdate/"_s); };
    const int oldUpdate = int(std::count_if(old.begin(), old.end(), update));
    const int newUpdate = int(std::count_if(fresh.begin(), fresh.end(), update));
    if (!(oldUpdate == 0 || newUpdate == 0) || oldUpdate == 1 || newUpdate == 1)
        failTest("Half an update: "_s + (old + fresh).join(QLatin1Char('|')));
    fresh.removeAll("CorvinImportDB.sql"_s);
    const int oldSystem = old.size() - oldUpdate;
    const int newSystem = fresh.size() - newUpdate;
    const bool whole = (oldSystem == kWholeSystem.size() + 1 && newSystem == 0) ||
                       (newSystem == kWholeSystem.size() && oldSystem == 0);
    if (!whole && !allBoxTexts().contains("reinstallare il sistema operativo"_s))
        failTest("No whole system, and no word about it: "_s + (old + fresh).join(QLatin1Char('|')));
}

void FaultWorld::expectContents() const {
    const bool erased = m_work == Work::ReinstallErasing && QFile::exists(own.path("formatted"_s));
    const QSet<QByteArray> lost = erased ? QSet<QByteArray>() : m_userContents - contentsThatRemain();
    if (!lost.isEmpty()) {
        failTest("%1 files are lost, such as %2"_s.arg(lost.size())
                     .arg(QString::fromLatin1(lost.begin()->simplified().left(60))));
    }
    for (auto song = m_replaced.begin(); song != m_replaced.end(); ++song) {
        if (!song.value().contains(contentOf(volume->path(song.key()))))
            failTest("Neither the old song nor the new one: "_s + song.key());
    }
    if (entriesBelow(volume->root()).join(QLatin1Char('|')).contains("corvin4-copy"_s))
        failTest("Half a copy is left behind"_s);
}

void FaultWorld::expectNothingLost() {
    if (wasPulled && !volume->isMounted()) {
        const QStringList written = entriesBelow(m_mountPoint);
        if (!written.isEmpty())
            failTest("Written where the player was: "_s + written.join(QLatin1Char('|')));
        pushIn();
    }
    expectContents();
    expectSystem();
    const QMap<QString, QByteArray> now = contentBelow(own.path());
    for (auto file = m_ownBefore.begin(); file != m_ownBefore.end(); ++file) {
        if (!file.key().startsWith("data/"_s) && now.value(file.key()) != file.value())
            failTest("The PC's own file has changed: "_s + file.key());
    }
    if (m_work == Work::Restore && contentBelow(backup) != m_backupBefore)
        failTest("The backup has changed"_s);
}
