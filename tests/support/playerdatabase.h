#pragma once

#include "testing.h"

#include <QtSql>

/// A real database with the player's tables, in memory, in which the lines of an import file are executed.
class PlayerDatabase
{
public:
    PlayerDatabase() {
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE"_s, m_name);
        database.setDatabaseName(":memory:"_s);
        database.open();
        run("CREATE TABLE songs (filename TEXT, onlyFilename TEXT, title TEXT, artist TEXT, genre TEXT, "
            "DriveName TEXT, format TEXT, author TEXT, bpm TEXT, [key] TEXT, marker TEXT)"_s);
        run("CREATE TABLE artists (name TEXT)"_s);
        run("CREATE TABLE genres (name TEXT)"_s);
    }
    ~PlayerDatabase() { QSqlDatabase::removeDatabase(m_name); }
    PlayerDatabase(const PlayerDatabase &) = delete;
    PlayerDatabase &operator=(const PlayerDatabase &) = delete;

    /// Executes one statement; an empty text when it went well, else what the database said.
    QString run(const QString &statement) {
        QSqlQuery query(QSqlDatabase::database(m_name));
        return query.exec(statement) ? QString() : statement + ": "_s + query.lastError().text();
    }
    /// Executes a whole import file line by line; an empty text when each went well, else the first complaint.
    QString runFile(const QByteArray &file) {
        if (!file.endsWith('\n') || file.contains('\r') || file.startsWith("\xEF\xBB\xBF"))
            return "not made of lines"_s;
        QString complaint;
        const QList<QByteArray> lines = file.chopped(1).split('\n');
        for (int i = 0; i < lines.size() && complaint.isEmpty(); ++i)
            complaint = run(QString::fromUtf8(lines.at(i)));
        return complaint;
    }
    /// The rows of the songs, each with its columns in the table's order, ordered by path.
    QList<QStringList> songs() const { return rows("SELECT * FROM songs ORDER BY filename"_s); }
    /// The paths of the songs, ordered.
    QStringList paths() const {
        QStringList paths;
        const QList<QStringList> all = songs();
        for (const QStringList &song : all)
            paths.append(song.first());
        return paths;
    }
    /// How many rows a table has; -1 when there is no such table.
    int rowCount(const QString &table) const {
        return rows("SELECT COUNT(*) FROM "_s + table).value(0).value(0, "-1"_s).toInt();
    }

private:
    QList<QStringList> rows(const QString &question) const {
        QList<QStringList> found;
        QSqlQuery query(question, QSqlDatabase::database(m_name));
        while (query.next()) {
            found.append(QStringList());
            for (int column = 0; column < query.record().count(); ++column)
                found.last().append(query.value(column).toString());
        }
        return found;
    }

    const QString m_name = QUuid::createUuid().toString();
};
