#pragma once

#include <QLatin1String>

/// The names that the player gives its own folders and files, as its system writes them.
namespace PlayerNames {
inline constexpr QLatin1String kLabel("CORVIN4"); ///< of its volume
inline constexpr QLatin1String
    kPathStart("\\sdmemory\\"); ///< of every path in the form in which the player itself names its files
inline constexpr QLatin1String kSystem("System");
inline constexpr QLatin1String kUpdate("CorvinUpdate");
inline constexpr QLatin1String kBridges("Bridges");
inline constexpr QLatin1String kEffects("Effects");
inline constexpr QLatin1String kMySongs("My Songs");
inline constexpr QLatin1String kImages("Images");
inline constexpr QLatin1String kVideos("Videos");
inline constexpr QLatin1String kPlaylists("System/Playlist");
inline constexpr QLatin1String kDatabaseExport("System/Corvin/data.fastDB");
inline constexpr QLatin1String kImportFile("CorvinImportDB.sql");
inline constexpr QLatin1String kStartScript("AUTOEXEC.BAT");
inline constexpr QLatin1String kMainProgram("System/Corvin/Corvin.exe");
inline constexpr QLatin1String kInterfaceProcess("System/GuiProc/GuiProc.exe");
} // namespace PlayerNames
