#include "songinfo.h"

void SongInfo::clear()
{
    *this = SongInfo();
}
