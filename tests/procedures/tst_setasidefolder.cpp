#include "procedures/setasidefolder.h"

#include "support/files.h"
#include "support/platform.h"
#include "support/testing.h"

namespace {

/// An old backup, and a file beside it.
struct Old : PcFolder
{
    explicit Old(const QString &name = "backup"_s) : folder(path(name)) {
        addFile(name + "/a.mid"_s, "old");
        addFile(name + "/sub/.hidden"_s, "old");
        addFile("beside.txt"_s);
        before = contentBelow(path());
    }
    QMap<QString, QByteArray> now() const { return contentBelow(path()); }
    const QString folder;
    QMap<QString, QByteArray> before;
};

} // namespace

class TestSetAsideFolder : public QObject
{
    Q_OBJECT

private slots:
    void contentComesBackUnlessItIsDropped_data() {
        columns<QString>("name");
        row("usual name", "backup"_s);
        row("longest name", QString(255, QLatin1Char('n')));
        row("longest name of long characters", QString(85, QChar(0x6b4c)));
        row("name that is cut at a blank", QString(59, QLatin1Char('n')) + " and more"_s);
    }
    void contentComesBackUnlessItIsDropped() {
        QFETCH(QString, name);
        const Old old(name);
        {
            const SetAsideFolder aside(old.folder);
            QVERIFY(aside.isGood());
            QVERIFY(QDir(old.folder).isEmpty());
        }
        QCOMPARE(old.now(), old.before);
        // Nothing else is left beside it.
        QCOMPARE(QDir(old.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 2);
        {
            SetAsideFolder aside(old.folder);
            QVERIFY(aside.drop());
        }
        QCOMPARE(old.files(), words("beside.txt"));
        QVERIFY(QDir(old.folder).isEmpty());
    }

    void killedRunLeavesANameThatSaysWhatItIs() {
        Old old;
        old.addFile("backup (copia precedente)/from before.mid"_s);
        const SetAsideFolder aside(old.folder);
        QVERIFY(aside.isGood());
        QCOMPARE(old.files(),
                 QStringList({"backup (copia precedente) 2/a.mid"_s, "backup (copia precedente) 2/sub/.hidden"_s,
                              "backup (copia precedente)/from before.mid"_s, "beside.txt"_s}));
    }

    void folderThatIsNotThereIsMade() {
        const Old old;
        SetAsideFolder aside(old.path("new/"_s));
        QVERIFY(aside.isGood() && aside.drop());
        QVERIFY(QDir(old.path("new"_s)).isEmpty());
        QVERIFY(!SetAsideFolder(old.path("none/new"_s)).isGood());
        QCOMPARE(old.now(), old.before);
    }

    void newFilesAreNotLostForTheOldOnes() {
        const Old old;
        {
            const SetAsideFolder aside(old.folder);
            putFile(old.folder + "/somebody's.txt"_s);
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("is kept as"_s));
        }
        QCOMPARE(old.files(),
                 QStringList({"backup (copia precedente)/a.mid"_s, "backup (copia precedente)/sub/.hidden"_s,
                              "backup/somebody's.txt"_s, "beside.txt"_s}));
    }

    void linkIsSetAsideAndNotWhatItLeadsTo() {
        SKIP_ON_WINDOWS("links are files of another kind here");
        const Old old;
        const QString link = old.path("link"_s);
        QVERIFY(QFile::link(old.folder, link));
        { const SetAsideFolder aside(link); }
        QCOMPARE(QFile::symLinkTarget(link), old.folder);
        {
            SetAsideFolder aside(link);
            QVERIFY(aside.drop());
        }
        QVERIFY(!QFileInfo(link).isSymLink() && QDir(link).isEmpty());
        QCOMPARE(old.now(), old.before);
    }
};

QTEST_GUILESS_MAIN(TestSetAsideFolder)
#include "tst_setasidefolder.moc"
