// The inventory for people: the tree of devices with their properties.
#pragma once

#include "embedded_host/inventory.h"
#include "kept_texts.h"
#include "tree.h"
#include "writing/output.h"

namespace embedded_host::inventory
{

/// Which properties are shown.
enum class Detail {
    Usual, ///< tiers 1 and 2, and nothing internal
    All,
};

/// What the place can show where the text is read.
struct Looks
{
    std::size_t columns = 0; ///< long values are wrapped there; 0 for no limit
    bool colours = false;
};

/// Collects the devices, since any of them may turn out to be an earlier one's parent, and prints them at the end.
class TextInventory : public DeviceSink
{
public:
    TextInventory(writing::Output& output, Detail detail, Looks looks = {});

    void take(DeviceRecord&& device) override;
    void end();

private:
    /// How a property is shown; properties are told by their index.
    struct Label
    {
        std::string text;
        std::size_t columns;
        bool shown;
        std::size_t headline; ///< rank among kHeadlines
    };

    bool appendShown(const orb5::OrbString& value);
    void appendRows(const HeldProperty& property, std::size_t labelColumns);
    void appendHeadline(const DeviceRecord& device);

    void writeBlock(std::string_view block, std::string_view branch, std::string_view beside);
    void layOut(std::string_view line, std::string_view label, std::string_view left, std::string_view beside);

    writing::Output& output_;
    Looks looks_;
    std::string notInstalled_; ///< the size of an empty memory socket, in the user's language
    std::string unknown_;      ///< an enumerated value that the firmware does not know, likewise
    std::vector<Label> labels_;
    TreeBuilder tree_;
    KeptTexts blocks_; ///< the devices, as far as they can be laid out before their place is known
    std::vector<const HeldProperty*> telling_; ///< of the device that is taken
    std::string text_;                         ///< of the block that is being made or written
};

/// Prints all declarations as a table.
void writeCatalogueAsText(writing::Output& output);

} // namespace embedded_host::inventory
