// Chapter of Ottimizza: the two steps that move pictures and videos into the folders where the player looks for them.
#include "freename.h"
#include "moveentry.h"
#include "ottimizzarun.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>

#include <cstdlib>

namespace {
constexpr int kTemporaryNames = 1000000;
}

/// What the two steps differ in.
struct Ottimizza::MediaMove
{
    const QList<QFileInfo> &files;
    QString folder; ///< name of the target folder in the root
    QString statusText;
    const char *startLine;
    const char *countLine;
};

void Ottimizza::move_images()
{
    moveMedia({imageFiles, PlayerNames::kImages, tr("Spostamento immagini..."), "move_images : START",
               "move_images : N. files "});
}

void Ottimizza::move_videos()
{
    moveMedia({videoFiles, PlayerNames::kVideos, tr("Spostamento video..."), "move_videos : START",
               "move_videos : N. files "});
}

void Ottimizza::moveMedia(const MediaMove &step)
{
    if (abortRequested)
        return;
    emit updateLabelAction(step.statusText);
    if (step.files.isEmpty()) {
        emit updateLabelAction(tr("Operazione completata"));
        return;
    }
    qInfo() << step.startLine;
    if (!isPlayerThere())
        return;
    const QString targetFolder = run().player.path(step.folder);
    QDir().mkdir(targetFolder);
    const int total = step.files.size();
    emit setProgressBarMinVal(0);
    emit setProgressBarMaxVal(total);
    emit updateProgressBarVal(0);
    for (int i = 0; i < total; ++i) {
        if (abortRequested)
            return;
        QCoreApplication::processEvents();
        if (!isPlayerThere())
            return;
        moveMediaFile(step.files.at(i), targetFolder);
        // Deliberate: the line says so whether the file could be moved or not.
        qInfo() << "Move :" << step.files.at(i).absoluteFilePath();
        emit updateProgressBarVal(i + 1);
    }
    qInfo() << step.countLine << total;
    emit updateLabelAction(tr("Operazione completata"));
}

void Ottimizza::moveMediaFile(const QFileInfo &file, const QString &targetFolder) const
{
    const QString source = file.absoluteFilePath();
    const QString plainTarget = targetFolder + QLatin1Char('/') + file.fileName();
    const QString target = freeMediaTarget(targetFolder, file.fileName());
    if (target == plainTarget) {
        moveEntry(source, target);
        return;
    }
    // Deliberate: a file whose name is taken goes through a numeric name, in its own folder and in the target folder.
    // Where such a name is taken as well, the file stays under the name it has got so far, and the one that bears the
    // name goes on in its stead.
    const QString number = QString::number(std::rand() % kTemporaryNames);
    const QString temporaryName = QLatin1Char('/') + number + QLatin1Char('.') + file.completeSuffix();
    const QString inSource = file.absolutePath() + temporaryName;
    const QString inTarget = targetFolder + temporaryName;
    moveEntry(source, inSource);
    moveEntry(inSource, inTarget);
    moveEntry(inTarget, target);
}
