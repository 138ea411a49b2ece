#include "optimizerrun.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"
#include "support/languages.h"
#include "support/pagepicture.h"
#include "support/pagetest.h"

#include "songfactory/songfactory.h"

namespace {

const QStringList kOptions = words("Check_Delete Check_Move Check_Split Check_Database");
const QString kEnd = "backFromOttimizzaToEndOttimizza %1"_s;

void clickBox(const Ottimizza &page, const QString &name)
{
    QTest::mouseClick(child<QCheckBox>(page, qPrintable(name)), Qt::LeftButton, {}, QPoint(10, 10));
}

/// Shows the page and ticks these operations alone by clicks, as a user does.
void choose(Ottimizza &page, const QStringList &options)
{
    page.show();
    clickBox(page, "Check_Optimize"_s);
    for (const QString &option : kOptions) {
        if (!options.contains(option))
            clickBox(page, option);
    }
}

bool areEnabled(const Ottimizza &page, const QStringList &names, bool enabled = true)
{
    return std::all_of(names.begin(), names.end(), [&](const QString &name) {
        return child<QAbstractButton>(page, qPrintable(name))->isEnabled() == enabled;
    });
}
bool areTicked(const Ottimizza &page, const QStringList &names, bool ticked = true)
{
    return std::all_of(names.begin(), names.end(), [&](const QString &name) {
        return child<QAbstractButton>(page, qPrintable(name))->isChecked() == ticked;
    });
}
bool allControls(const Ottimizza &page, bool enabled)
{
    return areEnabled(page, kOptions + words("Check_Optimize Btn_Opt_Ok pushBtnBack"), enabled);
}

/// Which of the three flags are set, in the order of the boxes.
QString flags(const Ottimizza &page)
{
    return (page.optDelete ? "delete "_s : QString()) + (page.optMove ? "move "_s : QString()) +
           (page.optSplit ? "split"_s : QString());
}

} // namespace

class TestOttimizza : public QObject
{
    Q_OBJECT

private slots:
    void newPageIsHiddenWithEverythingChosen()
    {
        QWidget window;
        const Ottimizza page(&window);
        QVERIFY(page.isHidden());
        QCOMPARE(flags(page), "delete move split"_s);
        QVERIFY(!page.abortRequested);
        QCOMPARE(page.failCode, 0);
        QVERIFY(page.rootPath.isEmpty());
        window.show();
        QVERIFY(page.isHidden());
    }

    void formatsAndLimitsAreFixed()
    {
        const Ottimizza page;
        QCOMPARE(page.songSuffixes, words("mp3 midi mid mf3 mf4 mf5 kar xmp3 xmid"));
        QCOMPARE(page.songNameFilters, words("*.mp3 *.midi *.mid *.mf3 *.mf4 *.mf5 *.kar *.xmp3 *.xmid"));
        QCOMPARE(page.imageSuffixes, words("jpg jpeg png bmp"));
        QCOMPARE(page.videoSuffixes, words("avi mpg mpeg mp4 wmv mov"));
        QCOMPARE(page.companionSuffixes, words("cdg dat bak"));
        QCOMPARE(page.suffixFormatIndex.size(), 9);
        for (int i = 0; i < page.songSuffixes.size(); ++i)
            QCOMPARE(page.suffixFormatIndex.value(page.songSuffixes.at(i), -1), i);
        QCOMPARE(page.bigFolderThreshold, 1000);
        QCOMPARE(page.maxFilesPerSubfolder, 900);
    }

    void textsStandLetterForLetter_data()
    {
        columns<QString>("text");
        row("labelHeading", "Seleziona le operazioni che desideri effettuare:"_s);
        row("Check_Optimize", "Ottimizzazione completa"_s);
        row("labelDescrOptimize", "Esegue tutte le operazioni sotto elencate."_s);
        row("Check_Delete", "Cancella file non supportati"_s);
        row("labelDescrDelete", "Cancella tutti i file non supportati dalla memoria di Corvin4, i formati supportati "
                                "sono: jpg,png,bmp,mp3,mid,kar,mf3,mf4,mf5."_s);
        row("Check_Move", "Sposta immagini e video"_s);
        row("labelDescrMove", "Sposta tutti i video e le immagini presenti nella memoria di Corvin4, nelle cartelle "
                              "\"Videos\" e \"Images\"."_s);
        row("Check_Split", "Suddividi le basi in cartelle"_s);
        row("labelDescrSplit", "Le cartelle contenenti più di 1000 basi verranno suddivise in cartelle ordinate "
                               "secondo il titolo delle canzoni."_s);
        row("Check_Database", "Crea database"_s);
        row("labelDescrDatabase", "Crea il database delle canzoni prelevando le informazioni dai file, migliora i "
                                  "risultati delle ricerche"_s);
        row("Btn_Opt_Ok", "OTTIMIZZA"_s);
        row("pushBtnBack", "INDIETRO"_s);
    }
    void textsStandLetterForLetter()
    {
        QFETCH(QString, text);
        const Ottimizza page;
        QCOMPARE(page.windowTitle(), "Ottimizza"_s);
        QCOMPARE(textOf(page, QTest::currentDataTag()), text);
        const MarkedTexts marked("Ottimizza");
        QCoreApplication::processEvents();
        QCOMPARE(textOf(page, QTest::currentDataTag()), "[%1]"_s.arg(text));
        QCOMPARE(page.windowTitle(), "[Ottimizza]"_s);
    }

    void styleSheetsStandLetterForLetter()
    {
        const Ottimizza page;
        QCOMPARE(page.styleSheet(), "* {\n\tbackground-color: rgb(51, 51, 51);\n\tcolor: rgb(249,191,0);\n}\n\n"
                                    "*:disabled {\n\tcolor: rgb(200,200,200);\n}\n"_s);
        const QList<QCheckBox *> boxes = page.findChildren<QCheckBox *>();
        QCOMPARE(boxes.size(), 5);
        for (const QCheckBox *box : boxes)
            QCOMPARE(box->styleSheet(), "QCheckBox {color: rgb(0,0,0);}\nQCheckBox:disabled {color: rgb(70,70,70);}"_s);
        for (const char *name : {"Btn_Opt_Ok", "pushBtnBack"})
            QCOMPARE(button(page, name)->cursor().shape(), Qt::PointingHandCursor);
    }

    // Black text must never stand on the dark ground that the page's sheet gives to its children.
    void textsStandOnTheWindowsPicture()
    {
        Ottimizza page;
        page.resize(1000, 640);
        page.show();
        const QImage picture = pictureOf(page);
        int onPicture = 0;
        for (const QWidget *widget : page.findChildren<QWidget *>()) {
            if (!qobject_cast<const QLabel *>(widget) && !qobject_cast<const QCheckBox *>(widget))
                continue;
            ++onPicture;
            const QRect place = placeOn(page, *widget);
            QVERIFY(place.isValid());
            QCOMPARE(picture.pixel(place.topRight()), kGround);
            QCOMPARE(picture.pixel(place.bottomRight()), kGround);
            const QSize needed = widget->minimumSizeHint();
            QVERIFY2(needed.boundedTo(place.size()) == needed, qPrintable(widget->objectName()));
        }
        QCOMPARE(onPicture, 11);
        const QRect start = placeOn(page, *button(page, "Btn_Opt_Ok"));
        constexpr int kDark = 90;
        QVERIFY(QColor(picture.pixel(start.topLeft() + QPoint(20, 20))).lightness() < kDark);
    }

    // An unticked box is still a box: it must be seen on the picture.
    void indicatorOfAnUntickedBoxIsSeen()
    {
        Ottimizza page;
        page.resize(1000, 640);
        choose(page, {});
        const QImage picture = pictureOf(page);
        for (const QString &name : kOptions) {
            const auto *box = child<QCheckBox>(page, qPrintable(name));
            QStyleOptionButton style;
            style.initFrom(box);
            const QRect place = box->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &style, box);
            QVERIFY2(picture.pixel(box->mapTo(&page, place.center())) != kGround, qPrintable(name));
        }
    }

    void shownPageHasEverythingTickedAndTheOptionsFixed()
    {
        Ottimizza page;
        page.optDelete = page.optMove = page.optSplit = false;
        for (QCheckBox *box : page.findChildren<QCheckBox *>())
            box->setChecked(false);
        button(page, "Btn_Opt_Ok")->setEnabled(false);
        button(page, "pushBtnBack")->setEnabled(false);
        page.abortRequested = true;
        page.show();
        QVERIFY(areTicked(page, kOptions + words("Check_Optimize")));
        QVERIFY(areEnabled(page, kOptions, false));
        QVERIFY(areEnabled(page, words("Check_Optimize Btn_Opt_Ok pushBtnBack")));
        // Only clicks change the flags; the stop of an earlier run is forgotten.
        QCOMPARE(flags(page), QString());
        QVERIFY(!page.abortRequested);
    }

    void windowBackFromTheTaskBarKeepsTheChoice()
    {
        Ottimizza page;
        choose(page, words("Check_Delete Check_Split"));
        page.abortRequested = true;
        QShowEvent event;
        QSpontaneKeyEvent::setSpontaneous(&event);
        static_cast<QObject &>(page).event(&event);
        QVERIFY(areTicked(page, words("Check_Move Check_Database"), false));
        QVERIFY(areEnabled(page, words("Check_Delete")));
        QVERIFY(page.abortRequested);
    }

    void uncheckedCompleteOptionLeavesAllTickedButEditable()
    {
        Ottimizza page;
        choose(page, kOptions);
        QVERIFY(areTicked(page, words("Check_Optimize"), false));
        QVERIFY(areTicked(page, kOptions));
        QVERIFY(areEnabled(page, kOptions));
        QCOMPARE(flags(page), "delete move split"_s);
        for (const QString &option : kOptions)
            clickBox(page, option);
        QVERIFY(areTicked(page, kOptions, false));
        QCOMPARE(flags(page), QString());
        clickBox(page, "Check_Optimize"_s);
        QVERIFY(areTicked(page, kOptions + words("Check_Optimize")));
        QVERIFY(areEnabled(page, kOptions, false));
        QCOMPARE(flags(page), "delete move split"_s);
    }

    void clicksOnTheOptionsAreKept()
    {
        Ottimizza page;
        choose(page, words("Check_Move Check_Split Check_Database"));
        QCOMPARE(flags(page), "move split"_s);
        clickBox(page, "Check_Move"_s);
        QCOMPARE(flags(page), "split"_s);
        clickBox(page, "Check_Split"_s);
        QCOMPARE(flags(page), QString());
        clickBox(page, "Check_Delete"_s);
        QCOMPARE(flags(page), "delete "_s);
    }

    void backButtonEmits()
    {
        Ottimizza page;
        page.show();
        SignalRecorder told(page);
        click(page, "pushBtnBack");
        QCOMPARE(told.lines(), words("backFromOttimizzaToFirstMenu"));
    }

    void stopSetsTheFlag()
    {
        Ottimizza page;
        page.on_stopActionPressed();
        QVERIFY(page.abortRequested);
    }

    void unpluggedDeviceLeadsToTheFailurePage()
    {
        OptimizerRun run;
        run.player.addFile("A/t.txt"_s);
        SimulatedPlayer::disconnect();
        run.page.show();
        click(run.page, "Btn_Opt_Ok");
        QCOMPARE(run.told.lines(), QStringList({"visible 1"_s, "format %p%"_s, "visible 0"_s, kEnd.arg(1)}));
        QCOMPARE(run.player.files(), words("A/t.txt"));
        QCOMPARE(run.page.failCode, 1);
        QVERIFY(allControls(run.page, true));
        // Plugged in again, the next run works.
        run.player.connect();
        click(run.page, "Btn_Opt_Ok");
        QCOMPARE(run.lastLine(), kEnd.arg(0));
        QVERIFY(!run.player.exists("A/t.txt"_s));
    }

    void completeRunTakesItsStepsInOrder()
    {
        OptimizerRun run;
        run.page.show();
        click(run.page, "Btn_Opt_Ok");
        QCOMPARE(run.told.labels(),
                 QStringList({"Scansione cartelle in corso..."_s, "Cancellazione file non supportati..."_s,
                              "Operazione completata"_s, "Spostamento immagini..."_s, "Operazione completata"_s,
                              "Spostamento video..."_s, "Operazione completata"_s, "Caricamento risorse..."_s,
                              "Operazione completata"_s, "Caricamento dati in corso..."_s,
                              "Creazione database in corso..."_s}));
        const QStringList lines = run.told.lines();
        QCOMPARE(lines.mid(0, 2), QStringList({"visible 1"_s, "format %p%"_s}));
        QCOMPARE(lines.mid(lines.size() - 2), QStringList({"visible 0"_s, kEnd.arg(0)}));
        QCOMPARE(run.page.rootPath, run.player.root());
    }

    void onlyTheTickedStepsRun_data()
    {
        columns<bool, bool, bool, bool>("remove", "move", "split", "database");
        for (int choice = 0; choice < 16; ++choice)
            row(qPrintable("choice %1"_s.arg(choice)), (choice & 1) != 0, (choice & 2) != 0, (choice & 4) != 0,
                (choice & 8) != 0);
    }
    void onlyTheTickedStepsRun()
    {
        QFETCH(bool, remove);
        QFETCH(bool, move);
        QFETCH(bool, split);
        QFETCH(bool, database);
        QStringList chosen;
        QStringList expected;
        if (remove || move || split)
            expected.append("Scansione cartelle in corso..."_s);
        if (remove) {
            chosen.append("Check_Delete"_s);
            expected.append("Cancellazione file non supportati..."_s);
        }
        if (move) {
            chosen.append("Check_Move"_s);
            expected += {"Spostamento immagini..."_s, "Spostamento video..."_s};
        }
        if (split) {
            chosen.append("Check_Split"_s);
            expected.append("Caricamento risorse..."_s);
        }
        if (database) {
            chosen.append("Check_Database"_s);
            expected.append("Caricamento dati in corso..."_s);
        }
        OptimizerRun run;
        choose(run.page, chosen);
        click(run.page, "Btn_Opt_Ok");
        QStringList labels = run.told.labels();
        labels.removeAll("Operazione completata"_s);
        labels.removeAll("Creazione database in corso..."_s);
        QCOMPARE(labels, expected);
        QCOMPARE(run.lastLine(), kEnd.arg(0));
        // The database step alone makes no folder and moves nothing.
        QCOMPARE(run.player.exists("My Songs"_s), remove || move || split);
    }

    void stopDuringTheDeletionEndsWithoutResultPage()
    {
        OptimizerRun run;
        run.addNumbered("A/"_s, 5, "txt"_s);
        run.player.addFile("A/p.jpg"_s);
        choose(run.page, words("Check_Delete Check_Move"));
        run.stopAtValue(2);
        click(run.page, "Btn_Opt_Ok");
        QCOMPARE(run.ends(), QStringList());
        QCOMPARE(run.lastLine(), "visible 0"_s);
        QCOMPARE(run.player.files().size(), 4);
        QCOMPARE(run.told.count("label Spostamento immagini..."_s), 0);
        QVERIFY(run.page.isVisible());
        QVERIFY(allControls(run.page, true));
    }

    void stopDuringTheImagesLeavesTheVideos()
    {
        OptimizerRun run;
        run.addFiles(words("A/p.jpg A/v.avi"));
        choose(run.page, words("Check_Move Check_Split Check_Database"));
        run.stopAtLabel("Spostamento immagini"_s);
        click(run.page, "Btn_Opt_Ok");
        QCOMPARE(run.player.files(), words("A/p.jpg A/v.avi"));
        QCOMPARE(run.told.labels().last(), "Spostamento immagini..."_s);
        QCOMPARE(run.ends(), QStringList());
    }

    void stopDuringTheSplitStillEndsInSuccess_data()
    {
        columns<bool>("database");
        row("with the database step", true);
        row("without it", false);
    }
    void stopDuringTheSplitStillEndsInSuccess()
    {
        QFETCH(bool, database);
        OptimizerRun run;
        run.addNumbered("Big/b"_s, 1001);
        choose(run.page, words(database ? "Check_Split Check_Database" : "Check_Split"));
        run.stopAtLabel("Organizzazione in sottocartelle"_s);
        click(run.page, "Btn_Opt_Ok");
        QCOMPARE(run.player.folders("Big"_s), words("B0 B1"));
        QCOMPARE(run.ends(), words("0"));
        QCOMPARE(run.told.count("log createDiffDatabaseImportFile : END"_s), database ? 1 : 0);
        QVERIFY(!run.page.abortRequested);
    }

    void stopDuringTheDatabaseStepEndsWithoutResultPage()
    {
        OptimizerRun run;
        run.addNumbered("A/"_s, 3, "mid"_s, SongFactory::midi(SongInfo()));
        choose(run.page, words("Check_Database"));
        run.stopAtValue(1);
        click(run.page, "Btn_Opt_Ok");
        QCOMPARE(run.ends(), QStringList());
        QVERIFY(run.player.exists("CorvinImportDB.sql"_s));
    }

    void playerGoneBeforeTheDatabaseStepIsAFailure()
    {
        OptimizerRun run;
        run.player.addFile("A/broken.mid"_s);
        run.page.show();
        run.atLabel("Caricamento risorse..."_s, &SimulatedPlayer::disconnect);
        click(run.page, "Btn_Opt_Ok");
        QCOMPARE(run.ends(), words("1"));
        QCOMPARE(run.player.files(), words("A/broken.mid"));
    }

    void importFileThatCannotBeMadeIsAFailure()
    {
        OptimizerRun run;
        run.player.addFolder("CorvinImportDB.sql"_s);
        run.page.show();
        BoxAnswerer boxes;
        boxes.answer(Titles::kNoDatabase, Buttons::kOk);
        click(run.page, "Btn_Opt_Ok");
        const QStringList lines = run.told.lines();
        QCOMPARE(lines.mid(lines.size() - 2), QStringList({"visible 0"_s, kEnd.arg(2)}));
        // The next run starts afresh.
        QDir(run.player.path("CorvinImportDB.sql"_s)).removeRecursively();
        click(run.page, "Btn_Opt_Ok");
        QCOMPARE(run.lastLine(), kEnd.arg(0));
    }

    void controlsAreDisabledWhileARunWorks_data()
    {
        columns<bool>("fromTheButton");
        row("started by OTTIMIZZA", true);
        row("started by the transfer page", false);
    }
    void controlsAreDisabledWhileARunWorks()
    {
        QFETCH(bool, fromTheButton);
        OptimizerRun run;
        run.page.show();
        int tested = 0;
        bool disabled = true;
        run.atLabel(QString(), [&] {
            ++tested;
            disabled = disabled && allControls(run.page, false);
        });
        if (fromTheButton)
            click(run.page, "Btn_Opt_Ok");
        else
            run.page.startAllOptimization();
        QVERIFY(tested > 5);
        QVERIFY(disabled);
        // Wanted so: the option boxes come back enabled though the complete option is ticked.
        QVERIFY(allControls(run.page, true));
        QVERIFY(areTicked(run.page, words("Check_Optimize")));
    }

    void startButtonForgetsAnEarlierStop()
    {
        OptimizerRun run;
        run.page.show();
        run.page.on_stopActionPressed();
        click(run.page, "Btn_Opt_Ok");
        QCOMPARE(run.ends(), words("0"));
    }

    // FINE shows the page and starts the run: a stop of the transfer before must not end it.
    void runBehindFineStartsWithAClearStopFlag()
    {
        OptimizerRun run;
        run.page.on_stopActionPressed();
        run.page.show();
        run.page.startAllOptimization();
        QCOMPARE(run.ends(), words("0"));
    }

    void secondStartDuringARunIsRefused()
    {
        OptimizerRun run;
        run.player.addFile("A/t.txt"_s);
        run.page.show();
        bool stopKept = false;
        run.atLabel("Spostamento immagini"_s, [&] {
            run.page.on_stopActionPressed();
            run.page.startAllOptimization();
            run.page.on_Btn_Opt_Ok_clicked();
            run.page.hide();
            run.page.show();
            stopKept = run.page.abortRequested && allControls(run.page, false);
        });
        run.page.startAllOptimization();
        QVERIFY(stopKept);
        QCOMPARE(run.told.of("visible"_s), words("1 0"));
        QCOMPARE(run.ends(), QStringList());
    }
};

PAGE_TEST_MAIN(TestOttimizza)
#include "tst_ottimizza.moc"
