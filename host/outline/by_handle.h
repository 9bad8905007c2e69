// Something for each handle that is met.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

namespace embedded_host::outline
{

/// One T for each handle, made when it is first asked for. Handles lie close together, so memory comes in pages: a
/// table that uses few of them takes little, whatever their numbers.
template <class T>
class ByHandle
{
public:
    T& operator[](std::uint16_t handle)
    {
        auto& page = pages_[handle / kPage];
        if (!page)
            page = std::make_unique<Page>();
        return (*page)[handle % kPage];
    }

    /// Null when nobody asked for the handle or one near it.
    const T* find(std::uint16_t handle) const
    {
        const auto& page = pages_[handle / kPage];
        return page ? &(*page)[handle % kPage] : nullptr;
    }

private:
    static constexpr std::size_t kPage = 64;
    using Page = std::array<T, kPage>;
    std::array<std::unique_ptr<Page>, 0x10000 / kPage> pages_;
};

} // namespace embedded_host::outline
