#include "jobnotices.h"

#include "operationtexts.h"

#include <QCoreApplication>

namespace {

struct Notices
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow)
};

} // namespace

Player lookForPlayer(JobView &view)
{
    view.showStatus(operationText(TEXT_LOOKING_FOR_DEVICE));
    return lookForPlayerAgain(view);
}

Player lookForPlayerAgain(JobView &view)
{
    Player player = Player::find();
    if (!player.isFound())
        view.tell(playerGoneNotice());
    return player;
}

Notice playerGoneNotice()
{
    return {Notice::Information, operationText(TEXT_DEVICE_NOT_FOUND_TITLE), operationText(TEXT_DEVICE_NOT_FOUND)};
}

JobQuestion siOrNo(const QString &title, const QString &text)
{
    return {title, text, {{JobAnswer::Yes, Notices::tr("Si")}, {JobAnswer::No, Notices::tr("No")}}};
}

void tellEndOfSongCopy(JobView &view, const JobEnd &end)
{
    // A bar at its beginning and a STOP beside "done" would say that something is still to come.
    view.hideProgress();
    // Deliberate: a failed restore has the texts of a failed backup.
    if (!end.isDone())
        view.tell({Notice::Information, operationText(TEXT_BACKUP_ERROR_TITLE), operationText(TEXT_BACKUP_ERROR)});
    else if (!view.isStopped())
        view.tell({Notice::Information, Notices::tr("Fatto"), Notices::tr("Fatto")});
}

Notice errorNotice()
{
    return {Notice::Information, Notices::tr("ERRORE"), Notices::tr("ERRORE")};
}

/// Deliberate: the same text whatever the code, and a blank before the comma of the title.
void tellDownloadError(JobView &view, DownloadFault fault)
{
    const int code = static_cast<int>(fault);
    // Nothing is being downloaded any more: no full bar, no STOP beside the box.
    view.hideProgress();
    view.tell({Notice::Critical, operationText(TEXT_DOWNLOAD_ERROR_TITLE) + Notices::tr(", Cod %1").arg(code),
               operationText(TEXT_DOWNLOAD_ERROR)});
}
