#include "programrun.h"

#include "app/language.h"
#include "app/mainwindow.h"
#include "app/sessionlog.h"
#include "app/shared/sharedfonts.h"
#include "optimizer/ottimizza.h"
#include "pages/check.h"
#include "pages/firstmenu.h"
#include "resources/resources.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPushButton>

namespace {

constexpr int kRoundMs = 20;
constexpr int kPatienceMs = 30000;

/// Serves events until the button can be pressed, and presses it. False when it never can.
bool press(const QWidget *page, const char *button)
{
    QElapsedTimer waiting;
    for (waiting.start(); waiting.elapsed() < kPatienceMs;) {
        auto *found = page->findChild<QPushButton *>(QLatin1String(button));
        if (found && found->isVisible() && found->isEnabled()) {
            found->click();
            return true;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, kRoundMs);
    }
    return false;
}

} // namespace

ProgramRun runOptimisation()
{
    ProgramRun run;
    QElapsedTimer sinceStart;
    sinceStart.start();
    startSessionLog();
    loadResources();
    registerEmbeddedFonts();
    installLanguage(QStringLiteral("lang_it"));
    MainWindow window;
    window.setWindowFlags(Qt::Window);
    window.show();

    auto *check = window.findChild<Check *>();
    auto *menu = window.findChild<FirstMenu *>();
    auto *page = window.findChild<Ottimizza *>();
    if (!check || !menu || !page || !press(check, "pushButton"))
        return run;
    emit menu->gotoOptimizer();
    GapMeter meter;
    QObject::connect(page, &Ottimizza::updateLabelAction, &meter, &GapMeter::onStatusText);
    QObject::connect(page, &Ottimizza::backFromOttimizzaToEndOttimizza, &meter, [&](int failCode) {
        run.finished = true;
        run.failCode = failCode;
    });
    meter.start(QStringLiteral("(before the first step)"));
    if (!press(page, "Btn_Opt_Ok"))
        return run;
    meter.stop();
    run.sinceStartMs = sinceStart.elapsed();
    run.steps = meter.steps();
    run.optimisationMs = meter.totalMs();
    run.longestGapMs = meter.longestGapMs();
    return run;
}
