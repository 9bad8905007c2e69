// Reading a document: the parser's events become one small tree for each device, and that a device. What else stands in
// a document, a later version's keys too, is passed over and never held.
#include "document.h"
#include "problem.h"
#include "services/messages.h"
#include "services/utf8.h"

// Where texts end is looked for in 16 bytes at a time. The parser made so has a name of its own: elsewhere it is made
// otherwise.
#ifdef __SSE2__
#    define RAPIDJSON_SSE2
#    define RAPIDJSON_NAMESPACE rapidjson_sse2
#    define RAPIDJSON_NAMESPACE_BEGIN                                                                                  \
        namespace rapidjson_sse2                                                                                       \
        {
#    define RAPIDJSON_NAMESPACE_END }
#endif
#include <rapidjson/reader.h>

#include <algorithm>
#include <charconv>
#include <cstring>

namespace zorpinventory::document
{

namespace
{

#ifdef RAPIDJSON_SSE2
namespace rapidjson = rapidjson_sse2;
#endif
using embedded_host::services::message;

constexpr std::string_view kModule = "zorpsysinfosmbios2";

/// Several times what our documents need; what is in them is no reason to be deeper or longer.
constexpr std::size_t kDeepest = 32;
constexpr std::size_t kMostNodesOfDevice = 100000;
constexpr std::size_t kLongestNumeral = 32;

/// A value with all that is in it: inner nodes stand right behind, up to `end`.
struct Node
{
    enum class Kind { Null, Flag, Number, Text, List, Object };

    Kind kind = Kind::Null;
    std::string_view key;  ///< in the object around it
    std::string_view text; ///< of a text; the digits of a number; "true" or empty of a flag
    std::size_t end = 0;   ///< among all nodes
};

/// Where the first byte is that is no UTF-8; the text's end when all is well.
std::size_t firstIllFormed(std::string_view text)
{
    constexpr std::uint64_t kHighest = 0x8080808080808080;
    constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
    auto rest = text;
    while (!rest.empty()) {
        std::uint64_t eight = kHighest;
        if (rest.size() >= sizeof eight)
            std::memcpy(&eight, rest.data(), sizeof eight);
        if ((eight & kHighest) == 0) {
            rest.remove_prefix(sizeof eight);
            continue;
        }
        const auto before = rest;
        if (embedded_host::services::takeCharacter(rest) == 0xFFFD && !before.starts_with(kReplacement))
            return text.size() - before.size();
    }
    return text.size();
}

const char* nameOf(Node::Kind kind)
{
    switch (kind) {
    case Node::Kind::Text:
        return "text";
    case Node::Kind::List:
        return "array";
    case Node::Kind::Object:
        return "object";
    case Node::Kind::Number:
        return "number";
    default:
        return "value";
    }
}

} // namespace

class Reader
{
public:
    Reader(std::string bytes, std::string name) : name_(std::move(name)) { document_.bytes_ = std::move(bytes); }

    Document read();

    // The parser's events, under RapidJSON's names.
    bool Null() { return add(Node::Kind::Null, {}); }
    bool Bool(bool flag) { return add(Node::Kind::Flag, flag ? "true" : ""); }
    bool RawNumber(const char* digits, rapidjson::SizeType length, bool /*copy*/)
    {
        if (length > kLongestNumeral)
            refuse(message("a number in it is longer than any"));
        return add(Node::Kind::Number, {digits, length});
    }
    bool String(const char* text, rapidjson::SizeType length, bool /*copy*/)
    {
        return add(Node::Kind::Text, {text, length});
    }
    bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/);
    bool StartObject() { return begin(Node::Kind::Object); }
    bool StartArray() { return begin(Node::Kind::List); }
    bool EndObject(rapidjson::SizeType /*members*/) { return end(); }
    bool EndArray(rapidjson::SizeType /*elements*/) { return end(); }
    // Numbers are asked for as they are written.
    bool Int(int /*number*/) { return false; }
    bool Uint(unsigned /*number*/) { return false; }
    bool Int64(std::int64_t /*number*/) { return false; }
    bool Uint64(std::uint64_t /*number*/) { return false; }
    bool Double(double /*number*/) { return false; }

private:
    /// Device-long parts of the document's lists, which may still move.
    struct Range
    {
        std::size_t first;
        std::size_t count;
    };

    [[noreturn]] void refuse(const std::string& why) const { throw Problem(message("cannot read %1: %2", name_, why)); }

    /// The key of the value that begins; elements of lists have none.
    std::string_view ownKey() const
    {
        const bool inList = open_.empty() ? isList(top_) : nodes_[open_.back()].kind == Node::Kind::List;
        return inList ? std::string_view() : key_;
    }
    /// Whether the document's key has a list whose elements are taken one by one.
    static bool isList(std::string_view top) { return top == "devices" || top == "others" || top == "faults"; }
    bool wanted() const
    {
        return isList(top_) || top_ == "format" || top_ == "module" || top_ == "table" || top_ == "error";
    }
    bool begin(Node::Kind kind);
    bool end();
    bool add(Node::Kind kind, std::string_view text);
    bool take();

    template <class Function>
    void forEach(std::size_t node, Function function) const
    {
        for (std::size_t i = node + 1; i < nodes_[node].end; i = nodes_[i].end)
            function(i);
    }
    const Node* member(std::size_t object, std::string_view key) const;
    void require(std::size_t node, Node::Kind kind) const;
    void requireUniqueKeys(std::size_t object);
    std::string_view requiredText(std::size_t object, std::string_view key) const;
    std::string_view optionalText(std::size_t object, std::string_view key) const;
    Range takeTexts(std::size_t list);
    std::string_view requiredDigits(std::size_t object, std::string_view key) const;
    unsigned requiredByte(std::size_t object, std::string_view key) const;
    std::optional<unsigned> handle(std::size_t object) const;

    void takeModule();
    void takeDevice();
    void takeOther();
    void takeFault();
    ChildLink childLink(std::size_t node) const;
    void takeProperty(std::size_t node);
    void takeNumber(std::size_t node, Range properties);
    void settle();

    std::string name_;
    Document document_;

    std::size_t depth_ = 0;
    std::string_view top_; ///< the document's key that the parser is at
    std::vector<std::string_view> tops_;
    std::string_view key_;
    std::vector<std::string_view> keys_; ///< of one object
    std::size_t nextNumbered_ = 0;       ///< the property that most likely has the next number
    std::vector<Node> nodes_;            ///< of the subtree that is read
    std::vector<std::size_t> open_;      ///< its objects and lists that have not ended
    std::string_view format_;
    bool hasDevices_ = false;

    Range moduleCapabilities_{};
    std::vector<Range> capabilities_;                          ///< of each device
    std::vector<Range> properties_;                            ///< likewise
    std::vector<std::pair<std::size_t, Range>> lists_;         ///< properties that are lists
    std::vector<std::pair<std::size_t, std::size_t>> numbers_; ///< properties and their numbers
    std::vector<Range> codes_;                                 ///< of each number
};

bool Reader::Key(const char* text, rapidjson::SizeType length, bool /*copy*/)
{
    key_ = {text, length};
    if (depth_ == 1) {
        top_ = key_;
        if (std::ranges::find(tops_, top_) != tops_.end())
            refuse(message("it has \"%1\" twice", top_));
        if (wanted())
            tops_.push_back(top_);
    }
    return true;
}

bool Reader::begin(Node::Kind kind)
{
    if (++depth_ > kDeepest)
        refuse(message("it is nested deeper than any inventory"));
    if (depth_ == 1) {
        if (kind != Node::Kind::Object)
            refuse(message("it is no inventory of zorpsysinfosmbios2"));
        return true;
    }
    if (depth_ == 2 && isList(top_)) {
        if (kind != Node::Kind::List)
            refuse(message("\"%1\" is no %2", top_, nameOf(Node::Kind::List)));
        hasDevices_ = hasDevices_ || top_ == "devices";
        return true;
    }
    if (wanted()) {
        nodes_.push_back({kind, ownKey(), {}, 0});
        open_.push_back(nodes_.size() - 1);
    }
    return true;
}

bool Reader::add(Node::Kind kind, std::string_view text)
{
    if (depth_ == 0)
        refuse(message("it is no inventory of zorpsysinfosmbios2"));
    if (!wanted())
        return true;
    if (nodes_.size() >= kMostNodesOfDevice)
        refuse(message("a device in it is longer than any structure"));
    nodes_.push_back({kind, ownKey(), text, nodes_.size() + 1});
    return !open_.empty() || take();
}

bool Reader::end()
{
    --depth_;
    if (open_.empty())
        return true;
    nodes_[open_.back()].end = nodes_.size();
    if (nodes_[open_.back()].kind == Node::Kind::Object)
        requireUniqueKeys(open_.back());
    open_.pop_back();
    return !open_.empty() || take();
}

/// Takes the subtree that is complete.
bool Reader::take()
{
    if (top_ == "devices") {
        takeDevice();
    } else if (top_ == "others") {
        takeOther();
    } else if (top_ == "faults") {
        takeFault();
    } else if (top_ == "format") {
        require(0, Node::Kind::Text);
        format_ = nodes_[0].text;
    } else if (top_ == "table") {
        if (nodes_[0].kind != Node::Kind::Null) {
            require(0, Node::Kind::Object);
            document_.version_ = requiredText(0, "version");
        }
    } else if (top_ == "error") {
        require(0, Node::Kind::Text);
        const auto why = nodes_[0].text; // which most often names the source itself
        refuse(std::string(why.starts_with(name_ + ": ") ? why.substr(name_.size() + 2) : why));
    } else {
        takeModule();
    }
    nodes_.clear();
    return true;
}

const Node* Reader::member(std::size_t object, std::string_view key) const
{
    for (std::size_t i = object + 1; i < nodes_[object].end; i = nodes_[i].end)
        if (nodes_[i].key == key)
            return &nodes_[i];
    return nullptr;
}

void Reader::require(std::size_t node, Node::Kind kind) const
{
    if (nodes_[node].kind == kind)
        return;
    const auto key = nodes_[node].key;
    const std::string what = nameOf(kind);
    refuse(key.empty() ? message("something in it is no %1", what) : message("\"%1\" is no %2", key, what));
}

void Reader::requireUniqueKeys(std::size_t object)
{
    keys_.clear();
    forEach(object, [&](std::size_t i) { keys_.push_back(nodes_[i].key); });
    // Any order will do, and most lengths differ.
    std::ranges::sort(keys_, [](auto a, auto b) { return a.size() != b.size() ? a.size() < b.size() : a < b; });
    if (const auto twice = std::ranges::adjacent_find(keys_); twice != keys_.end())
        refuse(message("it has \"%1\" twice", *twice));
}

std::string_view Reader::requiredText(std::size_t object, std::string_view key) const
{
    const auto* node = member(object, key);
    if (node == nullptr)
        refuse(message("\"%1\" is missing", key));
    require(static_cast<std::size_t>(node - nodes_.data()), Node::Kind::Text);
    return node->text;
}

std::string_view Reader::requiredDigits(std::size_t object, std::string_view key) const
{
    const auto* node = member(object, key);
    if (node == nullptr)
        refuse(message("\"%1\" is missing", key));
    require(static_cast<std::size_t>(node - nodes_.data()), Node::Kind::Number);
    return node->text;
}

unsigned Reader::requiredByte(std::size_t object, std::string_view key) const
{
    const auto digits = requiredDigits(object, key);
    std::uint8_t number = 0;
    const auto* end = digits.data() + digits.size();
    if (const auto [read, error] = std::from_chars(digits.data(), end, number); read != end || error != std::errc())
        refuse(message("\"%1\" is no %2", key, "byte"));
    return number;
}

/// What the object's "handle" says; nothing where it has none.
std::optional<unsigned> Reader::handle(std::size_t object) const
{
    const auto* node = member(object, "handle");
    if (node == nullptr || node->kind == Node::Kind::Null)
        return std::nullopt;
    const auto found = handleIn(requiredText(object, "handle"));
    if (!found)
        refuse(message("\"%1\" is no %2", "handle", "handle"));
    return found;
}

std::string_view Reader::optionalText(std::size_t object, std::string_view key) const
{
    return member(object, key) != nullptr ? requiredText(object, key) : std::string_view();
}

Reader::Range Reader::takeTexts(std::size_t list)
{
    require(list, Node::Kind::List);
    const auto first = document_.texts_.size();
    forEach(list, [&](std::size_t i) {
        require(i, Node::Kind::Text);
        document_.texts_.push_back(nodes_[i].text);
    });
    return {first, document_.texts_.size() - first};
}

ChildLink Reader::childLink(std::size_t node) const
{
    require(node, Node::Kind::Object);
    ChildLink link{requiredText(node, "bus"), std::nullopt};
    if (const auto* id = member(node, "id"); id != nullptr && id->kind != Node::Kind::Null)
        link.id = requiredText(node, "id");
    return link;
}

void Reader::takeProperty(std::size_t node)
{
    Property property{nodes_[node].key, {}, nullptr};
    switch (nodes_[node].kind) {
    case Node::Kind::Text:
        property.value = nodes_[node].text;
        break;
    case Node::Kind::Number:
        property.value = Numeral{nodes_[node].text};
        break;
    case Node::Kind::Flag:
        property.value = !nodes_[node].text.empty();
        break;
    case Node::Kind::List:
        lists_.emplace_back(document_.properties_.size(), takeTexts(node));
        property.value = Texts();
        break;
    case Node::Kind::Object: {
        const auto* value = member(node, "value");
        if (value == nullptr || value->kind != Node::Kind::Number)
            refuse(message("\"%1\" is no %2", nodes_[node].key, "number"));
        property.value = Measurement{{value->text}, requiredText(node, "unit"), requiredText(node, "text")};
        break;
    }
    case Node::Kind::Null:
        refuse(message("\"%1\" is no %2", nodes_[node].key, nameOf(Node::Kind::Text)));
    }
    document_.properties_.push_back(property);
}

void Reader::takeNumber(std::size_t node, Range properties)
{
    require(node, Node::Kind::Object);
    Number number;
    const auto first = document_.codes_.size();
    forEach(node, [&](std::size_t i) {
        const auto& part = nodes_[i];
        if ((part.key == "value" || part.key == "code") && part.kind == Node::Kind::Number) {
            number.kind = part.key == "value" ? Number::Kind::Amount : Number::Kind::Code;
            number.value = {part.text};
        } else if (part.key == "unit") {
            require(i, Node::Kind::Text);
            number.unit = part.text;
        } else if (part.key == "codes") {
            require(i, Node::Kind::List);
            number.kind = Number::Kind::Codes;
            forEach(i, [&](std::size_t code) {
                require(code, Node::Kind::Number);
                document_.codes_.push_back({nodes_[code].text});
            });
        }
    });
    // Numbers stand in the order of the properties. One without a property says nothing.
    for (std::size_t tried = 0; tried < properties.count; ++tried) {
        const auto i = properties.first + (nextNumbered_ + tried) % properties.count;
        if (document_.properties_[i].name != nodes_[node].key)
            continue;
        numbers_.emplace_back(i, document_.numbers_.size());
        document_.numbers_.push_back(number);
        codes_.push_back({first, document_.codes_.size() - first});
        nextNumbered_ = i - properties.first + 1;
        return;
    }
}

/// The type of the structure behind a device: some say it, the makers' own show it by the names of their properties.
unsigned typeOf(const Device& device, std::span<const Property> properties)
{
    constexpr unsigned kLastType = 255;
    for (const auto& property : properties) {
        if (property.name == "smbios2_hdr_type") {
            const auto digits = textOf(property.value);
            unsigned type = 0;
            for (const char digit : digits)
                type = digit >= '0' && digit <= '9' && type <= kLastType
                           ? type * 10 + static_cast<unsigned>(digit - '0')
                           : kLastType + 1;
            return type <= kLastType ? type : kGroupType;
        }
        if (property.name.starts_with("t131_"))
            return 131;
        if (property.name.starts_with("t208_"))
            return 208;
    }
    return device.uid == "SMBIOS" ? kRootType : kGroupType;
}

void Reader::takeModule()
{
    require(0, Node::Kind::Object);
    document_.module_ = {requiredText(0, "name"), optionalText(0, "version"), optionalText(0, "build"), {}};
    forEach(0, [&](std::size_t i) {
        if (nodes_[i].key == "capabilities")
            moduleCapabilities_ = takeTexts(i);
    });
}

void Reader::takeDevice()
{
    require(0, Node::Kind::Object);
    Device device;
    device.uid = requiredText(0, "uid");
    device.name = requiredText(0, "name");
    device.identifier = optionalText(0, "identifier");
    device.description = optionalText(0, "description");
    capabilities_.emplace_back();
    const Range properties{document_.properties_.size(), 0};
    nextNumbered_ = 0;
    forEach(0, [&](std::size_t i) {
        if (nodes_[i].key == "childBusIds") {
            require(i, Node::Kind::List);
            forEach(i, [&](std::size_t child) { device.children.push_back(childLink(child)); });
        } else if (nodes_[i].key == "capabilities") {
            capabilities_.back() = takeTexts(i);
        } else if (nodes_[i].key == "uids") {
            require(i, Node::Kind::Object);
            forEach(i, [&](std::size_t uid) {
                require(uid, Node::Kind::Text);
                device.uids.emplace_back(nodes_[uid].key, nodes_[uid].text);
            });
        } else if (nodes_[i].key == "properties") {
            require(i, Node::Kind::Object);
            forEach(i, [&](std::size_t property) { takeProperty(property); });
        }
    });
    properties_.push_back({properties.first, document_.properties_.size() - properties.first});
    forEach(0, [&](std::size_t i) {
        if (nodes_[i].key == "numbers") {
            require(i, Node::Kind::Object);
            document_.detailed_ = true;
            forEach(i, [&](std::size_t number) { takeNumber(number, properties_.back()); });
        }
    });
    constexpr std::string_view kStructure = "SMBIOS:";
    if (device.uid.starts_with(kStructure))
        device.handle = handleIn(device.uid.substr(kStructure.size()));
    device.type = typeOf(device, std::span(document_.properties_).subspan(properties.first));
    document_.devices_.push_back(std::move(device));
}

void Reader::takeOther()
{
    require(0, Node::Kind::Object);
    const auto own = handle(0);
    if (!own)
        refuse(message("\"%1\" is missing", "handle"));
    document_.others_.push_back({requiredByte(0, "type"), *own, requiredByte(0, "length")});
}

void Reader::takeFault()
{
    require(0, Node::Kind::Object);
    document_.faults_.push_back(
        {requiredText(0, "fault"), {requiredDigits(0, "offset")}, handle(0), requiredText(0, "text")});
}

/// Lets everything point to where it is, now that nothing moves any more.
void Reader::settle()
{
    const auto part = [](const auto& all, Range range) { return std::span(all).subspan(range.first, range.count); };
    for (std::size_t i = 0; i < codes_.size(); ++i)
        document_.numbers_[i].codes = part(document_.codes_, codes_[i]);
    for (const auto& [property, range] : lists_)
        document_.properties_[property].value = Texts(part(document_.texts_, range));
    for (const auto& [property, number] : numbers_)
        document_.properties_[property].number = &document_.numbers_[number];
    document_.module_.capabilities = part(document_.texts_, moduleCapabilities_);
    for (std::size_t i = 0; i < properties_.size(); ++i) {
        document_.devices_[i].properties = part(document_.properties_, properties_[i]);
        document_.devices_[i].capabilities = part(document_.texts_, capabilities_[i]);
    }
}

Document Reader::read()
{
    using rapidjson::ParseFlag;
    // It calls itself no deeper than kDeepest. The encoding is looked at apart: most of it is plain.
    constexpr unsigned kFlags = rapidjson::kParseInsituFlag | rapidjson::kParseNumbersAsStringsFlag;
    auto& bytes = document_.bytes_;
    if (const auto wrong = firstIllFormed(bytes); wrong != bytes.size())
        refuse(message("it is no JSON from byte %1 on", wrong));
#ifdef RAPIDJSON_SSE2
    bytes.reserve(bytes.size() + sizeof(__m128i)); // it looks as far
#endif
    rapidjson::InsituStringStream stream(bytes.data());
    rapidjson::Reader parser;
    parser.Parse<kFlags>(stream, *this);
    const auto offset = parser.HasParseError() ? parser.GetErrorOffset() : stream.Tell();
    if (parser.GetParseErrorCode() == rapidjson::kParseErrorDocumentEmpty && offset >= bytes.size())
        refuse(message("it is empty"));
    if (parser.HasParseError() && offset >= bytes.size())
        refuse(message("it ends in the middle, at byte %1; write it again with -o", offset));
    if (parser.HasParseError() || offset != bytes.size())
        refuse(message("it is no JSON from byte %1 on", offset));
    if (format_.empty())
        refuse(message("it is no inventory of zorpsysinfosmbios2"));
    if (format_ != kFormat)
        refuse(message("its format is %1, and this program reads %2", format_, kFormat));
    if (document_.module_.name != kModule)
        refuse(message("it comes from another module, %1", document_.module_.name));
    if (!hasDevices_)
        refuse(message("\"%1\" is missing", "devices"));
    settle();
    return std::move(document_);
}

Document read(std::string bytes, const std::string& name)
{
    if (bytes.size() > kLargestDocument)
        throw Problem(message("cannot read %1: %2", name, message("it is larger than any inventory")));
    return Reader(std::move(bytes), name).read();
}

} // namespace zorpinventory::document
