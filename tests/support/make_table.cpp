// make-table IN.table OUT.dmi: writes a machine text as the table that it describes.
#include "machine_text.h"

#include <cstdio>
#include <exception>
#include <fstream>

int main(int argc, char* argv[])
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: make-table IN.table OUT.dmi\n");
        return 1;
    }
    try {
        const tests::Bytes image = tests::readMachine(argv[1]).image;
        std::ofstream out(argv[2], std::ios::binary);
        for (const unsigned char value : image)
            out.put(static_cast<char>(value));
        if (out.close(); !out) {
            std::fprintf(stderr, "%s: cannot be written\n", argv[2]);
            return 1;
        }
    } catch (const std::exception& wrong) {
        std::fprintf(stderr, "%s\n", wrong.what());
        return 1;
    }
}
