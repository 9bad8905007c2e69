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

std::string_view KeptText::readAnew(std::uint64_t offset, std::size_t count)
{
    if (offset + count > kMostInMemory && !pending_.empty())
        flush();
    if (offset < kMostInMemory) {
        at_ = offset - offset % kPage;
        near_ = {pages_[offset / kPage]->data(), std::min<std::size_t>(kPage, size_ - at_)};
    } else {
        at_ = offset;
        window_.resize(std::min<std::uint64_t>(kPage, size_ - offset));
        guarded([&] { file_->read(offset - kMostInMemory, window_); });
        near_ = window_;
    }
    if (const auto before = offset - at_; count <= near_.size() - before)
        return near_.substr(before, count);
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
    if (count != 0)
        guarded([&] { file_->read(offset - kMostInMemory, {to, count}); });
}

} // namespace embedded_host::inventory
