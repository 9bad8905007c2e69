// Where inventories come from.
#pragma once

#include "document/document.h"
#include "history/history.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace zorpinventory::sources
{

/// What a user names this machine by: nothing.
inline constexpr const char* kThisMachine = "";
inline constexpr const char* kStandardInput = "-";

/// Where records are looked up, and of which machine.
struct Place
{
    std::filesystem::path history = {}; ///< the usual one when empty
    std::string machine = {};           ///< what the user calls the machine, whatever its table says; empty: nothing

    std::filesystem::path file() const { return history.empty() ? history::usualFile() : history; }
};

/// A machine as a source tells it.
struct Sighting
{
    std::string source;
    std::string machine; ///< its key; empty when it has none
    std::string taken;   ///< when, in UTC; empty when nobody knows
    document::Document document;
};

/// The source's name in sentences: a path, or what stands for none.
std::string nameOf(const std::string& source);

/// The inventory of this machine, of a saved table in any layout, of a JSON document, of one on standard input, or of a
/// record (@N, @latest, @DATE, MACHINE@N). Tables are read by the module's program, which is looked for beside this
/// one, then in PATH. Throws Problem.
Sighting see(const std::string& source, const Place& place = {});

/// The same without its circumstances.
inline document::Document load(const std::string& source, const Place& place = {})
{
    return see(source, place).document;
}

/// Whether the source is a record of a history.
bool isRecord(const std::string& source);

/// The machine that a user means who names none: the only one that recorded itself, or the only one; else this one's
/// table is asked. Throws Problem.
std::string thisMachine(const history::History& history, const Place& place);

/// What a user calls a machine, as the history does. Throws Problem when there is no such machine.
std::string machineOf(const history::History& history, const std::string& name);

/// A sighting with the document as it was read.
using Take = std::function<void(Sighting sighting, std::string text)>;

/// A source that cannot be read, in one sentence.
using Fail = std::function<void(const std::string& sentence)>;

/// Hands over the machines of all sources in their order: this machine, standard input, tables and documents, and those
/// that are found in folders, thousands of them in one run of the module's program. One bad file stops nothing. Throws
/// Problem where nothing can go on. `found` is told how many there are.
void seeAll(const std::vector<std::string>& sources, const Place& place, const std::function<void(std::size_t)>& found,
            const Take& take, const Fail& fail);

} // namespace zorpinventory::sources
