#pragma once

#include <QPushButton>
#include <QString>

class QShortcut;

/// A button of the program's pages. It is painted alike on every system, in the colours of its style sheet, and shows
/// whether it is pointed at, pressed, focused or disabled. Enter presses it while it has the focus, once for each time
/// the key goes down. It may bear a picture (its icon) on the left and a line below its text that says what it does;
/// where it is given less height than it asks for, that line is left out, and where it is not seen whole, its tool tip
/// has it.
class PageButton : public QPushButton
{
    Q_OBJECT
    /// The line below the text; none when empty. It is also told to those who cannot see it.
    Q_PROPERTY(QString description READ description WRITE setDescription)
    /// Whether the Escape key presses it, wherever in its window the focus is, while it is shown and enabled.
    Q_PROPERTY(bool pressedByEscape READ isPressedByEscape WRITE setPressedByEscape)

public:
    explicit PageButton(QWidget *parent = nullptr); ///< without a picture and a line

    QString description() const { return m_description; } ///< the line below the text
    void setDescription(const QString &text);             ///< sets the line below the text

    bool isPressedByEscape() const { return m_escape != nullptr; } ///< whether Escape presses it
    void setPressedByEscape(bool pressed);                         ///< lets Escape press it, or no longer

    QSize sizeHint() const override;        ///< room for everything
    QSize minimumSizeHint() const override; ///< room for the text and the picture

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QRect textPlace() const;
    int besideText() const;
    int textHeight() const;
    int lineHeight() const;
    bool hasRoomForLine() const;
    bool showsWholeLine() const;
    QColor ground() const;
    QColor textColour() const;
    void paintFrame(QPainter &painter) const;
    void paintTexts(QPainter &painter) const;

    QString m_description;
    QShortcut *m_escape = nullptr; ///< there while Escape presses the button
};
