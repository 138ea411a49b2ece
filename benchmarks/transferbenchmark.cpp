// Measures the transfer of a folder of songs, and the copy that the maintenance makes, side by side with "cp -r" and
// "sync" of the same folder, on the same exFAT volume, in turns. Ends with 0 when the medians of both are within the
// limit, with 1 when one is not, and with 2 when nothing could be measured. The last line is JSON for scripts.
#include "app/mainwindow.h"
#include "app/shared/sharedfonts.h"
#include "device/player.h"
#include "pages/check.h"
#include "resources/resources.h"
#include "support/exfatvolume.h"
#include "transfer/transfer.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QDragEnterEvent>
#include <QElapsedTimer>
#include <QFile>
#include <QMimeData>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTextStream>
#include <QUrl>

#include <algorithm>

namespace {

constexpr int kProgramTimeoutMs = 600000;
constexpr int kPatienceMs = 30000;
constexpr int kRoundMs = 20;
constexpr double kLimit = 1.5;
const QString kSongs = QStringLiteral("songs");

void say(const QString &text)
{
    QTextStream(stdout) << text << Qt::endl;
}

bool makeSongs(const QString &folder, int count, int size)
{
    QDir().mkpath(folder);
    QVector<quint32> content(size / int(sizeof(quint32)) + 1);
    for (int i = 0; i < count; ++i) {
        QRandomGenerator::global()->fillRange(content.data(), content.size());
        QFile file(folder + QStringLiteral("/song %1.mid").arg(i));
        if (!file.open(QIODevice::WriteOnly) ||
            file.write(reinterpret_cast<const char *>(content.data()), size) != size)
            return false;
    }
    return true;
}

/// Serves events until the widget is there to be used. False when it never is.
bool waitFor(const QWidget *widget)
{
    QElapsedTimer waiting;
    waiting.start();
    while (!(widget->isVisible() && widget->isEnabled()) && waiting.elapsed() < kPatienceMs)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, kRoundMs);
    return widget->isVisible() && widget->isEnabled();
}

/// The program's window, gone through as a user does until he can drop.
class Window
{
public:
    Window() : m_page(m_window.findChild<Transfer *>()) { m_window.show(); }

    bool passCheck()
    {
        auto *done = m_window.findChild<Check *>()->findChild<QPushButton *>(QStringLiteral("pushButton"));
        if (!waitFor(done))
            return false;
        done->click();
        return true;
    }

    void openTransfer()
    {
        m_window.on_gotoTransfer();
        // No file manager shall open for this.
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", "/nonexistent");
        m_page->on_pButPc_clicked();
        qputenv("PATH", path);
        waitFor(m_page->findChild<QWidget *>(QStringLiteral("dropArea")));
    }

    void drop(const QString &path)
    {
        QMimeData songs;
        songs.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter(QPoint(), Qt::CopyAction, &songs, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_page, &enter);
        QDropEvent event(QPoint(), Qt::CopyAction, &songs, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_page, &event);
    }

    /// As a restore brings songs back. Returns whether all were copied.
    bool copyList(const QString &source, const QString &root)
    {
        QStringList files;
        for (const QFileInfo &file : QDir(source).entryInfoList(QDir::Files, QDir::Name))
            files.append(file.filePath());
        const QString above = QFileInfo(source).path() + QLatin1Char('/');
        QProgressBar bar;
        return m_window.copyFileList(files, root, above, &bar) && Player(root).flush();
    }

private:
    MainWindow m_window;
    Transfer *m_page;
};

/// What one round took, in milliseconds.
struct Times
{
    qint64 cp = -1;
    qint64 transfer = -1;
    qint64 copyList = -1;
};

/// Runs the command and gives the time in milliseconds, or -1 when it failed.
qint64 timeOf(const QString &command)
{
    QElapsedTimer time;
    time.start();
    QProcess process;
    process.start(QStringLiteral("sh"), {QStringLiteral("-c"), command});
    const bool good = process.waitForFinished(kProgramTimeoutMs) && process.exitCode() == 0;
    return good ? time.elapsed() : -1;
}

qint64 median(QVector<qint64> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

bool isWhole(const QString &source, const QString &copy)
{
    return QProcess::execute(QStringLiteral("diff"), {QStringLiteral("-rq"), source, copy}) == 0;
}

/// One copy by each, into the volume as it was before; false when one failed.
bool measureRound(Window &window, const ExFatVolume &volume, const QString &source, Times &times)
{
    const QString copy = volume.path(kSongs);
    const QString sync = QStringLiteral("sync -f '%1'").arg(volume.root());
    times.cp = timeOf(QStringLiteral("cp -r '%1' '%2' && %3").arg(source, copy, sync));
    const bool cpWhole = isWhole(source, copy);
    timeOf(QStringLiteral("rm -r '%1' && %2").arg(copy, sync));

    window.openTransfer();
    QElapsedTimer time;
    time.start();
    window.drop(source);
    times.transfer = time.elapsed();
    const bool transferWhole = isWhole(source, copy);
    timeOf(QStringLiteral("rm -r '%1' && %2").arg(copy, sync));

    time.start();
    const bool listCopied = window.copyList(source, volume.root());
    times.copyList = time.elapsed();
    const bool listWhole = listCopied && isWhole(source, copy);
    timeOf(QStringLiteral("rm -r '%1' && %2").arg(copy, sync));
    return times.cp > 0 && cpWhole && transferWhole && listWhole;
}

int measure(int songs, int size, int rounds)
{
    QString why;
    if (!ExFatVolume::isPossible(&why)) {
        say(QStringLiteral("No exFAT volume can be mounted: ") + why);
        return 2;
    }
    const ExFatVolume volume(int(2 * qint64(songs) * size / 1000000) + 128);
    const QTemporaryDir pc;
    const QString source = pc.filePath(kSongs);
    if (!volume.isMounted() || !makeSongs(source, songs, size)) {
        say(QStringLiteral("No volume or no songs: ") + volume.error());
        return 2;
    }
    QFile label(volume.path(QStringLiteral(".windows-label")));
    if (label.open(QIODevice::WriteOnly))
        label.write("CORVIN4\n");
    label.close();
    for (const char *file : {"AUTOEXEC.BAT", "System/Corvin/Corvin.exe", "System/GuiProc/GuiProc.exe"}) {
        const QString path = volume.path(QLatin1String(file));
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile(path).open(QIODevice::WriteOnly);
    }
    qputenv("CORVIN_VOLUMES", QFile::encodeName(volume.root()));

    Window window;
    if (!window.passCheck()) {
        say(QStringLiteral("The program does not find the volume"));
        return 2;
    }
    QVector<qint64> cp;
    QVector<qint64> transfer;
    QVector<qint64> copyList;
    say(QStringLiteral("%1 files of %2 bytes; cp -r with sync, the transfer, copyFileList, in ms:")
            .arg(songs)
            .arg(size));
    for (int round = 0; round < rounds; ++round) {
        Times times;
        if (!measureRound(window, volume, source, times)) {
            say(QStringLiteral("A copy is not whole"));
            return 2;
        }
        cp.append(times.cp);
        transfer.append(times.transfer);
        copyList.append(times.copyList);
        say(QStringLiteral("%1 %2 %3").arg(times.cp, 8).arg(times.transfer, 8).arg(times.copyList, 8));
    }
    say(QStringLiteral("{\"cp\": %1, \"transfer\": %2, \"copyFileList\": %3}")
            .arg(median(cp))
            .arg(median(transfer))
            .arg(median(copyList)));
    const double limit = kLimit * double(median(cp));
    return double(median(transfer)) <= limit && double(median(copyList)) <= limit ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    loadResources();
    registerEmbeddedFonts();
    QCommandLineParser parser;
    const QCommandLineOption songs(QStringLiteral("songs"), QStringLiteral("Number of files."), QStringLiteral("n"),
                                   QStringLiteral("1000"));
    const QCommandLineOption size(QStringLiteral("size"), QStringLiteral("Bytes of a file."), QStringLiteral("n"),
                                  QStringLiteral("50000"));
    const QCommandLineOption rounds(QStringLiteral("rounds"), QStringLiteral("Number of turns."), QStringLiteral("n"),
                                    QStringLiteral("7"));
    parser.addHelpOption();
    parser.addOptions({songs, size, rounds});
    parser.process(application);
    return measure(parser.value(songs).toInt(), parser.value(size).toInt(), qMax(1, parser.value(rounds).toInt()));
}
