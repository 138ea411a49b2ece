#include "systemfixture.h"

#include "app/windowjobview.h"
#include "procedures/extraction.h"
#include "procedures/systemtransfer.h"

#include <archive.h>
#include <archive_entry.h>

namespace {

/// The one text of each box that tells something and is closed with "OK".
const QMap<QString, QString> kTold = {
    {Titles::kDeviceNotFound, Texts::kConnectAgain}, {Titles::kDownloadError2, Texts::kDownloadError},
    {Titles::kFormatError, Texts::kFormatError},     {Titles::kBackupError, Texts::kBackupError},
    {Titles::kRestoreError, Texts::kRestoreError},   {Titles::kDone, Titles::kDone}};

/// The buttons with which the questions of a procedure are agreed to.
const QMap<QString, QString> kGoingOn = {{Titles::kErase, Buttons::kSi},      {Titles::kEraseDrive, Buttons::kSi},
                                         {Titles::kStop, Buttons::kSi},       {Titles::kCopyExists, Buttons::kSi},
                                         {Titles::kCopyFailed, Buttons::kSi}, {Titles::kBackupNotEmpty, Buttons::kYes},
                                         {Titles::kManyFiles, Buttons::kYes}};

constexpr size_t kZipEnd = 1000;
constexpr size_t kZipEntryOverhead = 2000; ///< both heads of it, with any name of the tests

void expectUsualLook(const BoxAnswerer::Seen &box, const char *slot) {
    const bool updates = qstrcmp(slot, Slots::kUpdate) == 0;
    if (box.title.startsWith("Download Error"_s))
        expectLook(box, QMessageBox::Critical, Texts::kDownloadError);
    else if (kTold.contains(box.title))
        expectLook(box, QMessageBox::Information, kTold.value(box.title));
    else if (box.title == Titles::kFinished)
        expectLook(box, QMessageBox::Information, updates ? Texts::kUpdated : Texts::kInstalled);
    else if (box.title == Titles::kErase)
        expectLook(box, QMessageBox::Question, Texts::kErase, {Buttons::kNo, Buttons::kSi});
    else if (box.title == Titles::kBackupNotEmpty)
        expectLook(box, QMessageBox::Question, Texts::kBackupNotEmpty, {Buttons::kNo, Buttons::kYes});
}

} // namespace

QByteArray noise(int size) {
    QByteArray bytes(size, '\0');
    quint32 state = 12345;
    for (char &one : bytes) {
        state = state * 1664525U + 1013904223U;
        one = static_cast<char>(state >> 24U);
    }
    return bytes;
}

QByteArray zipOf(const Entries &entries, const QString &fillerIn, int leastBytes) {
    Entries all = entries;
    if (leastBytes > 0)
        all.insert(fillerIn + "filler.bin"_s, noise(leastBytes));
    size_t room = kZipEnd;
    for (auto entry = all.begin(); entry != all.end(); ++entry)
        room += size_t(entry.value().size()) + kZipEntryOverhead;
    QByteArray zip(int(room), Qt::Uninitialized);
    size_t used = 0;
    struct archive *writer = archive_write_new();
    archive_write_set_format_zip(writer);
    archive_write_zip_set_compression_store(writer);
    archive_write_set_bytes_per_block(writer, 1); // no padding at the end
    // Windows has a code page for names that do not tell theirs.
    bool good = archive_write_set_format_option(writer, "zip", "hdrcharset", "UTF-8") == ARCHIVE_OK &&
                archive_write_open_memory(writer, zip.data(), room, &used) == ARCHIVE_OK;
    for (auto entry = all.begin(); good && entry != all.end(); ++entry) {
        struct archive_entry *head = archive_entry_new();
        const bool isFolder = entry.key().endsWith(QLatin1Char('/'));
        archive_entry_set_pathname_utf8(head, entry.key().toUtf8().constData());
        archive_entry_set_filetype(head, isFolder ? AE_IFDIR : AE_IFREG);
        archive_entry_set_perm(head, isFolder ? 0755 : 0644);
        archive_entry_set_size(head, entry.value().size());
        good =
            archive_write_header(writer, head) == ARCHIVE_OK &&
            archive_write_data(writer, entry.value().constData(), size_t(entry.value().size())) == entry.value().size();
        archive_entry_free(head);
    }
    good = archive_write_close(writer) == ARCHIVE_OK && good;
    if (!good)
        failTest("No zip: "_s + QString::fromLocal8Bit(archive_error_string(writer)));
    archive_write_free(writer);
    zip.truncate(int(used));
    return zip;
}

void addUnar(ProgramFolder &programs, const QString &program) {
    programs.addCopy("unar"_s, program);
}

ProcedureWindow::ProcedureWindow() : window(std::make_unique<MainWindow>()) {
    // Else the player that a test plugs in would start the check.
    const QList<QTimer *> timers = window->findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    for (QTimer *timer : timers)
        timer->stop();
    window->show();
}

void ProcedureWindow::run(const char *slot) const {
    if (!QMetaObject::invokeMethod(window.get(), slot, Qt::DirectConnection))
        failTest("The window has no slot "_s + QLatin1String(slot));
}

bool ProcedureWindow::isAtRest() const {
    return label()->isHidden() && bar()->isHidden() && stop()->isHidden() && bar()->value() == 0 &&
           bar()->maximum() == 100 && bar()->format() == "%p%"_s && status().isEmpty();
}

static WindowJobView viewOf(const ProcedureWindow &window) {
    return {*window.window, *window.label(), *window.bar(), *window.stop()};
}

bool unpackArchive(const ProcedureWindow &window, const QString &archive) {
    WindowJobView view = viewOf(window);
    return Extraction(view, archive).run().isDone();
}

bool transferSystem(const ProcedureWindow &window, const QString &deviceRoot, const QString &unpacked) {
    WindowJobView view = viewOf(window);
    SystemTransfer job(view, Player(deviceRoot), unpacked);
    const bool done = job.run().isDone();
    window->procedureOk = window->procedureOk && job.isWhole();
    return done;
}

StopPresser::StopPresser(const ProcedureWindow &window, const QString &status, const std::function<bool()> &condition) {
    connect(&m_timer, &QTimer::timeout, this, [this, &window, status, condition] {
        if (m_pressed || (!status.isEmpty() && window.status() != status) || (condition && !condition()))
            return;
        m_timer.stop();
        m_pressed = true;
        window.stop()->click();
    });
    m_timer.start(0);
}

FolderDialogAnswerer::FolderDialogAnswerer(const QString &path) : m_path(path) {
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    qApp->installEventFilter(this);
}

bool FolderDialogAnswerer::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Show) {
        if (auto *dialog = qobject_cast<QFileDialog *>(watched))
            QTimer::singleShot(0, dialog, [this, dialog] { answer(dialog); });
    }
    return QObject::eventFilter(watched, event);
}

void FolderDialogAnswerer::answer(QFileDialog *dialog) {
    m_captions.append(dialog->windowTitle());
    if (whenShown)
        whenShown(dialog);
    if (!m_path.isEmpty())
        child<QLineEdit>(*dialog, "fileNameEdit")->setText(m_path);
    const auto *buttons = dialog->findChild<QDialogButtonBox *>();
    buttons->button(m_path.isEmpty() ? QDialogButtonBox::Cancel : QDialogButtonBox::Open)->click();
}

void announce(BoxAnswerer &boxes, const QList<Answer> &answers) {
    const QMap<QString, Qt::Key> keys = {{"enter"_s, Qt::Key_Return}, {"escape"_s, Qt::Key_Escape}};
    for (const Answer &answer : answers) {
        if (keys.contains(answer.how))
            boxes.answerByKey(answer.title, keys.value(answer.how));
        else if (answer.how == "close"_s)
            boxes.answerByClosing(answer.title);
        else
            boxes.answer(answer.title, answer.how.isEmpty() ? kGoingOn.value(answer.title, Buttons::kOk) : answer.how);
    }
}

void expectLook(const BoxAnswerer::Seen &box, QMessageBox::Icon icon, const QString &text, const QStringList &buttons) {
    QStringList sorted = box.buttons;
    sorted.sort();
    QCOMPARE(box.icon, icon);
    QCOMPARE(box.text, text);
    QCOMPARE(sorted, buttons);
}

Maintenance::Maintenance() {
    setDataFolder(data.path());
    addUnar(programs);
    serveUpdate({{"CorvinUpdate/sub/a.exe"_s, "new a"}, {"CorvinUpdate/.hidden.cfg"_s, "new b"}});
    serveSystem();
}

void Maintenance::serveSystem(Entries entries) {
    for (const QString &file : words("AUTOEXEC.BAT System/Corvin/Corvin.exe System/GuiProc/GuiProc.exe Bridges/b.dat "
                                     "Effects/e.dat"))
        entries.insert(file, "new");
    server.serve(kSystemArchivePath, zipOf(entries, "System/"_s, kLeastRelease));
}

void Maintenance::serveSpoilt(const QString &path, const QByteArray &archive, const QString &fault, int number) {
    constexpr int kPercent = 100;
    const int part = int(archive.size() * qint64(number) / kPercent);
    server.serve(path, archive);
    if (fault == "cut"_s)
        server.serveCut(path, archive, part);
    else if (fault == "length"_s)
        server.serveUnderLength(path, archive, part);
    else if (fault == "unknown"_s)
        server.serveWithoutLength(path, archive.left(part));
    else if (fault == "tool"_s)
        programs.addStandIn("unar"_s, {Does::make(pc.downloads("unpacked.txt"_s)), Does::exitWith(number)});
}

void Maintenance::run(const char *slot, const QList<Answer> &answers, const std::optional<QString> &folder) {
    QStringList expected;
    if (folder)
        expected.append(qstrcmp(slot, Slots::kRestore) == 0 ? "Scegli cartella da cui prendere i files salvati"_s
                                                            : "Scegli una cartella per il salvataggio dei files"_s);
    announce(boxes, answers);
    const FolderDialogAnswerer dialogs(folder.value_or(QString()));
    const int seenBefore = boxes.seen().size();
    window.run(slot);
    if (dialogs.captions() != expected)
        failTest("Folders were chosen for: "_s + dialogs.captions().join(QLatin1Char('|')));
    if (!window.isAtRest())
        failTest("The window still shows a procedure"_s);
    for (int i = seenBefore; i < boxes.seen().size(); ++i)
        expectUsualLook(boxes.seen().at(i), slot);
}

void Maintenance::runThrough(const QByteArray &slot, const QStringList &titles) {
    const bool asks = slot == Slots::kBackUp || slot == Slots::kRestore || slot == Slots::kReinstallRestoring;
    run(slot.constData(), {titles.begin(), titles.end()}, asks ? std::optional(backup) : std::nullopt);
}

void Maintenance::pullAt(const MountedPlayer &mounted, const QString &status, int count) {
    QObject::connect(window.bar(), &QProgressBar::valueChanged, &server, [this, &mounted, status, count](int value) {
        if (!pulled && window.status() == status && window.bar()->format() == "%v"_s && value == count)
            pulled = mounted.volume->pull();
    });
}

QString Maintenance::keptFolder() const {
    const QDir runs(data.path("removed"_s));
    const QStringList names = runs.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    if (names.size() != 1)
        failTest("Not one folder of kept files: "_s + names.join(QLatin1Char('|')));
    return runs.filePath(names.value(0));
}

QStringList statusTexts(const LogCapture &log) {
    const QString prefix = "MainWindow::on_updateLabelAction : \""_s;
    QStringList texts = log.textsStartingWith(prefix);
    for (QString &text : texts)
        text = text.mid(prefix.size()).chopped(1);
    return texts;
}
