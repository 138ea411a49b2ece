#include "judgerules.h"

#include "fastdatabase.h"
#include "initial.h"
#include "playerpaths.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>

namespace {

constexpr int kLongestName = 95;  ///< bytes; longer names are shortened
constexpr int kLongestPath = 245; ///< bytes, the volume's own path included

class SongJudge
{
public:
    SongJudge(const Outcome &outcome, const QString &root, Verdict &verdict)
        : m_outcome(outcome), m_root(root), m_verdict(verdict)
    {
        for (const QString &song : songsListedByPlayer(root))
            m_listed.insert(song.toCaseFolded());
    }

    void judgePlayable(const QString &path);
    void judgeBroken(const QString &path);

private:
    void judgePlace(const QString &path, const QString &now);
    void judgeInitial(const QString &path, const QString &subFolder);
    void judgeName(const QString &path, const QString &now);
    bool isShortened(const QString &stem, const QString &nowStem) const;

    const Outcome &m_outcome;
    const QString m_root;
    QSet<QString> m_listed; ///< what the player lists is not read again, so a broken song among it stays
    Verdict &m_verdict;
};

/// "midi" loses its last letter, whatever the case.
QString repairedSuffix(const QString &path)
{
    const QString suffix = PlayerPaths::suffixOf(path);
    const bool isLong = suffix.compare(QLatin1String("midi"), Qt::CaseInsensitive) == 0;
    return isLong && !PlayerPaths::isOutsideDatabase(path) ? suffix.left(suffix.size() - 1) : suffix;
}

void SongJudge::judgePlayable(const QString &path)
{
    const int copies = m_outcome.copiesNow(path);
    if (copies != m_outcome.copiesBefore(path)) {
        const bool changed = copies == 0 && m_outcome.after.files.contains(path);
        m_verdict.fail(Rules::kSongKept, changed ? path + QStringLiteral(" : other bytes")
                                                 : QStringLiteral("%1 : %2 times").arg(path).arg(copies));
        return;
    }
    const QString now = m_outcome.whereNow(path);
    if (!now.isEmpty()) {
        judgePlace(path, now);
        judgeName(path, now);
    }
}

void SongJudge::judgePlace(const QString &path, const QString &now)
{
    const QString folder = Outcome::folderAfterCleanUp(path);
    const QString folderNow = PlayerPaths::folderOf(now);
    if (!m_outcome.bigFolders().contains(folder)) {
        if (folderNow != folder)
            m_verdict.fail(Rules::kSongPlace, path + QStringLiteral(" -> ") + now);
        return;
    }
    static const QRegularExpression kSubFolder(QStringLiteral("^.\\d+$"));
    const QString subFolder = PlayerPaths::nameOf(folderNow);
    if (PlayerPaths::folderOf(folderNow) != folder || !kSubFolder.match(subFolder).hasMatch())
        m_verdict.fail(Rules::kSongPlace, path + QStringLiteral(" -> ") + now);
    else
        judgeInitial(path, subFolder);
}

void SongJudge::judgeInitial(const QString &path, const QString &subFolder)
{
    const auto known = m_outcome.manifest.songs.constFind(path);
    if (known == m_outcome.manifest.songs.cend())
        return;
    for (const QString &title : known->filedUnder) {
        // The player's disk ignores case: a0 and A0 are one folder there.
        if (initialOfTitle(title).toCaseFolded() == subFolder.at(0).toCaseFolded())
            return;
    }
    m_verdict.fail(
        Rules::kSongInitial,
        QStringLiteral("%1 : \"%2\" in %3").arg(path, known->filedUnder.join(QStringLiteral("\" or \"")), subFolder));
}

/// Whether the name lost characters at its end and got a number in parentheses instead.
bool SongJudge::isShortened(const QString &stem, const QString &nowStem) const
{
    static const QRegularExpression kNumbered(QStringLiteral("^(.*)\\(\\d+\\)$"));
    const QRegularExpressionMatch match = kNumbered.match(nowStem);
    return match.hasMatch() && stem.startsWith(match.captured(1));
}

void SongJudge::judgeName(const QString &path, const QString &now)
{
    const QString stem = PlayerPaths::stemOf(path);
    const QString nowStem = PlayerPaths::stemOf(now);
    const bool fromRoot = PlayerPaths::folderOf(path).isEmpty();
    const bool split = m_outcome.layInBigFolder(path);
    const QRegularExpression kept(QLatin1Char('^') + QRegularExpression::escape(stem) +
                                  QLatin1String(fromRoot ? "(_\\d+)?" : "") +
                                  QLatin1String(split ? "(\\(\\d+\\))*" : "") + QLatin1Char('$'));
    const bool repaired = !PlayerPaths::isOutsideDatabase(path);
    const QString unshortened =
        PlayerPaths::join(PlayerPaths::folderOf(now), stem + QLatin1Char('.') + repairedSuffix(path));
    const bool overlong = QFile::encodeName(PlayerPaths::nameOf(unshortened)).size() > kLongestName;
    const bool mayShorten = overlong || QFile::encodeName(m_root + unshortened).size() > kLongestPath;
    bool right = kept.match(nowStem).hasMatch() || (repaired && mayShorten && isShortened(stem, nowStem));
    right = right && PlayerPaths::suffixOf(now) == repairedSuffix(path);
    if (repaired && QFile::encodeName(PlayerPaths::nameOf(now)).size() > kLongestName)
        right = false;
    if (!right)
        m_verdict.fail(Rules::kSongName, path + QStringLiteral(" -> ") + now);
}

void SongJudge::judgeBroken(const QString &path)
{
    if (PlayerPaths::isOutsideDatabase(path)) {
        if (m_outcome.whereNow(path) != path)
            m_verdict.fail(Rules::kBrokenGone, path + QStringLiteral(" : is gone"));
        return;
    }
    const QString now = m_outcome.whereNow(path);
    if (m_outcome.copiesNow(path) > 0 && !m_listed.contains(now.toCaseFolded()))
        m_verdict.fail(Rules::kBrokenGone, path + QStringLiteral(" : is still there"));
}

} // namespace

void judgeSongs(const Outcome &outcome, const QString &root, Verdict &verdict)
{
    SongJudge songs(outcome, root, verdict);
    for (auto it = outcome.before.files.cbegin(); it != outcome.before.files.cend(); ++it) {
        const QString &path = it.key();
        if (PlayerPaths::kindOf(path) != PlayerPaths::Kind::Song || PlayerPaths::isHidden(path) ||
            PlayerPaths::isPlayersOwn(path))
            continue;
        if (outcome.wasBroken(path))
            songs.judgeBroken(path);
        else
            songs.judgePlayable(path);
    }
}
