#include "importdatabase.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <QVariant>

namespace {

/// What tells a row of the player's own from one that was inserted: the player's rows have no title here.
const char kTables[] = "CREATE TABLE songs (filename TEXT, onlyFilename TEXT, title TEXT, artist TEXT, genre TEXT, "
                       "DriveName TEXT, format TEXT, author TEXT, bpm TEXT, [key] TEXT, marker TEXT)";

} // namespace

ImportDatabase::ImportDatabase() : m_connection(QUuid::createUuid().toString())
{
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    database.setDatabaseName(QStringLiteral(":memory:"));
    if (!database.open()) {
        m_error = database.lastError().text();
        return;
    }
    run(QLatin1String(kTables));
    run(QStringLiteral("CREATE TABLE artists (name TEXT)"));
    run(QStringLiteral("CREATE TABLE genres (name TEXT)"));
    run(QStringLiteral("CREATE INDEX byFilename ON songs (filename)"));
}

ImportDatabase::~ImportDatabase()
{
    QSqlDatabase::database(m_connection).close();
    QSqlDatabase::removeDatabase(m_connection);
}

QStringList ImportDatabase::columns()
{
    return QStringLiteral("filename,onlyFilename,title,artist,genre,DriveName,format,author,bpm,[key],marker")
        .split(QLatin1Char(','));
}

void ImportDatabase::addListed(const QStringList &devicePaths)
{
    QSqlDatabase database = QSqlDatabase::database(m_connection);
    database.transaction();
    QSqlQuery query(database);
    query.prepare(QStringLiteral("INSERT INTO songs (filename) VALUES (?)"));
    for (const QString &path : devicePaths) {
        query.bindValue(0, path);
        if (!query.exec())
            m_error = query.lastError().text();
    }
    database.commit();
}

void ImportDatabase::begin()
{
    QSqlDatabase::database(m_connection).transaction();
}

int ImportDatabase::run(const QString &statement)
{
    QSqlQuery query(QSqlDatabase::database(m_connection));
    if (query.exec(statement))
        return qMax(0, query.numRowsAffected());
    m_error = query.lastError().text();
    return -1;
}

QMap<QString, QStringList> ImportDatabase::rows(QStringList &twice)
{
    QSqlDatabase::database(m_connection).commit();
    QMap<QString, QStringList> found;
    QSqlQuery query(QSqlDatabase::database(m_connection));
    query.exec(QStringLiteral("SELECT %1 FROM songs WHERE title IS NOT NULL").arg(columns().join(QLatin1Char(','))));
    while (query.next()) {
        QStringList values;
        for (int i = 0; i < columns().size(); ++i)
            values.append(query.value(i).toString());
        if (found.contains(values.first()))
            twice.append(values.first());
        found.insert(values.first(), values);
    }
    return found;
}

QStringList ImportDatabase::listed()
{
    QStringList paths;
    QSqlQuery query(QSqlDatabase::database(m_connection));
    query.exec(QStringLiteral("SELECT filename FROM songs"));
    while (query.next())
        paths.append(query.value(0).toString());
    paths.sort();
    return paths;
}
