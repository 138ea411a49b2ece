#pragma once

#include "support/intactplayer.h"
#include "support/ownlines.h"
#include "support/widgets.h"

#include "pages/check.h"

inline const QString kDone = "CONTROLLO SOFTWARE COMPLETATO"_s;
inline const QStringList kTexts = words("label_titolo label_descr");
inline const QStringList kTextsAndButton = words("label_titolo label_descr pushButton");
inline const QStringList kSystemFiles = words("AUTOEXEC.BAT System/Corvin/Corvin.exe System/GuiProc/GuiProc.exe");

/// The page on the screen, beside a player with all its system files.
struct ShownCheck : Check
{
    ShownCheck() {
        resize(1000, 600);
        show();
    }
    void run() { runCheck(player.root()); }
    void remove(const QStringList &files) const {
        for (const QString &file : files)
            QVERIFY(QFile::remove(player.path(file)));
    }
    QStringList lines() { return ownLines(recorder); }
    QString title() const { return textOf(*this, "label_titolo"); }
    QString description() const { return textOf(*this, "label_descr"); }
    bool hasPicture() const { return !child<QLabel>(*this, "label_descr")->pixmap(Qt::ReturnByValue).isNull(); }
    /// Which of its parts can be seen.
    QStringList parts() const {
        QStringList visible;
        for (const char *name : {"label_titolo", "label_descr", "pushButton"})
            if (child<QWidget>(*this, name)->isVisible())
                visible.append(QLatin1String(name));
        return visible;
    }

    const IntactPlayer player;
    SignalRecorder recorder{*this};
};

/// All that a check emits up to the look at the files, and then this.
inline QStringList sweepAnd(const QStringList &rest) {
    QStringList lines =
        "label CONTROLLO INTEGRITA' SOFTWARE ...|min 0|max 100|value 0|visible 1|stop 0"_s.split(QLatin1Char('|'));
    for (int value = 0; value <= 100; ++value)
        lines.append("value %1"_s.arg(value));
    return lines + QStringList("visible 0"_s) + rest;
}
