#include "checks.h"

QList<FuzzChecks::Check> FuzzChecks::all()
{
    return {{"expand", expand},           {"compress", compress},
            {"rawmidifile", rawMidiFile}, {"mfxheader", mfxHeader},
            {"mfxsong", mfxSong},         {"id3tag", id3Tag},
            {"metasong", metaSong},       {"titles", titles},
            {"playlist", playlist},       {"databaseexport", databaseExport},
            {"entrypath", entryPath}};
}
