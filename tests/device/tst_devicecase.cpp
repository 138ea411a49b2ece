#include "device/devicecase.h"

#include "support/files.h"
#include "support/platform.h"
#include "support/testing.h"

class TestDeviceCase : public QObject
{
    Q_OBJECT

    PcFolder m_folder;

    QString root() const { return m_folder.path() + "/"_s; }
    /// Whether the file system keeps these two apart.
    bool makeTwo(const QString &first, const QString &second) const {
        return QDir(root()).mkdir(first) && QDir(root()).mkdir(second);
    }

private slots:
    void cleanup() { QVERIFY(QDir(root()).removeRecursively() && QDir().mkpath(root())); }

    void partsAreSpelledAsOnTheDisk_data() {
        columns<QString, QString, QString>("existing", "asked", "resolved");
        row("as written", "System/playlist"_s, "System/playlist"_s, "System/playlist"_s);
        row("last part differs", "System/Playlist"_s, "System/playlist"_s, "System/Playlist"_s);
        row("all parts differ", "SYSTEM/PLAYLIST"_s, "system/playlist"_s, "SYSTEM/PLAYLIST"_s);
        row("hidden", ".Cache"_s, ".cache"_s, ".Cache"_s);
        row("accents", "CITTÀ"_s, "città"_s, "CITTÀ"_s);
        row("nothing there", "Other"_s, "system/playlist"_s, "system/playlist"_s);
        row("half there", "SYSTEM"_s, "System/playlist"_s, "SYSTEM/playlist"_s);
        row("longer name is another", "Systems"_s, "system"_s, "system"_s);
        row("doubled slashes", "System/Playlist"_s, "/system//playlist/"_s, "System/Playlist"_s);
        row("nothing asked", "System"_s, ""_s, ""_s);
    }

    void partsAreSpelledAsOnTheDisk() {
        QFETCH(QString, existing);
        QFETCH(QString, asked);
        QFETCH(QString, resolved);
        QVERIFY(QDir().mkpath(root() + existing));
        if (QFileInfo::exists(root() + existing.toLower()) && QFileInfo::exists(root() + existing.toUpper()))
            QSKIP("This file system ignores case");
        QCOMPARE(resolveDevicePath(root(), asked), root() + resolved);
    }

    void exactSpellingWins() {
        if (!makeTwo("SYSTEM"_s, "system"_s))
            QSKIP("This file system ignores case");
        QCOMPARE(resolveDevicePath(root(), "system"_s), root() + "system"_s);
        QCOMPARE(resolveDevicePath(root(), "SYSTEM"_s), root() + "SYSTEM"_s);
    }

    void firstInSortedOrderOfSeveralIsTaken() {
        if (!makeTwo("system"_s, "SYSTEM"_s))
            QSKIP("This file system ignores case");
        QCOMPARE(resolveDevicePath(root(), "SySteM"_s), root() + "SYSTEM"_s);
    }

    void linkToNowhereIsThere() {
        SKIP_ON_WINDOWS("links are files of another kind here");
        if (!QFile::link(root() + "none"_s, root() + "system"_s))
            QSKIP("No links here");
        QVERIFY(QDir().mkdir(root() + "SYSTEM"_s));
        QCOMPARE(resolveDevicePath(root(), "system"_s), root() + "system"_s);
    }

    void rootIsLeftAsItIs() {
        SKIP_ON_WINDOWS("the file system ignores case here");
        QVERIFY(QDir().mkdir(root() + "SYSTEM"_s));
        // Without its closing slash too.
        QCOMPARE(resolveDevicePath(m_folder.path(), "system"_s), root() + "SYSTEM"_s);
        QCOMPARE(resolveDevicePath("/none/there/"_s, "system"_s), "/none/there/system"_s);
    }

    void emptyRootGivesTheRelativePath() { QCOMPARE(resolveDevicePath(QString(), "system"_s), "system"_s); }
};

QTEST_GUILESS_MAIN(TestDeviceCase)
#include "tst_devicecase.moc"
