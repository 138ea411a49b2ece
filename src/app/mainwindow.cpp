#include "mainwindow.h"

#include "appsettings.h"
#include "language.h"
#include "pacedbar.h"
#include "windowplace.h"

#include "app/shared/altkeys.h"
#include "app/shared/sharedfonts.h"
#include "app/shared/styles.h"
#include "optimizer/endottimizza.h"
#include "optimizer/ottimizza.h"
#include "pages/avanzate.h"
#include "pages/check.h"
#include "pages/connect.h"
#include "pages/firstmenu.h"
#include "transfer/transfer.h"
#include "ui_mainwindow.h"

#include <QApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QHideEvent>
#include <QLocale>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QScreen>
#include <QScrollBar>

namespace {
constexpr int kConnectionIntervalMs = 500;
constexpr int kRoomForWindowFrame = 50;
const QColor kDisabledText(90, 90, 90);

/// The window's picture is light whatever colours the desktop has: what is written on it must not follow a dark theme.
QPalette paletteForLightGround(QPalette palette)
{
    palette.setColor(QPalette::Base, Qt::white);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text}) {
        palette.setColor(role, Qt::black);
        palette.setColor(QPalette::Disabled, role, kDisabledText);
    }
    return palette;
}
/// How numbers and dates are written beside the texts of @p language: as the system does where it speaks the same
/// language, since an Austrian reads German and a Briton English.
QLocale localeOf(const QString &language)
{
    const QLocale system = QLocale::system();
    QLocale spoken(QLocale::Italian, QLocale::Italy); // a language without texts of its own shows these
    if (language == QLatin1String("lang_en"))
        spoken = QLocale(QLocale::English, QLocale::UnitedKingdom);
    else if (language == QLatin1String("lang_de"))
        spoken = QLocale(QLocale::German, QLocale::Germany);
    return system.language() == spoken.language() ? system : spoken;
}
} // namespace

MainWindow::MainWindow(QWidget *parent) : QMainWindow(parent), ui(std::make_unique<Ui::MainWindow>())
{
    ui->setupUi(this);
    m_pacedBar = std::make_unique<PacedBar>(*ui->progressBar);
    fitIntoScreen();
    // Before the pages, which leave its letter alone.
    giveAltKeys({ui->pushButtonStop});
    createPages();
    connectPages();
    applyStyle();
    on_setProgressBarVisible(false);
    setWindowFlags(Qt::Window);
    // A scroll area follows the focus within it alone, not when it comes from the window's own buttons or by a letter.
    connect(qApp, &QApplication::focusChanged, ui->scrollArea, [this](const QWidget *, QWidget *now) {
        if (now && ui->framePage->isAncestorOf(now))
            ui->scrollArea->ensureWidgetVisible(now);
    });
    ui->scrollArea->viewport()->installEventFilter(this);
    connect(&m_closeTimer, &QTimer::timeout, this, &MainWindow::closeOnceIdle);
    start_check_connection();
}

MainWindow::~MainWindow() = default;

int MainWindow::openingHeight(int wanted, int available)
{
    return wanted > available ? available - kRoomForWindowFrame : wanted;
}

void MainWindow::fitIntoScreen()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    const QSize available = screen->availableGeometry().size();
    // The width follows the rule of the height.
    const QSize fitting(openingHeight(width(), available.width()), openingHeight(height(), available.height()));
    // What has no room then is reached by scrolling.
    setMinimumSize(minimumSize().boundedTo(fitting));
    QList<QRect> screens = {screen->availableGeometry()};
    const QList<QScreen *> all = QGuiApplication::screens();
    for (const QScreen *other : all)
        screens.append(other->availableGeometry());
    setGeometry(openingPlace(storedPlace(), fitting, screens));
    if (wasMaximized())
        setWindowState(Qt::WindowMaximized);
}

void MainWindow::hideEvent(QHideEvent *event)
{
    // A window that is only minimised comes back to its place by itself.
    if (!event->spontaneous()) {
        storePlace(normalGeometry());
        storeMaximized(isMaximized());
    }
    QMainWindow::hideEvent(event);
}

void MainWindow::createPages()
{
    m_connectPage = new Connect(ui->framePage);
    m_check = new Check(ui->framePage);
    m_firstMenu = new FirstMenu(ui->framePage);
    m_transfer = new Transfer(ui->framePage);
    m_avanzate = new Avanzate(ui->framePage);
    m_ottimizza = new Ottimizza(ui->framePage);
    m_endOttimizza = new EndOttimizza(ui->framePage);
    // A layout gives no room to a hidden page, so all pages share the place and the shown one fills it.
    const QList<QWidget *> pages = {m_connectPage, m_check,     m_firstMenu,   m_transfer,
                                    m_avanzate,    m_ottimizza, m_endOttimizza};
    for (QWidget *page : pages)
        ui->framePage->layout()->addWidget(page);
}

void MainWindow::applyStyle()
{
    setWindowIcon(QIcon(QStringLiteral(":/imgs/corvin4manager.png")));
    QPalette windowPalette = paletteForLightGround(palette());
    windowPalette.setBrush(QPalette::Window, QBrush(QPixmap(QStringLiteral(":/imgs/sfondo_prog.png"))));
    setPalette(windowPalette);
    // A scroll area paints its own ground, which would start the picture anew in the middle of the window.
    ui->scrollArea->viewport()->setAutoFillBackground(false);
    ui->scrollArea->verticalScrollBar()->setStyleSheet(Styles::kScrollBar);
    ui->scrollAreaWidgetContents->setAutoFillBackground(false);

    const SharedFonts &fonts = sharedFonts();
    ui->progressBar->setFont(fonts.fontTitle22);
    ui->progressBar->setStyleSheet(Styles::kProgressBar);
    ui->progressBar->setRange(0, 100);
    ui->progressBar->setValue(0);
    ui->labelAction->setFont(fonts.fontText13);
    setTitleFont(ui->pushButtonStop, fonts.fontTitle18);
    ui->pButLang->setFont(fonts.fontText10Bold);
    followLanguage(storedLanguage());
    ui->labelRelease->setFont(fonts.fontText10);
    ui->pushButtonAboutQT->setFont(fonts.fontText10);
}

QString MainWindow::langDbInfo(LANGUAGE_STRING_CODE code)
{
    return operationText(code);
}

void MainWindow::start_check_connection()
{
    m_connectionTimer = new QTimer(this);
    connect(m_connectionTimer, &QTimer::timeout, this, &MainWindow::check_connection);
    m_connectionTimer->start(kConnectionIntervalMs);
}

void MainWindow::check_connection()
{
    const QString root = m_deviceLocator.findDeviceRoot();
    if (root.isEmpty()) {
        if (!m_connectPage->isVisible())
            m_connectPage->show();
        return;
    }
    // Stopped for good: a player unplugged later is the business of whoever needs it next.
    m_connectionTimer->stop();
    m_connectPage->hide();
    m_check->show();
    const QScopedValueRollback<bool> running(m_checkRunning, true);
    m_check->runCheck(root);
}

void MainWindow::on_pButLang_clicked()
{
    const QString next = nextLanguage(storedLanguage());
    followLanguage(next);
    installLanguage(next);
    storeLanguage(next);
}

/// The texts follow by an event of their own, which comes later: by then the pages know how to write a date.
void MainWindow::followLanguage(const QString &language)
{
    ui->pButLang->setText(languageButtonText(language));
    setLocale(localeOf(language));
}

void MainWindow::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        ui->retranslateUi(this);
        // The pages hear of the language after their window.
        giveAltKeys({ui->pushButtonStop});
        // What it says of a running job is the only word of it: the job would not say it again.
        if (!isWorking())
            ui->labelAction->clear();
    }
    QMainWindow::changeEvent(event);
}

bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    const QWidget *view = ui->scrollArea->viewport();
    QWidget *focused = focusWidget();
    const bool isPages = focused && ui->framePage->isAncestorOf(focused);
    if (watched == view && event->type() == QEvent::Resize && isPages) {
        const QRect before(QPoint(), static_cast<const QResizeEvent *>(event)->oldSize());
        const QRect place(focused->mapTo(ui->scrollArea, QPoint()) - view->pos(), focused->size());
        // What the user has scrolled away from stays where it is.
        if (before.contains(place))
            QTimer::singleShot(0, focused, [this, focused] { ui->scrollArea->ensureWidgetVisible(focused); });
    }
    return QMainWindow::eventFilter(watched, event);
}
