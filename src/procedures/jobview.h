#pragma once

#include <QList>
#include <QString>

/// A box with one button, "Ok".
struct Notice
{
    enum Kind ///< its picture
    {
        Information,
        Critical
    };

    Kind kind = Information;      ///< its picture
    QString title;                ///< of the box
    QString text;                 ///< what is told
    QString informativeText = {}; ///< a second, smaller text below; may be empty
};

/// The buttons a question can have, by what they stand for.
enum class JobAnswer
{
    Yes,
    YesToAll,
    No,
    Cancel
};

/// A box that asks.
struct JobQuestion
{
    struct Choice ///< one button
    {
        JobAnswer answer;  ///< what pressing it means
        QString text = {}; ///< on the button; the system's own when empty
    };

    QString title;                        ///< of the box
    QString text;                         ///< what is asked
    QList<Choice> choices;                ///< in the order they are added
    JobAnswer preferred = JobAnswer::Yes; ///< the one that Enter presses
    JobAnswer onEscape = JobAnswer::No;   ///< what Escape and the box's own close button mean
    bool standsAlone = false;             ///< a box of its own, not one over the window
    QString informativeText = {};         ///< a second, smaller text below; may be empty
};

/// All that a maintenance job shows and asks: the window implements it, a test records it. A call that shows a box
/// returns when it has been answered; events are processed meanwhile.
class JobView
{
public:
    virtual ~JobView() = default;

    /// Shows @p text in the status line, at once.
    virtual void showStatus(const QString &text) = 0;
    /// Takes status line, bar and STOP away, ahead of the box that tells of the end.
    virtual void hideProgress() = 0;

    /// The bar's ends; 0 and 0 make it busy. The value is kept within them.
    virtual void setBarRange(int minimum, int maximum) = 0;
    virtual void setBarValue(int value) = 0;
    /// @p format as a progress bar takes it: "%p%" percent, "%v" value.
    virtual void setBarFormat(const QString &format) = 0;
    /// Paints the bar now, or when it is due again, for work that processes no events.
    virtual void paintBar() = 0;

    /// Whether STOP has been pressed and confirmed.
    virtual bool isStopped() const = 0;
    /// Whether the window has been asked to close, which also counts as STOP: waits that have no end of their own end.
    virtual bool isClosing() const = 0;
    /// From here on an earlier STOP does not count; closing still does.
    virtual void forgetStop() = 0;

    virtual void tell(const Notice &notice) = 0;            ///< shows a box that only informs
    virtual JobAnswer ask(const JobQuestion &question) = 0; ///< shows a box that asks
    /// Lets the user choose an existing folder of the PC. Empty when none was chosen.
    virtual QString chooseFolder(const QString &caption) = 0;
};
