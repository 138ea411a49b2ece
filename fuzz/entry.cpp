#include "checks.h"

#include <QtGlobal>

#include <cstdio>
#include <cstdlib>

namespace {

void dropMessage(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
{
    // What ends the program must be seen.
    if (type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

} // namespace

/// What the parsers log of damaged songs is of no interest here.
extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    qInstallMessageHandler(dropMessage);
    return 0;
}

/// One program a check: the build says which, as CORVIN_FUZZ_CHECK.
extern "C" int LLVMFuzzerTestOneInput(const quint8 *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const FuzzChecks::Verdict wrong = FuzzChecks::CORVIN_FUZZ_CHECK(bytes);
    if (wrong.isEmpty())
        return 0;
    std::fprintf(stderr, "Wrong: %s\n", qPrintable(wrong));
    std::abort();
}
