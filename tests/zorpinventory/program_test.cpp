// The program as users run it: sources, exit codes, and what stands on which output.
#include "document/problem.h"
#include "documents.h"
#include "sources/child.h"
#include "support/expected_file.h"
#include "support/recorded_session.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

namespace
{

using tests::TemporaryFolder;

struct Outcome
{
    int exitCode;
    std::string output;
    std::string errors;
};

Outcome shell(const std::string& command)
{
    const TemporaryFolder folder;
    const int status =
        std::system(("(" + command + ") >" + (folder / "out").string() + " 2>" + (folder / "err").string()).c_str());
    const auto content = [&](const char* name) {
        const auto bytes = tests::readBytes(folder / name);
        return std::string(bytes.begin(), bytes.end());
    };
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, content("out"), content("err")};
}

Outcome program(const std::string& arguments)
{
    return shell("XDG_CONFIG_HOME=/nonexistent LC_ALL=C " ZORPINVENTORY " " + arguments);
}

/// A copy of the program in a folder without the module's program, which a script may take the place of.
Outcome programBeside(const std::string& script, const std::string& arguments)
{
    const TemporaryFolder folder;
    std::filesystem::copy(ZORPINVENTORY, folder / "zorpinventory");
    if (!script.empty()) {
        const auto path = folder.file("zorpsysinfosmbios2", "#!/bin/sh\n" + script + "\n");
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    }
    return shell("PATH=/nonexistent LC_ALL=C " + (folder / "zorpinventory").string() + " " + arguments);
}

TEST(Inventory, EverySourceTellsTheSameMachine)
{
    tests::TableBuilder table;
    table.add(1, 0x0001, 0x08).text(0x04, "Halvard").text(0x05, "Kvitnes").text(0x07, "HI-1");
    table.end();
    const TemporaryFolder folder;
    const auto expected = "System          Halvard Kvitnes, serial HI-1\n";
    for (const auto& [name, bytes] : table.layouts()) {
        const auto path = folder.file(name, bytes).string();
        EXPECT_EQ(program(path).output, expected) << name;
    }
    const auto dump = folder.file("dump", table.dump64(3, 0, 0)).string();
    const auto document = (folder / "document").string();
    ASSERT_EQ(shell(MODULE_PROGRAM " -d -f json -l en -s LoadTable=" + dump + " -o " + document).exitCode, 0);
    EXPECT_EQ(program(document).output, expected);
    EXPECT_EQ(program("- <" + document).output, expected);
    EXPECT_EQ(program("diff " + dump + " " + document).exitCode, 0);
    EXPECT_EQ(program("diff - " + dump + " <" + document).output, "no changes\n");
}

TEST(Inventory, TheExitCodeTellsWhetherSomethingDiffers)
{
    tests::Machine machine;
    const TemporaryFolder folder;
    const auto a = folder.file("a", machine.table()).string();
    machine.dimms[1].serial.clear();
    const auto b = folder.file("b", machine.table()).string();
    const auto run = program("diff " + a + " " + b);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, "− Memory Device  A2, 16 GB, DDR4  serial 5E0082D1\n1 change\n");
    EXPECT_EQ(program("diff " + a + " " + b + " -o /dev/full").exitCode, 2);
    EXPECT_EQ(program("show -t memory -p t17_serial " + a).output, "5E0071C4\n5E0082D1\n");
    EXPECT_EQ(program("show -t 39 " + a).exitCode, 1);
    EXPECT_EQ(program("show --string system-serial-number " + a).output, "HI-0042-7719\n");
    EXPECT_EQ(program("show --string system-family " + a).exitCode, 1);
    EXPECT_TRUE(program("show --string").output.starts_with("bios-vendor\n"));
    EXPECT_EQ(shell("(LC_ALL=C " ZORPINVENTORY " diff -f json --all " + a + " " + b + "; echo $? >&2) | :").errors,
              "0\n")
        << "a reader that goes away is no fault";
}

TEST(Inventory, TheExitCodeTellsWhetherSomethingIsWrong)
{
    tests::TableBuilder table;
    table.add(0, 0x0000, 0x12).text(0x04, "Zorp Firmware Works").text(0x08, "11/04/2019");
    table.add(1, 0x0001, 0x08).text(0x04, "Halvard").text(0x05, "System Product Name");
    table.end();
    const TemporaryFolder folder;
    const auto path = folder.file("dump", table.dump64(3, 0, 0)).string();
    const auto check = "check " + path;
    const auto found = program(check + " --at 2019-11-03");
    EXPECT_EQ(found.exitCode, 1);
    EXPECT_TRUE(found.output.ends_with("\nerrors: 0, warnings: 1, notes: 1\n")) << found.output;
    const std::pair<std::string, int> cases[] = {
        {" --at 2019-11-04", 0},
        {" --at 2019-11-04 --level note", 1},
        {" --at 2019-11-03 --level error", 0},
        {" --at 2019-11-03 --ignore date-in-future", 0},
        {" --at 2019-11-03 --ignore date-in-future --ignore placeholder --level note", 0},
        {" --at 2019-11-31", 2},
        {" --at today", 2},
        {" --ignore no-such-rule", 2},
        {" --rules", 0},
    };
    for (const auto& [options, exitCode] : cases)
        EXPECT_EQ(program(check + options).exitCode, exitCode) << options;
    EXPECT_TRUE(program(path).output.ends_with("\nFindings        errors: 0, warnings: 0, notes: 1,\n"
                                               "                zorpinventory check " +
                                               path + " tells more\n"))
        << program(path).output;
    EXPECT_EQ(program(check + " -f json --at 2019-11-04").output,
              R"({"format":"zorp-check-1","source":")" + path +
                  R"(","findings":[{"rule":"placeholder","level":"note","type":1,"handle":"0x0001",)"
                  R"("uid":"SMBIOS:0x0001","property":"t1_product","text":"Never filled in: System Product Name.",)"
                  R"("advice":"Do not sort machines by these texts; many makers have a tool that sets them."}]})"
                  "\n");
}

TEST(Inventory, FindingsReadWellInThreeLanguages)
{
    for (const std::string language : {"en", "de", "zh_CN"})
        tests::expectFile(MACHINES_TEXTS "/sample.check." + language + ".txt",
                          program("check --at 2026-11-23 -l " + language + " " MACHINES_FOLDER "/sample.dmi").output);
}

TEST(Inventory, WhatIsRecordedIsASource)
{
    tests::Machine machine;
    const TemporaryFolder folder;
    const auto a = folder.file("a", machine.table()).string();
    machine.dimms[1].serial.clear();
    const auto b = folder.file("b", machine.table()).string();
    const auto db = " --db " + (folder / "h.db").string();
    const auto last = [](const Outcome& run) {
        const auto line = run.errors.rfind("zorpinventory: ");
        return line == std::string::npos ? run.errors : run.errors.substr(line);
    };
    EXPECT_EQ(program("log" + db).exitCode, 1) << "there is no history";
    const auto first = program("record " + a + db + " --at 2026-10-01");
    EXPECT_EQ(first.exitCode, 0);
    EXPECT_TRUE(first.output.starts_with("first record of ")) << first.output;
    const auto name = first.output.substr(16, first.output.rfind(':') - 16);
    const auto second = program("record " + b + db + " --at 2026-10-02T08:30:00Z");
    EXPECT_EQ(second.exitCode, 1);
    EXPECT_EQ(second.output, name + ": @2, changed since @1 of 2026-10-01T00:00:00Z:\n" +
                                 "− Memory Device  A2, 16 GB, DDR4  serial 5E0082D1\n1 change\n");
    EXPECT_EQ(program("record " + b + db + " --at 2026-10-03").exitCode, 0);
    EXPECT_EQ(program("log" + db).output, name + "\n@3     2026-10-03T00:00:00Z  no changes\n" +
                                              "@2     2026-10-02T08:30:00Z  − Memory Device A2\n" +
                                              "@1     2026-10-01T00:00:00Z  first record\n");
    EXPECT_EQ(program("log --since 2026-10-02 --until 2026-10-02" + db).output,
              name + "\n@2     2026-10-02T08:30:00Z  − Memory Device A2\n");
    EXPECT_EQ(program("diff @1 @latest" + db).output, program("diff " + a + " " + b).output);
    EXPECT_EQ(program("diff @2026-10-01 " + a + db).exitCode, 0) << "a day counts to its end";
    EXPECT_EQ(program("diff '" + name + "@2' @3" + db).exitCode, 0);
    EXPECT_EQ(program("log --part 5E0082D1" + db).output,
              "2026-10-01T00:00:00Z … 2026-10-01T00:00:00Z  Memory Device A2, " + name + "\n");
    EXPECT_NE(program(a + db).output.find("changes since @3"), std::string::npos);

    const std::pair<Outcome, std::string> cases[] = {
        {program("diff @9" + db + " " + a), "the history has no @9 of " + name + "; log tells which there are"},
        {program("log nobody" + db), "the history has no machine nobody; log --machines lists those that it has"},
        {program("log --since yesterday" + db),
         "\"yesterday\" is no time; write a day as 2026-11-01, or a time as 2026-11-01T08:30:00Z"},
        {program("forget '" + name + "'" + db + " </dev/null"),
         "nobody is there to be asked whether " + name + " is to be forgotten; say --yes"},
        {program("record " + a + " --db /nonexistent/h.db"),
         "cannot write /nonexistent/h.db: No such file or directory"},
    };
    for (const auto& [run, sentence] : cases) {
        EXPECT_EQ(last(run), "zorpinventory: " + sentence + "\n");
        EXPECT_EQ(run.exitCode, 2) << sentence;
    }

    // One bad file in a folder stops nothing.
    std::filesystem::remove(folder / "h.db");
    (void)folder.file("c", std::string_view("rubbish"));
    const auto bulk = program("record -f json " + folder.path().string() + db);
    EXPECT_EQ(bulk.exitCode, 2);
    EXPECT_NE(bulk.errors.find("/c: is not an SMBIOS table in any known layout\nzorp"), std::string::npos)
        << bulk.errors;
    EXPECT_EQ(program("log" + db).output.find("@3"), std::string::npos);
    EXPECT_NE(program("log" + db).output.find("@2"), std::string::npos) << bulk.output;
    EXPECT_EQ(program("forget --yes '" + name + "'" + db).exitCode, 0);
    EXPECT_EQ(program("log --machines" + db).exitCode, 1);
}

TEST(Inventory, HostileTextsDoNotReachATerminal)
{
    tests::Machine machine;
    machine.dimms[0].locator = "A\x1B[2J\x07";
    const TemporaryFolder folder;
    const auto a = folder.file("a", machine.table()).string();
    machine.dimms[0].serial.clear();
    const auto b = folder.file("b", machine.table()).string();
    for (const auto& arguments : {"summary " + a, "show " + a, "show -f csv " + a, "show -p t17_locator " + a,
                                  "diff " + a + " " + b, "diff -f json " + a + " " + b}) {
        const auto run = program(arguments);
        EXPECT_NE(run.output.find("[2J"), std::string::npos) << arguments << run.output;
        EXPECT_EQ(run.output.find_first_of("\x1B\x07"), std::string::npos);
    }
}

TEST(Inventory, WhatCannotBeDoneIsOneSentenceAndExitCode2)
{
    const TemporaryFolder folder;
    const auto pipe = (folder / "pipe").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const auto dump = folder.file("dump", tests::Machine().table()).string();
    const std::pair<Outcome, std::string> cases[] = {
        {program("/nonexistent"), "cannot read /nonexistent: No such file or directory"},
        {program(pipe), "cannot read " + pipe + ": it is neither a file nor a folder; name - for standard input"},
        {program("diff - -"), "standard input can be read once only; name a file for A or B"},
        {program("show -t memry"), "\"memry\" is no structure type; give numbers from 0 to 255 or bios, system, "
                                   "baseboard, chassis, processor, memory, cache, connector, slot"},
        {program("show -H 0x10000"), "\"0x10000\" is no handle; give numbers from 0x0000 to 0xFFFF"},
        {program("show -p t17_serail " + dump), "there is no property t17_serail; show -f csv tells their names"},
        {program("show -s serial"), "there is no name \"serial\"; show --string lists them"},
        {program("- </dev/null"), "cannot read standard input: it is empty"},
        {shell("head -c 1G /dev/zero | tr '\\0' ' ' | LC_ALL=C " ZORPINVENTORY " -"),
         "cannot read standard input: it is larger than any inventory"},
        {program("diff " + dump + " " + folder.file("cut", std::string_view("{\"format\":")).string()),
         "cannot read " + (folder / "cut").string() + ": it ends in the middle, at byte 10; write it again with -o"},
        {program(dump + " -o /nonexistent/x"), "cannot write /nonexistent/x: No such file or directory"},
        {programBeside("", dump), "zorpsysinfosmbios2 is neither beside this program nor in PATH; install it there"},
        {programBeside("kill -9 $$", dump), "zorpsysinfosmbios2 ended with code 9 before it was done"},
        {programBeside("exit 3", dump), "zorpsysinfosmbios2 ended with code 3 before it was done"},
        {programBeside("echo 'OrbException: no'", dump), "zorpsysinfosmbios2 says: no"},
        {programBeside("exit 0", dump), "cannot read what zorpsysinfosmbios2 printed: it is empty"},
        {programBeside("echo Hello", dump),
         "cannot read what zorpsysinfosmbios2 printed: it is no JSON from byte 0 on"},
        {programBeside("printf '{\"format\":'", dump),
         "cannot read what zorpsysinfosmbios2 printed: it ends in the middle, at byte 10; write it again with -o"},
    };
    for (const auto& [run, sentence] : cases) {
        EXPECT_EQ(run.errors, "zorpinventory: " + sentence + "\n");
        EXPECT_EQ(run.exitCode, 2) << sentence;
        EXPECT_EQ(run.output, "") << sentence;
    }
    // What is no table is told by the module first.
    for (const auto& source : {folder.path().string(), folder.file("rubbish", std::string_view("rubbish")).string()}) {
        const auto run = program(source);
        EXPECT_TRUE(
            run.errors.ends_with("zorpinventory: no SMBIOS table can be read from " + source + ", as said above\n"))
            << run.errors;
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_EQ(run.output, "");
    }
}

TEST(Inventory, AProgramThatGoesTooFarIsEnded)
{
    using namespace zorpinventory;
    const std::pair<const char*, const char*> cases[] = {
        {"exec sleep 60", "sh was still not done after 1 seconds and was ended"},
        {"exec sleep 60 >&-", "sh was still not done after 1 seconds and was ended"},
        {"exec yes", "sh printed more than any inventory and was ended"},
    };
    for (const auto& [script, sentence] : cases) {
        try {
            sources::outputOf("/bin/sh", {"-c", script}, {std::chrono::seconds(1), 1000});
            ADD_FAILURE() << script;
        } catch (const Problem& problem) {
            EXPECT_STREQ(problem.what(), sentence);
        }
    }
}

TEST(Inventory, AnAnonymisedTableIsHandedOverOrOneSentenceIs)
{
    namespace fs = std::filesystem;
    const TemporaryFolder folder;
    const auto path = [&](const char* name) { return (folder / name).string(); };
    const auto table = folder.file("table.dmi", tests::Machine().table()).string();
    const auto rubbish = folder.file("rubbish", std::string_view("rubbish")).string();
    folder.file("empty", std::string_view());
    fs::permissions(folder.file("open", std::string_view("secret")), fs::perms::owner_read | fs::perms::group_read);
    fs::permissions(folder.file("key", std::string_view("secret")), fs::perms::owner_read);
    fs::create_symlink("nowhere", folder / "link");
    fs::create_hard_link(table, folder / "same");

    const auto run = program("anonymize " + table + " " + path("copy") + " --key " + path("key"));
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, "zorpinventory: replaced: serial numbers and asset tags: 6, UUIDs: 1, numbers and dates of "
                          "batteries: 0, OEM strings and options: 0, strings of makers' structures: 0, secrets found "
                          "elsewhere: 0\n");
    const auto copy = tests::readBytes(path("copy"));

    const std::string kExists = " exists; name another file, or add --force if it is a dump to be replaced";
    const std::pair<std::string, std::string> cases[] = {
        {"/nonexistent " + path("new"),
         "/nonexistent: No such file or directory; name a saved table or a folder such as /sys/firmware/dmi/tables"},
        {rubbish + " " + path("new"), rubbish + ": is not an SMBIOS table in any known layout; name a saved table or a "
                                                "folder such as /sys/firmware/dmi/tables"},
        {table + " " + table, table + " is the table itself; name another file for the copy"},
        {table + " --force " + path("same"), path("same") + " is the table itself; name another file for the copy"},
        {table + " " + path("copy"), path("copy") + kExists},
        {table + " " + path("link"), path("link") + kExists},
        {table + " --force " + rubbish, rubbish + ": not overwritten, it exists and is not an SMBIOS dump"},
        {table + " --force " + path("link"),
         path("link") + ": not overwritten, it is a symbolic link to a file that does not exist"},
        {table + " /nonexistent/new", "/nonexistent/new: not written, No such file or directory"},
        {table + " " + path("new") + " --key " + path("empty"),
         "the key " + path("empty") + " is empty; write at least 16 random bytes to it"},
        {table + " " + path("new") + " --key " + path("open"),
         "the key " + path("open") +
             " may be read by others, who could find out secrets by trying; let only its owner read it"},
        {table + " " + path("new") + " --key " + path("none"),
         "cannot read the key " + path("none") + ": No such file or directory"},
        {table, "anonymize needs one more source: TABLE OUT (--help lists what there is)"},
    };
    for (const auto& [arguments, sentence] : cases) {
        const auto refused = program("anonymize " + arguments);
        EXPECT_EQ(refused.errors, "zorpinventory: " + sentence + "\n");
        EXPECT_EQ(refused.exitCode, 2) << sentence;
        EXPECT_FALSE(exists(folder / "new")) << sentence;
    }
    EXPECT_EQ(tests::readBytes(path("copy")), copy);
    EXPECT_EQ(program("anonymize --force " + table + " " + path("copy")).exitCode, 0);
    EXPECT_NE(tests::readBytes(path("copy")), copy);
}

} // namespace
