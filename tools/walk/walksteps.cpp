#include "walksteps.h"

#include <QFile>
#include <QRegularExpression>

namespace {

QStringList splitWords(const QString &line)
{
    static const QRegularExpression word(QStringLiteral("\"([^\"]*)\"|(\\S+)"));
    QStringList words;
    auto matches = word.globalMatch(line);
    while (matches.hasNext()) {
        const auto match = matches.next();
        QString text = match.capturedStart(1) >= 0 ? match.captured(1) : match.captured(2);
        words.append(text.replace(QLatin1String("\\n"), QLatin1String("\n")));
    }
    return words;
}

/// "shots NAME": the screen in the three languages, and back to the first.
void appendShots(QList<WalkStep> &steps, const WalkStep &shots)
{
    const QStringList languages = {QStringLiteral("it"), QStringLiteral("en"), QStringLiteral("de")};
    for (const QString &language : languages) {
        steps.append({shots.line, QStringLiteral("language"), {language}});
        steps.append({shots.line, QStringLiteral("shot"), {shots.word(0) + QLatin1Char('-') + language}});
    }
    steps.append({shots.line, QStringLiteral("language"), {languages.first()}});
}

} // namespace

QList<WalkStep> readScenario(const QString &path)
{
    QList<WalkStep> steps;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return steps;
    for (int number = 1; !file.atEnd(); ++number) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        WalkStep step;
        step.line = number;
        step.words = splitWords(line);
        step.command = step.words.takeFirst();
        if (step.command == QLatin1String("shots"))
            appendShots(steps, step);
        else
            steps.append(step);
    }
    return steps;
}
