#include "startup.h"

int main(int argc, char **argv)
{
    return runCorvin4Manager(argc, argv);
}
