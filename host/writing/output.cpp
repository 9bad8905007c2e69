// Outputs.
#include "output.h"

#include <cerrno>
#include <cstdio>

namespace embedded_host::writing
{

namespace
{

[[noreturn]] void fail() { throw std::system_error(errno != 0 ? errno : EIO, std::generic_category()); }

class StandardOutput : public Output
{
    void writeThrough(std::string_view text) override
    {
        errno = 0;
        if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0)
            fail();
    }

    void complete() override
    {
        errno = 0;
        if (std::fflush(stdout) != 0)
            fail();
    }
};

class NamedFile : public Output
{
public:
    explicit NamedFile(const std::filesystem::path& path) : file_(path) {}

private:
    void writeThrough(std::string_view text) override { file_.write(text); }
    void complete() override { file_.commit(); }

    platform::OutputFile file_;
};

} // namespace

void Output::writeInPieces(std::string_view text)
{
    while (!text.empty()) {
        if (used_ == kMostRoom)
            writePending();
        const auto copied = text.copy(pending_.get() + used_, kMostRoom - used_);
        used_ += copied;
        text.remove_prefix(copied);
    }
}

void Output::flush() { writePending(); }

void Output::finish()
{
    flush();
    complete();
}

void Output::writePending()
{
    if (used_ != 0)
        writeThrough({pending_.get(), used_});
    used_ = 0;
}

std::unique_ptr<Output> standardOutput() { return std::make_unique<StandardOutput>(); }

std::unique_ptr<Output> fileOutput(const std::filesystem::path& path) { return std::make_unique<NamedFile>(path); }

} // namespace embedded_host::writing
