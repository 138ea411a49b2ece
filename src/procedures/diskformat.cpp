#include "diskformat.h"

#include "consoletext.h"
#include "jobnotices.h"
#include "operationtexts.h"

#include "disk/tree.h"
#include "disk/waitms.h"

#include <QDebug>
#include <QDir>
#include <QProcess>

#include <algorithm>

namespace {

constexpr int kStartTimeoutMs = 30000;
constexpr int kLookIntervalMs = 500;
constexpr int kSettleMs = 1000;
constexpr int kMaximumAfterFormat = 10;

/// How far the format command got.
struct FormatCommand
{
    bool started = false;
    bool ended = false;
};

/// Runs the format command on @p drive ("E:"); the window stands still meanwhile.
FormatCommand runFormat(const QString &drive)
{
    const QString program = QStringLiteral("cmd.exe");
    const QStringList arguments = {QStringLiteral("/C"),
                                   QStringLiteral("format"),
                                   drive,
                                   QStringLiteral("/FS:exFAT"),
                                   QStringLiteral("/V:") + PlayerNames::kLabel,
                                   QStringLiteral("/Q"),
                                   QStringLiteral("/X"),
                                   QStringLiteral("/Y")};
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments, QIODevice::ReadWrite);
    FormatCommand command;
    command.started = process.waitForStarted(kStartTimeoutMs);
    // A question that "/Y" does not answer meets the end of its input, and the command ends; else it would wait for
    // ever.
    process.closeWriteChannel();
    command.ended = command.started && process.waitForFinished(-1);
    // Deliberate: what the command says and its exit code do not count. What it did shows on the disk.
    qDebug() << program << arguments.join(QStringLiteral(", ")) << consoleText(process.readAll());
    return command;
}

/// What lies at the root of @p player and does not outlive a format: what the systems keep on every disk does, or comes
/// back by itself.
QStringList erasableEntries(const Player &player)
{
    QStringList entries;
    const QStringList all = QDir(player.root()).entryList(kAllEntries, QDir::NoSort);
    for (const QString &entry : all) {
        if (!entry.startsWith(QLatin1Char('.')) && !isWindowsOwn(entry))
            entries.append(entry);
    }
    return entries;
}

} // namespace

DiskFormat::DiskFormat(JobView &view, const QString &drive, std::function<bool()> isReady)
    : m_view(view), m_player(drive), m_isReady(std::move(isReady))
{
}

JobEnd DiskFormat::run()
{
    // Deliberate: STOP does not count here. A disk being formatted is not to be left alone.
    return runSteps("DiskFormat", m_view,
                    {{"confirm", &DiskFormat::confirm},
                     {"erase", &DiskFormat::erase},
                     {"waitForPlayer", &DiskFormat::waitForPlayer},
                     {"judge", &DiskFormat::judge}},
                    Stop::IsLeftToTheSteps);
}

JobEnd DiskFormat::confirm()
{
    JobQuestion question = siOrNo(tr("Cancellazione Drive"), tr("ATTENZIONE: Il drive ") + m_player.root() +
                                                                 tr(" verrà cancellato.\nVuoi continuare?"));
    question.standsAlone = true;
    return {m_view.ask(question) == JobAnswer::Yes ? JobEnd::Done : JobEnd::Refused};
}

JobEnd DiskFormat::erase()
{
    qInfo() << "FormatCorvinDisk : Inizio";
    // The question may have stood open for long: whatever bears the drive's letter by now must not be erased.
    const auto isPlayer = [this] { return Player::find().root() == m_player.root() && m_player.isThere(); };
    if (isPlayer() && m_isReady && !m_isReady()) {
        endWork();
        return {JobEnd::Failed};
    }
    m_view.showStatus(operationText(TEXT_FORMATTING));
    m_view.setBarRange(0, 0);
    m_view.setBarValue(0);
    if (!isPlayer()) {
        endWork();
        return {JobEnd::Failed};
    }
    m_before = erasableEntries(m_player);
    const FormatCommand command = runFormat(m_player.root().chopped(1));
    m_begun = command.started;
    m_ranToItsEnd = command.ended;
    return {};
}

/// Deliberate: without limit, save that of a window that is to close.
JobEnd DiskFormat::waitForPlayer()
{
    waitMs(kLookIntervalMs);
    while (!Player::find().isFound()) {
        if (m_view.isClosing()) {
            endWork();
            return {JobEnd::Stopped};
        }
        QCoreApplication::processEvents();
        waitMs(kLookIntervalMs);
    }
    waitMs(kSettleMs);
    endWork();
    return {};
}

/// A command that was refused ends like one that did its work, and says so in any language.
JobEnd DiskFormat::judge()
{
    const QStringList now = erasableEntries(Player::find());
    const bool erased = std::none_of(
        now.begin(), now.end(), [this](const QString &entry) { return m_before.contains(entry, Qt::CaseInsensitive); });
    return {m_ranToItsEnd && erased ? JobEnd::Done : JobEnd::Failed};
}

void DiskFormat::endWork()
{
    m_view.setBarRange(0, kMaximumAfterFormat);
    qInfo() << "FormatCorvinDisk : Fine";
}
