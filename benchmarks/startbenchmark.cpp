// The program itself, which ends when its first page is on the screen.
#include "startprobe.h"

#include "app/startup.h"

namespace {
void watch()
{
    quitWhenShown(QCoreApplication::instance());
}
} // namespace

Q_COREAPP_STARTUP_FUNCTION(watch)

int main(int argc, char **argv)
{
    return runCorvin4Manager(argc, argv);
}
