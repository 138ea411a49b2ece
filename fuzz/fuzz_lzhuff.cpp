#include "songfiles/lzhuff.h"

#include <QtGlobal>

#include <cstdlib>

namespace {

void dropMessage(QtMsgType /*type*/, const QMessageLogContext & /*context*/, const QString & /*text*/) {}

} // namespace

/// Expands any bytes, of a size small enough to be quick (the two high bytes of the size are cleared), then compresses
/// them and demands them back.
extern "C" int LLVMFuzzerTestOneInput(const quint8 *data, std::size_t size)
{
    qInstallMessageHandler(dropMessage);
    const QByteArray input(reinterpret_cast<const char *>(data), static_cast<int>(size));
    LzHuff codec;
    QByteArray plain;
    QByteArray small = input;
    for (int i = 2; i < qMin(4, small.size()); ++i)
        small[i] = '\0';
    codec.expand(small, plain);

    QByteArray packed;
    codec.compress(input, packed);
    const bool expanded = codec.expand(packed, plain);
    if (!input.isEmpty() && (!expanded || plain != input))
        std::abort();
    return 0;
}
