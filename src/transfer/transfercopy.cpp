// The transfer page's chapter of the copy that a drop starts.
#include "transfer.h"

#include "app/shared/questionbox.h"
#include "disk/awake.h"
#include "disk/filecopy.h"
#include "disk/worklock.h"
#include "ui_transfer.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <algorithm>

namespace {

QStringList localFiles(const QList<QUrl> &urls)
{
    QStringList paths;
    for (const QUrl &url : urls) {
        const QString path = url.toLocalFile();
        // A folder dropped with a closing slash would have no name.
        if (!path.isEmpty())
            paths.append(QDir::cleanPath(path));
    }
    return paths;
}

/// Whether @p path is @p folder or lies below it, both canonical. The player's disk ignores case, and taking two
/// folders for one does no harm.
bool isInOrAt(const QString &path, const QString &folder)
{
    const QString start = folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/');
    return (path + QLatin1Char('/')).startsWith(start, Qt::CaseInsensitive);
}

/// The canonical path of @p path, of which the last parts need not exist yet.
QString canonicalPlace(const QString &path)
{
    QString canonical = QFileInfo(path).canonicalFilePath();
    const QString parent = QFileInfo(path).absolutePath();
    if (!canonical.isEmpty() || parent == path)
        return canonical;
    return canonicalPlace(parent) + QLatin1Char('/') + QFileInfo(path).fileName();
}

} // namespace

void Transfer::dropEvent(QDropEvent *event)
{
    if (busy || event->proposedAction() != Qt::CopyAction)
        return;
    setDropAreaHovered(false);
    event->acceptProposedAction();
    enterBusy();
    const bool shown = copyDropped(localFiles(event->mimeData()->urls()));
    leaveBusy();
    if (!shown)
        emit setProgressBarVisible(false);
}

/// Returns false when the copy was stopped before it began: the bar is to go then.
bool Transfer::copyDropped(const QStringList &paths)
{
    const WorkLock lock;
    if (!lock.isTaken()) {
        forgetDropTarget();
        tellOtherWindowWorks(window());
        return true;
    }
    const StayAwake awake;
    takeDropTarget();
    aborted = false;
    if (paths.isEmpty())
        return true;

    emit setProgressBarMinVal(0);
    emit setProgressBarMaxVal(0);
    emit updateProgressBarVal(0);
    emit setProgressBarVisible(true);
    emit updateLabelAction(tr("Conteggio numero file da trasferire ..."));
    qInfo() << "Transfer : Start trasferimento in " << currentFolder;
    const int total = countAll(paths);
    if (aborted)
        return false;
    copyCounted(paths, total);
    return true;
}

void Transfer::copyCounted(const QStringList &paths, int total)
{
    qInfo() << "Transfer : N. Files  " << total;
    ui->pushBtnForward->setEnabled(false);
    // A bar from 0 to 0 would move for ever.
    emit setProgressBarMaxVal(qMax(total, 1));
    emit setProgressBarFormat(QStringLiteral("%v"));
    emit updateLabelAction(tr("Copia di %1 file su Corvin4 in corso ...").arg(total));
    overwriteAnswer = 0;
    m_tally = DropTally(total);
    copyAll(paths);
    qInfo() << "Transfer : Fine Copia";
    // Whatever was copied last can only be vouched for once the player has it.
    // A STOP that came before is done with: what was copied until then is brought to the disk all the same.
    const bool wasAborted = aborted;
    if (!m_player.flush([this, wasAborted] { return wasAborted || !aborted; }) && m_tally.isWhole())
        m_tally.doubtTheLast();
    ui->pushBtnForward->setEnabled(true);
    endWork();
    tellWhatIsMissing();
}

void Transfer::takeDropTarget()
{
    if (dropTarget.isEmpty())
        return;
    const QString folder = dropTarget;
    forgetDropTarget();
    enterFolder(folder);
    showInTree();
}

int Transfer::countAll(const QStringList &paths)
{
    int total = 0;
    for (const QString &path : paths) {
        QCoreApplication::processEvents();
        total += countFiles(path);
    }
    return total;
}

int Transfer::countFiles(const QString &path)
{
    const QFileInfo info(path);
    if (aborted || !info.exists())
        return 0;
    if (info.isFile())
        return 1;
    QCoreApplication::processEvents();
    int count = 0;
    // Deliberate: links do not count though they are copied; the bar then waits at its end.
    const QFileInfoList entries =
        QDir(path).entryInfoList(QDir::Dirs | QDir::Files | QDir::NoSymLinks | QDir::NoDotAndDotDot, QDir::Unsorted);
    for (const QFileInfo &entry : entries) {
        QCoreApplication::processEvents();
        if (aborted)
            break;
        count += entry.isDir() ? countFiles(pathIn(path, entry.fileName())) : 1;
    }
    return count;
}

void Transfer::copyAll(const QStringList &paths)
{
    for (const QString &path : paths) {
        const QFileInfo info(path);
        const QString destination = pathIn(currentFolder, info.fileName());
        if (info.isDir())
            copyFolderTo(path, destination);
        else
            copyOneFile(info.absoluteFilePath(), destination);
        if (aborted)
            return;
    }
}

bool Transfer::leadsIntoItself(const QString &source, const QString &destination) const
{
    const QString folder = QFileInfo(source).canonicalFilePath();
    const auto liesInFolder = [&folder](const QString &path) { return isInOrAt(path, folder); };
    return liesInFolder(canonicalPlace(destination)) ||
           std::any_of(m_openFolders.cbegin(), m_openFolders.cend(), liesInFolder);
}

void Transfer::copyFolderTo(const QString &source, const QString &destination)
{
    // Hours after it was counted it may have been moved, or its stick pulled.
    if (!QFileInfo(source).isDir()) {
        m_tally.addMissingFolder(source);
        return;
    }
    if (leadsIntoItself(source, destination)) {
        qInfo() << "Transfer : Cartella non copiata in se stessa :" << source;
        return;
    }
    if (!isPlayerThere() || !QDir().mkpath(destination))
        m_tally.addMissingFolder(source);
    QCoreApplication::processEvents();
    copyFolder(source, destination);
}

void Transfer::copyFolder(const QString &source, const QString &destination)
{
    const QDir folder(source);
    if (aborted || !folder.exists())
        return;
    QCoreApplication::processEvents();
    if (!folder.isReadable())
        m_tally.addMissingFolder(source);
    m_openFolders.append(folder.canonicalPath());
    const QStringList folders = folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &name : folders) {
        if (aborted)
            break;
        copyFolderTo(source + QDir::separator() + name, destination + QDir::separator() + name);
    }
    m_openFolders.removeLast();
    const QStringList files = folder.entryList(QDir::Files);
    for (const QString &name : files)
        copyOneFile(source + QDir::separator() + name, destination + QDir::separator() + name);
}

/// Between two blocks of a large file. Deliberate: STOP is not looked at, so that a file that has been begun is
/// finished; but nothing is written on where the player was.
bool Transfer::keepWindowAlive()
{
    QCoreApplication::processEvents();
    return isPlayerThere();
}

void Transfer::copyOneFile(const QString &source, const QString &destination)
{
    if (aborted)
        return;
    // Deliberate: the bar is ahead of the copy, so that a file that is passed over moves it too.
    emit increaseProgressBarVal();
    QCoreApplication::processEvents();
    CopyResult result =
        isPlayerThere() ? copyFile(source, destination, [this] { return keepWindowAlive(); }) : CopyResult::NotCreated;
    if (result == CopyResult::DestinationExists) {
        if (isSameFile(source, destination)) {
            qInfo() << "Transfer : File non copiato su se stesso :" << source;
            return;
        }
        if (!mayOverwrite(destination))
            return;
        result = copyOver(source, destination);
    } else if (result != CopyResult::Copied) {
        qDebug() << "!QFile::copy - src :" << source;
    }
    if (result == CopyResult::Copied)
        m_tally.addCopied(source);
    else
        m_tally.addMissing(source);
}

CopyResult Transfer::copyOver(const QString &source, const QString &destination)
{
    // The question may have been open for long.
    const CopyResult result = isPlayerThere() ? replaceFile(
                                                    source, destination, [this] { return keepWindowAlive(); },
                                                    [this](const QString &kept) { m_tally.addFormerKept(kept); })
                                              : CopyResult::NotCreated;
    if (result != CopyResult::Copied)
        qDebug() << "Transfer : File non sostituito :" << destination;
    return result;
}

bool Transfer::mayOverwrite(const QString &destination)
{
    if (overwriteAnswer != QMessageBox::YesToAll && overwriteAnswer != QMessageBox::NoToAll) {
        Question question;
        question.title = tr("File esistente");
        question.text = tr("Il File ") + QDir::cleanPath(destination) + tr("\n\nE' già esistente. Sovrascrivo ?");
        question.buttons = {{QMessageBox::Yes, tr("Si")},
                            {QMessageBox::YesToAll, tr("Si,Tutti")},
                            {QMessageBox::No, tr("No")},
                            {QMessageBox::NoToAll, tr("No,Tutti")}};
        // Deliberate: Enter keeps this file and all that follow.
        question.defaultButton = QMessageBox::NoToAll;
        question.escapeButton = QMessageBox::No;
        overwriteAnswer = askQuestion(nullptr, question);
    }
    return overwriteAnswer == QMessageBox::Yes || overwriteAnswer == QMessageBox::YesToAll;
}

void Transfer::tellWhatIsMissing()
{
    if (m_tally.isWhole())
        return;
    QString former;
    if (!m_tally.formerKept().isEmpty())
        former =
            tr("La versione precedente è conservata sul PC:\n%1").arg(m_tally.formerKept().join(QLatin1Char('\n')));
    // Over the window and not over this page, whose style sheet would reach into the box.
    tellUser(window(), QMessageBox::Information, tr("Trasferimento non completato"),
             tr("Copiati %1 file su %2.").arg(m_tally.copiedFiles()).arg(m_tally.wantedFiles()), former,
             m_tally.firstMissing().join(QLatin1Char('\n')));
}
