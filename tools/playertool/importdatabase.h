#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

/// A real database in memory that plays the player's: it knows the songs that the player had listed and takes the
/// statements of an import file. Needs a QCoreApplication, for the driver.
class ImportDatabase
{
public:
    ImportDatabase();
    ~ImportDatabase();
    ImportDatabase(const ImportDatabase &) = delete;
    ImportDatabase &operator=(const ImportDatabase &) = delete;

    /// Empty, or why there is no database.
    QString error() const { return m_error; }
    /// The player's list before the import; device paths.
    void addListed(const QStringList &devicePaths);
    /// Runs one statement. Returns how many rows it touched, or -1 with error() set.
    int run(const QString &statement);
    /// Makes the statements that follow one transaction; the end of it comes with rows().
    void begin();
    /// Rows that statements inserted: device path to the values of the eleven columns in their order. A path that was
    /// inserted twice stands in @p twice.
    QMap<QString, QStringList> rows(QStringList &twice);
    /// Every device path that is listed now, sorted.
    QStringList listed();

    /// The names of the columns, in order.
    static QStringList columns();

private:
    QString m_connection;
    QString m_error;
};
