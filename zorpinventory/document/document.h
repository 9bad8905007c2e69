// The inventory of one machine, as a JSON document of zorpsysinfosmbios2 tells it.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace zorpinventory::document
{

/// A number as JSON writes it; never rounded.
struct Numeral
{
    std::string_view digits;

    bool operator==(const Numeral&) const = default;
};

/// A number with its unit, and the text that people read.
struct Measurement
{
    Numeral value;
    std::string_view unit; ///< "BYTES"
    std::string_view text; ///< "40 B"
};

using Texts = std::span<const std::string_view>;

/// What a device says of one of its properties.
using Value = std::variant<std::string_view, Numeral, bool, Texts, Measurement>;

/// What a property's text was made from. Only documents with details have it.
struct Number
{
    enum class Kind { Amount, Code, Codes };

    Kind kind = Kind::Amount;
    Numeral value;                  ///< of an amount or a code
    std::string_view unit;          ///< of an amount, empty for none: "HERTZ"
    std::span<const Numeral> codes; ///< of codes, one for each element of the list

    bool operator==(const Number& other) const;
};

struct Property
{
    std::string_view name; ///< "t17_serial"
    Value value;
    const Number* number = nullptr; ///< null where the document has none
};

/// A child that a device names on a bus.
struct ChildLink
{
    std::string_view bus;
    std::optional<std::string_view> id; ///< none where the document has null
};

/// What a device is, beyond the types of the standard.
inline constexpr unsigned kRootType = 256;
inline constexpr unsigned kGroupType = 257; ///< gathers other devices; no structure stands behind it

struct Device
{
    std::string_view uid;
    std::string_view name;
    std::string_view identifier;
    std::string_view description;
    Texts capabilities;
    std::vector<std::pair<std::string_view, std::string_view>> uids; ///< of other levels: "2", "SMBIOS:TYPE:17"
    unsigned type = kGroupType;                                      ///< the structure's type, or one of those above
    std::optional<unsigned> handle; ///< the structure's; none of the root, of groups, and of the further devices of a
                                    ///< structure that has several
    std::vector<ChildLink> children;
    std::span<const Property> properties;

    /// Null when the device does not have the property.
    const Property* find(std::string_view property) const;

    /// The property as one text without the blanks around it; empty when the device does not have it.
    std::string_view text(std::string_view property) const;

    /// The property's number, or the number that it is; nothing where the document does not tell it.
    std::optional<double> number(std::string_view property) const;
};

/// What a document says of the module that made it.
struct Module
{
    std::string_view name;
    std::string_view version;
    std::string_view build;
    Texts capabilities;
};

/// A structure that no device was made of. Only documents with details have them.
struct Structure
{
    unsigned type = 0;
    unsigned handle = 0;
    unsigned length = 0; ///< of the formatted area, in bytes
};

/// What is wrong with the table itself. Only documents with details have it.
struct Fault
{
    std::string_view name;          ///< "strings-past-end"
    Numeral offset;                 ///< from the table's first byte; 0 where no place is meant
    std::optional<unsigned> handle; ///< none where no structure is meant
    std::string_view text;          ///< a sentence in the document's language
};

/// A machine. All texts in it live as long as it does.
class Document
{
public:
    Document() = default;
    Document(Document&&) = default;
    Document& operator=(Document&&) = default;

    const std::vector<Device>& devices() const { return devices_; }

    const Module& module() const { return module_; }

    /// Whether numbers stand beside texts.
    bool detailed() const { return detailed_; }

    /// The version of the standard that the table names, "3.1.1"; empty where the document does not tell it.
    std::string_view version() const { return version_; }

    /// In the table's order, types 126 and 127 among them.
    const std::vector<Structure>& others() const { return others_; }

    /// In the order in which they were met.
    const std::vector<Fault>& faults() const { return faults_; }

private:
    friend class Reader;

    std::string bytes_; ///< the document itself: texts are views of it
    Module module_;
    std::string_view version_;
    std::vector<Device> devices_;
    std::vector<Structure> others_;
    std::vector<Fault> faults_;
    std::vector<Property> properties_;
    std::vector<std::string_view> texts_;
    std::vector<Number> numbers_;
    std::vector<Numeral> codes_;
    bool detailed_ = false;
};

/// The name of the documents' format.
inline constexpr std::string_view kFormat = "zorp-sysinfo-1";

/// The largest document that is read, in bytes: several times what the largest table comes to.
inline constexpr std::size_t kLargestDocument = 0x20000000;

/// Reads a document. Throws Problem, which names it by `name`.
Document read(std::string bytes, const std::string& name);

/// The number of a handle in a text such as "0x0011"; of type 35 they have eight digits. Nothing when it is none.
std::optional<unsigned> handleIn(std::string_view text);

/// "0x0011"
std::string handleText(unsigned handle);

/// The text without the blanks around it.
std::string_view trimmed(std::string_view text);

/// One text for a value without the blanks around it; a list has none.
std::string_view textOf(const Value& value);

/// Calls `named` with each handle in the value of a link.
template <class Function>
void forEachHandle(const Value& value, Function named)
{
    if (const auto* list = std::get_if<Texts>(&value))
        for (const auto handle : *list)
            named(handle);
    else
        named(textOf(value));
}

} // namespace zorpinventory::document
