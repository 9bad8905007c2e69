// Pages in memory, and a file behind them.
#include "kept_text.h"

#include "orb5.h"
#include "services/messages.h"

#include <algorithm>

namespace embedded_host::inventory
{

namespace
{

/// Does something with the file.
template <class Action>
void guarded(Action action)
{
    try {
        action();
    } catch (const std::system_error& error) {
        throw orb5::OrbException(lum::String(
            services::message("cannot keep a part of the inventory in a temporary file: %1", services::reason(error))));
    }
}

} // namespace

void KeptText::append(std::string_view bytes)
{
    while (!bytes.empty() && size_ < kMostInMemory) {
        const std::size_t at = size_ % kPage;
        if (at == 0)
            pages_.push_back(std::make_unique_for_overwrite<Page>());
        const auto count = bytes.copy(pages_.back()->data() + at, kPage - at);
        size_ += count;
        bytes.remove_prefix(count);
    }
    size_ += bytes.size();
    while (!bytes.empty()) {
        const auto part = bytes.substr(0, kPage - pending_.size());
        pending_ += part;
        bytes.remove_prefix(part.size());
        if (pending_.size() == kPage)
            flush();
    }
}

void KeptText::flush()
{
    guarded([&] {
        if (!file_)
            file_.emplace();
        file_->append(pending_);
    });
    pending_.clear();
}

std::string_view KeptText::read(std::uint64_t offset, std::size_t count)
{
    if (offset + count <= kMostInMemory && offset % kPage + count <= kPage)
        return {pages_[offset / kPage]->data() + offset % kPage, count};
    assembled_.resize(count);
    copyTo(assembled_.data(), offset, count);
    return assembled_;
}

void KeptText::copyTo(char* to, std::uint64_t offset, std::size_t count)
{
    for (; count != 0 && offset < kMostInMemory;) {
        const std::size_t at = offset % kPage;
        const auto part = std::min(count, kPage - at);
        std::copy_n(pages_[offset / kPage]->data() + at, part, to);
        to += part;
        offset += part;
        count -= part;
    }
    if (count == 0)
        return;
    if (!pending_.empty())
        flush();
    const std::uint64_t place = offset - kMostInMemory;
    guarded([&] {
        if (count > kPage) {
            file_->read(place, {to, count});
            return;
        }
        if (place < windowAt_ || place + count > windowAt_ + window_.size()) {
            windowAt_ = place;
            window_.resize(std::min<std::uint64_t>(kPage, size_ - offset));
            file_->read(place, window_);
        }
        window_.copy(to, count, place - windowAt_);
    });
}

} // namespace embedded_host::inventory
