#include "ottimizza.h"

#include "ottimizzarun.h"
#include "ui_ottimizza.h"

#include "app/shared/altkeys.h"
#include "app/shared/questionbox.h"
#include "app/shared/sharedfonts.h"
#include "app/shared/styles.h"
#include "disk/awake.h"
#include "disk/worklock.h"
#include "songfiles/songkind.h"

#include <QDebug>
#include <QRandomGenerator>
#include <QScopedValueRollback>
#include <QShowEvent>

#include <algorithm>
#include <cstdlib>

namespace {

const QLatin1String kCheckBoxStyle("QCheckBox {color: rgb(0,0,0);}\nQCheckBox:disabled {color: rgb(70,70,70);}");
// The page's sheet paints every child dark, and black text would stand on it: what lies in this frame shows the
// window's picture instead. A nearer sheet wins over the page's. The check boxes get no brush at all, since a
// transparent one would also make their indicators transparent.
const QLatin1String kOptionsStyle("* {background-color: rgba(0, 0, 0, 0%);}\nQCheckBox {background: none;}\n"
                                  "QCheckBox::indicator {width: 18px; height: 18px;}");

QMap<QString, int> positionsOf(const QStringList &suffixes)
{
    QMap<QString, int> positions;
    for (int i = 0; i < suffixes.size(); ++i)
        positions.insert(suffixes.at(i), i);
    return positions;
}

} // namespace

Ottimizza::Ottimizza(QWidget *parent)
    : QWidget(parent),
      songNameFilters(songNameFilterList()),
      songSuffixes(songSuffixList()),
      suffixFormatIndex(positionsOf(songSuffixes)),
      imageSuffixes({QStringLiteral("jpg"), QStringLiteral("jpeg"), QStringLiteral("png"), QStringLiteral("bmp")}),
      videoSuffixes({QStringLiteral("avi"), QStringLiteral("mpg"), QStringLiteral("mpeg"), QStringLiteral("mp4"),
                     QStringLiteral("wmv"), QStringLiteral("mov")}),
      companionSuffixes({QStringLiteral("cdg"), QStringLiteral("dat"), QStringLiteral("bak")}),
      ui(std::make_unique<Ui::Ottimizza>())
{
    ui->setupUi(this);
    applyStyle();
    givePageAltKeys(*this);
    hide();
}

Ottimizza::~Ottimizza() = default;

void Ottimizza::applyStyle()
{
    const SharedFonts &fonts = sharedFonts();
    setStyleSheet(Styles::kContainer);
    ui->frameOptions->setStyleSheet(kOptionsStyle);
    ui->labelHeading->setStyleSheet(Styles::kTransparentLabel);
    setTitleFont(ui->labelHeading, fonts.fontTitle22);
    for (QCheckBox *box : {ui->Check_Optimize, ui->Check_Delete, ui->Check_Move, ui->Check_Split, ui->Check_Database}) {
        box->setStyleSheet(kCheckBoxStyle);
        setTitleFont(box, fonts.fontTitle18);
    }
    for (QLabel *label : {ui->labelDescrOptimize, ui->labelDescrDelete, ui->labelDescrMove, ui->labelDescrSplit,
                          ui->labelDescrDatabase}) {
        label->setStyleSheet(Styles::kTransparentLabel);
        label->setFont(fonts.fontText11);
    }
    setTitleFont(ui->Btn_Opt_Ok, fonts.fontTitle18);
    setTitleFont(ui->pushBtnBack, fonts.fontTitle18);
}

void Ottimizza::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    // A window that comes back from the task bar sends a show event of the system's own: the page was not left, and
    // neither the user's choice nor a run's stop flag may be lost by it.
    if (event->spontaneous() || m_running)
        return;
    abortRequested = false;
    // Deliberate: all boxes get their ticks back, while the three flags stay as the last clicks have left them.
    for (QCheckBox *box : {ui->Check_Delete, ui->Check_Move, ui->Check_Split, ui->Check_Database})
        box->setChecked(true);
    ui->Check_Optimize->setChecked(true);
    setControlsEnabled(true);
    setOptionBoxesEnabled(false);
    ui->Btn_Opt_Ok->setFocus();
}

void Ottimizza::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        ui->retranslateUi(this);
        givePageAltKeys(*this);
    }
    QWidget::changeEvent(event);
}

void Ottimizza::setOptionBoxesEnabled(bool enabled)
{
    for (QCheckBox *box : {ui->Check_Delete, ui->Check_Move, ui->Check_Split, ui->Check_Database})
        box->setEnabled(enabled);
}

void Ottimizza::setControlsEnabled(bool enabled)
{
    setOptionBoxesEnabled(enabled);
    ui->Check_Optimize->setEnabled(enabled);
    ui->Btn_Opt_Ok->setEnabled(enabled);
    ui->pushBtnBack->setEnabled(enabled);
}

void Ottimizza::on_stopActionPressed()
{
    abortRequested = true;
}

void Ottimizza::on_closeRequested()
{
    if (!m_running)
        return;
    m_closing = true;
    abortRequested = true;
}

void Ottimizza::on_Check_Optimize_clicked(bool checked)
{
    for (QCheckBox *box : {ui->Check_Delete, ui->Check_Move, ui->Check_Split, ui->Check_Database})
        box->setChecked(true);
    optDelete = true;
    optMove = true;
    optSplit = true;
    setOptionBoxesEnabled(!checked);
}

void Ottimizza::on_Check_Delete_clicked(bool checked)
{
    optDelete = checked;
}

void Ottimizza::on_Check_Move_clicked(bool checked)
{
    optMove = checked;
}

void Ottimizza::on_Check_Split_clicked(bool checked)
{
    optSplit = checked;
}

void Ottimizza::on_Btn_Opt_Ok_clicked()
{
    if (m_running)
        return;
    abortRequested = false;
    startAllOptimization();
}

void Ottimizza::on_pushBtnBack_clicked()
{
    emit backFromOttimizzaToFirstMenu();
}

/// The controls are disabled here and not in the slot of the button, since the transfer page starts a run as well.
void Ottimizza::startAllOptimization()
{
    if (m_running)
        return;
    const QScopedValueRollback<bool> running(m_running, true);
    const WorkLock lock;
    if (!lock.isTaken()) {
        tellOtherWindowWorks(window());
        return;
    }
    const StayAwake awake;
    setControlsEnabled(false);

    failCode = Success;
    rootPath = Player::find().root();
    m_run = std::make_unique<Run>(rootPath);
    // For the names that files go through on their way: unseeded, each start of the program would draw the same ones.
    std::srand(QRandomGenerator::global()->generate());
    if (rootPath.isEmpty()) {
        abortRequested = true;
        failCode = DeviceNotFound;
    }
    emit setProgressBarVisible(true);
    emit setProgressBarFormat(QStringLiteral("%p%"));
    runChosenSteps();
    finishRun();

    // Deliberate: the option boxes come back enabled even while the complete option is ticked.
    setControlsEnabled(true);
    if (isVisible())
        ui->Btn_Opt_Ok->setFocus();
}

void Ottimizza::finishRun()
{
    // The result page tells the user to unplug: nothing may be left in a cache then, nor may the player be gone
    // already.
    if (!abortRequested && failCode == Success && !run().player.flush([this] { return !abortRequested; }) &&
        !abortRequested) {
        qWarning() << "Ottimizza : flush failed :" << rootPath;
        failCode = DeviceNotFound;
    }
    const bool hasResult = !abortRequested || failCode != Success;
    if (hasResult && !run().kept.folder().isEmpty() && !QDir(run().kept.folder()).isEmpty())
        emit filesKept(run().kept.folder());
    emit setProgressBarVisible(false);
    m_closing = false;
    if (hasResult)
        emit backFromOttimizzaToEndOttimizza(failCode);
}

void Ottimizza::runChosenSteps()
{
    if (!abortRequested) {
        KeptFiles::forgetOldOnes();
        makeGoodKilledSplits();
    }
    if ((optDelete || optMove || optSplit) && !abortRequested)
        scan_directories();
    if (optDelete && !abortRequested)
        delete_files();
    if (optMove && !abortRequested)
        move_images();
    if (optMove && !abortRequested)
        move_videos();
    if (optSplit && !abortRequested)
        corvin_optimizer();
    if (ui->Check_Database->isChecked() && !abortRequested)
        createDiffDatabaseImportFile();
}

/// Exactly what the wildcard filters let through, but tested by us: a directory iterator that filters passes over
/// thousands of other files in one call, and no event is processed meanwhile.
bool Ottimizza::matchesSongFilter(const QString &fileName) const
{
    const int dot = fileName.lastIndexOf(QLatin1Char('.'));
    return dot >= 0 && std::any_of(songSuffixes.cbegin(), songSuffixes.cend(),
                                   [suffix = fileName.midRef(dot + 1)](const QString &known) {
                                       return suffix.compare(known, Qt::CaseInsensitive) == 0;
                                   });
}
