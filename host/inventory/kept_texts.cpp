// Keeping texts in memory and in a file.
#include "kept_texts.h"

#include "orb5.h"
#include "services/messages.h"

namespace embedded_host::inventory
{

namespace
{

[[noreturn]] void fail(const std::system_error& error)
{
    throw orb5::OrbException(lum::String(
        services::message("cannot keep a part of the inventory in a temporary file: %1", services::reason(error))));
}

} // namespace

void KeptTexts::add(std::string_view text)
{
    if (inFile_.empty() && bytesInMemory_ + text.size() <= kMostInMemory) {
        inMemory_.emplace_back(text);
        bytesInMemory_ += text.size();
        return;
    }
    try {
        if (!file_)
            file_.emplace();
        file_->append(text);
    } catch (const std::system_error& error) {
        fail(error);
    }
    inFile_.push_back({inFile_.empty() ? 0 : inFile_.back().offset + inFile_.back().size, text.size()});
}

std::string_view KeptTexts::operator[](std::size_t number)
{
    if (number < inMemory_.size())
        return inMemory_[number];
    const auto& place = inFile_[number - inMemory_.size()];
    read_.resize(place.size);
    try {
        file_->read(place.offset, read_);
    } catch (const std::system_error& error) {
        fail(error);
    }
    return read_;
}

} // namespace embedded_host::inventory
