#include "startupuser.h"

#include "app/sessionlog.h"
#include "app/shared/sharedfonts.h"
#include "app/startup.h"
#include "support/files.h"
#include "support/widgets.h"

namespace {

QPointer<QMainWindow> windowOfRun;

QMainWindow *shownWindow()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    const auto shown = std::find_if(widgets.begin(), widgets.end(), [](QWidget *one) { return one->isVisible(); });
    return shown == widgets.end() ? nullptr : qobject_cast<QMainWindow *>(*shown);
}

QJsonObject describe(const QMainWindow &window)
{
    QWidget plain;
    plain.setWindowFlags(Qt::Window);
    return {
        {"title"_s, window.windowTitle()},
        {"button"_s, textOf(window, "pButLang")},
        {"text"_s, QCoreApplication::translate("MainWindow", "Interrompi Operazione")},
        {"flagsAsPlainWindow"_s, window.windowFlags() == plain.windowFlags()},
        {"hasParent"_s, window.parent() != nullptr},
        {"organization"_s, QCoreApplication::organizationName()},
        {"application"_s, QCoreApplication::applicationName()},
        {"highDpiScaling"_s, QCoreApplication::testAttribute(Qt::AA_EnableHighDpiScaling)},
        {"highDpiPixmaps"_s, QCoreApplication::testAttribute(Qt::AA_UseHighDpiPixmaps)},
        {"scaleAsItIs"_s,
         QGuiApplication::highDpiScaleFactorRoundingPolicy() == Qt::HighDpiScaleFactorRoundingPolicy::PassThrough},
        {"titleFont"_s, QFontInfo(sharedFonts().fontTitle18).family()},
        {"background"_s, !window.palette().brush(QPalette::Window).texture().isNull()},
        {"log"_s, sessionLogPath()},
    };
}

void playTheUser(QMainWindow *window)
{
    windowOfRun = window;
    for (int clicks = qEnvironmentVariableIntValue("TEST_CLICKS"); clicks > 0; --clicks)
        button(*window, "pButLang")->click();
    putFile(qEnvironmentVariable("TEST_REPORT"), QJsonDocument(describe(*window)).toJson());
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
        QMainWindow *window = shownWindow();
        if (!window)
            return;
        timer->stop();
        playTheUser(window);
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
