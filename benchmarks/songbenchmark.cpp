// The inner loops beside what does the same elsewhere. Each name is "row/side": the table divides the one by the other.
#include "benchsongs.h"
#include "plainlzhuff.h"

#include "songfiles/lzhuff.h"
#include "songfiles/metasong.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <benchmark/benchmark.h>
#include <taglib/mpegfile.h>
#include <taglib/tag.h>

extern "C" {
#include <lha_decoder.h>
}

#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

BenchSongs *songs = nullptr;

/// The streams as "-lh1-" archives hold them, which the other decoder knows: the same code with longer matches.
class ArchiveCodec : public LzHuff
{
public:
    static QByteArray compressed(const QByteArray &input)
    {
        constexpr int kLookAhead = 60;
        QByteArray output;
        ArchiveCodec().encode(input, kLookAhead, output);
        return output;
    }
};

QList<QByteArray> compressedStreams(const std::function<QByteArray(const QByteArray &)> &compress)
{
    QList<QByteArray> all;
    for (const QByteArray &stream : songs->streams)
        all.append(compress(stream));
    return all;
}

void expandOurs(benchmark::State &state)
{
    const QList<QByteArray> all = compressedStreams([](const QByteArray &stream) {
        QByteArray output;
        LzHuff().compress(stream, output);
        return output;
    });
    LzHuff codec;
    QByteArray output;
    while (state.KeepRunning()) {
        for (const QByteArray &one : all) {
            codec.expand(one, output);
            benchmark::DoNotOptimize(output.constData());
        }
    }
}
BENCHMARK(expandOurs)->Name("expand/ours")->Unit(benchmark::kMicrosecond);

/// Where the other decoder takes its bytes from.
struct Source
{
    const QByteArray *bytes;
    int at;
};

size_t nextBytes(void *buffer, size_t most, void *data)
{
    auto *source = static_cast<Source *>(data);
    const int count = qMin(static_cast<int>(most), source->bytes->size() - source->at);
    std::memcpy(buffer, source->bytes->constData() + source->at, static_cast<size_t>(count));
    source->at += count;
    return static_cast<size_t>(count);
}

void expandOther(benchmark::State &state)
{
    char method[] = "-lh1-";
    LHADecoderType *type = lha_decoder_for_name(method);
    const QList<QByteArray> all = compressedStreams(ArchiveCodec::compressed);
    const auto size = static_cast<size_t>(songs->streams.first().size());
    std::vector<uint8_t> output(size);
    while (state.KeepRunning()) {
        for (const QByteArray &one : all) {
            Source source{&one, 0};
            LHADecoder *decoder = lha_decoder_new(type, nextBytes, &source, size);
            if (lha_decoder_read(decoder, output.data(), size) != size)
                state.SkipWithError("not expanded");
            lha_decoder_free(decoder);
        }
    }
}
BENCHMARK(expandOther)->Name("expand/liblhasa")->Unit(benchmark::kMicrosecond);

void compressOurs(benchmark::State &state)
{
    LzHuff codec;
    QByteArray output;
    while (state.KeepRunning()) {
        for (const QByteArray &stream : songs->streams)
            codec.compress(stream, output);
    }
}
BENCHMARK(compressOurs)->Name("compress/ours")->Unit(benchmark::kMicrosecond);

void compressPlain(benchmark::State &state)
{
    PlainLzHuff codec;
    LzHuff ours;
    QByteArray same;
    for (const QByteArray &stream : songs->streams) {
        ours.compress(stream, same);
        if (codec.encode(stream) != same.mid(4))
            state.SkipWithError("other bits");
    }
    while (state.KeepRunning()) {
        for (const QByteArray &stream : songs->streams)
            benchmark::DoNotOptimize(codec.encode(stream));
    }
}
BENCHMARK(compressPlain)->Name("compress/plain")->Unit(benchmark::kMicrosecond);

void importAll(benchmark::State &state, const QStringList &paths)
{
    while (state.KeepRunning()) {
        for (const QString &path : paths) {
            MetaSong song;
            SongInfo info;
            if (!song.importFile(path))
                state.SkipWithError("not read");
            song.getSongInfo(info);
            benchmark::DoNotOptimize(info);
        }
    }
}

/// The whole content, by the system's calls alone.
void readWhole(const QByteArray &path, std::vector<char> &content)
{
    const int file = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    struct stat entry = {};
    ::fstat(file, &entry);
    content.resize(static_cast<size_t>(entry.st_size));
    if (::read(file, content.data(), content.size()) != entry.st_size)
        qFatal("not read");
    ::close(file);
}

QList<QByteArray> encoded(const QStringList &paths)
{
    QList<QByteArray> names;
    for (const QString &path : paths)
        names.append(path.toUtf8());
    return names;
}

void readAll(benchmark::State &state, const QStringList &paths)
{
    std::vector<char> content;
    const QList<QByteArray> names = encoded(paths);
    while (state.KeepRunning()) {
        for (const QByteArray &path : names)
            readWhole(path, content);
    }
}

void readAndExpand(benchmark::State &state)
{
    constexpr int kHeaderBytes = 1024;
    std::vector<char> content;
    const QList<QByteArray> names = encoded(songs->mfx);
    while (state.KeepRunning()) {
        for (const QByteArray &path : names) {
            readWhole(path, content);
            LzHuff codec;
            QByteArray output;
            codec.expand(QByteArray(content.data() + kHeaderBytes, static_cast<int>(content.size()) - kHeaderBytes),
                         output);
            benchmark::DoNotOptimize(output.constData());
        }
    }
}

void readByTagLib(benchmark::State &state)
{
    const QList<QByteArray> names = encoded(songs->mp3);
    while (state.KeepRunning()) {
        for (const QByteArray &path : names) {
            TagLib::MPEG::File file(path.constData(), false);
            const TagLib::Tag *tag = file.tag();
            benchmark::DoNotOptimize(tag->title());
            benchmark::DoNotOptimize(tag->artist());
            benchmark::DoNotOptimize(tag->genre());
        }
    }
}

void registerReaders()
{
    const auto add = [](const char *name, const std::function<void(benchmark::State &)> &run) {
        benchmark::RegisterBenchmark(name, run)->Unit(benchmark::kMicrosecond);
    };
    add("import mp3/ours", [](benchmark::State &state) { importAll(state, songs->mp3); });
    add("import mp3/TagLib", readByTagLib);
    add("import midi/ours", [](benchmark::State &state) { importAll(state, songs->midi); });
    add("import midi/plain read", [](benchmark::State &state) { readAll(state, songs->midi); });
    add("import mfx/ours", [](benchmark::State &state) { importAll(state, songs->mfx); });
    add("import mfx/read and expand", readAndExpand);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    BenchSongs made;
    songs = &made;
    registerReaders();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
