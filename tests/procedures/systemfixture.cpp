#include "systemfixture.h"

#include "app/mainwindow.h"
#include "app/windowjobview.h"
#include "procedures/extraction.h"
#include "procedures/systemtransfer.h"
#include "procedures/systemupdate.h"
#include "support/simulatedplayer.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QDirIterator>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <archive.h>
#include <archive_entry.h>

namespace {

constexpr int kLookIntervalMs = 1;
constexpr size_t kZipEnd = 1000;
constexpr size_t kZipEntryOverhead = 2000; ///< both heads of it, with any name of the tests
#ifdef Q_OS_WIN
const char kTemporaryFolder[] = "TMP";
#else
const char kTemporaryFolder[] = "TMPDIR";
#endif

void fail(const QString &why)
{
    QTest::qFail(qPrintable(why), __FILE__, __LINE__);
}

template <typename T> T *child(const MainWindow *window, const char *name)
{
    auto *found = window->findChild<T *>(QLatin1String(name));
    if (!found)
        qFatal("The window has no %s", name);
    return found;
}

} // namespace

QByteArray noise(int size)
{
    QByteArray bytes(size, '\0');
    quint32 state = 12345;
    for (char &one : bytes) {
        state = state * 1664525U + 1013904223U;
        one = static_cast<char>(state >> 24U);
    }
    return bytes;
}

QByteArray zipOf(const Entries &entries, const QString &fillerIn, int leastBytes)
{
    Entries all = entries;
    if (leastBytes > 0)
        all.insert(fillerIn + QStringLiteral("filler.bin"), noise(leastBytes));
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
        fail(QStringLiteral("No zip: ") + QString::fromLocal8Bit(archive_error_string(writer)));
    archive_write_free(writer);
    zip.truncate(int(used));
    return zip;
}

TemporaryPc::TemporaryPc() : m_before(qgetenv(kTemporaryFolder))
{
    qputenv(kTemporaryFolder, QFile::encodeName(QDir::toNativeSeparators(m_dir.path())));
}

TemporaryPc::~TemporaryPc()
{
    qputenv(kTemporaryFolder, m_before);
}

void addUnar(ProgramFolder &programs, const QString &program)
{
    programs.addCopy(QStringLiteral("unar"), program);
}

ProcedureWindow::ProcedureWindow() : window(std::make_unique<MainWindow>())
{
    // Else the player that a test plugs in would start the check.
    const QList<QTimer *> timers = window->findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    for (QTimer *timer : timers)
        timer->stop();
    window->show();
}

ProcedureWindow::~ProcedureWindow() = default;

void ProcedureWindow::run(const char *slot) const
{
    if (!QMetaObject::invokeMethod(window.get(), slot, Qt::DirectConnection))
        fail(QStringLiteral("The window has no slot ") + QLatin1String(slot));
}

QLabel *ProcedureWindow::label() const
{
    return child<QLabel>(window.get(), "labelAction");
}

QProgressBar *ProcedureWindow::bar() const
{
    return child<QProgressBar>(window.get(), "progressBar");
}

QPushButton *ProcedureWindow::stop() const
{
    return child<QPushButton>(window.get(), "pushButtonStop");
}

QString ProcedureWindow::status() const
{
    return label()->text();
}

bool ProcedureWindow::isAtRest() const
{
    return label()->isHidden() && bar()->isHidden() && stop()->isHidden() && bar()->value() == 0 &&
           bar()->maximum() == 100 && bar()->format() == QStringLiteral("%p%");
}

namespace {

WindowJobView viewOf(const ProcedureWindow &window)
{
    return {*window.window, *window.label(), *window.bar(), *window.stop()};
}

} // namespace

bool transferSystem(const ProcedureWindow &window, const QString &root, const QString &unpacked)
{
    WindowJobView view = viewOf(window);
    SystemTransfer job(view, Player(root), unpacked);
    const bool done = job.run().isDone();
    window->procedureOk = window->procedureOk && job.isWhole();
    return done;
}

bool unpackArchive(const ProcedureWindow &window, const QString &archive)
{
    WindowJobView view = viewOf(window);
    return Extraction(view, archive).run().isDone();
}

bool updateSystem(const ProcedureWindow &window, bool showFinalMessage)
{
    WindowJobView view = viewOf(window);
    return SystemUpdate(view, showFinalMessage).run().isDone();
}

StopPresser::StopPresser(const ProcedureWindow &window, const std::function<bool()> &moment)
{
    connect(&m_timer, &QTimer::timeout, this, [this, button = window.stop(), moment] {
        if (pressed || !moment())
            return;
        m_timer.stop();
        pressed = true;
        button->click();
    });
    m_timer.start(0);
}

StopPresser::StopPresser(const ProcedureWindow &window, const QString &statusText,
                         const std::function<bool()> &condition)
    : StopPresser(window, [label = window.label(), statusText, condition] {
          return label->text() == statusText && (!condition || condition());
      })
{
    m_timer.start(kLookIntervalMs);
}

FolderDialogAnswerer::FolderDialogAnswerer(const QString &path) : m_path(path)
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    qApp->installEventFilter(this);
}

bool FolderDialogAnswerer::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show) {
        if (auto *dialog = qobject_cast<QFileDialog *>(watched))
            QTimer::singleShot(0, dialog, [this, dialog] { answer(dialog); });
    }
    return QObject::eventFilter(watched, event);
}

void FolderDialogAnswerer::answer(QFileDialog *dialog)
{
    m_captions.append(dialog->windowTitle());
    if (whenShown)
        whenShown(dialog);
    if (!m_path.isEmpty())
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(m_path);
    const auto *buttons = dialog->findChild<QDialogButtonBox *>();
    buttons->button(m_path.isEmpty() ? QDialogButtonBox::Cancel : QDialogButtonBox::Open)->click();
}
