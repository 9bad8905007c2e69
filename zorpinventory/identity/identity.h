// Which texts are real, and which machine it is.
#pragma once

#include "document/document.h"
#include "knowledge/kinds.h"

#include <map>
#include <string>

namespace zorpinventory::identity
{

/// Whether a property's text tells something: it is neither blank nor a placeholder.
bool isReal(std::string_view property, std::string_view text);

/// Whether the text only says that somebody should have filled it in.
bool isPlaceholder(std::string_view property, std::string_view text);

/// Whether no hardware stands behind a probe, cooling device, power supply or battery: no text and no measured value in
/// it is of a real one.
bool isTemplate(const document::Device& device);

/// Tells the parts' own serial numbers from those that firmware gives to several.
class Serials
{
public:
    explicit Serials(const document::Document& document);

    /// The device's serial number; empty when it has no real one of its own.
    std::string_view of(const document::Device& device) const;

    /// A serial number as it is written, real but for those who share it.
    struct Written
    {
        std::string_view text;     ///< empty when the device has none
        std::string_view property; ///< that has it
        unsigned carriers = 0;     ///< devices of the type that have it
    };
    Written written(const document::Device& device) const;

private:
    std::map<std::pair<unsigned, std::string_view>, unsigned> carriers_; ///< by type and serial number
};

/// What a machine is known by from one day to another.
struct Key
{
    enum class From { Nothing, Serial, Uuid, Board, Name };

    std::string text; ///< empty when there is none
    From from = From::Nothing;
};

Key keyOf(const document::Document& document);

/// The device that a type has once: the first of it; null when there is none.
const document::Device* firstOf(const document::Document& document, unsigned type);

} // namespace zorpinventory::identity
