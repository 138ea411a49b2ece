#include "support/files.h"
#include "support/testing.h"

namespace {

struct Room
{
    const char *source; ///< a file of the room
    const char *header; ///< one that it shows to others
    const char *uses;   ///< the rooms it may look into
};

const QMap<QString, Room> kRooms = {
    {"app"_s,
     {"app/startup.cpp", "app/mainwindow.h", "optimizer transfer procedures pages device disk app/shared resources"}},
    {"optimizer"_s, {"optimizer/playlist.cpp", "optimizer/ottimizza.h", "songfiles device disk app/shared"}},
    {"transfer"_s, {"transfer/transfercopy.cpp", "transfer/transfer.h", "device disk app/shared"}},
    {"procedures"_s, {"procedures/reinstall.cpp", "procedures/job.h", "device disk"}},
    {"pages"_s, {"pages/connect.cpp", "pages/connect.h", "device disk app/shared"}},
    {"device"_s, {"device/player.cpp", "device/player.h", "disk"}},
    {"songfiles"_s, {"songfiles/lzhuff.cpp", "songfiles/metasong.h", ""}},
    {"disk"_s, {"disk/tree.cpp", "disk/tree.h", ""}},
    {"app/shared"_s, {"app/shared/questionbox.cpp", "app/shared/styles.h", ""}},
    {"resources"_s, {"resources/resources.cpp", "resources/resources.h", ""}},
};

/// The words with which the build compiles a source, without the file itself and what is made of it.
QStringList compilerWords(const QString &source) {
    const QString path = QStringLiteral(SOURCE_FOLDER "/src/") + source;
    const QByteArray commands = contentOf(QStringLiteral(BUILD_FOLDER "/compile_commands.json"));
    const QJsonArray entries = QJsonDocument::fromJson(commands).array();
    for (const QJsonValue &entry : entries) {
        const QJsonObject command = entry.toObject();
        if (command.value("file"_s).toString() != path)
            continue;
        QStringList found = QProcess::splitCommand(command.value("command"_s).toString());
        if (found.first().endsWith("ccache"_s))
            found.removeFirst();
        return found.mid(0, found.indexOf("-o"_s));
    }
    return {};
}

/// What the compiler says when a file of @p room includes @p header; empty when it has nothing to say.
QString complaint(const Room &room, const QString &header) {
    QProcess compiler;
    QStringList arguments = compilerWords(QLatin1String(room.source));
    if (arguments.isEmpty())
        return "the build does not compile "_s + QLatin1String(room.source);
    compiler.setProgram(arguments.takeFirst());
    arguments.removeAll("-MD"_s);
    compiler.setArguments(arguments << words("-E -x c++ -o /dev/null -"));
    compiler.setWorkingDirectory(QStringLiteral(BUILD_FOLDER));
    compiler.start();
    compiler.write("#include \"" + header.toUtf8() + "\"\n");
    compiler.closeWriteChannel();
    if (!compiler.waitForFinished() || compiler.exitCode() != 0)
        return "refused: "_s + QString::fromLocal8Bit(compiler.readAllStandardError());
    return {};
}

} // namespace

/// Which rooms may look into which: every include of a room that is not named in CMake is one that does not compile.
class TestRooms : public QObject
{
    Q_OBJECT

private slots:
    void roomSeesOnlyTheRoomsItNames_data() {
        columns<QString>("room");
        for (auto room = kRooms.cbegin(); room != kRooms.cend(); ++room)
            row(qPrintable(room.key()), room.key());
    }

    void roomSeesOnlyTheRoomsItNames() {
        QFETCH(QString, room);
        const Room &looking = kRooms[room];
        for (auto other = kRooms.cbegin(); other != kRooms.cend(); ++other) {
            const QString said = complaint(looking, QLatin1String(other->header));
            const bool allowed = other.key() == room || words(looking.uses).contains(other.key());
            if (allowed)
                QVERIFY2(said.isEmpty(), qPrintable(other.key() + "\n"_s + said));
            else
                QVERIFY2(said.startsWith("refused"_s) && said.contains(QLatin1String(other->header)),
                         qPrintable(room + " sees "_s + other.key() + "\n"_s + said));
        }
    }
};

QTEST_GUILESS_MAIN(TestRooms)
#include "tst_rooms.moc"
