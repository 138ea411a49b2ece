#include "keynametable.h"

namespace {

constexpr int kMostFlats = -7;
constexpr int kMostSharps = 7;
constexpr int kMajor = 0;
constexpr int kMinor = 1;

quint16 keyCode(int sharps, int mode)
{
    return static_cast<quint16>((static_cast<quint8>(sharps) << 8) | mode);
}

QMap<quint16, QString> namesByCode()
{
    // From seven flats to seven sharps: every step is a fifth up.
    const QStringList majors = QStringLiteral("Cb Gb Db Ab Eb Bb F C G D A E B F# C#").split(QLatin1Char(' '));
    const QStringList minors =
        QStringLiteral("Ab- Eb- Bb- F- C- G- D- A- E- B- F#- C#- G#- D#- A#-").split(QLatin1Char(' '));
    QMap<quint16, QString> names;
    for (int sharps = kMostFlats; sharps <= kMostSharps; ++sharps) {
        names.insert(keyCode(sharps, kMajor), majors.at(sharps - kMostFlats));
        names.insert(keyCode(sharps, kMinor), minors.at(sharps - kMostFlats));
    }
    return names;
}

QMap<QString, quint16> codesByName(const QMap<quint16, QString> &names)
{
    QMap<QString, quint16> codes;
    for (auto it = names.constBegin(); it != names.constEnd(); ++it)
        codes.insert(it.value(), it.key());
    // Deliberate: "G#" gives the code of E major, though G sharp major is another key.
    codes.insert(QStringLiteral("G#"), keyCode(4, kMajor));
    codes.insert(QStringLiteral("Db-"), keyCode(4, kMinor));
    codes.insert(QStringLiteral("D#"), keyCode(-3, kMajor));
    return codes;
}

} // namespace

KeyNameTable::KeyNameTable()
{
    // One table is made for every song that is read: the maps are built once and shared by all copies.
    static const QMap<quint16, QString> names = namesByCode();
    static const QMap<QString, quint16> codes = codesByName(names);
    m_nameOfCode = names;
    m_codeOfName = codes;
}

std::optional<quint16> KeyNameTable::code(const QString &name) const
{
    const auto found = m_codeOfName.constFind(name);
    return found == m_codeOfName.constEnd() ? std::nullopt : std::make_optional(found.value());
}
