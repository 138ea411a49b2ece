#include "disk/awake.h"

#include "support/files.h"
#include "support/testing.h"

#include <QDBusConnection>
#include <QDBusUnixFileDescriptor>

#include <fcntl.h>
#include <unistd.h>

/// Plays the login manager: gives out an open file, and knows when it has been closed.
class LoginManager : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

public:
    ~LoginManager() override { ::close(m_seen); }
    QStringList asked;

    /// Whether somebody holds the file that was given out last.
    bool isHeld() const {
        char byte = 0;
        return ::read(m_seen, &byte, 1) != 0;
    }

public slots:
    QDBusUnixFileDescriptor Inhibit(const QString &what, const QString &, const QString &, const QString &mode) {
        asked.append(what + " "_s + mode);
        int ends[2] = {};
        if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
            qFatal("no pipe");
        ::close(m_seen);
        m_seen = ends[0];
        const QDBusUnixFileDescriptor given(ends[1]);
        ::close(ends[1]);
        return given;
    }

private:
    int m_seen = -1;
};

/// In its order: the system's bus is looked for once in a process.
class TestAwake : public QObject
{
    Q_OBJECT

private slots:
    void thePcStaysAwakeWhileAJobWorks() {
        if (QStandardPaths::findExecutable("dbus-daemon"_s).isEmpty())
            QSKIP("dbus-daemon is not installed");
        QProcess bus;
        bus.start("dbus-daemon"_s, words("--session --nofork --print-address"));
        QVERIFY(bus.waitForReadyRead());
        const QString address = QString::fromUtf8(bus.readLine()).trimmed();
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", address.toUtf8());
        LoginManager manager;
        QDBusConnection connection = QDBusConnection::connectToBus(address, "manager"_s);
        QVERIFY(connection.registerObject("/org/freedesktop/login1"_s, &manager, QDBusConnection::ExportAllSlots));
        QVERIFY(connection.registerService("org.freedesktop.login1"_s));

        auto awake = std::make_unique<StayAwake>();
        QTRY_COMPARE(manager.asked, QStringList("sleep:idle block"_s));
        QVERIFY(manager.isHeld());
        awake.reset();
        QTRY_VERIFY(!manager.isHeld());

        // A job that has ended before the answer came holds nothing either.
        { const StayAwake shortJob; }
        QTRY_COMPARE(manager.asked.size(), 2);
        QTRY_VERIFY(!manager.isHeld());

        bus.terminate();
        QVERIFY(bus.waitForFinished());
        // Without a bus there is nothing to ask, and nothing waits.
        QElapsedTimer clock;
        clock.start();
        const StayAwake alone;
        QVERIFY(clock.elapsed() < 1000);
    }
};

QTEST_GUILESS_MAIN(TestAwake)
#include "tst_awake.moc"
