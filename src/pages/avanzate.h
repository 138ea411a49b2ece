#pragma once

#include "device/devicelocator.h"

#include <QWidget>
#include <memory>

namespace Ui {
class Avanzate;
}

/// The page with the six maintenance operations and the way back. Each operation's button first makes sure that the
/// player is connected; without it a box says so and nothing is logged or emitted. The main window runs the whole
/// procedure inside the emission: INDIETRO is disabled until it returns. Hidden when constructed.
class Avanzate : public QWidget
{
    Q_OBJECT

public:
    explicit Avanzate(QWidget *parent = nullptr); ///< hidden
    ~Avanzate() override;

signals:
    /// One for each operation, emitted between its two lines of the log. The receiver does all of it before it returns.
    void updateCorvinWithLastRelease();
    void makeSecurityCopyOfSongs();
    void restoreSecurityCopyOfSongs();
    void reinstallOpSysOnly();
    void reinstallOpSysAndCleanSongs();
    void reinstallOpSysAndRestoreSongs();
    /// INDIETRO was pressed.
    void backFromAvanzateToFirstMenu();

protected:
    /// Shows the texts in the new language on QEvent::LanguageChange.
    void changeEvent(QEvent *event) override;
    /// Gives the focus to the first operation.
    void showEvent(QShowEvent *event) override;

private slots:
    void on_pushBtnUpdate_clicked();
    void on_pushBtnBackup_clicked();
    void on_pushBtnRestore_clicked();
    void on_pushBtnInstall_clicked();
    void on_pushBtnInstallAndClean_clicked();
    void on_pushBtnInstallAndRestore_clicked();
    void on_pushBtnBack_clicked();

private:
    using Operation = void (Avanzate::*)();

    bool isDevicePresent();
    void runOperation(const char *name, Operation operation);

    std::unique_ptr<Ui::Avanzate> ui;
    DeviceLocator m_deviceLocator;
};
