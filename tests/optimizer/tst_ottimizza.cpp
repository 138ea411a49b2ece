#include "pagetranslator.h"
#include "runrecorder.h"
#include "support/boxanswerer.h"
#include "support/simulatedplayer.h"

#include "optimizer/ottimizza.h"
#include "songfactory/songfactory.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QShowEvent>
#include <QSignalSpy>
#include <QStyleOptionButton>
#include <QTest>

#include <algorithm>

class tst_Ottimizza : public QObject
{
    Q_OBJECT

private:
    static QCheckBox *box(const Ottimizza &page, const char *name)
    {
        return page.findChild<QCheckBox *>(QString::fromLatin1(name));
    }
    static QList<QCheckBox *> optionBoxes(const Ottimizza &page)
    {
        return {box(page, "Check_Delete"), box(page, "Check_Move"), box(page, "Check_Split"),
                box(page, "Check_Database")};
    }
    static QPushButton *button(const Ottimizza &page, const char *name)
    {
        return page.findChild<QPushButton *>(QString::fromLatin1(name));
    }
    static bool allControls(const Ottimizza &page, bool enabled)
    {
        QList<QAbstractButton *> controls = {box(page, "Check_Optimize"), button(page, "Btn_Opt_Ok"),
                                             button(page, "pushBtnBack")};
        const QList<QCheckBox *> boxes = optionBoxes(page);
        for (QCheckBox *option : boxes)
            controls.append(option);
        return std::all_of(controls.cbegin(), controls.cend(),
                           [enabled](const QAbstractButton *control) { return control->isEnabled() == enabled; });
    }
    /// Ticks the given operations alone by clicks, as a user does.
    static void choose(Ottimizza &page, bool remove, bool move, bool split, bool database)
    {
        page.show();
        QTest::mouseClick(box(page, "Check_Optimize"), Qt::LeftButton, {}, QPoint(10, 10));
        const QList<bool> wanted = {remove, move, split, database};
        const QList<QCheckBox *> boxes = optionBoxes(page);
        for (int i = 0; i < boxes.size(); ++i) {
            if (!wanted.at(i))
                QTest::mouseClick(boxes.at(i), Qt::LeftButton, {}, QPoint(10, 10));
        }
    }
    static void addBigFolder(SimulatedPlayer &player)
    {
        for (int i = 0; i < 1001; ++i)
            player.addFile(QStringLiteral("Big/b%1.mid").arg(i, 4, 10, QLatin1Char('0')));
    }

private slots:
    void newPageIsHiddenWithEverythingChosen()
    {
        Ottimizza page;
        QVERIFY(page.isHidden());
        QVERIFY(page.optDelete);
        QVERIFY(page.optMove);
        QVERIFY(page.optSplit);
        QVERIFY(!page.abortRequested);
        QCOMPARE(page.failCode, 0);
        QVERIFY(page.rootPath.isEmpty());
    }

    void childOfAShownWindowStaysHidden()
    {
        QWidget window;
        Ottimizza page(&window);
        window.show();
        QVERIFY(page.isHidden());
    }

    void formatsAndLimitsAreFixed()
    {
        const Ottimizza page;
        const auto list = [](const char *words) { return QString::fromLatin1(words).split(QLatin1Char(' ')); };
        QCOMPARE(page.songSuffixes, list("mp3 midi mid mf3 mf4 mf5 kar xmp3 xmid"));
        QCOMPARE(page.songNameFilters, list("*.mp3 *.midi *.mid *.mf3 *.mf4 *.mf5 *.kar *.xmp3 *.xmid"));
        QCOMPARE(page.imageSuffixes, list("jpg jpeg png bmp"));
        QCOMPARE(page.videoSuffixes, list("avi mpg mpeg mp4 wmv mov"));
        QCOMPARE(page.companionSuffixes, list("cdg dat bak"));
        QCOMPARE(page.suffixFormatIndex.size(), 9);
        for (int i = 0; i < page.songSuffixes.size(); ++i)
            QCOMPARE(page.suffixFormatIndex.value(page.songSuffixes.at(i), -1), i);
        QCOMPARE(page.bigFolderThreshold, 1000);
        QCOMPARE(page.maxFilesPerSubfolder, 900);
    }

    void textsStandLetterForLetter_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, const char *text) {
            QTest::newRow(name) << QString::fromLatin1(name) << QString::fromUtf8(text);
        };
        row("labelHeading", "Seleziona le operazioni che desideri effettuare:");
        row("Check_Optimize", "Ottimizzazione completa");
        row("labelDescrOptimize", "Esegue tutte le operazioni sotto elencate.");
        row("Check_Delete", "Cancella file non supportati");
        row("labelDescrDelete", "Cancella tutti i file non supportati dalla memoria di Corvin4, i formati supportati "
                                "sono: jpg,png,bmp,mp3,mid,kar,mf3,mf4,mf5.");
        row("Check_Move", "Sposta immagini e video");
        row("labelDescrMove", "Sposta tutti i video e le immagini presenti nella memoria di Corvin4, nelle cartelle "
                              "\"Videos\" e \"Images\".");
        row("Check_Split", "Suddividi le basi in cartelle");
        row("labelDescrSplit",
            "Le cartelle contenenti più di 1000 basi verranno suddivise in cartelle ordinate secondo "
            "il titolo delle canzoni.");
        row("Check_Database", "Crea database");
        row("labelDescrDatabase", "Crea il database delle canzoni prelevando le informazioni dai file, migliora i "
                                  "risultati delle ricerche");
        row("Btn_Opt_Ok", "OTTIMIZZA");
        row("pushBtnBack", "INDIETRO");
    }
    void textsStandLetterForLetter()
    {
        QFETCH(QString, name);
        QFETCH(QString, text);
        Ottimizza page;
        QCOMPARE(page.windowTitle(), QStringLiteral("Ottimizza"));
        const QWidget *widget = page.findChild<QWidget *>(name);
        QVERIFY(widget);
        QCOMPARE(widget->property("text").toString(), text);
        const PageTranslator translator("Ottimizza");
        QCoreApplication::processEvents();
        QCOMPARE(widget->property("text").toString(), QLatin1Char('[') + text + QLatin1Char(']'));
        QCOMPARE(page.windowTitle(), QStringLiteral("[Ottimizza]"));
    }

    void styleSheetsStandLetterForLetter()
    {
        Ottimizza page;
        QCOMPARE(page.styleSheet(),
                 QStringLiteral("* {\n\tbackground-color: rgb(51, 51, 51);\n\tcolor: rgb(249,191,0);\n}\n\n"
                                "*:disabled {\n\tcolor: rgb(200,200,200);\n}\n"));
        const QList<QCheckBox *> boxes = page.findChildren<QCheckBox *>();
        QCOMPARE(boxes.size(), 5);
        for (const QCheckBox *check : boxes)
            QCOMPARE(check->styleSheet(),
                     QStringLiteral("QCheckBox {color: rgb(0,0,0);}\nQCheckBox:disabled {color: rgb(70,70,70);}"));
        for (const char *name : {"Btn_Opt_Ok", "pushBtnBack"})
            QCOMPARE(button(page, name)->cursor().shape(), Qt::PointingHandCursor);
    }

    // Black text must never stand on the dark ground that the page's sheet gives to its children.
    void textsStandOnTheWindowsPicture()
    {
        constexpr QRgb kPicture = qRgb(220, 220, 220);
        Ottimizza page;
        page.resize(1000, 640);
        page.show();
        QImage image(page.size(), QImage::Format_RGB32);
        image.fill(kPicture);
        QPainter painter(&image);
        page.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
        painter.end();
        const QString shots = qEnvironmentVariable("CORVIN_SCREENSHOTS");
        if (!shots.isEmpty())
            QVERIFY(image.save(shots + QStringLiteral("/ottimizza.png")));
        QList<QWidget *> onPicture;
        for (QLabel *label : page.findChildren<QLabel *>())
            onPicture.append(label);
        for (QCheckBox *check : page.findChildren<QCheckBox *>())
            onPicture.append(check);
        QCOMPARE(onPicture.size(), 11);
        for (const QWidget *widget : qAsConst(onPicture)) {
            const QRect place(widget->mapTo(&page, QPoint()), widget->size());
            QVERIFY(place.isValid());
            QCOMPARE(image.pixel(place.topRight()), kPicture);
            QCOMPARE(image.pixel(place.bottomRight()), kPicture);
            QVERIFY2(place.width() >= widget->minimumSizeHint().width(), qPrintable(widget->objectName()));
            QVERIFY2(place.height() >= widget->minimumSizeHint().height(), qPrintable(widget->objectName()));
        }
        const QPushButton *start = button(page, "Btn_Opt_Ok");
        const QColor ground = image.pixel(start->mapTo(&page, QPoint(20, 20)));
        constexpr int kDark = 90;
        QVERIFY(ground.lightness() < kDark);
    }

    // An unticked box is still a box: it must be seen on the picture.
    void indicatorOfAnUntickedBoxIsSeen()
    {
        constexpr QRgb kPicture = qRgb(220, 220, 220);
        Ottimizza page;
        page.resize(1000, 640);
        choose(page, false, false, false, false);
        QImage image(page.size(), QImage::Format_RGB32);
        image.fill(kPicture);
        QPainter painter(&image);
        page.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
        painter.end();
        const QString shots = qEnvironmentVariable("CORVIN_SCREENSHOTS");
        if (!shots.isEmpty())
            QVERIFY(image.save(shots + QStringLiteral("/ottimizza_unticked.png")));
        for (const QCheckBox *option : optionBoxes(page)) {
            QStyleOptionButton style;
            style.initFrom(option);
            const QRect place = option->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &style, option);
            QVERIFY2(image.pixel(option->mapTo(&page, place.center())) != kPicture, qPrintable(option->objectName()));
        }
    }

    void shownPageHasEverythingTickedAndTheOptionsFixed()
    {
        Ottimizza page;
        page.optDelete = false;
        page.optMove = false;
        page.optSplit = false;
        for (QCheckBox *option : optionBoxes(page))
            option->setChecked(false);
        box(page, "Check_Optimize")->setChecked(false);
        button(page, "Btn_Opt_Ok")->setEnabled(false);
        button(page, "pushBtnBack")->setEnabled(false);
        page.abortRequested = true;
        page.show();
        for (const QCheckBox *option : optionBoxes(page)) {
            QVERIFY(option->isChecked());
            QVERIFY(!option->isEnabled());
        }
        QVERIFY(box(page, "Check_Optimize")->isChecked());
        QVERIFY(box(page, "Check_Optimize")->isEnabled());
        QVERIFY(button(page, "Btn_Opt_Ok")->isEnabled());
        QVERIFY(button(page, "pushBtnBack")->isEnabled());
        // Only clicks change the flags; the stop of an earlier run is forgotten.
        QVERIFY(!page.optDelete);
        QVERIFY(!page.optMove);
        QVERIFY(!page.optSplit);
        QVERIFY(!page.abortRequested);
    }

    void windowBackFromTheTaskBarKeepsTheChoice()
    {
        Ottimizza page;
        choose(page, true, false, true, false);
        page.abortRequested = true;
        QShowEvent event;
        QSpontaneKeyEvent::setSpontaneous(&event);
        static_cast<QObject &>(page).event(&event);
        QVERIFY(!box(page, "Check_Move")->isChecked());
        QVERIFY(!box(page, "Check_Database")->isChecked());
        QVERIFY(box(page, "Check_Delete")->isEnabled());
        QVERIFY(page.abortRequested);
    }

    void uncheckedCompleteOptionLeavesAllTickedButEditable()
    {
        Ottimizza page;
        page.show();
        QTest::mouseClick(box(page, "Check_Optimize"), Qt::LeftButton, {}, QPoint(10, 10));
        QVERIFY(!box(page, "Check_Optimize")->isChecked());
        for (const QCheckBox *option : optionBoxes(page)) {
            QVERIFY(option->isChecked());
            QVERIFY(option->isEnabled());
        }
        QVERIFY(page.optDelete && page.optMove && page.optSplit);
        for (QCheckBox *option : optionBoxes(page)) {
            QTest::mouseClick(option, Qt::LeftButton, {}, QPoint(10, 10));
            QVERIFY(!option->isChecked());
        }
        QVERIFY(!page.optDelete && !page.optMove && !page.optSplit);
        QTest::mouseClick(box(page, "Check_Optimize"), Qt::LeftButton, {}, QPoint(10, 10));
        QVERIFY(box(page, "Check_Optimize")->isChecked());
        for (const QCheckBox *option : optionBoxes(page)) {
            QVERIFY(option->isChecked());
            QVERIFY(!option->isEnabled());
        }
        QVERIFY(page.optDelete && page.optMove && page.optSplit);
    }

    void clicksOnTheOptionsAreKept()
    {
        Ottimizza page;
        choose(page, false, true, true, true);
        QVERIFY(!page.optDelete && page.optMove && page.optSplit);
        QTest::mouseClick(box(page, "Check_Move"), Qt::LeftButton, {}, QPoint(10, 10));
        QVERIFY(!page.optDelete && !page.optMove && page.optSplit);
        QTest::mouseClick(box(page, "Check_Split"), Qt::LeftButton, {}, QPoint(10, 10));
        QVERIFY(!page.optDelete && !page.optMove && !page.optSplit);
        QTest::mouseClick(box(page, "Check_Delete"), Qt::LeftButton, {}, QPoint(10, 10));
        QVERIFY(page.optDelete && !page.optMove && !page.optSplit);
    }

    void backButtonEmits()
    {
        Ottimizza page;
        page.show();
        QSignalSpy spy(&page, &Ottimizza::backFromOttimizzaToFirstMenu);
        QTest::mouseClick(button(page, "pushBtnBack"), Qt::LeftButton);
        QCOMPARE(spy.size(), 1);
    }

    void stopSetsTheFlag()
    {
        Ottimizza page;
        page.on_stopActionPressed();
        QVERIFY(page.abortRequested);
    }

    void unpluggedDeviceLeadsToTheFailurePage()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("A/t.txt"));
        SimulatedPlayer::disconnect();
        Ottimizza page;
        page.show();
        RunRecorder recorder(page);
        QTest::mouseClick(button(page, "Btn_Opt_Ok"), Qt::LeftButton);
        QCOMPARE(recorder.lines(), QStringList({QStringLiteral("visible 1"), QStringLiteral("format %p%"),
                                                QStringLiteral("visible 0"), QStringLiteral("end 1")}));
        QCOMPARE(player.files(), QStringList(QStringLiteral("A/t.txt")));
        QCOMPARE(page.failCode, 1);
        QVERIFY(allControls(page, true));
        // Plugged in again, the next run works.
        player.connect();
        QTest::mouseClick(button(page, "Btn_Opt_Ok"), Qt::LeftButton);
        QCOMPARE(recorder.lines().last(), QStringLiteral("end 0"));
        QVERIFY(!player.exists(QStringLiteral("A/t.txt")));
    }

    void completeRunTakesItsStepsInOrder()
    {
        SimulatedPlayer player;
        Ottimizza page;
        page.show();
        RunRecorder recorder(page);
        QTest::mouseClick(button(page, "Btn_Opt_Ok"), Qt::LeftButton);
        QCOMPARE(recorder.labels(),
                 QStringList({QStringLiteral("Scansione cartelle in corso..."),
                              QStringLiteral("Cancellazione file non supportati..."),
                              QStringLiteral("Operazione completata"), QStringLiteral("Spostamento immagini..."),
                              QStringLiteral("Operazione completata"), QStringLiteral("Spostamento video..."),
                              QStringLiteral("Operazione completata"), QStringLiteral("Caricamento risorse..."),
                              QStringLiteral("Operazione completata"), QStringLiteral("Caricamento dati in corso..."),
                              QStringLiteral("Creazione database in corso...")}));
        QCOMPARE(recorder.lines().mid(0, 2), QStringList({QStringLiteral("visible 1"), QStringLiteral("format %p%")}));
        QCOMPARE(recorder.lines().mid(recorder.lines().size() - 2),
                 QStringList({QStringLiteral("visible 0"), QStringLiteral("end 0")}));
        QCOMPARE(page.rootPath, player.root());
    }

    void onlyTheTickedStepsRun_data()
    {
        QTest::addColumn<bool>("remove");
        QTest::addColumn<bool>("move");
        QTest::addColumn<bool>("split");
        QTest::addColumn<bool>("database");
        for (int choice = 0; choice < 16; ++choice) {
            QTest::addRow("choice %d", choice)
                << ((choice & 1) != 0) << ((choice & 2) != 0) << ((choice & 4) != 0) << ((choice & 8) != 0);
        }
    }
    void onlyTheTickedStepsRun()
    {
        QFETCH(bool, remove);
        QFETCH(bool, move);
        QFETCH(bool, split);
        QFETCH(bool, database);
        SimulatedPlayer player;
        Ottimizza page;
        choose(page, remove, move, split, database);
        RunRecorder recorder(page);
        QTest::mouseClick(button(page, "Btn_Opt_Ok"), Qt::LeftButton);
        QStringList labels = recorder.labels();
        labels.removeAll(QStringLiteral("Operazione completata"));
        labels.removeAll(QStringLiteral("Creazione database in corso..."));
        QStringList expected;
        if (remove || move || split)
            expected.append(QStringLiteral("Scansione cartelle in corso..."));
        if (remove)
            expected.append(QStringLiteral("Cancellazione file non supportati..."));
        if (move)
            expected += {QStringLiteral("Spostamento immagini..."), QStringLiteral("Spostamento video...")};
        if (split)
            expected.append(QStringLiteral("Caricamento risorse..."));
        if (database)
            expected.append(QStringLiteral("Caricamento dati in corso..."));
        QCOMPARE(labels, expected);
        QCOMPARE(recorder.lines().last(), QStringLiteral("end 0"));
        // The database step alone makes no folder and moves nothing.
        QCOMPARE(player.exists(QStringLiteral("My Songs")), remove || move || split);
    }

    void stopDuringTheDeletionEndsWithoutResultPage()
    {
        SimulatedPlayer player;
        for (int i = 0; i < 5; ++i)
            player.addFile(QStringLiteral("A/%1.txt").arg(i));
        player.addFile(QStringLiteral("A/p.jpg"));
        Ottimizza page;
        choose(page, true, true, false, false);
        RunRecorder recorder(page);
        connect(&page, &Ottimizza::updateProgressBarVal, &page, [&page](int value) {
            if (value == 2)
                page.on_stopActionPressed();
        });
        QTest::mouseClick(button(page, "Btn_Opt_Ok"), Qt::LeftButton);
        QCOMPARE(recorder.of(QStringLiteral("end")), QStringList());
        QCOMPARE(recorder.lines().last(), QStringLiteral("visible 0"));
        QCOMPARE(player.files().size(), 4);
        QVERIFY(!recorder.labels().contains(QStringLiteral("Spostamento immagini...")));
        QVERIFY(page.isVisible());
        QVERIFY(allControls(page, true));
    }

    void stopDuringTheImagesLeavesTheVideos()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("A/p.jpg"));
        player.addFile(QStringLiteral("A/v.avi"));
        Ottimizza page;
        choose(page, false, true, true, true);
        RunRecorder recorder(page);
        connect(&page, &Ottimizza::updateLabelAction, &page, [&page](const QString &text) {
            if (text.startsWith(QLatin1String("Spostamento immagini")))
                page.on_stopActionPressed();
        });
        QTest::mouseClick(button(page, "Btn_Opt_Ok"), Qt::LeftButton);
        QCOMPARE(player.files(), QStringList({QStringLiteral("A/p.jpg"), QStringLiteral("A/v.avi")}));
        QCOMPARE(recorder.labels().last(), QStringLiteral("Spostamento immagini..."));
        QCOMPARE(recorder.of(QStringLiteral("end")), QStringList());
    }

    void stopDuringTheSplitStillEndsInSuccess_data()
    {
        QTest::addColumn<bool>("database");
        QTest::newRow("with the database step") << true;
        QTest::newRow("without it") << false;
    }
    void stopDuringTheSplitStillEndsInSuccess()
    {
        QFETCH(bool, database);
        SimulatedPlayer player;
        addBigFolder(player);
        Ottimizza page;
        choose(page, false, false, true, database);
        RunRecorder recorder(page);
        connect(&page, &Ottimizza::updateLabelAction, &page, [&page](const QString &text) {
            if (text.contains(QLatin1String("Organizzazione in sottocartelle")))
                page.on_stopActionPressed();
        });
        QTest::mouseClick(button(page, "Btn_Opt_Ok"), Qt::LeftButton);
        QCOMPARE(player.folders(QStringLiteral("Big")), QStringList({QStringLiteral("B0"), QStringLiteral("B1")}));
        QCOMPARE(recorder.of(QStringLiteral("end")), QStringList(QStringLiteral("0")));
        QCOMPARE(recorder.logged().contains(QStringLiteral("createDiffDatabaseImportFile : END")), database);
        QVERIFY(!page.abortRequested);
    }

    void stopDuringTheDatabaseStepEndsWithoutResultPage()
    {
        SimulatedPlayer player;
        for (int i = 0; i < 3; ++i)
            player.addFile(QStringLiteral("A/%1.mid").arg(i), SongFactory::midi(SongInfo()));
        Ottimizza page;
        choose(page, false, false, false, true);
        RunRecorder recorder(page);
        connect(&page, &Ottimizza::updateProgressBarVal, &page, [&page](int value) {
            if (value == 1)
                page.on_stopActionPressed();
        });
        QTest::mouseClick(button(page, "Btn_Opt_Ok"), Qt::LeftButton);
        QCOMPARE(recorder.of(QStringLiteral("end")), QStringList());
        QVERIFY(player.exists(QStringLiteral("CorvinImportDB.sql")));
    }

    void playerGoneBeforeTheDatabaseStepIsAFailure()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("A/broken.mid"));
        Ottimizza page;
        page.show();
        RunRecorder recorder(page);
        connect(&page, &Ottimizza::updateLabelAction, &page, [](const QString &text) {
            if (text == QLatin1String("Caricamento risorse..."))
                SimulatedPlayer::disconnect();
        });
        QTest::mouseClick(button(page, "Btn_Opt_Ok"), Qt::LeftButton);
        QCOMPARE(recorder.of(QStringLiteral("end")), QStringList(QStringLiteral("1")));
        QCOMPARE(player.files(), QStringList(QStringLiteral("A/broken.mid")));
    }

    void importFileThatCannotBeMadeIsAFailure()
    {
        SimulatedPlayer player;
        player.addFolder(QStringLiteral("CorvinImportDB.sql"));
        Ottimizza page;
        page.show();
        RunRecorder recorder(page);
        BoxAnswerer boxes;
        boxes.answer(QStringLiteral("Errore"), QStringLiteral("OK"));
        QTest::mouseClick(button(page, "Btn_Opt_Ok"), Qt::LeftButton);
        QCOMPARE(recorder.lines().mid(recorder.lines().size() - 2),
                 QStringList({QStringLiteral("visible 0"), QStringLiteral("end 2")}));
        // The next run starts afresh.
        QDir(player.path(QStringLiteral("CorvinImportDB.sql"))).removeRecursively();
        QTest::mouseClick(button(page, "Btn_Opt_Ok"), Qt::LeftButton);
        QCOMPARE(recorder.lines().last(), QStringLiteral("end 0"));
    }

    void controlsAreDisabledWhileARunWorks_data()
    {
        QTest::addColumn<bool>("fromTheButton");
        QTest::newRow("started by OTTIMIZZA") << true;
        QTest::newRow("started by the transfer page") << false;
    }
    void controlsAreDisabledWhileARunWorks()
    {
        QFETCH(bool, fromTheButton);
        SimulatedPlayer player;
        Ottimizza page;
        page.show();
        int tested = 0;
        bool disabled = true;
        connect(&page, &Ottimizza::updateLabelAction, &page, [&] {
            ++tested;
            disabled = disabled && allControls(page, false);
        });
        if (fromTheButton)
            QTest::mouseClick(button(page, "Btn_Opt_Ok"), Qt::LeftButton);
        else
            page.startAllOptimization();
        QVERIFY(tested > 5);
        QVERIFY(disabled);
        // Wanted so: the option boxes come back enabled though the complete option is ticked.
        QVERIFY(allControls(page, true));
        QVERIFY(box(page, "Check_Optimize")->isChecked());
    }

    void startButtonForgetsAnEarlierStop()
    {
        SimulatedPlayer player;
        Ottimizza page;
        page.show();
        page.on_stopActionPressed();
        QSignalSpy ends(&page, &Ottimizza::backFromOttimizzaToEndOttimizza);
        QTest::mouseClick(button(page, "Btn_Opt_Ok"), Qt::LeftButton);
        QCOMPARE(ends.size(), 1);
    }

    // FINE shows the page and starts the run: a stop of the transfer before must not end it.
    void runBehindFineStartsWithAClearStopFlag()
    {
        SimulatedPlayer player;
        Ottimizza page;
        page.on_stopActionPressed();
        page.show();
        QSignalSpy ends(&page, &Ottimizza::backFromOttimizzaToEndOttimizza);
        page.startAllOptimization();
        QCOMPARE(ends.size(), 1);
        QCOMPARE(ends.first().first().toInt(), 0);
    }

    void secondStartDuringARunIsRefused()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("A/t.txt"));
        Ottimizza page;
        page.show();
        RunRecorder recorder(page);
        bool stopKept = false;
        connect(&page, &Ottimizza::updateLabelAction, &page, [&](const QString &text) {
            if (!text.startsWith(QLatin1String("Spostamento immagini")))
                return;
            page.on_stopActionPressed();
            page.startAllOptimization();
            page.on_Btn_Opt_Ok_clicked();
            page.hide();
            page.show();
            stopKept = page.abortRequested && allControls(page, false);
        });
        page.startAllOptimization();
        QVERIFY(stopKept);
        QCOMPARE(recorder.of(QStringLiteral("visible")), QStringList({QStringLiteral("1"), QStringLiteral("0")}));
        QCOMPARE(recorder.of(QStringLiteral("end")), QStringList());
    }
};

QTEST_MAIN(tst_Ottimizza)
#include "tst_ottimizza.moc"
