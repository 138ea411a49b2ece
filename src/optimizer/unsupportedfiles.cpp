// Chapter of Ottimizza: the step that deletes the files that the player cannot use.
#include "ottimizzarun.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>

void Ottimizza::delete_files()
{
    if (abortRequested)
        return;
    emit updateLabelAction(tr("Cancellazione file non supportati..."));
    if (unsupportedFiles.isEmpty()) {
        emit updateLabelAction(tr("Operazione completata"));
        return;
    }
    qInfo() << "delete_files : START";
    const int total = unsupportedFiles.size();
    emit setProgressBarMinVal(0);
    emit setProgressBarMaxVal(total);
    emit updateProgressBarVal(0);
    for (int i = 0; i < total; ++i) {
        if (abortRequested)
            return;
        QCoreApplication::processEvents();
        const QString path = unsupportedFiles.at(i).absoluteFilePath();
        if (abortRequested || !isPlayerThere())
            return;
        // The user has asked for these to go: one that is too large to be kept goes all the same. A stop lets it stay.
        keepOnPc(path, false);
        if (abortRequested || !isPlayerThere())
            return;
        // Deliberate: the line says so whether the file could be deleted or not.
        QFile::remove(path);
        qInfo() << "Delete :" << path;
        emit updateProgressBarVal(i + 1);
    }
    qInfo() << "delete_files : N. files " << total;
    emit updateLabelAction(tr("Operazione completata"));
}
