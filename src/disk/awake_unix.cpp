#include "awake.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>

namespace {

/// Asks the login manager, which answers with an open file: it lets the PC sleep again when that is closed.
QDBusPendingCall askLoginManager()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
    call.setArguments({QStringLiteral("sleep:idle"), QStringLiteral("Corvin4 Manager"),
                       QStringLiteral("Working on the player"), QStringLiteral("block")});
    // Nobody is to be asked for a password for this, and no login manager to be started.
    call.setAutoStartService(false);
    call.setInteractiveAuthorizationAllowed(false);
    return QDBusConnection::systemBus().asyncCall(call);
}

} // namespace

/// The answer, whenever it comes, holds the file: it is closed with the last copy of it.
struct StayAwake::Hold
{
    QDBusPendingCall answer = askLoginManager();
};

StayAwake::StayAwake() : m_hold(std::make_unique<Hold>()) {}

StayAwake::~StayAwake() = default;
