#include "disk/worklock.h"

#include "disk/datafolder.h"

#include "support/files.h"
#include "support/limits.h"
#include "support/platform.h"
#include "support/testing.h"

#ifdef Q_OS_UNIX
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace {

/// The program's data in a folder of the test's own.
struct Data
{
    Data() { setDataFolder(folder.path("data"_s)); }
    ~Data() { setDataFolder(QString()); }
    QString file() const { return folder.path("data/work.lock"_s); }
    PcFolder folder;
};

#ifdef Q_OS_UNIX
/// Another process that takes the lock, says whether it could, and ends as this one says: killed, or not before told.
class OtherProgram
{
public:
    OtherProgram() {
        if (::pipe(m_answer) != 0)
            qFatal("no pipe");
        m_process = ::fork();
        if (m_process == 0) {
            const WorkLock lock;
            const char taken = lock.isTaken() ? '1' : '0';
            ::_exit(::write(m_answer[1], &taken, 1) == 1 ? ::pause() : 1);
        }
        char taken = 0;
        m_taken = ::read(m_answer[0], &taken, 1) == 1 && taken == '1';
    }
    ~OtherProgram() {
        kill();
        ::close(m_answer[0]);
        ::close(m_answer[1]);
    }
    OtherProgram(const OtherProgram &) = delete;
    OtherProgram &operator=(const OtherProgram &) = delete;
    bool hasTaken() const { return m_taken; }
    void kill() {
        if (m_process > 0) {
            ::kill(m_process, SIGKILL);
            ::waitpid(m_process, nullptr, 0);
        }
        m_process = 0;
    }

private:
    int m_answer[2] = {};
    pid_t m_process = 0;
    bool m_taken = false;
};
#endif

} // namespace

class TestWorkLock : public QObject
{
    Q_OBJECT

private slots:
    void oneJobWorksAtATime() {
        const Data data;
        auto first = std::make_unique<WorkLock>();
        QVERIFY(first->isTaken());
        QVERIFY(!WorkLock().isTaken());
        first.reset();
        QVERIFY(WorkLock().isTaken());
        QVERIFY(!QFileInfo::exists(data.file()));
    }

    void jobOfAnotherProgramKeepsThisOneOut() {
#ifdef Q_OS_UNIX
        const Data data;
        const OtherProgram other;
        QVERIFY(other.hasTaken());
        QVERIFY(!WorkLock().isTaken());
#else
        QSKIP("No second process is made here");
#endif
    }

    void whatAKilledProgramLeftIsTakenOver() {
#ifdef Q_OS_UNIX
        const Data data;
        OtherProgram other;
        QVERIFY(other.hasTaken());
        other.kill();
        QVERIFY(QFileInfo::exists(data.file()));
        QVERIFY(WorkLock().isTaken());
#else
        QSKIP("No second process is made here");
#endif
    }

    void fileWithoutAnOwnerIsTakenOver_data() {
        columns<QByteArray>("content");
        row("empty after a power cut", QByteArray());
        row("from before the PC had its name", QByteArray("1\nCorvin4Manager\nold-name\n"));
    }
    void fileWithoutAnOwnerIsTakenOver() {
        QFETCH(QByteArray, content);
        const Data data;
        QFile file(putFile(data.file(), content));
        // A fresh one may be another program's that is just being written.
        QVERIFY(!WorkLock().isTaken());
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-60), QFileDevice::FileModificationTime));
        file.close();
        QVERIFY(WorkLock().isTaken());
    }

    void folderThatCannotBeWrittenForbidsNoWork() {
#ifdef Q_OS_UNIX
        PcFolder folder;
        folder.addFile("data"_s, "a file where the folder should be");
        setDataFolder(folder.path("data"_s));
        const bool withoutFolder = WorkLock().isTaken();
        setDataFolder("/proc/self"_s);
        const bool unwritable = WorkLock().isTaken();
        setDataFolder(QString());
        QVERIFY(withoutFolder);
        QVERIFY(unwritable);
#else
        QSKIP("Every folder can be written here");
#endif
    }
};

QTEST_GUILESS_MAIN(TestWorkLock)
#include "tst_worklock.moc"
