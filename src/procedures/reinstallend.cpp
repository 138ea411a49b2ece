// The reinstallation's chapter of what it tells the user at its end.
#include "reinstall.h"

#include "jobnotices.h"
#include "operationtexts.h"

#include <QDir>
#include <QStringList>

JobEnd Reinstall::playerGone()
{
    return failed(playerGoneNotice());
}

/// The end of a step that went wrong: told, unless it was STOP that ended it.
JobEnd Reinstall::failed(const Notice &notice)
{
    if (m_view.isStopped())
        return {JobEnd::Stopped};
    tell(notice);
    return {JobEnd::Failed};
}

/// Tells how the procedure ended, and with it what the user has to know of it: that the player does not start as it is,
/// where the songs are when they may be on the PC alone, and where the playlists are that went with the old system.
void Reinstall::tell(Notice notice)
{
    m_endTold = true;
    QStringList more;
    if (!notice.informativeText.isEmpty())
        more.append(notice.informativeText);
    if (m_systemLost && notice.text != unexpectedEnd())
        more.append(tr("Provare a reinstallare il sistema operativo."));
    if (m_songsOnPcAlone)
        more.append(tr("La copia di sicurezza delle basi si trova in:\n%1").arg(QDir::toNativeSeparators(m_backup)));
    if (m_systemReplaced && !m_keptPlaylists.isEmpty())
        more.append(whereThePlaylistsAre());
    notice.informativeText = more.join(QLatin1Char('\n'));
    m_view.hideProgress();
    m_view.tell(notice);
}

/// What cannot stay unsaid after a STOP: else the user is left with a player that does not start, or does not know
/// where the songs or the playlists are.
void Reinstall::tellStopped()
{
    if (m_songsOnPcAlone)
        tell({Notice::Information, operationText(TEXT_RESTORE_ERROR_TITLE), operationText(TEXT_RESTORE_ERROR)});
    else if (m_systemLost)
        tell({Notice::Information, tr("ERRORE"), unexpectedEnd()});
    else if (m_songs == Songs::Stay && m_systemReplaced && !m_keptPlaylists.isEmpty()) {
        m_view.hideProgress();
        m_view.tell({Notice::Information, operationText(TEXT_INSTALLED_TITLE), whereThePlaylistsAre()});
    }
}

/// What never reached the disk is no system. Not twice: after that the player may go.
void Reinstall::flushNewSystem()
{
    if (m_systemReplaced && !m_systemLost && !m_systemFlushed)
        m_systemLost = !m_player.flush();
}

Notice Reinstall::formatError()
{
    return {Notice::Information, operationText(TEXT_FORMAT_ERROR_TITLE), operationText(TEXT_FORMAT_ERROR)};
}

QString Reinstall::unexpectedEnd()
{
    return tr("Procedura terminata in modo inaspettato.\nProvare a reinstallare il sistema operativo.");
}

QString Reinstall::whereThePlaylistsAre() const
{
    return tr("Le playlist che erano su Corvin si trovano in:\n%1").arg(QDir::toNativeSeparators(m_keptPlaylists));
}
