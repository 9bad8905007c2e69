// Drawing the tree.
#include "drawing.h"

#include "services/utf8.h"

#include <algorithm>
#include <array>

namespace embedded_host::outline
{

namespace
{

/// Deeper devices are not indented further, so that a hostile chain of links cannot make the text grow by its square.
constexpr std::size_t kDeepestIndent = 16;

/// Values are not wrapped to less, however narrow the terminal is.
constexpr std::size_t kNarrowest = 20;

constexpr std::string_view kGap = "  ";

constexpr std::string_view kPlain = "\x1B[0m";
constexpr std::string_view kBold = "\x1B[1m";
constexpr std::string_view kFaint = "\x1B[2m";

/// What the tree is drawn with.
struct Lines
{
    std::string_view child;
    std::string_view lastChild;
    std::string_view through;
    std::string_view nothing;
};
constexpr Lines kLines = {"├─ ", "└─ ", "│  ", "   "};
constexpr Lines kAsciiLines = {"|- ", "`- ", "|  ", "   "};

/// How much of a text fits into a line, and how much of it there is until the next begins.
struct Line
{
    std::size_t shown;
    std::size_t taken;
};

/// Breaks at blanks where there are some.
Line firstLine(std::string_view text, std::size_t columns)
{
    std::string_view rest = text; // behind what fits
    std::size_t used = 0;
    std::size_t behindBlank = 0;
    while (!rest.empty()) {
        std::string_view next = rest;
        const char32_t code = services::takeCharacter(next);
        used += services::columnsPrinted(code);
        if (code == ' ' && used <= columns + 1)
            behindBlank = text.size() - next.size();
        if (used > columns)
            break;
        rest = next;
    }
    if (rest.empty())
        return {text.size(), text.size()};
    if (behindBlank != 0)
        return {behindBlank - 1, behindBlank};
    const auto end = text.size() - rest.size();
    return {end, end};
}

} // namespace

void Drawing::forEach(const std::vector<TreeNode>& tree,
                      const std::function<void(DeviceIndex device, const Beside& beside)>& draw) const
{
    const auto& lines = looks_.ascii ? kAsciiLines : kLines;
    std::array<std::string, kDeepestIndent + 1> beside; // the lines of the tree left of what hangs under each level
    std::size_t depth = 0;
    for (DeviceIndex at = 0;;) {
        const auto& node = tree[at];
        const std::size_t level = std::min(depth, kDeepestIndent);
        std::string branch;
        if (level != 0) {
            const bool last = node.next == kNoDevice;
            branch.append(beside[level - 1]).append(last ? lines.lastChild : lines.child);
            beside[level] = beside[level - 1];
            beside[level] += last ? lines.nothing : lines.through;
        }
        draw(at, {std::move(branch),
                  beside[level] + std::string(node.firstChild == kNoDevice ? lines.nothing : lines.through)});
        if (node.firstChild != kNoDevice) {
            at = node.firstChild;
            ++depth;
            continue;
        }
        for (; at != 0 && tree[at].next == kNoDevice; --depth)
            at = tree[at].parent;
        if (at == 0)
            break;
        at = tree[at].next;
    }
}

void Drawing::headline(const Beside& beside, std::string_view name, bool pale, std::string_view text)
{
    const auto columns = services::columnsOf(name);
    writeLines(beside.headline, beside.rows, {name, columns, columns}, pale ? Style::PaleName : Style::Name, text);
}

void Drawing::row(const Beside& beside, const LabelCell& label, bool pale, std::string_view text)
{
    writeLines(beside.rows, beside.rows, label, pale ? Style::PaleValue : Style::Value, text);
}

void Drawing::remark(std::string_view text)
{
    while (!text.empty()) {
        const auto line = firstLine(text, looks_.columns == 0 ? text.size() : std::max(kNarrowest, looks_.columns));
        const auto end = paint(kFaint);
        output_.write(text.substr(0, line.shown));
        output_.write(end);
        output_.write("\n");
        text.remove_prefix(line.taken);
    }
}

/// Writes a label, or a device's name, and what is said of it, on more than one line where it is too long for one: the
/// rest of a value stands under its beginning, that of a headline a little to the right of what hangs under it.
void Drawing::writeLines(std::string_view left, std::string_view beside, LabelCell label, Style style,
                         std::string_view text)
{
    const bool headline = style == Style::Name || style == Style::PaleName;
    const bool pale = style == Style::PaleName || style == Style::PaleValue;
    const auto labelColour = style == Style::Name ? kBold : pale && headline ? kFaint : std::string_view();
    const auto leftFor = [&](std::size_t used) { return looks_.columns - std::min(looks_.columns, used); };
    std::size_t indent = label.width + kGap.size();
    std::size_t columns = looks_.columns == 0 ? 0 : leftFor(services::columnsOf(left) + indent);
    for (bool first = true; first || !text.empty(); first = false) {
        Line line{text.size(), text.size()};
        if (looks_.columns != 0 && headline && first && columns < kNarrowest && services::columnsOf(text) > columns)
            line = {0, 0};
        else if (looks_.columns != 0)
            line = firstLine(text, std::max(kNarrowest, columns));

        const auto end = paint(kFaint);
        output_.write(left);
        output_.write(end);
        const auto endOfLabel = paint(labelColour);
        output_.write(label.text);
        output_.write(endOfLabel);
        if (line.shown != 0) {
            blanks_.resize(std::max(blanks_.size(), indent), ' ');
            output_.write(std::string_view(blanks_).substr(0, indent - label.columns));
            const auto endOfText = paint(pale ? kFaint : std::string_view());
            writePrintable(text.substr(0, line.shown));
            output_.write(endOfText);
        }
        output_.write("\n");
        text.remove_prefix(line.taken);
        left = beside;
        label = {};
        if (headline && looks_.columns != 0) {
            indent = kGap.size();
            columns = leftFor(services::columnsOf(left) + indent);
        }
    }
}

/// Begins a colour. Returns what ends it.
std::string_view Drawing::paint(std::string_view colour)
{
    if (!looks_.colours || colour.empty())
        return {};
    output_.write(colour);
    return kPlain;
}

/// Writes a text of any length as it may be shown.
void Drawing::writePrintable(std::string_view text)
{
    constexpr std::size_t kPiece = 4096;
    while (!text.empty()) {
        auto piece = text.substr(0, services::characterEnd(text, kPiece));
        text.remove_prefix(piece.size());
        char* out = output_.room(piece.size());
        const auto plain = services::copyPlainPrefix(piece, out);
        output_.wrote(out + plain);
        piece.remove_prefix(plain);
        if (!piece.empty()) {
            shown_.clear();
            services::appendPrintable(shown_, piece);
            output_.write(shown_);
        }
    }
}

} // namespace embedded_host::outline
