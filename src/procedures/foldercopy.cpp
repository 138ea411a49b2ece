// The main window's chapter that copies files one by one and asks what to do with conflicts.
#include "app/mainwindow.h"

#include "app/shared/questionbox.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QProgressBar>
#include <QRegExp>

namespace {

/// What the user has answered for the rest of one copy.
struct CopyAnswers
{
    bool replaceAll = false;
    bool ignoreAllErrors = false;
};

enum class FileOutcome
{
    Copied,    ///< or left alone because the user wants the existing one
    NotCopied, ///< and the user wants to go on
    GiveUp     ///< not copied, and the user does not want to go on
};

/// The folders that lead to @p destination, outermost first, as the walk that makes them names them.
QStringList foldersOf(const QString &destination)
{
    // Deliberate: a backslash splits only with a blank behind it; a path written with backslashes stays one part.
    static const QRegExp kSeparators(QStringLiteral("(\\\\ |\\/)"));
    QStringList parts = destination.split(kSeparators, Qt::KeepEmptyParts);
    parts.removeLast();
    QStringList folders;
    QString folder;
    for (const QString &part : qAsConst(parts)) {
        folder += part + QDir::separator();
        folders.append(folder);
    }
    return folders;
}

/// Makes the folders that lead to @p destination. Returns false at the first that cannot be made.
bool makeFolders(const QString &destination)
{
    const QStringList folders = foldersOf(destination);
    const QDir here{QString()};
    // From the inside out: one look is enough for every file but the first of its folder, and the first names of a
    // network path, which are no folders, are never asked for.
    int made = folders.size();
    while (made > 0 && !here.exists(folders.at(made - 1)))
        --made;
    for (; made < folders.size(); ++made) {
        if (!here.mkdir(folders.at(made)))
            return false;
    }
    return true;
}

/// Asks whether the file at @p destination is to be replaced.
bool askWhetherToReplace(const QString &destination, CopyAnswers &answers)
{
    Question question;
    question.title = MainWindow::tr("File Esistente");
    question.text = MainWindow::tr("Il File\n") + destination + MainWindow::tr("\nEsiste già. Vuoi sostituirlo?");
    question.buttons = {{QMessageBox::Yes, MainWindow::tr("Si")},
                        {QMessageBox::No, MainWindow::tr("No")},
                        {QMessageBox::YesToAll, MainWindow::tr("Si,Tutti")}};
    question.defaultButton = QMessageBox::Yes;
    question.escapeButton = QMessageBox::No;
    const QMessageBox::StandardButton answer = askQuestion(nullptr, question);
    answers.replaceAll = answer == QMessageBox::YesToAll;
    return answer == QMessageBox::Yes || answer == QMessageBox::YesToAll;
}

/// Asks whether to go on although the file at @p destination was not copied.
bool askWhetherToGoOn(const QString &destination, CopyAnswers &answers)
{
    Question question;
    question.title = MainWindow::tr("Errore sulla copia");
    question.text =
        MainWindow::tr("Il File\n") + destination + MainWindow::tr("\nnon è stato copiato. Vuoi continuare a copiare?");
    // Deliberate: "yes to all" is the Cancel button, so that closing the box means it too.
    question.buttons = {{QMessageBox::Yes, MainWindow::tr("Si")},
                        {QMessageBox::No, MainWindow::tr("No")},
                        {QMessageBox::Cancel, MainWindow::tr("Si,Tutti")}};
    question.defaultButton = QMessageBox::Yes;
    question.escapeButton = QMessageBox::Cancel;
    const QMessageBox::StandardButton answer = askQuestion(nullptr, question);
    answers.ignoreAllErrors = answer == QMessageBox::Cancel;
    return answer != QMessageBox::No;
}

FileOutcome copyOne(const QString &source, const QString &destination, CopyAnswers &answers)
{
    if (QFile::exists(destination)) {
        // A file that would replace itself would be gone before it is read.
        if (QFileInfo(source) == QFileInfo(destination))
            return FileOutcome::Copied;
        if (!answers.replaceAll && !askWhetherToReplace(destination, answers))
            return FileOutcome::Copied;
        QFile::remove(destination);
    }
    if (QFile::copy(source, destination))
        return FileOutcome::Copied;
    if (answers.ignoreAllErrors || askWhetherToGoOn(destination, answers))
        return FileOutcome::NotCopied;
    return FileOutcome::GiveUp;
}

void countOneMore(QProgressBar *bar)
{
    if (bar->value() < bar->maximum())
        bar->setValue(bar->value() + 1);
    bar->repaint();
    QCoreApplication::processEvents();
}

} // namespace

bool MainWindow::copyFileList(const QStringList &sources, const QString &destinationRoot, const QString &sourceRoot,
                              QProgressBar *bar)
{
    bar->setFormat(QStringLiteral("%v"));
    bar->setMaximum(sources.size());
    bar->setValue(0);
    bar->repaint();

    CopyAnswers answers;
    // Deliberate: the outcome is the last file's. One that failed on the way was already answered for by the user.
    bool copied = true;
    for (const QString &source : sources) {
        const QString destination = destinationRoot + source.mid(sourceRoot.size());
        if (!makeFolders(destination)) {
            QMessageBox::information(this, tr("ERRORE"), tr("ERRORE"), QMessageBox::Ok);
            procedureOk = false;
            return false;
        }
        const FileOutcome outcome = copyOne(source, destination, answers);
        if (outcome == FileOutcome::GiveUp)
            return false;
        copied = outcome == FileOutcome::Copied;
        countOneMore(bar);
        if (abortRequested)
            return false;
    }

    bar->setMaximum(sources.size());
    bar->setValue(0);
    bar->setFormat(QStringLiteral("%p%"));
    return copied;
}
