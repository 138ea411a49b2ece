#pragma once

#include <QCoreApplication>
#include <QString>

#include <functional>

/// A folder that is to be emptied, for as long as it is not sure that its content may go: it lies under another name
/// beside a new, empty folder that has taken its place. Unless the content is dropped it comes back when this is
/// destroyed; what comes back only when the program is killed before that has a name that says what it is.
class SetAsideFolder
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow)

public:
    /// Sets @p folder (absolute, forward slashes) aside, a link as such, and makes the new one; a folder that is not
    /// there is only made. See isGood().
    explicit SetAsideFolder(const QString &folder);
    /// Puts the content back when it was not dropped, or what is left of it. Not when the new folder holds anything by
    /// then: both stay, with a line in the log.
    ~SetAsideFolder();
    SetAsideFolder(const SetAsideFolder &) = delete;
    SetAsideFolder &operator=(const SetAsideFolder &) = delete;

    /// Whether the new folder is there. When not, the old one is where it was.
    bool isGood() const { return m_good; }
    /// Deletes the former content for good. False when some of it could not be deleted, or @p goOn, asked before each
    /// entry when it is given, said no: what is left comes back.
    bool drop(const std::function<bool()> &goOn = nullptr);

private:
    QString m_folder;
    QString m_aside; ///< empty when nothing lies there
    bool m_good = false;
};
