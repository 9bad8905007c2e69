// The inventory for people: the tree of devices with what they tell.
#pragma once

#include "embedded_host/inventory.h"
#include "kept_text.h"
#include "outline/by_handle.h"
#include "outline/drawing.h"
#include "outline/manners.h"
#include "structure_types.h"

namespace embedded_host::inventory
{

/// Which properties are shown.
enum class Detail {
    Usual, ///< of tiers 1 and 2 what a person can use, and what the headline does not say already
    All,
};

using outline::Looks;

/// Structures that no device was made of.
struct WithoutDevice
{
    std::size_t structures = 0;
    StructureTypes types;
};

/// Collects the devices, since any of them may turn out to be an earlier one's parent, and prints them at the end.
class TextInventory : public DeviceSink
{
public:
    /// `types` restricts the inventory; of the devices on their way to the root the headlines are shown.
    TextInventory(writing::Output& output, Detail detail, const Looks& looks = {}, const StructureTypes& types = {});

    void take(DeviceRecord&& device) override;

    /// Prints everything, and in the last line what was left out.
    void end(const WithoutDevice& others = {});

private:
    /// How a property is shown; properties are told by their index.
    struct Label
    {
        std::string text;
        std::size_t columns;
        bool inTier; ///< of those that are usually shown
        outline::Manner manner;
    };

    /// What is kept of a device until its place is known, as far as it can be laid out before.
    enum class Mark : unsigned char {
        End,
        Name,
        Empty,        ///< the name of a device in an empty socket
        Telling,      ///< a further part of the headline
        Serial,       ///< the same, a serial number
        Vacant,       ///< the same, that the socket is empty
        ArrayMaximum, ///< what an array can take
        ArraySockets, ///< its number of sockets
        Value,
        Missing, ///< a value that is not known
    };
    struct Row
    {
        Mark mark;
        std::uint16_t number; ///< of a property; of an array's parts its handle
        std::uint32_t size;   ///< of the text that follows
    };

    /// What is kept of one device.
    struct Block
    {
        std::uint64_t at;             ///< where it begins
        std::size_t labelColumns = 0; ///< of the widest label
    };

    /// A property that has to do with the headline.
    struct Special
    {
        const HeldProperty* property;
        const Label* label;
    };

    /// The modules of a memory array.
    struct Modules
    {
        std::uint64_t bytes = 0;
        std::uint32_t fitted = 0;
        std::uint32_t sockets = 0;
        bool unknown = false; ///< the size of one is not known
    };

    const Label& labelOf(const Property& property);
    bool isNothing(const outline::Manner& manner, const orb5::OrbString& text) const;
    bool isMissing(const orb5::OrbString& text) const;
    bool isVacant() const;
    bool isRepeated(const Label& label, const DeviceRecord& device, std::string_view text) const;

    void keep(Mark mark, std::size_t number, std::string_view text);
    void keepHeadline(const DeviceRecord& device, bool vacant);
    void keepRange(const orb5::Value& start, const orb5::Value& end);
    void keepRow(const HeldProperty& property, const DeviceRecord& device, bool vacant);
    void addToTree(const DeviceRecord& device);
    void addToArray(const DeviceRecord& device, const HeldProperty& size);

    Row rowAt(std::uint64_t at);
    std::string wordFor(std::string_view text) const;
    std::string arrayParts(std::uint16_t handle, std::string_view maximum, std::string_view sockets) const;
    void writeBlock(const Block& block, const outline::Beside& beside);
    void writeWhatIsMissing(const WithoutDevice& others);

    Detail detail_;
    StructureTypes types_;
    std::string notInstalled_; ///< the size of an empty memory socket, in the user's language
    std::string_view unknown_; ///< an enumerated value that the firmware does not know, likewise
    std::string_view other_;   ///< one that the standard has no name for, as the next two
    std::string_view reserved_;
    std::string_view outOfRange_;
    std::vector<std::optional<Label>> labels_; ///< those that were needed so far
    outline::TreeBuilder tree_;
    outline::Drawing drawing_;
    KeptText kept_;
    std::deque<Block> blocks_;           ///< of the devices
    std::vector<bool> wanted_;           ///< of the devices, when they are restricted
    outline::ByHandle<Modules> modules_; ///< by their array
    std::size_t left_ = 0;               ///< lines that were left out
    std::vector<Special> telling_;       ///< what the headline of the device that is taken shows
    std::vector<Special> special_;       ///< its properties with a role
};

/// Prints all declarations as a table.
void writeCatalogueAsText(writing::Output& output);

} // namespace embedded_host::inventory
