#include "simulatedplayer.h"

#include "winedrive.h"

#include <QDir>
#include <QTest>

namespace {
constexpr wchar_t kLetter = L'e';
} // namespace

// The program's own look-up through the system is meant, so no list of folders may be in force.
void SimulatedPlayer::connect()
{
    qunsetenv("CORVIN_VOLUMES");
    const std::string folder = WineDrive::unixPath(QDir::toNativeSeparators(m_folder).toStdWString());
    if (folder.empty() || !WineDrive::plug(kLetter, folder))
        QTest::qFail("The player cannot be plugged in; is this Wine?", __FILE__, __LINE__);
    m_root = QStringLiteral("E:/");
}

void SimulatedPlayer::disconnect()
{
    WineDrive::unplug(kLetter);
}
