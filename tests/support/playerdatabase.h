#pragma once

#include <QList>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <QUuid>
#include <QVariant>

/// A real database with the player's tables, in memory, in which the lines of an import file are executed.
class PlayerDatabase
{
public:
    PlayerDatabase() : m_name(QUuid::createUuid().toString())
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
        database.setDatabaseName(QStringLiteral(":memory:"));
        database.open();
        run(QStringLiteral("CREATE TABLE songs (filename TEXT, onlyFilename TEXT, title TEXT, artist TEXT, genre TEXT, "
                           "DriveName TEXT, format TEXT, author TEXT, bpm TEXT, [key] TEXT, marker TEXT)"));
        run(QStringLiteral("CREATE TABLE artists (name TEXT)"));
        run(QStringLiteral("CREATE TABLE genres (name TEXT)"));
    }
    ~PlayerDatabase()
    {
        QSqlDatabase::database(m_name).close();
        QSqlDatabase::removeDatabase(m_name);
    }
    PlayerDatabase(const PlayerDatabase &) = delete;
    PlayerDatabase &operator=(const PlayerDatabase &) = delete;

    /// Executes one statement; an empty text when it went well, else what the database said.
    QString run(const QString &statement)
    {
        QSqlQuery query(QSqlDatabase::database(m_name));
        return query.exec(statement) ? QString() : statement + QStringLiteral(": ") + query.lastError().text();
    }
    /// Executes a whole import file line by line; an empty text when each went well, else the first complaint.
    QString runFile(const QByteArray &file)
    {
        if (file.isEmpty() || !file.endsWith('\n') || file.contains('\r') || file.startsWith("\xEF\xBB\xBF"))
            return QStringLiteral("not made of lines");
        const QList<QByteArray> lines = file.chopped(1).split('\n');
        for (const QByteArray &line : lines) {
            QString complaint = run(QString::fromUtf8(line));
            if (!complaint.isEmpty())
                return complaint;
        }
        return QString();
    }
    /// The rows of the songs, each with its columns in the table's order, ordered by path.
    QList<QStringList> songs() const
    {
        QList<QStringList> rows;
        QSqlQuery query(QSqlDatabase::database(m_name));
        query.exec(QStringLiteral("SELECT * FROM songs ORDER BY filename"));
        constexpr int kColumns = 11;
        while (query.next()) {
            QStringList row;
            for (int column = 0; column < kColumns; ++column)
                row.append(query.value(column).toString());
            rows.append(row);
        }
        return rows;
    }
    /// The paths of the songs, ordered.
    QStringList paths() const
    {
        QStringList paths;
        const QList<QStringList> rows = songs();
        for (const QStringList &row : rows)
            paths.append(row.first());
        return paths;
    }
    int rowCount(const QString &table) const
    {
        QSqlQuery query(QSqlDatabase::database(m_name));
        return query.exec(QStringLiteral("SELECT COUNT(*) FROM ") + table) && query.next() ? query.value(0).toInt()
                                                                                           : -1;
    }

private:
    QString m_name;
};
