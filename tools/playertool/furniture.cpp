#include "furniture.h"

#include "playerdisk.h"

namespace {

struct Other
{
    const char *path;
    const char *beginning;
};

constexpr Other kSystem[] = {
    {"AUTOEXEC.BAT", "@echo off\r\nrem"},
    {"q-artedev", ""},
    {"CorvinImportDB.sql", "DELETE FROM songs\n"},
    {"System/Corvin/Corvin.exe", "MZ"},
    {"System/Corvin/corvin.ini", "[Corvin]"},
    {"System/Corvin/skin/sfondo.png", "\x89PNG"},
    {"System/Corvin/manuale.txt", "Manuale"},
    {"System/GuiProc/GuiProc.exe", "MZ"},
    {"System/GuiProc/intro.avi", "RIFF"},
    {"System/Midi/click.mid", "MThd"},
    {"System/Midi/Avvio.MP3", "ID3"},
    {"CorvinUpdate/CorvinUpdate.c4", "PK"},
    {"CorvinUpdate/old/leggimi.txt", ""},
    {"CorvinUpdate/old/logo.bmp", "BM"},
};

constexpr Other kMedia[] = {
    {"Images/cover.jpg", "\xFF\xD8"},
    {"Images/gita.2019.jpg", "\xFF\xD8"},
    {"Images/2019/mare.JPG", "\xFF\xD8"},
    {"Videos/saggio.avi", "RIFF"},
    {"Videos/Clips/ballo.mp4", ""},
    {"My Songs/Karaoke Italia/cover.jpg", "\xFF\xD8"},
    {"My Songs/Karaoke Italia/A0/cover.jpg", "\xFF\xD8"},
    {"My Songs/Scaricati/cover.jpg", "\xFF\xD8"},
    {"My Songs/Scaricati/gita.2019.jpg", "\xFF\xD8"},
    {"My Songs/Scaricati/Foto dell'estate.JPEG", "\xFF\xD8"},
    {"My Songs/Scaricati/schermo.bmp", "BM"},
    {"My Songs/Scaricati/saggio.avi", "RIFF"},
    {"My Songs/Scaricati/festa.MOV", ""},
    {"My Songs/clip è bella.wmv", ""},
    {"Effects/luci.png", "\x89PNG"},
    {"Foto/viaggio.jpg", "\xFF\xD8"},
};

constexpr Other kUnsupported[] = {
    {"My Songs/notes.TXT", ""},
    {"My Songs/Scaricati/lettera.doc", "\xD0\xCF"},
    {"My Songs/Scaricati/senza suffisso", ""},
    {"My Songs/Scaricati/elenco.pdf", "%PDF"},
    {"My Songs/Karaoke Italia/testi.txt", ""},
    {"My Songs/Karaoke Italia/Thumbs.db", ""},
    {"My Songs/Karaoke Italia/Natale è qui/auguri.docx", "PK"},
    {"Bridges/elenco.txt", ""},
    {"Documenti/contratto.odt", "PK"},
    {"Images/indice.txt", ""},
    {"My Songs/.DS_Store", ""},
    {"My Songs/Scaricati/._nascosto.txt", ""},
};

template <std::size_t N> void addAll(PlayerDisk &disk, const Other (&others)[N])
{
    for (const Other &other : others)
        disk.addOther(QString::fromUtf8(other.path), other.beginning);
}

} // namespace

void addSystem(PlayerDisk &disk)
{
    disk.write(QStringLiteral(".windows-label"), "CORVIN4\n");
    addAll(disk, kSystem);
}

void addMedia(PlayerDisk &disk)
{
    addAll(disk, kMedia);
}

void addUnsupported(PlayerDisk &disk)
{
    addAll(disk, kUnsupported);
}
