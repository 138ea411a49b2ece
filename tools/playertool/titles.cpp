#include "titles.h"

namespace {

QString pick(const QStringList &from, QRandomGenerator &random)
{
    return from.at(random.bounded(from.size()));
}

QStringList list(const char *words)
{
    return QString::fromUtf8(words).split(QLatin1Char('|'));
}

} // namespace

QStringList Titles::everyKindOfBeginning()
{
    static const QStringList kTitles = list(
        "Alba di vetro|Bruma leggera|Cielo basso|Danza lenta|Estate corta|Fiume calmo|Giardino d'inverno|Havana ore "
        "tre|Isola bianca|Jazz in cortile|Karma a colori|Luna d'argento|Mare mosso|Notte chiara|Onda lunga|Pioggia "
        "fine|Quiete dopo|Rosa di carta|Sogno a metà|Tempo perso|Uragano gentile|Vento del nord|Western di paese|Xenia"
        "|Yacht in bottiglia|Zingara felice|àncora e vela|È sera|élan vital|Çiçek|Über den Hof|Ñandú|Ångström|Öresund"
        "|'Round the yard|'O sole basso|'è tardi|(I said) maybe|(è vero)|\"Quoted\" words|\"99\" lune|'(doppio|((due"
        "|'|(|\"|99 palloni|7 colli|0 gradi|!Viva la banda|#1 in casa|@casa|&c.|-|--|¡Hola!|¿Dónde?|½ luna|²otto|ªlfa"
        "|…e poi|“Virgolette” alte|„Tief“|«Basse»|Ωmega|жизнь|日本の歌|ﬁore|Ǆamija|🎵 nota|Ελλάδα|ёлка");
    return kTitles;
}

QString Titles::random(QRandomGenerator &random)
{
    static const QStringList kWithS =
        list("Sera|Sogno|Sabbia|Sorriso|Silenzio|Strada|Stella|Samba|Swing|Salita|Sentiero|Saluto");
    static const QStringList kOthers =
        list("Alba|Barca|Cuore|Domani|Ecco|Fuoco|Gioia|Ieri|Lettera|Musica|Nuvola|Ombra|Piazza|Quando|Radice|Treno|Uva|"
             "Valigia|Zattera|È tutto|'Na sera|(Quasi) mai|12 rose|!Basta");
    static const QStringList kEnds = list(
        "d'estate|di mare|perduta|che torna|per due|sotto casa|a Natale|Rock 'n' Roll|più lontano|(live)|in blu|mia");
    const QString first = random.bounded(5) < 3 ? pick(kWithS, random) : pick(kOthers, random);
    return first + QLatin1Char(' ') + pick(kEnds, random);
}

QString Titles::artist(QRandomGenerator &random)
{
    static const QStringList kNames =
        list("Gli Aquiloni|Rita D'Amico|Orchestra «Sole»|Ñico e i Fari|The Night Owls|Élodie "
             "Brun|I Ragazzi del '66|Duo \"Brezza\"||");
    return pick(kNames, random);
}

QString Titles::genre(QRandomGenerator &random)
{
    static const QStringList kNames = list("Pop|Liscio|Rock 'n' Roll|Jazz|Latino|Canzone d'autore||");
    return pick(kNames, random);
}

QString Titles::author(QRandomGenerator &random)
{
    static const QStringList kNames = list("Bianchi|O'Hara|Pérez|Verdi-Neri|Müller");
    return pick(kNames, random);
}

QString Titles::keyName(QRandomGenerator &random)
{
    static const QStringList kNames = list("C|A-|F#|F#-|Bb|Eb-|G|D-|Cb|");
    return pick(kNames, random);
}

bool Titles::isLatin1(const QString &text)
{
    constexpr ushort kLast = 0xFF;
    for (const QChar c : text) {
        if (c.unicode() > kLast)
            return false;
    }
    return true;
}

QString Titles::asFileName(const QString &title, int maxBytes)
{
    static const QString kRefused = QStringLiteral("\\/:*?\"<>|");
    QString name = title;
    for (QChar &c : name) {
        if (kRefused.contains(c) || c < QLatin1Char(' '))
            c = QLatin1Char('_');
    }
    if (name.startsWith(QLatin1Char('.')))
        name[0] = QLatin1Char('_');
    while (name.toUtf8().size() > maxBytes)
        name.chop(name.at(name.size() - 1).isLowSurrogate() ? 2 : 1);
    return name;
}
