// Names and sentences of faults.
#include "faults.h"

#include "services/messages.h"

#include <array>
#include <cinttypes>
#include <cstdio>
#include <utility>

namespace embedded_host::table
{

namespace
{

using services::message;

/// The fault as the log tells it, where nothing but the line says which structure is meant.
std::string line(const Fault& fault, const std::string& sentence)
{
    switch (fault.kind) {
    case FaultKind::HeaderCut:
    case FaultKind::LengthBelowHeader:
    case FaultKind::AreaPastEnd:
    case FaultKind::StringsPastEnd:
        return message("structure at offset %1: %2", hex(fault.offset), sentence);
    default:
        return sentence;
    }
}

/// Strings may be missing in every other structure of a sound machine, and the module logs sizes itself.
bool isLogged(FaultKind kind) { return kind != FaultKind::StringMissing && kind != FaultKind::SizeUnrealistic; }

} // namespace

std::string hex(std::uint64_t number)
{
    std::array<char, 20> text{};
    std::snprintf(text.data(), text.size(), "0x%" PRIX64, number);
    return text.data();
}

std::string_view nameOf(FaultKind kind)
{
    static constexpr std::string_view kNames[] = {
        "entry-point",         "length-differs", "count-differs",    "end-missing",    "header-cut",
        "length-below-header", "area-past-end",  "strings-past-end", "string-missing", "size-unrealistic",
    };
    return kNames[static_cast<std::size_t>(kind)];
}

void Faults::restart(Log log)
{
    log_ = std::move(log);
    faults_.clear();
    sentences_.clear();
    lacking_.reset();
    lackedBefore_.clear();
}

void Faults::add(FaultKind kind, std::string sentence)
{
    const auto number = static_cast<std::uint32_t>(sentences_.size());
    sentences_.push_back(std::move(sentence));
    add({.kind = kind, .first = number});
}

void Faults::add(const Fault& fault)
{
    faults_.push_back(fault);
    if (log_ && isLogged(fault.kind))
        log_(line(fault, sentence(fault)));
}

void Faults::addMissingString(const StructurePlace& structure, unsigned char number)
{
    if (!lacking_ || lacking_->offset != structure.offset) {
        if (lackedBefore_.size() <= structure.offset)
            lackedBefore_.resize(structure.offset + std::size_t{1});
        // A structure that is looked at again is asked for nothing that it was not asked for before.
        if (lackedBefore_[structure.offset])
            return;
        lackedBefore_[structure.offset] = true;
        lacking_ = {structure.offset, faults_.size(), {}};
        add({FaultKind::StringMissing, true, structure.handle, structure.offset, number, 0});
    }
    if (!lacking_->numbers[number])
        ++faults_[lacking_->fault].second;
    lacking_->numbers.set(number);
}

std::string Faults::sentence(const Fault& fault) const
{
    switch (fault.kind) {
    case FaultKind::EntryPoint:
    case FaultKind::LengthDiffers:
        break;
    case FaultKind::CountDiffers:
        return message("the table ends at offset %1 after %2 structures; its entry point announced %3",
                       hex(fault.offset), fault.first, fault.second);
    case FaultKind::EndMissing:
        return message("the table has no end marker (type 127); it ends with its last byte");
    case FaultKind::HeaderCut:
        return message("only %1 bytes of its header lie in the table; dropped", fault.first);
    case FaultKind::LengthBelowHeader:
        return message("its length is %1, less than its header; the table ends here", fault.first);
    case FaultKind::AreaPastEnd:
        return message("its formatted area of %1 bytes runs past the end of the table at %2; dropped", fault.first,
                       hex(fault.second));
    case FaultKind::StringsPastEnd:
        return message("its strings run past the end of the table at %1; cut there", hex(fault.first));
    case FaultKind::StringMissing:
        if (fault.second == 1)
            return message("it asks for string %1, which its set does not have", fault.first);
        return message("it asks for string %1 and %2 more that its set does not have", fault.first, fault.second - 1);
    case FaultKind::SizeUnrealistic:
        return message("its memory size of 2 to the power of %1 MB is not realistic (message %2)", fault.first,
                       fault.second);
    }
    return sentences_[fault.first];
}

} // namespace embedded_host::table
