#include "optimizer/freename.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <initializer_list>

namespace {

QStringList names(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list.append(QString::fromUtf8(text));
    return list;
}

} // namespace

class TestFreeName : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void rootFileGetsFreeName_data();
    void rootFileGetsFreeName();
    void imageOrVideoGetsFreeName_data();
    void imageOrVideoGetsFreeName();
    void songGetsFreeBase_data();
    void songGetsFreeBase();
    void oldFolderGetsFreeName_data();
    void oldFolderGetsFreeName();
    void folderOfTheNameAlsoTakesIt();
    void missingFolderHasEveryNameFree();
    void hundredTakenNamesArePassed();
    void nameTooLongForTheDiskEndsTheSearch();

private:
    void take(const QStringList &taken);
    QString folder() const { return m_dir->path(); }
    QString in(const QString &name) const { return folder() + QLatin1Char('/') + name; }

    QScopedPointer<QTemporaryDir> m_dir;
};

void TestFreeName::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
}

void TestFreeName::take(const QStringList &taken)
{
    for (const QString &name : taken)
        QVERIFY(QFile(in(name)).open(QIODevice::WriteOnly));
}

void TestFreeName::rootFileGetsFreeName_data()
{
    QTest::addColumn<QStringList>("taken");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("target");
    QTest::newRow("free") << QStringList() << "a.mid"
                          << "a.mid";
    QTest::newRow("taken") << names({"a.mid"}) << "a.mid"
                           << "a_1.mid";
    QTest::newRow("taken with 1") << names({"a.mid", "a_1.mid"}) << "a.mid"
                                  << "a_2.mid";
    QTest::newRow("gap is used") << names({"a.mid", "a_2.mid"}) << "a.mid"
                                 << "a_1.mid";
    QTest::newRow("number alone is taken") << names({"a_1.mid"}) << "a.mid"
                                           << "a.mid";
    QTest::newRow("other suffix does not matter") << names({"a.mp3"}) << "a.mid"
                                                  << "a.mid";
    QTest::newRow("several dots: the last parts") << names({"a.b.mid"}) << "a.b.mid"
                                                  << "a.b_1.mid";
    QTest::newRow("no suffix, free") << QStringList() << "readme"
                                     << "readme";
    QTest::newRow("no suffix gets a dot") << names({"readme"}) << "readme"
                                          << "readme_1.";
    QTest::newRow("no suffix, dot taken") << names({"readme", "readme_1."}) << "readme"
                                          << "readme_2.";
    QTest::newRow("percent signs") << names({"100%1.mid"}) << "100%1.mid"
                                   << "100%1_1.mid";
#ifdef Q_OS_UNIX
    QTest::newRow("blanks and quotes") << names({"it's \"a\".mid"}) << "it's \"a\".mid"
                                       << "it's \"a\"_1.mid";
#endif
    QTest::newRow("nothing before the dot") << names({".mid"}) << ".mid"
                                            << "_1.mid";
}

void TestFreeName::rootFileGetsFreeName()
{
    QFETCH(QStringList, taken);
    QFETCH(QString, name);
    QFETCH(QString, target);
    take(taken);
    QCOMPARE(freeRootFileTarget(folder(), name), in(target));
}

void TestFreeName::imageOrVideoGetsFreeName_data()
{
    QTest::addColumn<QStringList>("taken");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("target");
    QTest::newRow("free") << QStringList() << "cover.jpg"
                          << "cover.jpg";
    QTest::newRow("taken") << names({"cover.jpg"}) << "cover.jpg"
                           << "cover_1.jpg";
    QTest::newRow("taken with 1") << names({"cover.jpg", "cover_1.jpg"}) << "cover.jpg"
                                  << "cover_2.jpg";
    QTest::newRow("several dots: the first parts") << names({"photo.2019.jpg"}) << "photo.2019.jpg"
                                                   << "photo_1.2019.jpg";
    QTest::newRow("percent signs") << names({"%1.%2.avi"}) << "%1.%2.avi"
                                   << "%1_1.%2.avi";
}

void TestFreeName::imageOrVideoGetsFreeName()
{
    QFETCH(QStringList, taken);
    QFETCH(QString, name);
    QFETCH(QString, target);
    take(taken);
    QCOMPARE(freeMediaTarget(folder(), name), in(target));
}

void TestFreeName::songGetsFreeBase_data()
{
    QTest::addColumn<QStringList>("taken");
    QTest::addColumn<QString>("base");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("target");
    QTest::newRow("free") << QStringList() << "Song"
                          << "mid"
                          << "Song";
    QTest::newRow("taken") << names({"Song.mid"}) << "Song"
                           << "mid"
                           << "Song(1)";
    QTest::newRow("taken with 1") << names({"Song.mid", "Song(1).mid"}) << "Song"
                                  << "mid"
                                  << "Song(2)";
    QTest::newRow("companion alone does not take it") << names({"Song.dat"}) << "Song"
                                                      << "mid"
                                                      << "Song";
    QTest::newRow("base with dots") << names({"a.b.mp3"}) << "a.b"
                                    << "mp3"
                                    << "a.b(1)";
    QTest::newRow("base with a number") << names({"Song(1).mid"}) << "Song(1)"
                                        << "mid"
                                        << "Song(1)(1)";
    QTest::newRow("percent signs") << names({"%1.mid"}) << "%1"
                                   << "mid"
                                   << "%1(1)";
}

void TestFreeName::songGetsFreeBase()
{
    QFETCH(QStringList, taken);
    QFETCH(QString, base);
    QFETCH(QString, suffix);
    QFETCH(QString, target);
    take(taken);
    QCOMPARE(freeSplitBase(folder(), base, suffix), in(target));
}

void TestFreeName::oldFolderGetsFreeName_data()
{
    QTest::addColumn<QStringList>("taken");
    QTest::addColumn<QString>("target");
    QTest::newRow("free") << QStringList() << "X.old";
    QTest::newRow("one taken") << names({"X.old"}) << "X.old1";
    QTest::newRow("two taken") << names({"X.old", "X.old1"}) << "X.old12";
    QTest::newRow("three taken") << names({"X.old", "X.old1", "X.old12"}) << "X.old123";
    QTest::newRow("a number that is not tried") << names({"X.old", "X.old2"}) << "X.old1";
    QTest::newRow("only a later one taken") << names({"X.old1"}) << "X.old";
}

void TestFreeName::oldFolderGetsFreeName()
{
    QFETCH(QStringList, taken);
    QFETCH(QString, target);
    for (const QString &name : taken)
        QVERIFY(QDir().mkdir(in(name)));
    QCOMPARE(freeOldFolderName(in(QStringLiteral("X"))), in(target));
    // A file takes a name as well as a folder does.
    for (const QString &name : taken)
        QVERIFY(QDir().rmdir(in(name)));
    take(taken);
    QCOMPARE(freeOldFolderName(in(QStringLiteral("X"))), in(target));
}

void TestFreeName::folderOfTheNameAlsoTakesIt()
{
    QVERIFY(QDir().mkdir(in(QStringLiteral("a.mid"))));
    QCOMPARE(freeRootFileTarget(folder(), QStringLiteral("a.mid")), in(QStringLiteral("a_1.mid")));
    QCOMPARE(freeMediaTarget(folder(), QStringLiteral("a.mid")), in(QStringLiteral("a_1.mid")));
    QCOMPARE(freeSplitBase(folder(), QStringLiteral("a"), QStringLiteral("mid")), in(QStringLiteral("a(1)")));
}

void TestFreeName::missingFolderHasEveryNameFree()
{
    const QString missing = in(QStringLiteral("missing"));
    QCOMPARE(freeRootFileTarget(missing, QStringLiteral("a.mid")), missing + QStringLiteral("/a.mid"));
    QCOMPARE(freeMediaTarget(missing, QStringLiteral("a.jpg")), missing + QStringLiteral("/a.jpg"));
    QCOMPARE(freeSplitBase(missing, QStringLiteral("a"), QStringLiteral("mid")), missing + QStringLiteral("/a"));
}

void TestFreeName::hundredTakenNamesArePassed()
{
    QStringList taken{QStringLiteral("a.mid")};
    for (int i = 1; i <= 100; ++i)
        taken << QStringLiteral("a_%1.mid").arg(i) << QStringLiteral("a(%1).mid").arg(i);
    take(taken);
    QCOMPARE(freeRootFileTarget(folder(), QStringLiteral("a.mid")), in(QStringLiteral("a_101.mid")));
    QCOMPARE(freeMediaTarget(folder(), QStringLiteral("a.mid")), in(QStringLiteral("a_101.mid")));
    QCOMPARE(freeSplitBase(folder(), QStringLiteral("a"), QStringLiteral("mid")), in(QStringLiteral("a(101)")));
}

void TestFreeName::nameTooLongForTheDiskEndsTheSearch()
{
    constexpr int kLongestName = 255;
    const QString longest = QString(kLongestName - 4, QLatin1Char('a')) + QStringLiteral(".mid");
    take({longest});
    QVERIFY(freeRootFileTarget(folder(), longest).endsWith(QStringLiteral("a_1.mid")));
    const QString folderName(kLongestName - 4, QLatin1Char('b'));
    QVERIFY(QDir().mkdir(in(folderName + QStringLiteral(".old"))));
    QVERIFY(freeOldFolderName(in(folderName)).endsWith(QStringLiteral("b.old1")));
}

QTEST_GUILESS_MAIN(TestFreeName)
#include "tst_freename.moc"
