// Writes the completions for bash, zsh and fish into a folder while the program is built.
#include "commandline/completions.h"
#include "commands/commands.h"
#include "writing/output.h"

int main(int argc, char* argv[])
{
    using namespace zorpinventory;
    if (argc != 2)
        return 2;
    const std::filesystem::path folder = argv[1];
    const auto all = commands::all();
    const auto write = [&](const char* name, const std::string& text) {
        const auto file = embedded_host::writing::fileOutput(folder / name);
        file->write(text);
        file->finish();
    };
    write("zorpinventory.bash", commandline::bashCompletion(all));
    write("_zorpinventory", commandline::zshCompletion(all));
    write("zorpinventory.fish", commandline::fishCompletion(all));
}
