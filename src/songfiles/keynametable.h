#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

/// Names of the keys a song can stand in.
///
/// A key code holds the two data bytes of a MIDI key signature: high byte sf, the number of sharps (negative for
/// flats, -7 to 7, as a signed byte), low byte mi (0 major, 1 minor). A major key is named by its tonic ("Bb"), a minor
/// key by its tonic and a dash ("G-").
class KeyNameTable
{
public:
    /// All tables are equal and share their maps: making one costs next to nothing.
    KeyNameTable();

    /// The name that belongs to @p code; an empty text when the code is none of the 30 known ones.
    QString name(quint16 code) const { return m_nameOfCode.value(code); }

    /// The code that belongs to @p name, exactly as written (case counts), among the 30 names and three extra
    /// spellings. Nothing when the name is unknown.
    std::optional<quint16> code(const QString &name) const;

    /// The 30 names, in the order of their codes.
    QStringList names() const { return m_nameOfCode.values(); }

private:
    QMap<quint16, QString> m_nameOfCode;
    QMap<QString, quint16> m_codeOfName;
};
