// Drawing the tree: headlines and rows beside its lines, in as many columns as there are.
#pragma once

#include "tree.h"
#include "writing/output.h"

#include <functional>

namespace embedded_host::outline
{

/// What the place can show where the text is read.
struct Looks
{
    std::size_t columns = 0; ///< long values are wrapped there; 0 for no limit
    bool colours = false;
    bool ascii = false; ///< the tree is drawn in ASCII
};

/// What stands left of a device: beside its headline, and beside all that is below that.
struct Beside
{
    std::string headline;
    std::string rows;
};

/// What stands before a value.
struct LabelCell
{
    std::string_view text;
    std::size_t columns; ///< of the text
    std::size_t width;   ///< of all labels of the device
};

class Drawing
{
public:
    Drawing(writing::Output& output, const Looks& looks) : output_(output), looks_(looks) {}

    /// Calls `draw` for the devices of a tree, parents first.
    void forEach(const std::vector<TreeNode>& tree,
                 const std::function<void(DeviceIndex device, const Beside& beside)>& draw) const;

    /// Writes a device's name, printable already, and what is said of it; pale where a socket is empty.
    void headline(const Beside& beside, std::string_view name, bool pale, std::string_view text);

    /// Writes a label and its value; pale where the value is not known.
    void row(const Beside& beside, const LabelCell& label, bool pale, std::string_view text);

    /// Writes, below the tree, what it does not show.
    void remark(std::string_view text);

private:
    enum class Style { Name, PaleName, Value, PaleValue };

    void writeLines(std::string_view left, std::string_view beside, LabelCell label, Style style,
                    std::string_view text);
    void writePrintable(std::string_view text);
    std::string_view paint(std::string_view colour);

    writing::Output& output_;
    Looks looks_;
    std::string shown_;  ///< the piece of text that is written
    std::string blanks_; ///< as many as a label has columns
};

} // namespace embedded_host::outline
