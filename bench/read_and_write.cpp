// read-and-write TABLE BYTES: reads the table, and writes that many bytes to standard output. No program that turns
// the table into as much text can do with less.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>
#include <vector>

int main(int argc, char* argv[])
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: read-and-write TABLE BYTES\n");
        return 1;
    }
    std::FILE* table = std::fopen(argv[1], "rb");
    if (table == nullptr) {
        std::perror(argv[1]);
        return 1;
    }
    static std::array<char, 0x10000> piece;
    while (std::fread(piece.data(), 1, piece.size(), table) != 0) {
    }
    std::fclose(table);

    unsigned long long left = std::strtoull(argv[2], nullptr, 10);
    while (left != 0) {
        const auto written = write(STDOUT_FILENO, piece.data(), left < piece.size() ? left : piece.size());
        if (written < 0) {
            std::perror("standard output");
            return 1;
        }
        left -= static_cast<unsigned long long>(written);
    }
}
