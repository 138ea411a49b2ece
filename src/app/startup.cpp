#include "startup.h"

#include "app/shared/sharedfonts.h"
#include "appsettings.h"
#include "guide.h"
#include "language.h"
#include "mainwindow.h"
#include "resources/resources.h"
#include "sessionlog.h"

#include "disk/datafolder.h"
#include "disk/diskcalls.h"

#include <QApplication>
#include <QDebug>
#include <QFileInfo>
#include <memory>

namespace {

/// Qt reads these when the application object is made; later they are without effect.
void prepareHighDpi()
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
}

void setIdentity()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Q-Arte"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("q-arte.example"));
    QCoreApplication::setApplicationName(QStringLiteral("Corvin4Manager"));
}

} // namespace

int runCorvin4Manager(int &argc, char **argv)
{
    neverAskForMedium();
    prepareHighDpi();
    const QApplication application(argc, argv);

    // Before the identity is set: the folder of the log follows the name of the executable.
    startSessionLog();
    setDataFolder(QFileInfo(sessionLogPath()).absolutePath());
    setIdentity();
    qInfo() << "Application Settings :" << appSettings().fileName();

    loadResources();
    registerEmbeddedFonts();
    sharedFonts();

    const QString language = startLanguage();
    installLanguage(language);
    qInfo() << "Start Application/Language :" << language;

    const auto window = std::make_unique<MainWindow>(nullptr);
    window->setWindowFlags(Qt::Window);
    openGuideByKey(window.get());
    window->show();
    return QApplication::exec(); // the window goes first, then the application object
}
