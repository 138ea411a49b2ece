#include "playermodel.h"

#include "songfactory/songfactory.h"
#include "support/exfatvolume.h"
#include "support/files.h"

namespace {

constexpr int kBigFolder = 1200;
/// What the optimisation rewrites, since it names songs of the root.
const QString kRewritten = "System/Playlist/p0.pls"_s;

int songCount() {
    const int wanted = qEnvironmentVariableIntValue("CORVIN_FAULT_SONGS");
    return wanted > 0 ? wanted : 2000;
}

void fill(const ExFatVolume &volume) {
    const auto put = [&volume](const QString &path, const QByteArray &content) { putFile(volume.path(path), content); };
    put(".windows-label"_s, "CORVIN4\n");
    for (const QString &file : kWholeSystem + words("System/old.exe CorvinUpdate/old.c CorvinUpdate/old.d"))
        put(file, "old");
    for (int i = 0; i < songCount(); ++i) {
        const QString number = "%1"_s.arg(i, 5, 10, QLatin1Char('0'));
        const QString folder = i < kBigFolder ? "My Songs/Grandi/"_s : "My Songs/Vari/"_s;
        put(folder + number + ".mid"_s, titledSong(QChar('A' + i % 26) + " song "_s + number));
        if (i % 100 == 0)
            put(folder + number + ".cdg"_s, "words of "_s.toUtf8() + number.toUtf8());
    }
    for (int i = 0; i < 10; ++i) {
        put("loose%1.mid"_s.arg(i), titledSong("Loose %1"_s.arg(i)));
        put("My Songs/photo%1.jpg"_s.arg(i), "photo " + QByteArray::number(i));
    }
    for (const QString &file :
         {"My Songs/Effects/applauso.mp3"_s, "My Songs/Bridges/intro.mid"_s, "My Songs/.nascosta.mid"_s,
          "My Songs/senza punto"_s, "My Songs/rotta.mid"_s, "My Songs/film.avi"_s, "My Songs/Grandi/testo.txt"_s})
        put(file, "the user's own " + file.toUtf8());
    for (int list = 0; list < 3; ++list) {
        QByteArray lines;
        for (int i = 0; i < 10; ++i)
            lines += list == 0 ? "\\sdmemory\\loose%1.mid^1^2\r\n"_s.arg(i).toUtf8()
                               : "\\sdmemory\\My Songs\\film %1 %2.mid^1^2\r\n"_s.arg(list).arg(i).toUtf8();
        put("System/Playlist/p%1.pls"_s.arg(list), lines);
    }
}

} // namespace

QByteArray titledSong(const QString &title) {
    SongInfo info;
    info.title = title;
    return SongFactory::midi(info);
}

bool isPlaylist(const QString &path) {
    return path.startsWith("System/Playlist/"_s, Qt::CaseInsensitive);
}

bool isSystems(const QString &path) {
    const QString folder = path.section(QLatin1Char('/'), 0, 0);
    return (words("System Bridges Effects CorvinUpdate AUTOEXEC.BAT CorvinImportDB.sql").contains(folder) &&
            !isPlaylist(path)) ||
           path.compare(kRewritten, Qt::CaseInsensitive) == 0;
}

PlayerModel::PlayerModel() {
    ExFatVolume volume(96);
    fill(volume);
    content = contentBelow(volume.root());
    if (!volume.unmount() || !QFile::copy(volume.image(), image))
        qFatal("No model of a player: %s", qPrintable(volume.error()));
}

const PlayerModel &playerModel() {
    static const PlayerModel made;
    return made;
}
