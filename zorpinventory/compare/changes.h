// What changed from one machine's document to another.
#pragma once

#include "document/document.h"
#include "knowledge/kinds.h"

#include <optional>
#include <string>
#include <vector>

namespace zorpinventory::compare
{

struct Options
{
    bool all = false;            ///< every property, links as they are written
    bool ignoreIdentity = false; ///< two machines of one model: what is theirs alone does not count
};

/// What made two devices a pair, in the order in which it is tried.
enum class Step { Part, Place, Company, Content, Position };

enum class What { Removed, Added, Replaced, Moved, Changed };

/// A device on one side of a change.
struct Side
{
    const document::Device* device = nullptr; ///< null where the device is missing
    std::optional<std::string> place;         ///< its texts that are not blank
    bool empty = false;                       ///< a place without a part
};

/// A property that differs; one side may be missing.
struct Difference
{
    std::string_view name;
    const document::Property* a = nullptr;
    const document::Property* b = nullptr;
};

struct Change
{
    What what = What::Changed;
    const knowledge::Kind* kind = nullptr;
    unsigned type = 0;
    Side a;
    Side b;
    std::vector<Difference> differences;
    bool childrenDiffer = false; ///< the links to children
    std::optional<Step> pairedBy;
};

/// All changes, in the order in which they are told. They point into the documents.
std::vector<Change> changes(const document::Document& a, const document::Document& b, const Options& options = {});

} // namespace zorpinventory::compare
