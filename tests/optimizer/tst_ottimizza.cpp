#include "pagerun.h"
#include "support/formsheets.h"
#include "support/languages.h"
#include "support/methods.h"
#include "support/pagepicture.h"
#include "support/pagetest.h"

class TestOttimizza : public QObject
{
    Q_OBJECT

private slots:
    void newPageIsHiddenWithEverythingChosen() {
        QWidget window;
        const Ottimizza page(&window);
        window.show(); // does not show the page with it
        QVERIFY(page.isHidden() && Ottimizza().isHidden());
        QVERIFY(page.optDelete && page.optMove && page.optSplit);
        QVERIFY(!page.abortRequested);
        QCOMPARE(page.failCode, 0);
        QVERIFY(page.rootPath.isEmpty());
    }

    void formatsAndLimitsAreFixed() {
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

    void textsStandLetterForLetter_data() {
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
    void textsStandLetterForLetter() {
        QFETCH(QString, text);
        const Ottimizza page;
        QCOMPARE(page.windowTitle(), "Ottimizza"_s);
        QCOMPARE(textOf(page, QTest::currentDataTag()), text);
        const MarkedTexts marked("Ottimizza");
        QCoreApplication::processEvents();
        QCOMPARE(textOf(page, QTest::currentDataTag()), "[%1]"_s.arg(text));
        QCOMPARE(page.windowTitle(), "[Ottimizza]"_s);
    }

    void styleSheetsStandLetterForLetter() {
        const Ottimizza page;
        QCOMPARE(page.styleSheet(), FormSheets::kContainer);
        const QList<QCheckBox *> boxes = page.findChildren<QCheckBox *>();
        QCOMPARE(boxes.size(), 5);
        for (const QCheckBox *box : boxes)
            QCOMPARE(box->styleSheet(), "QCheckBox {color: rgb(0,0,0);}\nQCheckBox:disabled {color: rgb(70,70,70);}"_s);
        for (const char *name : {"Btn_Opt_Ok", "pushBtnBack"})
            QCOMPARE(button(page, name)->cursor().shape(), Qt::PointingHandCursor);
    }

    // Whoever closes the window and shows what was kept came after these, in their own places.
    void signalsAndSlotsComeInTheirOrder() {
        const QStringList ours = words("filesKept(QString) on_closeRequested()");
        QStringList signalNames = methodsOf<Ottimizza>(QMetaMethod::Signal);
        QStringList slotNames = methodsOf<Ottimizza>(QMetaMethod::Slot);
        for (QStringList *names : {&signalNames, &slotNames})
            names->erase(std::remove_if(names->begin(), names->end(),
                                        [&ours](const QString &name) { return ours.contains(name); }),
                         names->end());
        QCOMPARE(signalNames, words("setProgressBarVisible(bool) setProgressBarMinVal(int) setProgressBarMaxVal(int) "
                                    "setProgressBarFormat(QString) updateProgressBarVal(int) "
                                    "updateLabelAction(QString) backFromOttimizzaToFirstMenu() "
                                    "backFromOttimizzaToEndOttimizza(int)"));
        QCOMPARE(slotNames, words("on_stopActionPressed() startAllOptimization() on_Check_Optimize_clicked(bool) "
                                  "on_Check_Delete_clicked(bool) on_Check_Move_clicked(bool) "
                                  "on_Check_Split_clicked(bool) on_Btn_Opt_Ok_clicked() on_pushBtnBack_clicked()"));
    }

    // Black text must never stand on the dark ground that the page's sheet gives to its children.
    void textsStandOnTheWindowsPicture() {
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
    void indicatorOfAnUntickedBoxIsSeen() {
        PageRun run({}, QStringList());
        run.page.resize(1000, 640);
        const QImage picture = pictureOf(run.page);
        for (const QString &name : kOptions) {
            const auto *box = child<QCheckBox>(run.page, qPrintable(name));
            QStyleOptionButton style;
            style.initFrom(box);
            const QRect place = box->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &style, box);
            QVERIFY2(picture.pixel(box->mapTo(&run.page, place.center())) != kGround, qPrintable(name));
        }
    }

    void shownPageHasEverythingTickedAndTheOptionsFixed() {
        PageRun run({}, QStringList());
        button(run.page, "Btn_Opt_Ok")->setEnabled(false);
        button(run.page, "pushBtnBack")->setEnabled(false);
        run.page.abortRequested = true;
        run.page.hide();
        run.page.show();
        QCOMPARE(run.ticked(), kBoxes);
        QCOMPARE(run.enabled(), words("Check_Optimize Btn_Opt_Ok pushBtnBack"));
        // Only clicks change the flags; the stop of an earlier run is forgotten.
        QCOMPARE(run.flags(), QList<bool>({false, false, false}));
        QVERIFY(!run.page.abortRequested);
    }

    void windowBackFromTheTaskBarKeepsTheChoice() {
        PageRun run({}, words("Check_Delete Check_Split"));
        run.page.abortRequested = true;
        QShowEvent event;
        QSpontaneKeyEvent::setSpontaneous(&event);
        static_cast<QObject &>(run.page).event(&event);
        QCOMPARE(run.ticked(), words("Check_Delete Check_Split"));
        QCOMPARE(run.enabled(), kControls);
        QVERIFY(run.page.abortRequested);
    }

    void uncheckedCompleteOptionLeavesAllTickedButEditable() {
        PageRun run({}, kOptions);
        QCOMPARE(run.ticked(), kOptions);
        QCOMPARE(run.enabled(), kControls);
        QCOMPARE(run.flags(), QList<bool>({true, true, true}));
        for (const QString &option : kOptions)
            run.clickBox(option);
        QCOMPARE(run.ticked(), QStringList());
        QCOMPARE(run.flags(), QList<bool>({false, false, false}));
        run.clickBox("Check_Optimize"_s);
        QCOMPARE(run.ticked(), kBoxes);
        QCOMPARE(run.enabled(), words("Check_Optimize Btn_Opt_Ok pushBtnBack"));
        QCOMPARE(run.flags(), QList<bool>({true, true, true}));
    }

    void clicksOnTheOptionsAreKept() {
        PageRun run({}, words("Check_Move Check_Split Check_Database"));
        QCOMPARE(run.flags(), QList<bool>({false, true, true}));
        run.clickBox("Check_Move"_s);
        QCOMPARE(run.flags(), QList<bool>({false, false, true}));
        run.clickBox("Check_Split"_s);
        QCOMPARE(run.flags(), QList<bool>({false, false, false}));
        run.clickBox("Check_Delete"_s);
        QCOMPARE(run.flags(), QList<bool>({true, false, false}));
    }

    void backButtonEmitsAndStopSetsTheFlag() {
        PageRun run;
        click(run.page, "pushBtnBack");
        QCOMPARE(run.told.lines(), words("backFromOttimizzaToFirstMenu"));
        run.page.on_stopActionPressed();
        QVERIFY(run.page.abortRequested);
    }
};

PAGE_TEST_MAIN(TestOttimizza)
#include "tst_ottimizza.moc"
