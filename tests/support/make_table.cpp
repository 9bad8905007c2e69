// make-table IN.table OUT.dmi: writes a machine text as the table that it describes.
#include "machine_text.h"

#include <cstdio>
#include <exception>

int main(int argc, char* argv[])
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: make-table IN.table OUT.dmi\n");
        return 1;
    }
    try {
        tests::writeBytes(argv[2], tests::readMachine(argv[1]).image);
    } catch (const std::exception& wrong) {
        std::fprintf(stderr, "%s\n", wrong.what());
        return 1;
    }
}
