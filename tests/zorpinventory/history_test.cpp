// The history: what comes back, what is asked, and that nothing is lost.
#include "documents.h"
#include "failing_disk.h"

#include "document/problem.h"
#include "history/history.h"
#include "support/recorded_session.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using tests::FailingDisk;
using tests::TemporaryFolder;
using zorpinventory::Problem;
using namespace zorpinventory::history;
namespace document = zorpinventory::document;

Snapshot snapshotOf(const tests::Machine& machine, const std::string& name, const std::string& taken)
{
    const auto text = tests::documentText(machine.table());
    return {name, taken, "", document::partsOf(text), serialsOf(document::read(text, "a test's document"))};
}

/// The first of several days, and so on.
std::string day(unsigned number) { return "2026-10-0" + std::to_string(number) + "T08:30:00Z"; }

Kept keep(History& history, const tests::Machine& machine, const std::string& name, unsigned number)
{
    return history.keep(std::vector{snapshotOf(machine, name, day(number))}).front();
}

std::string bytesOf(const std::filesystem::path& file)
{
    const auto bytes = tests::readBytes(file);
    return {bytes.begin(), bytes.end()};
}

bool isSound(const std::filesystem::path& file)
{
    const Database database(file, Access::Ask);
    Statement check(database, "PRAGMA integrity_check");
    return check.next() && check.text(0) == "ok" &&
           database.integer("SELECT count(*) FROM pragma_foreign_key_check") == 0;
}

/// The sentence that opening the file for recording ends in.
std::string refusal(const std::filesystem::path& file)
{
    try {
        const History history(file, Access::Change);
    } catch (const Problem& problem) {
        return problem.what();
    }
    return {};
}

TEST(History, DocumentsComeBackWithoutTheirBlanksAndShareWhatIsTheSame)
{
    const std::string text =
        "{ \"source\":\"x.dmi\", \"format\" : \"f\",\r\n\"devices\":\t[ {\"a\": \"b , \\\" ] }\\\\\", "
        "\"n\": [ 1.50e3 , true ]} ,{} ],\n \"more\":{ } }\n";
    const auto parts = document::partsOf(text);
    EXPECT_EQ(parts.before, R"({"format":"f","devices":[)");
    EXPECT_EQ(parts.devices, (std::vector<std::string>{R"({"a":"b , \" ] }\\","n":[1.50e3,true]})", "{}"}));
    EXPECT_EQ(parts.after, R"(],"more":{}})");

    const TemporaryFolder folder;
    History history(folder / "h.db", Access::Change);
    tests::Machine machine;
    const auto first = keep(history, machine, "M", 1).record;
    const auto same = keep(history, machine, "M", 2).record;
    const auto ofAnother = keep(history, machine, "N", 2).record;
    machine.dimms[1].serial = "77777C01";
    const auto changed = keep(history, machine, "M", 3);
    EXPECT_EQ(same.document, first.document);
    EXPECT_EQ(ofAnother.document, first.document);
    EXPECT_NE(changed.record.document, first.document);
    EXPECT_EQ(changed.before->number, 2);
    const auto whole = snapshotOf(machine, "", "").parts;
    std::string expected = whole.before;
    for (const auto& device : whole.devices)
        expected += (&device != &whole.devices.front() ? "," : "") + device;
    EXPECT_EQ(history.text(changed.record), expected + whole.after);

    const Database database(folder / "h.db", Access::Ask);
    EXPECT_EQ(database.integer("SELECT count(*) FROM device"), static_cast<std::int64_t>(whole.devices.size() + 1));
    EXPECT_EQ(database.integer("PRAGMA synchronous"), 3) << "a missing sync would show in no test";
    database.run("PRAGMA trusted_schema = ON"); // as people have it who ask with sqlite3
    EXPECT_EQ(database.integer("SELECT count(*) FROM devices WHERE machine = 'M'"),
              static_cast<std::int64_t>(3 * whole.devices.size()));
    EXPECT_EQ(database.integer("SELECT count(*) FROM properties WHERE number = 3 AND property = 't17_serial' AND "
                               "value = '77777C01' AND type = 17"),
              1);
}

TEST(History, RecordsStandInTheOrderOfTheirTimesAndKeepTheirNumbers)
{
    const TemporaryFolder folder;
    History history(folder / "h.db", Access::Change);
    EXPECT_FALSE(keep(history, {}, "Halvard HI-1", 5).before);
    EXPECT_EQ(keep(history, {}, "Halvard HI-1", 7).before->number, 1);
    EXPECT_FALSE(keep(history, {}, "Halvard HI-1", 3).before) << "what is recorded late has its place in time";
    EXPECT_EQ(keep(history, {}, "Halvard HI-1", 6).before->number, 1);
    keep(history, {}, "Halvard HI-2", 6);
    std::vector<std::int64_t> numbers;
    for (const auto& record : history.records("Halvard HI-1"))
        numbers.push_back(record.number);
    EXPECT_EQ(numbers, (std::vector<std::int64_t>{3, 1, 4, 2}));
    EXPECT_EQ(history.latest("Halvard HI-1")->number, 2);
    EXPECT_EQ(history.latest("Halvard HI-1", day(5))->number, 1);
    EXPECT_FALSE(history.latest("Halvard HI-1", day(2)));
    EXPECT_EQ(history.records("Halvard HI-1", day(5), day(6)).size(), 2U);
    EXPECT_FALSE(history.record("Halvard HI-1", 5));
    EXPECT_EQ(history.machineLike("hi-2"), "Halvard HI-2");
    EXPECT_FALSE(history.machineLike("HI-3"));
    EXPECT_THROW(history.machineLike("halvard"), Problem);
}

TEST(History, APartIsFoundWhereverItWas)
{
    const TemporaryFolder folder;
    History history(folder / "h.db", Access::Change);
    tests::Machine machine;
    const auto serial = machine.dimms[0].serial;
    keep(history, machine, "M", 1);
    keep(history, machine, "M", 2);
    std::swap(machine.dimms[0].serial, machine.dimms[2].serial); // to B1
    keep(history, machine, "M", 3);
    std::swap(machine.dimms[0].serial, machine.dimms[2].serial); // and back
    keep(history, machine, "M", 4);
    machine.dimms[0].serial.clear();
    keep(history, machine, "M", 5);
    machine.dimms[0].serial = serial;
    keep(history, machine, "N", 6);

    std::string told;
    auto lower = serial;
    std::ranges::transform(lower, lower.begin(), [](char c) { return static_cast<char>(std::tolower(c)); });
    for (const auto& stay : history.stays(lower))
        told += stay.machine + " " + stay.place.value_or("?") + " " + stay.from.substr(8, 2) + "-" +
                stay.to.substr(8, 2) + (stay.still ? " still\n" : "\n");
    EXPECT_EQ(told, "M A1 01-02\nM B1 03-03\nM A1 04-04\nN A1 06-06 still\n");
    EXPECT_TRUE(history.stays("5E007").empty());
    Database database(folder / "h.db", Access::Ask);
    Statement plan(database, "EXPLAIN QUERY PLAN SELECT document FROM part WHERE serial = 'X'");
    ASSERT_TRUE(plan.next());
    EXPECT_NE(plan.text(3).find("USING PRIMARY KEY"), std::string::npos) << plan.text(3);
}

TEST(History, WhatIsForgottenIsOverwrittenAndTheRestStays)
{
    const TemporaryFolder folder;
    History history(folder / "h.db", Access::Change);
    tests::Machine machine;
    // Enough of them that pages are split and filled again.
    for (unsigned i = 0; i < 60; ++i) {
        machine.dimms[0].serial = "SECRET" + std::to_string(i % 2) + "F" + std::to_string(i) + "A7";
        machine.serial = "HI-SECRET" + std::to_string(i % 2);
        keep(history, machine, "machine-" + std::to_string(i % 2), 1 + i / 10);
    }
    ASSERT_NE(bytesOf(folder / "h.db").find("SECRET0F"), std::string::npos);
    history.forget("machine-0");
    const auto bytes = bytesOf(folder / "h.db");
    EXPECT_EQ(bytes.find("SECRET0"), std::string::npos);
    EXPECT_EQ(bytes.find("machine-0"), std::string::npos);
    EXPECT_TRUE(isSound(folder / "h.db"));
    ASSERT_EQ(history.machines().size(), 1U);
    EXPECT_EQ(history.records("machine-1").size(), 30U);
    for (const auto& record : history.records("machine-1"))
        EXPECT_NO_THROW(document::read(history.text(record), "a record"));
}

TEST(History, WhatIsNoHistoryIsLeftAlone)
{
    const TemporaryFolder folder;
    const auto history = folder / "h.db";
    keep(*std::make_unique<History>(history, Access::Change), {}, "M", 1);
    const auto sound = bytesOf(history);
    const auto is = [&](const std::string& bytes, const std::string& why) {
        const auto file = folder.file("other", bytes);
        EXPECT_EQ(refusal(file), file.string() + why);
        EXPECT_EQ(bytesOf(file), bytes) << "it was written to";
    };
    is("These are my notes.\n", " is no history of zorpinventory and is left alone; name another file with --db");
    is(sound.substr(0, sound.size() / 2), " is damaged; put a copy of it back, or move it away to begin a new one");
    auto other = sound; // the application's number, and the schema's in the header
    other[71] = static_cast<char>(other[71] + 1);
    is(other, " is no history of zorpinventory and is left alone; name another file with --db");
    auto newer = sound;
    newer[63] = 99;
    is(newer, " was written by a newer zorpinventory and is left alone; use that one, or name another file with --db");
    std::filesystem::create_symlink(history, folder / "link");
    EXPECT_NE(refusal(folder / "link").find("is a symbolic link"), std::string::npos);
    EXPECT_NE(refusal(folder.path()).find("is no file"), std::string::npos);
    EXPECT_EQ(bytesOf(history), sound);
}

TEST(History, AFlippedBitIsNeverToldAsARecord)
{
    const TemporaryFolder folder;
    const auto file = folder / "h.db";
    const auto first = [&] {
        History history(file, Access::Change);
        const auto kept = keep(history, {}, "M", 1).record;
        return std::pair(kept, history.text(kept));
    }();
    const auto sound = bytesOf(file);
    unsigned found = 0;
    for (std::size_t at = 1; at < sound.size(); at += 97) {
        auto bytes = sound;
        bytes[at] = static_cast<char>(bytes[at] ^ (1 << (at % 8)));
        std::ofstream(file, std::ios::binary) << bytes;
        try {
            const History history(file, Access::Ask);
            EXPECT_EQ(history.text(first.first), first.second) << "byte " << at;
        } catch (const Problem&) {
            ++found;
        }
    }
    EXPECT_GT(found, sound.size() / 97 / 8) << "much of the file is the document";
}

TEST(History, EveryReleasedVersionIsBroughtUp)
{
    const TemporaryFolder folder;
    const auto schemaOf = [](const std::filesystem::path& file) {
        const Database database(file, Access::Ask);
        Statement rows(database, "SELECT type, name, sql FROM sqlite_schema ORDER BY type, name");
        std::string schema;
        while (rows.next())
            schema +=
                std::string(rows.text(0)) + " " + std::string(rows.text(1)) + "\n" + std::string(rows.text(2)) + "\n";
        return schema;
    };
    keep(*std::make_unique<History>(folder / "new.db", Access::Change), {}, "M", 1);
    const auto expected = schemaOf(folder / "new.db");
    for (const unsigned version : {1U}) {
        const auto sql = std::filesystem::path(TESTS_FOLDER) / "zorpinventory/history" /
                         ("version_" + std::to_string(version) + ".sql");
        const auto file = folder / ("version_" + std::to_string(version) + ".db");
        ASSERT_EQ(std::system(("sqlite3 " + file.string() + " <" + sql.string()).c_str()), 0);
        EXPECT_EQ(schemaOf(file), expected);
        const History history(file, Access::Ask);
        ASSERT_EQ(history.records("Halvard HI-0042-7719").size(), 2U);
        EXPECT_EQ(history.stays("5E0082D1").size(), 1U);
        for (const auto& record : history.records("Halvard HI-0042-7719"))
            EXPECT_NO_THROW(document::read(history.text(record), "a record"));
        EXPECT_TRUE(isSound(file));
    }
}

/// What is tried on a failing disk: whether it said that it was recorded.
bool records(const std::filesystem::path& file, unsigned number)
{
    static const auto snapshots = [] {
        std::vector<Snapshot> all;
        tests::Machine machine;
        for (const auto* serial : {"77777C01", "77777C02", "77777C03"}) {
            machine.dimms[1].serial = serial;
            all.push_back(snapshotOf(machine, "M", day(static_cast<unsigned>(all.size() + 1))));
        }
        return all;
    }();
    try {
        History history(file, Access::Change);
        return history.keep(std::span(snapshots).subspan(number - 1, 1)).size() == 1;
    } catch (const Problem&) {
        return false;
    }
}

TEST(History, NoFailureOfTheDiskLosesARecord)
{
    // Hundreds of databases, none of which has to outlive the machine.
    if (std::filesystem::exists("/dev/shm"))
        setenv("TMPDIR", "/dev/shm", 1);
    const TemporaryFolder folder;
    const auto file = folder / "h.db";
    const auto old = folder / "old.db";
    ASSERT_TRUE(records(old, 1));
    for (const bool isNew : {true, false})
        for (const auto how : {FailingDisk::How::Full, FailingDisk::How::Broken, FailingDisk::How::Ends}) {
            bool struck = true;
            std::size_t places = 0;
            for (; struck; ++places) {
                std::filesystem::remove(file);
                std::filesystem::remove(folder / "h.db-journal");
                if (!isNew)
                    std::filesystem::copy(old, file);
                bool promised = false;
                if (how == FailingDisk::How::Ends) {
                    const auto child = fork();
                    if (child == 0) {
                        const FailingDisk disk(how, places);
                        _exit(records(file, 2) ? 0 : 2);
                    }
                    int status = 0;
                    waitpid(child, &status, 0);
                    struck = WEXITSTATUS(status) == 1;
                    promised = WEXITSTATUS(status) == 0;
                } else {
                    const FailingDisk disk(how, places);
                    promised = records(file, 2);
                    struck = FailingDisk::struck();
                }
                const auto before = isNew ? 0U : 1U;
                {
                    // Whoever asks next sees the old records, or all.
                    const bool exists = History::exists(file);
                    ASSERT_TRUE(exists || isNew);
                    const auto found = exists ? History(file, Access::Ask).records("M").size() : 0;
                    ASSERT_TRUE(found == before || found == before + 1) << places;
                    ASSERT_TRUE(!promised || found == before + 1) << places << ": it had said that it was recorded";
                }
                ASSERT_TRUE(records(file, 3)) << places << ": the next record does not work";
                ASSERT_TRUE(isSound(file)) << places;
                const History history(file, Access::Ask);
                for (const auto& record : history.records("M"))
                    ASSERT_NO_THROW(document::read(history.text(record), "a record"));
            }
            EXPECT_GT(places, 10U) << "nothing was tried";
        }
}

} // namespace
