# What `cmake --install` puts on a Linux system, and the Debian package that CPack makes of it (packaging/linux/build).
include(GNUInstallDirs)

# Only the program is installed: the tests need not be built for it.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(CORVIN_HOMEPAGE "https://q-arte.example")
# Both heed SOURCE_DATE_EPOCH, so that the same sources give the same package.
string(TIMESTAMP CORVIN_DATE "%Y-%m-%d" UTC)
string(TIMESTAMP CORVIN_DATE_LONG "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(CORVIN_DEBIAN_VERSION ${PROJECT_VERSION}-1)
set(CPACK_PACKAGE_CONTACT "Q-Arte <info@q-arte.example>")

set(linux ${CMAKE_SOURCE_DIR}/packaging/linux)
set(made ${CMAKE_BINARY_DIR}/packaging/linux)
set(doc ${CMAKE_INSTALL_DATADIR}/doc/corvin4manager)

# corvin_compressed(<source> <name>): <source> with its variables filled in, as ${made}/<name>.gz. No date goes into it.
function(corvin_compressed source name)
  configure_file(${source} ${made}/${name} @ONLY)
  execute_process(
    COMMAND gzip -9nc ${made}/${name}
    OUTPUT_FILE ${made}/${name}.gz COMMAND_ERROR_IS_FATAL ANY)
endfunction()

install(TARGETS Corvin4Manager RUNTIME)

foreach(size 16 22 24 32 48 64 128)
  install(
    FILES ${linux}/icons/${size}.png
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps
    RENAME corvin4manager.png)
endforeach()
install(FILES src/resources/imgs/corvin4manager.png DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/256x256/apps)
install(FILES src/resources/imgs/corvin4manager.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)

# Wayland knows a window's desktop entry by its name: the reversed domain of the maker and the name of the program.
install(FILES ${linux}/example.q-arte.Corvin4Manager.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
set(metainfo example.q_arte.corvin4manager.metainfo.xml)
configure_file(${linux}/${metainfo}.in ${made}/${metainfo} @ONLY)
install(FILES ${made}/${metainfo} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

foreach(language en it de)
  corvin_compressed(${linux}/man/${language}.1.in man/${language}.1)
  string(REPLACE "en/" "" folder ${language}/)
  install(
    FILES ${made}/man/${language}.1.gz
    DESTINATION ${CMAKE_INSTALL_MANDIR}/${folder}man1
    RENAME Corvin4Manager.1.gz)
endforeach()

corvin_compressed(${linux}/changelog.in changelog.Debian)
corvin_compressed(${CMAKE_SOURCE_DIR}/CHANGELOG.md changelog)
install(FILES ${linux}/copyright ${made}/changelog.Debian.gz ${made}/changelog.gz DESTINATION ${doc})
install(
  FILES ${linux}/lintian-overrides
  DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
  RENAME corvin4manager)
file(GLOB guide CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/docs/guide/*.html)
if(guide)
  install(
    DIRECTORY docs/guide
    DESTINATION ${doc}
    FILES_MATCHING REGEX "\\.(html|css|png|svg)$"
    PATTERN make EXCLUDE)
endif()
# What the program contains of others, with their licences as their packages have them.
foreach(licence fonts-liberation:Liberation-fonts fonts-bebas-neue:Bebas-Neue-font qttranslations5-l10n:Qt-translations)
  string(REPLACE ":" ";" licence ${licence})
  list(GET licence 0 package)
  list(GET licence 1 name)
  install(
    FILES /usr/share/doc/${package}/copyright
    DESTINATION ${doc}/licences
    RENAME ${name}.txt)
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME corvin4manager)
set(CPACK_PACKAGE_VENDOR "Q-Arte")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/package)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${CORVIN_HOMEPAGE})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "look after a Corvin4 karaoke player")
set(CPACK_PACKAGE_DESCRIPTION_FILE ${linux}/description)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Updates and system archives are unpacked by unar; xdg-open shows folders. The system itself mounts the player: a
# desktop by udisks2, and exfatprogs repairs its file system.
set(CPACK_DEBIAN_PACKAGE_DEPENDS unar)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS xdg-utils)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "udisks2, exfatprogs")
include(CPack)
