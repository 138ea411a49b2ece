#include "archive.h"

#include "playerdisk.h"
#include "playerpaths.h"
#include "titles.h"

namespace {

const QString kMySongs = QStringLiteral("My Songs");
const QString kMain = QStringLiteral("My Songs/Karaoke Italia");

constexpr int kLargeArchive = 5000;
constexpr int kOverlongStem = 116; ///< 120 bytes with ".mid"

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QString overlong(const char *beginning)
{
    const QString filling = text(" e il nome non finisce mai");
    QString stem = text(beginning);
    for (int i = 0; stem.toUtf8().size() < kOverlongStem; ++i)
        stem.append(filling.at(i % filling.size()));
    return stem;
}

QStringList companions()
{
    return {QStringLiteral("cdg"), QStringLiteral("dat"), QStringLiteral("bak")};
}

void addSongsOutsideTheDatabase(PlayerDisk &disk)
{
    const QString bridges = QStringLiteral("Bridges");
    const QString effects = QStringLiteral("Effects/Applausi");
    for (const char *title : {"Ponte uno", "Ponte due"})
        disk.addCompanions(disk.addSong(bridges, Recipe::Midi0, text(title)), {QStringLiteral("dat")});
    disk.addSong(effects, Recipe::Mp3NoTag, text("Applauso lungo"));
    disk.addSong(effects, Recipe::Mf5, text("Rullo"), QString(), QStringLiteral("MF5"));
}

/// Sub-folders that are there before the big folder is split: an unlike one, one that bears the name of a place for
/// songs and holds a song of a name that comes again, and a neighbour that bears the name of the old folder.
void addSubFolders(PlayerDisk &disk)
{
    constexpr int kChristmasSongs = 20;
    for (int i = 0; i < kChristmasSongs; ++i)
        disk.addSomeCompanions(disk.addRandomSong(kMain + text("/Natale è qui"), Titles::random(disk.random())), 20);
    const QString taken = text("Alba presa");
    disk.addSong(kMain + text("/A0"), Recipe::Midi1, text("Alba che c'era"), taken);
    disk.addCompanions(disk.addSong(kMain, Recipe::Midi0, text("Alba che arriva"), taken), companions());
    disk.addSong(kMain + text(".old"), Recipe::Mf3, text("Vicino di casa"));
}

void fillBigFolder(PlayerDisk &disk, const QString &folder, int songs, int companionChance)
{
    const QStringList kinds = Titles::everyKindOfBeginning();
    for (int i = 0; i < songs; ++i) {
        const QString title = i < kinds.size() ? kinds.at(i) : Titles::random(disk.random());
        disk.addSomeCompanions(disk.addRandomSong(folder, title), companionChance);
    }
}

} // namespace

void addRootFiles(PlayerDisk &disk)
{
    const QString root;
    disk.addSong(root, Recipe::Midi0, text("Ballata della sera"), text("Ballata della sera"));
    disk.addSong(root, Recipe::Mf4, text("Luna d'argento"), text("Luna d'argento"), QStringLiteral("mf4"));
    disk.addSong(kMySongs, Recipe::Mf4, text("Luna d'argento"), text("Luna d'argento"), QStringLiteral("mf4"));
    disk.addSong(kMySongs, Recipe::Mf4, text("Luna d'argento"), text("Luna d'argento_1"), QStringLiteral("mf4"));
    disk.addSong(root, Recipe::Mp3Tag24Utf8, text("Perché no"), text("Perché no"));
    disk.addSong(kMySongs, Recipe::Mp3Tag23Utf16, text("Perché no"), text("Perché no"));
    disk.addSong(root, Recipe::Midi1, text("Notte bianca"), text("Notte bianca"), QStringLiteral("MIDI"));
    disk.addCompanions(disk.addSong(root, Recipe::Karaoke, text("Valzer"), text("Valzer “lento” d'addio")),
                       {QStringLiteral("cdg")});
    disk.addSong(root, Recipe::Midi0, text("Radice lunga"), overlong("Radice"));
    disk.addBrokenSong(text("Radice rotta.mid"), "non un brano");
    disk.addOther(text("leggimi"));
    disk.addOther(text("My Songs/leggimi"));
    disk.addOther(text("nota.txt"));
    disk.addOther(text("locandina.png"), "\x89PNG");
    disk.addOther(text("apertura.mpg"));
}

void addSpecialSongs(PlayerDisk &disk)
{
    const QString folder = text("My Songs/Città d'“autore”");
    for (int kind = 0; kind <= int(Recipe::Mp3NoTag); ++kind)
        disk.addSong(folder, Recipe(kind), text("Uno di ogni tipo"), text("Tipo %1").arg(kind));
    int number = 0; // the player's disk takes names that differ in case alone for one
    for (const char *suffix : {"midi", "MIDI", "Midi", "MID", "xmid"})
        disk.addSong(folder, Recipe::Midi1, text("Suffisso"), text("Suffisso %1").arg(++number), text(suffix));
    disk.addSong(folder, Recipe::Mp3Tag24Utf8, text("Suffisso"), text("Suffisso x"), QStringLiteral("xmp3"));
    disk.addSong(folder, Recipe::Mp3Tag24Utf8, text("Riga una\r\nriga 'due'\rriga tre\nfine"), text("Righe"));
    disk.addSong(folder, Recipe::Mp3Tag24Latin1, QString(99, QLatin1Char('x')) + text("'y'"), text("Taglio"));
    disk.addSong(folder, Recipe::Mp3Tag24Utf8, QString(99, QLatin1Char('z')) + text("🎵🎵"), text("Coppia"));
    disk.addSong(folder, Recipe::Midi0, QString(), text("Senza titolo"));
    disk.addSong(folder, Recipe::Midi0, text("Rock 'n' Roll"), text("L'è 'l Rock 'n' Roll"));
    disk.addCompanions(disk.addSong(folder, Recipe::Midi0, text("Lungo"), overlong("Lungo")), companions());
    disk.addCompanions(disk.addSong(folder, Recipe::Mp3Tag23Latin1, text("Perché"), overlong("Perché così è più")),
                       companions());
    const QString deep = text("My Songs/Una cartella dal nome lungo, nella quale ce n'è un'altra/"
                              "E questa è l'altra, che ne tiene dentro una terza ancora/"
                              "Terza cartella, e qui finalmente stanno i brani");
    disk.addCompanions(disk.addSong(deep, Recipe::Midi1, text("Profondo"),
                                    text("Un brano in fondo a tutto, e nemmeno il suo nome è breve")),
                       {QStringLiteral("dat")});
    addSongsOutsideTheDatabase(disk);
}

void addBrokenSongs(PlayerDisk &disk)
{
    const QString folder = text("My Songs/Scaricati");
    int number = 0;
    for (const BrokenSong &broken : brokenSongs()) {
        const QString path = text("%1/Rotto %2 %3.%4").arg(folder).arg(++number).arg(broken.what, broken.suffix);
        disk.addBrokenSong(path, broken.bytes);
        if (number == 3)
            disk.addCompanions(path, {QStringLiteral("cdg")});
    }
    disk.addBrokenSong(kMain + text("/Rotto fra tanti.mid"), "fra tanti");
    disk.addBrokenSong(text("Effects/Rotto che resta.mid"), "resta");
}

void addBigFolders(PlayerDisk &disk, int songs)
{
    constexpr int kMainSongs = 1080;
    constexpr int kMainChance = 45;
    constexpr int kOtherChance = 15;
    constexpr int kSongsForOneMore = 15000;
    constexpr int kSmallestBig = 1050;
    constexpr int kLargestBig = 4000;
    fillBigFolder(disk, kMain, kMainSongs, kMainChance);
    disk.addCompanions(disk.addSong(kMain, Recipe::Midi0, text("Sempre più lungo"), overlong("Sempre")), companions());
    addSubFolders(disk);
    if (songs < kLargeArchive)
        return;
    fillBigFolder(disk, kMain + text("/Duetti"), kSmallestBig, 0);
    for (int i = 0; i < 1000; ++i) // as many as a folder may hold
        disk.addRandomSong(text("My Songs/Mille"), Titles::random(disk.random()));
    for (int made = 0; made < songs / kSongsForOneMore; ++made) {
        const int count = disk.random().bounded(kSmallestBig, kLargestBig);
        fillBigFolder(disk, text("Raccolta %1").arg(made + 1), count, kOtherChance);
    }
}

void addPlainFolders(PlayerDisk &disk, int songs)
{
    constexpr int kMostFiles = 900;
    constexpr int kCompanionsOfOne = 3;
    constexpr int kChance = 12;
    int number = 0;
    while (songs > 0) {
        const int wanted = qMin(songs, disk.random().bounded(60, kMostFiles - kCompanionsOfOne));
        const QString folder = text("My Songs/Artista %1").arg(++number, 3, 10, QLatin1Char('0'));
        int files = 0;
        for (int made = 0; made < wanted && files + kCompanionsOfOne < kMostFiles; ++made) {
            files += 1 + disk.addSomeCompanions(disk.addRandomSong(folder, Titles::random(disk.random())), kChance);
            --songs;
        }
    }
}
