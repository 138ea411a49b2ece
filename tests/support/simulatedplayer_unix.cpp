#include "simulatedplayer.h"

namespace {
const char kVolumes[] = "CORVIN_VOLUMES";
} // namespace

void SimulatedPlayer::connect() {
    qputenv(kVolumes, QFile::encodeName(m_dir.path()));
}

// An empty folder list still means "these and no mounted volumes": the tests never see a disk of the machine.
void SimulatedPlayer::disconnect() {
    qputenv(kVolumes, "/nonexistent");
}
