#include "startupuser.h"

#include "app/sessionlog.h"
#include "app/shared/sharedfonts.h"
#include "app/startup.h"

#include <QApplication>
#include <QFile>
#include <QFontInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

namespace {

QPointer<QMainWindow> windowOfRun;

QMainWindow *shownWindow()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        if (widget->isVisible())
            return qobject_cast<QMainWindow *>(widget);
    }
    return nullptr;
}

QJsonObject describe(const QMainWindow &window)
{
    QWidget plain;
    plain.setWindowFlags(Qt::Window);
    QJsonObject seen;
    seen.insert(QStringLiteral("title"), window.windowTitle());
    seen.insert(QStringLiteral("button"), window.findChild<QPushButton *>(QStringLiteral("pButLang"))->text());
    seen.insert(QStringLiteral("text"), QCoreApplication::translate("MainWindow", "Interrompi Operazione"));
    seen.insert(QStringLiteral("flagsAsPlainWindow"), window.windowFlags() == plain.windowFlags());
    seen.insert(QStringLiteral("hasParent"), window.parent() != nullptr);
    seen.insert(QStringLiteral("organization"), QCoreApplication::organizationName());
    seen.insert(QStringLiteral("application"), QCoreApplication::applicationName());
    seen.insert(QStringLiteral("highDpiScaling"), QCoreApplication::testAttribute(Qt::AA_EnableHighDpiScaling));
    seen.insert(QStringLiteral("highDpiPixmaps"), QCoreApplication::testAttribute(Qt::AA_UseHighDpiPixmaps));
    seen.insert(QStringLiteral("scaleAsItIs"), QGuiApplication::highDpiScaleFactorRoundingPolicy() ==
                                                   Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    seen.insert(QStringLiteral("titleFont"), QFontInfo(sharedFonts().fontTitle18).family());
    seen.insert(QStringLiteral("background"), !window.palette().brush(QPalette::Window).texture().isNull());
    seen.insert(QStringLiteral("log"), sessionLogPath());
    return seen;
}

void playTheUser()
{
    QMainWindow *window = shownWindow();
    if (!window)
        return;
    windowOfRun = window;
    const int clicks = qEnvironmentVariableIntValue("TEST_CLICKS");
    for (int i = 0; i < clicks; ++i)
        window->findChild<QPushButton *>(QStringLiteral("pButLang"))->click();
    QFile report(qEnvironmentVariable("TEST_REPORT"));
    if (report.open(QIODevice::WriteOnly))
        report.write(QJsonDocument(describe(*window)).toJson());
    if (qEnvironmentVariableIsSet("TEST_EXIT_CODE"))
        QCoreApplication::exit(qEnvironmentVariableIntValue("TEST_EXIT_CODE"));
    else
        window->close();
}

void employTheUser()
{
    if (!qEnvironmentVariableIsSet("TEST_REPORT"))
        return;
    auto *timer = new QTimer(QCoreApplication::instance());
    QObject::connect(timer, &QTimer::timeout, timer, [timer] {
        if (!shownWindow())
            return;
        timer->stop();
        playTheUser();
    });
    timer->start(20);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(employTheUser)

int runProgramWithUser(int argc, char **argv)
{
    const int code = runCorvin4Manager(argc, argv);
    return windowOfRun ? kExitCodeWindowAlive : code;
}
