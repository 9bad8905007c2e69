// Files that appear whole, where another process writes to the same name.
#include "platform/files.h"
#include "support/recorded_session.h"

#include <gtest/gtest.h>

namespace
{

using embedded_host::platform::AtomicFile;
using embedded_host::platform::Readers;
using tests::TemporaryFolder;

std::string contentOf(const std::filesystem::path& path)
{
    const auto bytes = tests::readBytes(path);
    return {bytes.begin(), bytes.end()};
}

TEST(AtomicFile, WhatSlipsInBeforeItsCommitIsLookedAt)
{
    for (const bool may : {true, false}) {
        const TemporaryFolder folder;
        const auto target = folder / "target";
        {
            AtomicFile file(target, Readers::Owner);
            file.write("ours");
            folder.file("target", "theirs");
            std::string seen;
            const auto commit = [&] {
                file.commit([&](const std::filesystem::path& there) {
                    seen = contentOf(there);
                    if (!may)
                        throw std::runtime_error("no");
                });
            };
            if (may)
                commit();
            else
                EXPECT_THROW(commit(), std::runtime_error);
            EXPECT_EQ(seen, "theirs");
        }
        EXPECT_EQ(contentOf(target), may ? "ours" : "theirs");
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
    }
}

TEST(AtomicFile, NothingIsLookedAtWhereNothingStands)
{
    const TemporaryFolder folder;
    {
        AtomicFile abandoned(folder / "abandoned", Readers::AsBefore);
        abandoned.write("half");
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    AtomicFile file(folder / "target", Readers::Owner);
    file.commit([](const auto&) { FAIL(); });
    EXPECT_EQ(contentOf(folder / "target"), "");
}

} // namespace
