#include "judgerules.h"

#include "fastdatabase.h"
#include "importdatabase.h"
#include "playerpaths.h"

#include <QFile>

namespace {

const QString kUnknown = QStringLiteral("<unknown>");
const QString kInsert = QStringLiteral("INSERT INTO songs (filename,onlyFilename,title,artist,genre,DriveName,format,"
                                       "author,bpm,[key],marker) VALUES ('");
const QString kDelete = QStringLiteral("DELETE FROM songs WHERE filename='");

constexpr int kPathLimit = 250;
constexpr int kTextLimit = 100;
constexpr int kKeyLimit = 50;

/// A value as it stands in the database: on one line, and no longer than its column.
QString inColumn(QString value, int limit)
{
    value.replace(QLatin1String("\r\n"), QLatin1String(" "));
    value.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    const bool halved = value.size() > limit && value.at(limit - 1).isHighSurrogate();
    return value.left(halved ? limit - 1 : limit);
}

QByteArray contentOf(const QString &file)
{
    QFile in(file);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
}

class ImportJudge
{
public:
    ImportJudge(const Outcome &outcome, const QString &root, Verdict &verdict);
    void judge();

private:
    enum class Pass
    {
        Emptying,
        Inserting,
        Deleting
    };
    bool readLines(QStringList &lines);
    void runLine(const QString &line);
    Pass passOf(const QString &line);
    void judgeRows();
    void judgeRow(const QString &song, const QStringList &row);
    QStringList expectedRow(const QString &song, const ExpectedSong &expected) const;

    const Outcome &m_outcome;
    const QString m_file;
    Verdict &m_verdict;
    ImportDatabase m_database;
    QStringList m_listed;
    QStringList m_missing; ///< on the disk, not listed
    QStringList m_gone;    ///< listed, not on the disk
    Pass m_pass = Pass::Emptying;
};

ImportJudge::ImportJudge(const Outcome &outcome, const QString &root, Verdict &verdict)
    : m_outcome(outcome),
      m_file(root + QStringLiteral("CorvinImportDB.sql")),
      m_verdict(verdict),
      m_listed(songsListedByPlayer(root))
{
    QSet<QString> listed;
    for (const QString &song : qAsConst(m_listed))
        listed.insert(song.toCaseFolded());
    QSet<QString> onDisk;
    for (auto it = outcome.after.files.cbegin(); it != outcome.after.files.cend(); ++it) {
        if (PlayerPaths::kindOf(it.key()) != PlayerPaths::Kind::Song || PlayerPaths::isHidden(it.key()) ||
            PlayerPaths::isOutsideDatabase(it.key()))
            continue;
        onDisk.insert(it.key().toCaseFolded());
        if (!listed.contains(it.key().toCaseFolded()))
            m_missing.append(it.key());
    }
    for (const QString &song : qAsConst(m_listed)) {
        if (!onDisk.contains(song.toCaseFolded()))
            m_gone.append(song);
    }
}

bool ImportJudge::readLines(QStringList &lines)
{
    const QByteArray bytes = contentOf(m_file);
    const QString text = QString::fromUtf8(bytes);
    if (text.toUtf8() != bytes || bytes.startsWith("\xEF\xBB\xBF") || bytes.contains('\r') || !bytes.endsWith('\n')) {
        m_verdict.fail(Rules::kImportForm, QStringLiteral("byte-order mark, CR, wrong UTF-8 or no LF at the end"));
        return false;
    }
    lines = text.left(text.size() - 1).split(QLatin1Char('\n'));
    return true;
}

ImportJudge::Pass ImportJudge::passOf(const QString &line)
{
    if (line.startsWith(kInsert))
        return Pass::Inserting;
    if (line.startsWith(kDelete))
        return Pass::Deleting;
    if (!m_listed.isEmpty() ||
        !(line == QLatin1String("DELETE FROM songs") || line == QLatin1String("DELETE FROM artists") ||
          line == QLatin1String("DELETE FROM genres")))
        m_verdict.fail(Rules::kImportForm, QStringLiteral("not expected: ") + line);
    return Pass::Emptying;
}

void ImportJudge::runLine(const QString &line)
{
    const Pass pass = passOf(line);
    if (pass < m_pass)
        m_verdict.fail(Rules::kImportForm, QStringLiteral("out of order: ") + line);
    m_pass = qMax(m_pass, pass);
    const int touched = m_database.run(line);
    if (touched < 0)
        m_verdict.fail(Rules::kImportRuns, line + QStringLiteral(" : ") + m_database.error());
    else if (pass != Pass::Emptying && touched != 1)
        m_verdict.fail(Rules::kImportRuns, QStringLiteral("%1 : %2 rows").arg(line).arg(touched));
}

void ImportJudge::judge()
{
    if (!m_database.error().isEmpty()) {
        m_verdict.fail(Rules::kImportRuns, QStringLiteral("no database: ") + m_database.error());
        return;
    }
    QStringList devicePaths;
    for (const QString &song : qAsConst(m_listed))
        devicePaths.append(PlayerPaths::toDevice(song));
    m_database.addListed(devicePaths);
    m_database.begin();
    const bool needed = m_listed.isEmpty() || !m_missing.isEmpty() || !m_gone.isEmpty();
    if (QFile::exists(m_file) != needed)
        m_verdict.fail(Rules::kImportRows, needed ? QStringLiteral("there is no import file")
                                                  : QStringLiteral("an import file with nothing to say"));
    QStringList lines;
    if (!QFile::exists(m_file) || !readLines(lines))
        return;
    if (m_listed.isEmpty() && (lines.size() < 3 || passOf(lines.at(2)) != Pass::Emptying))
        m_verdict.fail(Rules::kImportForm, QStringLiteral("the three tables are not emptied"));
    for (const QString &line : qAsConst(lines))
        runLine(line);
    judgeRows();
}

void ImportJudge::judgeRows()
{
    QStringList twice;
    QMap<QString, QStringList> rows = m_database.rows(twice);
    for (const QString &path : qAsConst(twice))
        m_verdict.fail(Rules::kImportRows, QStringLiteral("inserted twice: ") + path);
    for (const QString &song : qAsConst(m_missing)) {
        const QString path = inColumn(PlayerPaths::toDevice(song), kPathLimit);
        if (rows.contains(path))
            judgeRow(song, rows.take(path));
        else
            m_verdict.fail(Rules::kImportRows, QStringLiteral("not inserted: ") + song);
    }
    for (auto it = rows.cbegin(); it != rows.cend(); ++it)
        m_verdict.fail(Rules::kImportRows, QStringLiteral("inserted, but not missing: ") + it.key());
    const QStringList left = m_database.listed();
    const QSet<QString> leftSet(left.cbegin(), left.cend());
    QSet<QString> gone;
    for (const QString &song : qAsConst(m_gone))
        gone.insert(PlayerPaths::toDevice(song));
    for (const QString &path : qAsConst(gone)) {
        if (leftSet.contains(path))
            m_verdict.fail(Rules::kImportRows, QStringLiteral("not deleted: ") + path);
    }
    for (const QString &song : qAsConst(m_listed)) {
        const QString path = PlayerPaths::toDevice(song);
        if (!gone.contains(path) && !leftSet.contains(path))
            m_verdict.fail(Rules::kImportRows, QStringLiteral("deleted, but there: ") + path);
    }
}

QStringList ImportJudge::expectedRow(const QString &song, const ExpectedSong &expected) const
{
    const auto orElse = [](const QString &value, const QString &other) {
        return inColumn(value.isEmpty() ? other : value, kTextLimit);
    };
    const auto flag = [](bool set) { return set ? QStringLiteral("1") : QStringLiteral("0"); };
    const QString name = PlayerPaths::nameOf(song);
    return {inColumn(PlayerPaths::toDevice(song), kPathLimit),
            inColumn(name, kTextLimit),
            orElse(expected.title, name),
            orElse(expected.artist, kUnknown),
            orElse(expected.genre, kUnknown),
            QString(),
            flag(expected.isMp3),
            orElse(expected.author, kUnknown),
            QString::number(expected.bpm),
            inColumn(expected.key, kKeyLimit),
            flag(expected.hasMarkers)};
}

/// Without the truth about the song only what its name says is judged.
void ImportJudge::judgeRow(const QString &song, const QStringList &row)
{
    static const QStringList kColumns = ImportDatabase::columns();
    const auto known = m_outcome.manifest.songs.constFind(m_outcome.whereBefore(song));
    const bool isKnown = known != m_outcome.manifest.songs.cend();
    const QStringList expected = expectedRow(song, isKnown ? *known : ExpectedSong());
    for (int i = 0; i < kColumns.size(); ++i) {
        const QString &column = kColumns.at(i);
        const bool fromName = i < 2 || column == QLatin1String("DriveName");
        if ((isKnown || fromName) && row.at(i) != expected.at(i))
            m_verdict.fail(
                Rules::kImportValues,
                QStringLiteral("%1 : %2 is \"%3\", not \"%4\"").arg(song, column, row.at(i), expected.at(i)));
    }
}

} // namespace

void judgeImport(const Outcome &outcome, const QString &root, Verdict &verdict)
{
    ImportJudge(outcome, root, verdict).judge();
}
