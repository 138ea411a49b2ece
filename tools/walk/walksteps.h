#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// One line of a scenario: a command and its words. A word in double quotes may hold blanks; "\n" in it is a line end.
struct WalkStep
{
    int line = 0; ///< line number in the scenario, from 1
    QString command;
    QStringList words;

    QString text() const { return command + QLatin1Char(' ') + words.join(QLatin1Char(' ')); }
    QString word(int index) const { return words.value(index); }
};

/// Reads a scenario: one step a line, empty lines and lines starting with "#" left out. UTF-8.
/// The step "shots NAME" becomes the steps that save the screen as NAME-it, NAME-en and NAME-de.
/// Returns an empty list when the file cannot be read.
QList<WalkStep> readScenario(const QString &path);
