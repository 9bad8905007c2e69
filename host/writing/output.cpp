// Outputs.
#include "output.h"

#include <cerrno>
#include <cstdio>
#include <fstream>

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

class WholeFile : public Output
{
public:
    explicit WholeFile(const std::filesystem::path& path) : file_(path, platform::Readers::Usual) {}

private:
    void writeThrough(std::string_view text) override { file_.write(text); }
    void complete() override { file_.commit(); }

    platform::AtomicFile file_;
};

/// A device or a pipe: it cannot be replaced, only written to.
class SpecialFile : public Output
{
public:
    explicit SpecialFile(const std::filesystem::path& path)
    {
        errno = 0;
        stream_.open(path, std::ios::binary);
        check();
    }

private:
    void writeThrough(std::string_view text) override
    {
        errno = 0;
        stream_.write(text.data(), static_cast<std::streamsize>(text.size()));
        stream_.flush();
        check();
    }

    void complete() override
    {
        errno = 0;
        stream_.close();
        check();
    }

    void check() const
    {
        if (!stream_)
            fail();
    }

    std::ofstream stream_;
};

} // namespace

void Output::write(std::string_view text)
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

std::unique_ptr<Output> fileOutput(const std::filesystem::path& path)
{
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (is_directory(status))
        throw std::system_error(std::make_error_code(std::errc::is_a_directory));
    if (!exists(status))
        return std::make_unique<WholeFile>(path);
    if (!is_regular_file(status))
        return std::make_unique<SpecialFile>(path);
    // Renaming onto a symbolic link would replace the link: write the file it points to.
    return std::make_unique<WholeFile>(std::filesystem::canonical(path));
}

} // namespace embedded_host::writing
