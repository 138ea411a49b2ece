#pragma once

#include "walksteps.h"

#include <QElapsedTimer>
#include <QFile>
#include <QHash>
#include <QObject>
#include <QTimer>

class QWidget;

/// Goes through a scenario on the windows of the program it is loaded into, by mouse and keyboard events, one step
/// each time the step's condition holds. It never blocks: long work and open boxes of the program go on around it.
///
/// Environment: CORVIN_WALK_SCENARIO (file), CORVIN_WALK_SHOTS (folder of the screenshots), CORVIN_WALK_LOG (a file
/// that gets the same lines as the standard output), CORVIN_WALK_PLAYER (the simulated player's folder).
///
/// Steps (NAME is an object name, or Class/objectname; the widget must be visible):
///   wait NAME                 until it is there
///   text NAME "TEXT"          until it shows this text
///   show NAME                 its page is scrolled until it is in sight, as every click does too
///   click NAME                left click, as soon as it is there and enabled
///   key NAME KEY              one key press (Return, Escape, Space, Tab, Delete, …) on the widget
///   box "TITLE" "BUTTON"      the message box with this title is answered by this button
///   pick PATH                 a folder dialog is answered with this path
///   language it|en|de         the language button is pressed until it shows that language
///   shot FILE                 the screen is saved as FILE.png
///   shots FILE                the same in all three languages: FILE-it.png, FILE-en.png, FILE-de.png
///   plug | unplug             the player's label appears or goes, as when its cable is plugged
///   select NAME "A" "B"...    rows of an item view are chosen by their text, by clicks
///   drop NAME PATH...         files and folders are dragged onto the widget and dropped there
///   within SECONDS            the time that each of the following steps may take (at first 60)
///   close                     the main window is closed by its frame
///
/// A step that does not come about in its time ends the program with exit code 3, after a last screenshot.
class WalkDriver : public QObject
{
    Q_OBJECT

public:
    WalkDriver();

private:
    using Ready = bool (WalkDriver::*)(const WalkStep &);

    void tick();
    void say(const QString &text);
    void giveUp(const QString &why);

    void clickLater(QWidget *widget, const QPoint &where);

    bool wait(const WalkStep &step);
    bool text(const WalkStep &step);
    bool show(const WalkStep &step);
    bool click(const WalkStep &step);
    bool key(const WalkStep &step);
    bool box(const WalkStep &step);
    bool pick(const WalkStep &step);
    bool language(const WalkStep &step);
    bool shot(const WalkStep &step);
    bool plug(const WalkStep &step);
    bool unplug(const WalkStep &step);
    bool select(const WalkStep &step);
    bool drop(const WalkStep &step);
    bool within(const WalkStep &step);
    bool close(const WalkStep &step);

    QHash<QString, Ready> m_commands;
    QList<WalkStep> m_steps;
    int m_next = 0;
    int m_limitMs = 60000;
    QTimer m_timer;
    QElapsedTimer m_sinceStep;
    QElapsedTimer m_sinceClick;
    QFile m_log;
};
