#include "simulatedplayer.h"

#include "winedrive.h"

static constexpr wchar_t kLetter = L'e';

// The program's own look-up through the system is meant, so no list of folders may be in force.
void SimulatedPlayer::connect() {
    qunsetenv("CORVIN_VOLUMES");
    const std::string folder = WineDrive::unixPath(QDir::toNativeSeparators(m_folder).toStdWString());
    if (folder.empty() || !WineDrive::plug(kLetter, folder))
        failTest("The player cannot be plugged in; is this Wine?"_s);
    m_root = "E:/"_s;
}

void SimulatedPlayer::disconnect() {
    WineDrive::unplug(kLetter);
}
