#pragma once

#include "procedures/jobview.h"
#include "testing.h"

/// Stands in for the window: writes down what a maintenance job shows and asks, and answers as it was told.
class JobRecorder : public JobView
{
public:
    /// "status …", "hide", "range 0 100", "format %v", "tell title|text", "ask title|text", "choose caption" in their
    /// order; the bar's values are not among them.
    QStringList shown;
    /// The answers to the questions by their title; a question without one is answered as by Escape.
    QMap<QString, JobAnswer> answers;
    QString folder;                                ///< what the user chooses; empty: nothing
    bool stopped = false;                          ///< STOP has been pressed
    bool closing = false;                          ///< the window was asked to close
    std::function<void(const QString &line)> then; ///< called after each line

    void showStatus(const QString &text) override { note("status "_s + text); }
    void hideProgress() override { note("hide"_s); }
    void setBarRange(int minimum, int maximum) override { note("range %1 %2"_s.arg(minimum).arg(maximum)); }
    void setBarValue(int) override {}
    void setBarFormat(const QString &format) override { note("format "_s + format); }
    void paintBar() override {}
    bool isStopped() const override { return stopped || closing; }
    bool isClosing() const override { return closing; }
    void forgetStop() override { stopped = false; }
    void tell(const Notice &notice) override {
        note("tell "_s + notice.title + "|"_s + notice.text +
             (notice.informativeText.isEmpty() ? QString() : "|"_s + notice.informativeText));
    }
    JobAnswer ask(const JobQuestion &question) override {
        note("ask "_s + question.title + "|"_s + question.text +
             (question.informativeText.isEmpty() ? QString() : "|"_s + question.informativeText));
        return answers.value(question.title, question.onEscape);
    }
    QString chooseFolder(const QString &caption) override {
        note("choose "_s + caption);
        return folder;
    }

    /// The lines that begin with this word and a blank, without it.
    QStringList of(const QString &kind) const {
        QStringList found;
        for (const QString &line : shown) {
            if (line.startsWith(kind + " "_s))
                found.append(line.mid(kind.size() + 1));
        }
        return found;
    }

private:
    void note(const QString &line) {
        shown.append(line);
        if (then)
            then(line);
    }
};
