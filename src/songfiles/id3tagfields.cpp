#include "id3tag.h"

#include <limits>

namespace {

const char kTitle[] = "TIT2";
const char kArtist[] = "TPE1";
const char kGenre[] = "TCON";
const char kAuthor[] = "TCOM";
const char kKey[] = "TKEY";
const char kLength[] = "TLEN";
const char kBpm[] = "TBPM";
const char kCopyright[] = "TCOP";
const char kMedt[] = "MEDT";

constexpr qint64 kMillisecondsPerSecond = 1000;
constexpr int kMedtBytes = 3;

} // namespace

QString Id3Tag::text(const char *id) const
{
    QString found;
    frameText(QByteArray(id), found);
    return found;
}

qint64 Id3Tag::number(const char *id) const
{
    bool ok = false;
    const qint64 value = text(id).toLongLong(&ok);
    return ok && value > 0 ? value : 0;
}

void Id3Tag::replaceFrame(const char *id, const QByteArray &payload)
{
    removeFrame(QByteArray(id));
    addFrame(QByteArray(id), payload, kHeaderSize);
}

QString Id3Tag::title() const
{
    return text(kTitle);
}

QString Id3Tag::artist() const
{
    return text(kArtist);
}

QString Id3Tag::genre() const
{
    return text(kGenre);
}

QString Id3Tag::author() const
{
    return text(kAuthor);
}

QString Id3Tag::key() const
{
    return text(kKey);
}

int Id3Tag::length() const
{
    const qint64 seconds = number(kLength) / kMillisecondsPerSecond;
    return seconds <= std::numeric_limits<int>::max() ? static_cast<int>(seconds) : 0;
}

int Id3Tag::bpm() const
{
    const qint64 value = number(kBpm);
    return value <= std::numeric_limits<int>::max() ? static_cast<int>(value) : 0;
}

bool Id3Tag::isQArte() const
{
    return text(kCopyright).toUpper().contains(QLatin1String("Q-ARTE"));
}

bool Id3Tag::hasTitle() const
{
    return hasFrame(QByteArray(kTitle));
}

bool Id3Tag::hasGenre() const
{
    return hasFrame(QByteArray(kGenre));
}

bool Id3Tag::hasAuthor() const
{
    return hasFrame(QByteArray(kAuthor));
}

bool Id3Tag::hasKey() const
{
    return hasFrame(QByteArray(kKey));
}

bool Id3Tag::hasLength() const
{
    return hasFrame(QByteArray(kLength));
}

bool Id3Tag::hasBpm() const
{
    return hasFrame(QByteArray(kBpm));
}

void Id3Tag::setTitle(const QString &text)
{
    replaceFrame(kTitle, text.toUtf8());
}

void Id3Tag::setArtist(const QString &text)
{
    replaceFrame(kArtist, text.toUtf8());
}

void Id3Tag::setGenre(const QString &text)
{
    replaceFrame(kGenre, text.toUtf8());
}

void Id3Tag::setAuthor(const QString &text)
{
    replaceFrame(kAuthor, text.toUtf8());
}

void Id3Tag::setKey(const QString &text)
{
    replaceFrame(kKey, text.toUtf8());
}

void Id3Tag::setLength(int seconds)
{
    replaceFrame(kLength, seconds > 0 ? QByteArray::number(seconds * kMillisecondsPerSecond) : QByteArray());
}

void Id3Tag::setBpm(int value)
{
    replaceFrame(kBpm, value > 0 ? QByteArray::number(value) : QByteArray());
}

bool Id3Tag::hasMedt() const
{
    return hasFrame(QByteArray(kMedt));
}

void Id3Tag::setMedt()
{
    addFrame(QByteArray(kMedt), QByteArray(kMedtBytes, '\0'), kHeaderSize);
}
