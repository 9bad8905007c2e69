// A document as rules ask it.
#pragma once

#include "document/document.h"

#include <chrono>
#include <span>
#include <vector>

namespace zorpinventory::checks
{

/// A structure of the table, with the first of its devices where it has any.
struct Structure
{
    unsigned type = 0;
    unsigned handle = 0;
    std::optional<double> length;             ///< of the formatted area, in bytes
    const document::Device* device = nullptr; ///< null where there is none
};

class Inventory
{
public:
    Inventory(const document::Document& document, std::chrono::year_month_day today);
    Inventory(const Inventory&) = delete; // since it points into itself
    Inventory& operator=(const Inventory&) = delete;

    const document::Document& document() const { return document_; }
    const std::vector<document::Device>& devices() const { return document_.devices(); }
    std::chrono::year_month_day today() const { return today_; }

    /// In the document's order.
    std::span<const document::Device* const> ofType(unsigned type) const;

    /// All structures that the document tells of: devices first, both in the document's order.
    const std::vector<Structure>& structures() const { return structures_; }

    /// The structures with this handle, in the same order; more than one is a fault of the table.
    std::span<const Structure* const> withHandle(unsigned handle) const;

    /// The memory devices that name an array, in the document's order; none where another structure has its handle too.
    std::span<const document::Device* const> devicesOf(const document::Device& array) const;

private:
    /// Devices in groups: those of group g stand between starts[g] and starts[g + 1].
    template <class T>
    struct Groups
    {
        std::vector<const T*> members;
        std::vector<std::size_t> starts;

        std::span<const T* const> operator[](std::size_t group) const
        {
            if (group + 1 >= starts.size())
                return {};
            return std::span(members).subspan(starts[group], starts[group + 1] - starts[group]);
        }
    };
    template <class T, class GroupOf>
    static Groups<T> grouped(const std::vector<T>& all, std::size_t groups, GroupOf groupOf);

    const document::Document& document_;
    std::chrono::year_month_day today_;
    std::vector<Structure> structures_;
    Groups<document::Device> byType_;
    Groups<Structure> byHandle_;
    Groups<document::Device> byArray_; ///< memory devices by the handle of the array that they name
};

/// A number of bytes, or nothing when it is none.
std::optional<std::uint64_t> positive(std::optional<double> number);

} // namespace zorpinventory::checks
