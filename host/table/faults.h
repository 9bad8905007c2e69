// What is wrong with a table and its source, as records: documents list them, and the log's lines are made of them.
#pragma once

#include <bitset>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace embedded_host::table
{

/// A structure, and where it stands in its table.
struct StructurePlace
{
    std::uint32_t offset; ///< from the table's first byte
    unsigned char type;
    unsigned char length; ///< of the formatted area
    std::uint16_t handle;
};

enum class FaultKind : unsigned char {
    EntryPoint,        ///< a source or an entry point was passed over, since it is not believed
    LengthDiffers,     ///< there are fewer bytes than were promised
    CountDiffers,      ///< the walk ended before the entry point's count of structures was reached
    EndMissing,        ///< the walk reached the table's end without a count and without a type 127
    HeaderCut,         ///< fewer than four bytes are left where a structure should begin
    LengthBelowHeader, ///< a structure's length is less than its header's
    AreaPastEnd,       ///< a formatted area runs past the table's end
    StringsPastEnd,    ///< a string set does
    StringMissing,     ///< a structure asks for a string that its set does not have
    SizeUnrealistic,   ///< a memory size that no memory has
};

/// The kind as documents name it: "strings-past-end".
std::string_view nameOf(FaultKind kind);

/// An offset or address as sentences show it: "0x1A2".
std::string hex(std::uint64_t number);

/// One fault, as small as can be: a hostile table has one for every few of its bytes.
struct Fault
{
    FaultKind kind;
    bool hasHandle = false; ///< a structure is meant, and the bytes of its handle are there
    std::uint16_t handle = 0;
    std::uint32_t offset = 0; ///< from the table's first byte; 0 where no place is meant
    std::uint32_t first = 0;  ///< the numbers that its sentence tells, or the sentence's own
    std::uint32_t second = 0;
};
static_assert(sizeof(Fault) == 16);

/// All faults of one table, in the order in which they were met.
class Faults
{
public:
    /// Takes a line for the log.
    using Log = std::function<void(const std::string& line)>;

    /// Forgets all faults; those to come are logged there, unless it is empty.
    void restart(Log log);

    /// A fault of the source; its sentence names the file.
    void add(FaultKind kind, std::string sentence);
    void add(const Fault& fault);

    /// The structure lacks this string, which it was asked for: a fault for the first, which counts the others.
    void addMissingString(const StructurePlace& structure, unsigned char number);

    const std::deque<Fault>& all() const { return faults_; }

    /// What is wrong, and what was done about it, in the user's language.
    std::string sentence(const Fault& fault) const;

private:
    /// The structure that lacked a string last, and all that it lacks.
    struct Lacking
    {
        std::uint32_t offset;
        std::size_t fault; ///< its number among all
        std::bitset<256> numbers;
    };

    Log log_;
    std::deque<Fault> faults_;
    std::vector<std::string> sentences_; ///< of faults of the source
    std::optional<Lacking> lacking_;
    std::vector<bool> lackedBefore_; ///< which structures have a fault for their strings, by offset
};

} // namespace embedded_host::table
