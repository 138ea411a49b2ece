// Chapter of Ottimizza: what its steps share about the player that the run began with.
#include "ottimizzarun.h"

#include <QCoreApplication>
#include <QDebug>

/// A step that is called by itself works on the player that rootPath names.
Ottimizza::Run &Ottimizza::run()
{
    if (!m_run || m_run->player.root() != rootPath)
        m_run = std::make_unique<Run>(rootPath);
    return *m_run;
}

/// Asked before anything is renamed, deleted or written: under the same path may by now lie a folder of the PC's own. When
/// the player has gone the run is over, as one that has found none.
bool Ottimizza::isPlayerThere()
{
    if (run().player.isThere())
        return true;
    if (failCode != DeviceNotFound)
        qWarning() << "Ottimizza : player gone :" << rootPath;
    failCode = DeviceNotFound;
    abortRequested = true;
    return false;
}

/// Copies a file of the player to the PC, with the window alive and STOP at work. Returns whether it may go.
bool Ottimizza::keepOnPc(const QString &path, bool isSong)
{
    const auto kind = isSong ? KeptFiles::Kind::Songs : KeptFiles::Kind::Unsupported;
    return run().kept.keep(path, kind, [this] {
        QCoreApplication::processEvents();
        return !abortRequested && isPlayerThere();
    });
}
