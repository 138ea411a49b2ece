#pragma once

#include "app/mainwindow.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

// What the tests of the maintenance procedures share.

/// A main window whose watch for the player does not come between: the test starts the procedures itself.
class ProcedureWindow
{
public:
    ProcedureWindow()
    {
        const auto timers = window.findChildren<QTimer *>();
        for (QTimer *timer : timers)
            timer->stop();
    }

    /// Starts the procedure whose slot has this name and returns when it has ended.
    void run(const char *slot)
    {
        if (!QMetaObject::invokeMethod(&window, slot, Qt::DirectConnection))
            qFatal("The window has no slot %s", slot);
    }

    template <typename T> T *child(const char *name) const
    {
        auto *found = window.findChild<T *>(QLatin1String(name));
        if (!found)
            qFatal("The window has no %s", name);
        return found;
    }
    QProgressBar *bar() const { return child<QProgressBar>("progressBar"); }
    QString status() const { return child<QLabel>("labelAction")->text(); }
    QPushButton *stopButton() const { return child<QPushButton>("pushButtonStop"); }

    MainWindow window;
};

/// Answers every folder choice as a user does, by typing a path; an empty path is the "Cancel" button.
class FolderDialogAnswerer : public QObject
{
public:
    explicit FolderDialogAnswerer(const QString &path) : m_path(path)
    {
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        qApp->installEventFilter(this);
    }
    /// The captions of the dialogs that came, in order.
    const QStringList &captions() const { return m_captions; }
    /// Called with each dialog before it is answered.
    std::function<void(QFileDialog *)> whenShown;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show) {
            if (auto *dialog = qobject_cast<QFileDialog *>(watched))
                QTimer::singleShot(0, dialog, [this, dialog] { answer(dialog); });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void answer(QFileDialog *dialog)
    {
        m_captions.append(dialog->windowTitle());
        if (whenShown)
            whenShown(dialog);
        auto *buttons = dialog->findChild<QDialogButtonBox *>();
        if (!m_path.isEmpty())
            dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(m_path);
        buttons->button(m_path.isEmpty() ? QDialogButtonBox::Cancel : QDialogButtonBox::Open)->click();
    }

    QString m_path;
    QStringList m_captions;
};

/// Presses STOP, once, as soon as the procedure processes events while @p moment holds.
class StopPresser : public QObject
{
public:
    StopPresser(ProcedureWindow &window, std::function<bool()> moment)
        : m_button(window.stopButton()), m_moment(std::move(moment))
    {
        connect(&m_timer, &QTimer::timeout, this, [this] { look(); });
        m_timer.start(0);
    }
    bool hasPressed() const { return m_pressed; }

private:
    void look()
    {
        if (m_pressed || !m_moment())
            return;
        m_pressed = true;
        m_timer.stop();
        m_button->click();
    }

    QPushButton *m_button;
    std::function<bool()> m_moment;
    QTimer m_timer;
    bool m_pressed = false;
};

inline void writeFile(const QString &path, const QByteArray &content = QByteArrayLiteral("x"))
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(path));
    QCOMPARE(file.write(content), qint64(content.size()));
}

inline QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Every file and folder below @p folder, hidden ones too, relative to it and sorted.
inline QStringList entriesBelow(const QString &folder)
{
    QStringList entries;
    const QDir dir(folder);
    const QFileInfoList infos =
        dir.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo &info : infos) {
        entries.append(info.fileName());
        if (info.isDir() && !info.isSymLink()) {
            const QStringList below = entriesBelow(info.filePath());
            for (const QString &entry : below)
                entries.append(info.fileName() + QLatin1Char('/') + entry);
        }
    }
    entries.sort();
    return entries;
}
