#pragma once

#include <QLatin1String>

/// The names that the player gives its own folders and files, as its system writes them.
namespace PlayerNames {

/// A literal with the length the compiler knows: QLatin1String counts at run time with some compilers.
template <int size> constexpr QLatin1String name(const char (&text)[size])
{
    return QLatin1String(text, size - 1);
}

inline constexpr QLatin1String kLabel = name("CORVIN4"); ///< of its volume
inline constexpr QLatin1String kPathStart =
    name("\\sdmemory\\"); ///< of every path in the form in which the player itself names its files
inline constexpr QLatin1String kSystem = name("System");       ///< folder of its system
inline constexpr QLatin1String kUpdate = name("CorvinUpdate"); ///< an update that waits for its next start
/// Under this name an update lies on the player until it is whole; the player takes no notice of it.
inline constexpr QLatin1String kUnfinishedUpdate = name(".CorvinUpdate.tmp");
inline constexpr QLatin1String kBridges = name("Bridges");           ///< folder of its own files
inline constexpr QLatin1String kEffects = name("Effects");           ///< folder of its own files
inline constexpr QLatin1String kMySongs = name("My Songs");          ///< folder for songs that lay loose at the root
inline constexpr QLatin1String kImages = name("Images");             ///< where it looks for pictures
inline constexpr QLatin1String kVideos = name("Videos");             ///< where it looks for videos
inline constexpr QLatin1String kPlaylists = name("System/Playlist"); ///< folder of its playlists, "*.pls"
inline constexpr QLatin1String kDatabaseExport = name("System/Corvin/data.fastDB"); ///< which songs its database knows
inline constexpr QLatin1String kImportFile = name("CorvinImportDB.sql");        ///< what it executes at its next start
inline constexpr QLatin1String kStartScript = name("AUTOEXEC.BAT");             ///< of its system
inline constexpr QLatin1String kMainProgram = name("System/Corvin/Corvin.exe"); ///< of its system
inline constexpr QLatin1String kInterfaceProcess = name("System/GuiProc/GuiProc.exe"); ///< of its system
} // namespace PlayerNames
