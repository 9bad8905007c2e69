// Memory whose texts need no copies.
#pragma once

#include <memory>
#include <span>

namespace embedded_host::services
{

/// From now on long texts made from pointers into this memory share it instead of copying; they keep its owner alive.
/// The memory never changes while it is owned. What was announced before counts no more.
void shareMemory(std::span<const unsigned char> memory, const std::shared_ptr<const void>& owner);

} // namespace embedded_host::services
