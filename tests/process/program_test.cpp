// The program as users run it: options, outputs, exit code, and the documents it prints.
#include "services/utf8.h"
#include "support/output_rules.h"
#include "support/recorded_session.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <regex>
#include <set>
#include <sstream>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace
{

using tests::byte;
using tests::Bytes;
using tests::TableBuilder;
using tests::TemporaryFolder;

const std::string kSample = MACHINES_FOLDER "/sample.dmi";

struct Outcome
{
    int exitCode;
    std::string output;
    std::string log;
};

std::string contentOf(const std::filesystem::path& path)
{
    const auto bytes = tests::readBytes(path);
    return {bytes.begin(), bytes.end()};
}

/// Runs a shell command, its outputs apart.
Outcome shell(const std::string& command)
{
    const TemporaryFolder folder;
    const auto out = folder / "out";
    const auto err = folder / "err";
    const int status = std::system(("(" + command + ") >" + out.string() + " 2>" + err.string()).c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(out), contentOf(err)};
}

/// Runs the program, without any settings but those of the command line.
Outcome program(const std::string& arguments)
{
    return shell("XDG_CONFIG_HOME=/nonexistent LC_ALL=C " PROGRAM " " + arguments);
}

std::string sample(const std::string& arguments) { return "-s LoadTable=" + kSample + " " + arguments; }

/// The sample's structures again and again: a table of 1 MB.
Bytes largeTable()
{
    const auto once = tests::readBytes(kSample);
    Bytes table;
    while (table.size() < 1 << 20)
        table.insert(table.end(), once.begin() + 0x20, once.end() - 6); // without the end marker
    return table;
}

/// Boards that each announce 255 contained objects where there is room for none: the text form of a board is 150 times
/// as long as the board.
Bytes boastfulBoards(unsigned count)
{
    TableBuilder table;
    for (unsigned handle = 0; handle < count; ++handle)
        table.add(2, static_cast<std::uint16_t>(handle), 0x0F).put(byte(0x0E), 0xFF);
    return table.end().structures();
}

constexpr unsigned kManyBoards = 1000; ///< whose text is more than the program keeps in memory

rapidjson::Document parsed(const std::string& text)
{
    rapidjson::Document document;
    document.Parse<rapidjson::kParseValidateEncodingFlag>(text.data(), text.size());
    EXPECT_FALSE(document.HasParseError()) << "at " << document.GetErrorOffset() << " of " << text;
    return document;
}

TEST(Json, TheDocumentToTheByte)
{
    TableBuilder table;
    table.add(2, 0x0002, 0x11).text(0x04, "A\"\\\t\n\x1B\x7F\xC2\x9B\xE4\xB8\xAD\xE2\x80\xAE/\xFF").put(byte(0x0E), 1);
    table.add(24, 0x0018, 0x05).put(byte(0x04), 0x01);
    table.end();
    const TemporaryFolder folder;
    const auto path = folder.file("t.dmi", table.dump64(3, 2, 0)).string();
    const auto run = program("-f json -s verbose=0 -s LoadTable=" + path);
    EXPECT_EQ(run.log, "");
    const char* expected =
        R"json({"format":"zorp-sysinfo-1","module":{"name":"zorpsysinfosmbios2","version":"6.5","build":"000000001","capabilities":["SMBIOS"]},"devices":[
{"uid":"SMBIOS","name":"SMBIOS","identifier":"SMBIOS","description":"SMBIOS","capabilities":["SMBIOS"],"childBusIds":[{"bus":"SMBIOS","id":null}],"properties":{"__smbios2_hdr_handle":{"value":65535,"unit":"HEXADECIMAL16","text":"0xFFFF"},"smbios2_version":"3.2.0"}},
{"uid":"SMBIOS:0x0002","name":"Base Board","identifier":"Base Board:0","description":"Base Board:0","capabilities":["SMBIOS_Struct"],"uids":{"2":"SMBIOS:TYPE:2"},"childBusIds":[{"bus":"SMBIOS","id":"0x0000"}],"properties":{"smbios2_hdr_type":2,"smbios2_hdr_len":{"value":17,"unit":"BYTES","text":"17 B"},"smbios2_hdr_handle":{"value":2,"unit":"HEXADECIMAL16","text":"0x0002"},"t2_manufacturer":"A\"\\\t\n\u001b\u007f\u009b中\u202e/�","t2_features":["The board is a hosting board (for example, a motherboard)","The board requires at least one daughter board or auxiliary card to function properly","The board is removable","The board is replaceable","The board is hot swappable"],"t2_type_int":0,"t2_type":"Out of range","smbios2_parent":{"value":0,"unit":"HEXADECIMAL16","text":"0x0000"},"t2_members":["0x0000"]}},
{"uid":"SMBIOS:0x0018","name":"Hardware Security","identifier":"Hardware Security:0","description":"Hardware Security:0","capabilities":["SMBIOS_Struct","Security"],"properties":{"smbios2_hdr_type":24,"smbios2_hdr_len":{"value":5,"unit":"BYTES","text":"5 B"},"smbios2_hdr_handle":{"value":24,"unit":"HEXADECIMAL16","text":"0x0018"},"t24_flags_msk2_srt0":"Enabled","t24_flags_msk2_srt2":"Disabled","t24_flags_msk2_srt4":"Disabled","t24_flags_msk2_srt6":"Disabled","t24_hw_security_byte":1}}
]}
)json";
    EXPECT_EQ(run.output, expected);
}

TEST(Json, LinesHoldTheDevicesOfTheDocument)
{
    const auto document = parsed(program(sample("-f json")).output);
    std::istringstream lines(program(sample("-f ndjson")).output);
    std::string line;
    for (const auto& device : document["devices"].GetArray()) {
        std::getline(lines, line);
        EXPECT_EQ(parsed(line), device);
    }
    EXPECT_FALSE(std::getline(lines, line));
}

TEST(Json, WhateverTheFileIsTheDocumentIsValid)
{
    TableBuilder longText;
    longText.add(10, 0x0001, 0x06).text(0x05, std::string(1 << 20, 'x'));
    const std::pair<const char*, Bytes> cases[] = {
        {"empty", {}},
        {"zeros", Bytes(1 << 20)},
        {"ones", Bytes(1 << 20, 0xFF)},
        {"a text of 1 MB", longText.end().structures()},
    };
    const TemporaryFolder folder;
    std::filesystem::create_symlink("loop", folder / "loop");
    std::vector<std::pair<std::string, std::filesystem::path>> paths{{"a folder", folder.path()},
                                                                     {"a device", "/dev/zero"},
                                                                     {"a circle of links", folder / "loop"},
                                                                     {"nothing", "/nonexistent"}};
    for (const auto& [name, content] : cases)
        paths.emplace_back(name, folder.file(name, content));
    for (const auto& [name, path] : paths) {
        const auto run = program("-f json -s 'LoadTable=" + path.string() + "'");
        EXPECT_EQ(run.exitCode, 0) << name;
        EXPECT_EQ(tests::faultInJson(run.output), "") << name;
        EXPECT_EQ(tests::faultInText(run.log), "") << name;
    }
}

/// What the document that is printed without line feeds says of the table behind its devices.
std::string behindDevices(const std::string& document) { return document.substr(document.find("],\"others\"") + 2); }

TEST(Details, TellTheTableTheOtherStructuresAndTheFaults)
{
    TableBuilder table;
    table.add(2, 0x0002, 0x08).put(byte(0x07), 1);
    table.add(200, 0x00C8, 0x06);
    const TemporaryFolder folder;
    auto dump = table.dump32(2, 7);
    dump.resize(dump.size() - 1);
    const auto path = folder.file("t.dmi", dump).string();
    const auto run = program("-d -f json -s LoadTable=" + path);
    EXPECT_NE(run.output.find(R"("table":{"source":"file","version":"2.7","bytes":17,"structures":2},"devices":[)"
                              "\n{"),
              std::string::npos)
        << run.output;
    EXPECT_EQ(behindDevices(run.output), R"("others":[
{"type":200,"handle":"0x00C8","offset":10,"length":6}
],"faults":[
{"offset":0,"handle":null,"fault":"length-differs","text":")" +
                                             path +
                                             R"(: holds 17 of the table's 18 bytes; read as far as it goes"},
{"offset":10,"handle":"0x00C8","fault":"strings-past-end","text":"its strings run past the end of the table at 0x11; cut there"},
{"offset":0,"handle":"0x0002","fault":"string-missing","text":"it asks for string 1, which its set does not have"}
]}
)");
    EXPECT_EQ(behindDevices(program("-d -f json -s LoadTable=/nonexistent").output), "\"others\":[],\"faults\":[]}\n");
}

/// Structures of seven bytes, each of which asks for a string that it does not have; and there is no end marker.
Bytes nothingButFaults(unsigned structures)
{
    TableBuilder table;
    for (unsigned i = 0; i < structures; ++i)
        table.add(41, 7, 0x05).put(byte(0x04), 9);
    return table.dump64(3, 2, 0);
}

TEST(Details, AllFaultsAreToldThoughTheLogIsShort)
{
    constexpr unsigned kStructures = 20000;
    const TemporaryFolder folder;
    const auto path = folder.file("t.dmi", nothingButFaults(kStructures)).string();
    const auto document = parsed(program("-d -f json --log-level 5 -s LoadTable=" + path).output);
    EXPECT_EQ(document["faults"].Size(), kStructures + 1); // and the end marker is missing
}

TEST(Tables, EachIsALineWhateverIsWrongWithOthers)
{
    const TemporaryFolder folder;
    const auto list = folder.file("list", kSample + "\n/nonexistent\n\n" + std::string("a\0b\n", 4) + "/etc/passwd\n" +
                                              std::string(70000, 'x') + "\n" + MACHINES_FOLDER "/sample_dell.dmi");
    const auto run = program("--tables -d -f json <" + list.string());
    std::istringstream lines(run.output);
    const auto next = [&] {
        std::string line;
        std::getline(lines, line);
        return line;
    };
    const auto alone = [](const std::string& path) {
        auto document = program("-d -f json -s LoadTable=" + path).output;
        std::erase(document, '\n');
        return "{\"source\":\"" + path + "\"," + document.substr(1);
    };
    EXPECT_EQ(next(), alone(kSample));
    EXPECT_EQ(next(), R"({"source":"/nonexistent","error":"/nonexistent: No such file or directory"})");
    EXPECT_EQ(next(), R"({"source":"","error":"line 3 of the list is empty; it has to name a table"})");
    EXPECT_EQ(next(), R"({"source":"a\u0000b","error":"line 4 of the list has a NUL in it; no path has"})");
    EXPECT_EQ(next(), R"({"source":"/etc/passwd","error":"/etc/passwd: is not an SMBIOS table in any known layout"})");
    EXPECT_TRUE(next().ends_with(R"(","error":"line 6 of the list is longer than any path"})"));
    EXPECT_EQ(next(), alone(MACHINES_FOLDER "/sample_dell.dmi"));
    EXPECT_EQ(next(), "");
    EXPECT_EQ(run.log, "[4] zorpsysinfosmbios2: " + kSample +
                           ": 758 Unrealistically large memory size for SMBIOS device with handle 0602h, it is 40\n"
                           "[4] Smbios2: /nonexistent: No such file or directory\n"
                           "[5] zorpsysinfosmbios2: 2603 Could not load SMBIOS table from file: /nonexistent\n"
                           "[4] Smbios2: /etc/passwd: is not an SMBIOS table in any known layout\n"
                           "[5] zorpsysinfosmbios2: 2603 Could not load SMBIOS table from file: /etc/passwd\n");
    EXPECT_EQ(program("--tables -d -f json </dev/null").output, "");
    EXPECT_EQ(program("--tables -d -f json <&-").output, "OrbException: cannot read standard input to its end\n");
}

TEST(Memory, StaysWithinASmallMultipleOfTheTable)
{
    const TemporaryFolder folder;
    const auto large = folder.file("large", largeTable()).string();
    const auto faulty = folder.file("faulty", nothingButFaults(100000)).string();
    const auto boastful = folder.file("boastful", boastfulBoards(16 * kManyBoards)).string();
    const struct
    {
        std::string table;
        const char* options;
        unsigned megabytes; ///< twice what it takes
    } cases[] = {
        {large, "-f json", 20}, {faulty, "-d -f json", 20}, {large, "-f text", 88}, {boastful, "-f text --all", 60}};
    for (const auto& [table, options, megabytes] : cases) {
        const auto limited =
            "ulimit -v " + std::to_string(megabytes * 1024) + "; XDG_CONFIG_HOME=/nonexistent " PROGRAM " ";
        if (shell(limited + "--version").exitCode != 0)
            GTEST_SKIP() << "sanitizers need more memory than that";
        const auto run = shell(limited + options + " -s LoadTable=" + table + " | tail -1");
        EXPECT_EQ(run.output.find("OrbException"), std::string::npos) << options << run.output;
        EXPECT_NE(run.output, "") << options << run.log;
    }
}

TEST(Memory, WhatDoesNotFitIsKeptInAFile)
{
    const TemporaryFolder folder;
    const auto options = [&](std::int64_t boards) {
        return "--all -s LoadTable=" + folder.file("t", boastfulBoards(static_cast<unsigned>(boards))).string();
    };
    const auto lines = [&](std::int64_t boards) {
        const auto text = program(options(boards)).output;
        return std::count(text.begin(), text.end(), '\n');
    };
    const auto each = lines(3) - lines(2);
    EXPECT_GT(each, 255);
    EXPECT_EQ(lines(kManyBoards), lines(2) + (kManyBoards - 2) * each);

    const auto homeless =
        shell("export TMPDIR=/nonexistent XDG_CONFIG_HOME=/nonexistent; " PROGRAM " " + options(kManyBoards));
    EXPECT_EQ(homeless.output, "OrbException: cannot keep a part of the inventory in a temporary file: "
                               "No such file or directory\n");
}

TEST(Catalogue, IsPrintedInDeclarationOrder)
{
    const auto document = parsed(program("--catalogue -f json").output);
    EXPECT_STREQ(document["format"].GetString(), "zorp-catalogue-1");
    ASSERT_EQ(document["properties"].Size(), 315u);
    EXPECT_EQ(document["properties"][2], parsed(R"({"name": "smbios2_hdr_handle", "type": "DISCRETEMEASUREMENT",
        "categories": ["SysInfo", "Tier3", "Key", "RequiredForEnumeration"], "capability": "SMBIOS_Struct"})"));
    const auto text = program("--catalogue").output;
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 315);
}

TEST(CommandLine, MistakesAreToldOnStandardOutputWithExitCode0)
{
    const TemporaryFolder folder;
    const auto badSettings = folder.file("bad.ini", "[zorpsysinfosmbios2]\nverbose\n").string();
    const auto savingSettings = folder.file("save.ini", "[zorpsysinfosmbios2]\nSaveTable.value = x\n").string();
    const auto dangling = (folder / "dangling").string();
    std::filesystem::create_symlink("nothing", dangling);
    const std::pair<std::string, const char*> cases[] = {
        {"--nonsense", "no option --nonsense ("},
        {"--formt json", "no option --formt; did you mean --format?"},
        {"--nonsense -al de", "es gibt keine Option --nonsense ("},
        {"--language=zh_CN -f xml", "“xml”"},
        {"-l de --settings /nonexistent\x1B.ini", "/nonexistent\\x1B.ini: Datei"},
        {"one two", "not one and two"},
        {"-t 256", "\"256\" is no structure type"},
        {"-t 17,memry", "did you mean memory?"},
        {"-f xml", "xml"},
        {"-f jsn", "did you mean json?"},
        {"-o", "--output needs a value"},
        {"--log-level 6", "6"},
        {"--log-level x", "x"},
        {"-s verbose", "\"verbose\""},
        {"-s =x", "NAME=VALUE"},
        {"--catalogue -f ndjson", "ndjson"},
        {"--catalogue -f json -d", "neither --details nor --tables"},
        {"-d", "--details needs -f json or -f ndjson"},
        {"--tables -f json", "--tables needs --details and -f json"},
        {"--tables -d -f ndjson", "--tables needs --details and -f json"},
        {"--tables -d -f json -s LoadTable=x", "leave out LoadTable"},
        {"--tables -d -f json -s SaveTable=x", "leave out SaveTable"},
        {"--tables -d -f json --settings " + savingSettings, "leave out SaveTable"},
        {"--settings /nonexistent.ini", "/nonexistent.ini: No such file"},
        {"--settings " + badSettings, "line 2"},
        {"-o /nonexistent/x", "cannot write /nonexistent/x: No such file"},
        {"-o /", "cannot write /: Is a directory"},
        {"-o " + dangling, "dangling: it is a symbolic link to a file that does not exist"},
        {sample("-f json -o /dev/full"), "cannot write /dev/full: No space left"},
    };
    for (const auto& [arguments, named] : cases) {
        const auto run = program(arguments);
        EXPECT_TRUE(run.output.starts_with("OrbException: ")) << arguments << ": " << run.output;
        EXPECT_NE(run.output.find(named), std::string::npos) << arguments << ": " << run.output;
        EXPECT_EQ(run.exitCode, 0);
    }
}

TEST(CommandLine, HelpAndVersion)
{
    for (const char* language : {"en", "de", "zh_CN"}) {
        const auto help = program("--help -l " + std::string(language)).output;
        EXPECT_LE(std::count(help.begin(), help.end(), '\n'), 26) << "one screen";
        std::istringstream lines(help);
        unsigned examples = 0;
        for (std::string line; std::getline(lines, line);) {
            EXPECT_LE(embedded_host::services::columnsOf(line), 80u) << line;
            examples += line.starts_with("  zorpsysinfosmbios2 ") ? 1u : 0u;
        }
        EXPECT_EQ(examples, 2u);
    }
    EXPECT_EQ(program("-h").output, program("--help").output);
    for (const char* option : {"-V", "--version"})
        EXPECT_EQ(program(option).output, "zorpsysinfosmbios2 6.5 (build 000000001)\n");
}

TEST(Settings, ComeFromTheFileTheFoldersAndTheCommandLine)
{
    const TemporaryFolder folder;
    const auto settings = "[zorpsysinfosmbios2]\nverbose.value = no\nLoadTable.value = " + kSample + "\n";
    const auto named = folder.file("zorpsysinfosmbios2.ini", settings).string();
    const auto devices = [](const Outcome& run) { return parsed(run.output)["devices"].Size(); };
    const auto few = devices(program("-f json --settings " + named));
    EXPECT_GT(few, 5u);
    EXPECT_EQ(devices(shell("XDG_CONFIG_HOME=" + folder.path().string() + " " PROGRAM " -f json")), few);
    EXPECT_GT(devices(program("-f json --set verbose=yes --settings " + named)), few);
    const auto misplaced = folder.file("misplaced.ini", "verbose.value = no\n" + settings).string();
    const auto log = program("-s Verbose=no --settings " + misplaced).log;
    EXPECT_TRUE(
        log.ends_with("[3] settings: nothing asked for the setting Verbose in this run; it had no effect\n"
                      "[3] settings: the settings file's verbose.value stands in front of every section and has no "
                      "effect; it belongs behind the line [zorpsysinfosmbios2]\n"))
        << log;
}

TEST(Output, AFileAppearsWholeOrNotAtAll)
{
    const TemporaryFolder folder;
    const auto target = folder.file("inventory.json", "old");
    const auto link = folder / "link.json";
    std::filesystem::create_symlink(target, link);
    EXPECT_EQ(program(sample("-f json -o " + link.string())).output, "");
    EXPECT_TRUE(std::filesystem::is_symlink(link)) << "the link is followed, not replaced";
    EXPECT_EQ(contentOf(target), program(sample("-f json")).output);

    EXPECT_NE(program("--settings /nonexistent -o " + target.string()).output, "");
    EXPECT_NE(contentOf(target), "") << "a failed run leaves the old file";
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
    EXPECT_EQ(program(sample("-o /dev/null")).output, "");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(Output, WhoMayReadAFileIsKept)
{
    const TemporaryFolder folder;
    const auto target = folder.file("old", "old").string();
    // Owner, user 1234, group, mask, others, as the kernel keeps an access list (POSIX.1e): nobody but the two reads
    // it.
    constexpr char kAccessList[] = "\2\0\0\0\1\0\6\0\377\377\377\377\2\0\4\0\322\4\0\0\4\0\0\0\377\377\377\377"
                                   "\x10\0\4\0\377\377\377\377\x20\0\0\0\377\377\377";
    const auto attribute = [&](const char* name) {
        std::string value(100, '\0');
        const auto size = getxattr(target.c_str(), name, value.data(), value.size());
        return value.substr(0, static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    };
    const auto mode = [&] { return static_cast<unsigned>(std::filesystem::status(target).permissions()); };
    for (const unsigned wanted : {0600u, 0640u, 0444u, 0666u}) {
        std::filesystem::permissions(target, std::filesystem::perms(wanted));
        EXPECT_EQ(program("--version -o " + target).output, "");
        EXPECT_EQ(mode(), wanted);
    }
    if (setxattr(target.c_str(), "user.note", "mine", 4, 0) != 0 ||
        setxattr(target.c_str(), "system.posix_acl_access", kAccessList, sizeof(kAccessList), 0) != 0)
        GTEST_SKIP() << "the temporary folder's file system keeps no access lists or attributes";
    const auto before = std::tuple(attribute("user.note"), attribute("system.posix_acl_access"), mode());
    EXPECT_EQ(program(sample("-f json -o " + target)).output, "");
    EXPECT_EQ(contentOf(target), program(sample("-f json")).output);
    EXPECT_EQ(std::tuple(attribute("user.note"), attribute("system.posix_acl_access"), mode()), before);
}

TEST(Output, WhatIsOpenOrNoFileIsWrittenToAndNeverReplaced)
{
    const TemporaryFolder folder;
    const auto log = folder.file("log", "before\n").string();
    std::filesystem::create_symlink("/dev/fd/3", folder / "link");
    const auto version = program("--version").output;
    std::string expected = "before\n";
    for (const auto& [name, redirection] : {std::pair<std::string, std::string>("/dev/stdout", ">>"),
                                            {"/proc/self/fd/1", ">>"},
                                            {"/dev/fd/3", "3>>"},
                                            {folder / "link", "3>>"}}) {
        EXPECT_EQ(program("--version -o " + name + " " + redirection + log).output, "");
        EXPECT_EQ(contentOf(log), expected += version) << name;
    }
    EXPECT_EQ(program("--version -o /dev/stdout").output, version);
    EXPECT_EQ(program("--version -o /dev/stdout | cat").output, version);
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
}

TEST(Output, AClosedStreamIsNotTheNextFile)
{
    const TemporaryFolder folder;
    const auto target = (folder / "inventory.json").string();
    const auto expected = program(sample("-f json")).output;
    for (const char* closed : {"2>&-", ">&- 2>&-", "<&- >&- 2>&-"}) {
        program(sample("-f json -s verboze=1 -o " + target + " " + closed));
        EXPECT_TRUE(contentOf(target) == expected) << closed;
    }
}

TEST(Output, EveryNameThatTheSystemTakesIsTaken)
{
    const TemporaryFolder folder;
    for (const int length : {247, 248, 255}) {
        const auto target = (folder / std::string(static_cast<std::size_t>(length), 'n')).string();
        for (int time = 0; time < 2; ++time) {
            EXPECT_EQ(program("-f json -o " + target).output, "");
            std::filesystem::remove(target);
            EXPECT_EQ(program(sample("-s SaveTable=" + target)).log, program(sample("")).log);
        }
        std::filesystem::remove(target);
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

/// Runs the program with a standard error that takes no line any more, until its output is open; then ends it.
void endWhileWriting(const std::filesystem::path& target, int signal)
{
    std::array<int, 2> full{};
    ASSERT_EQ(pipe2(full.data(), O_NONBLOCK), 0);
    while (write(full[1], "full", 4) > 0)
        ;
    fcntl(full[1], F_SETFL, 0);
    const pid_t child = fork();
    if (child == 0) {
        dup2(full[1], STDERR_FILENO);
        execl(PROGRAM, PROGRAM, "-o", target.c_str(), "-s", "LoadTable=/nonexistent", nullptr);
        _exit(1);
    }
    const auto isOpen = [&] {
        std::error_code gone;
        for (const auto& entry : std::filesystem::directory_iterator("/proc/" + std::to_string(child) + "/fd"))
            if (std::filesystem::read_symlink(entry, gone).string().starts_with(target.parent_path().string()))
                return true;
        return false;
    };
    for (int i = 0; i < 10000 && !isOpen(); ++i)
        usleep(1000);
    kill(child, signal);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << "it was not writing";
    close(full[0]);
    close(full[1]);
}

TEST(Output, ASignalLeavesNothingBehind)
{
    const TemporaryFolder folder;
    const auto target = folder.file("inventory", "old");
    for (const int signal : {SIGTERM, SIGHUP, SIGINT, SIGKILL})
        endWhileWriting(target, signal);
    EXPECT_EQ(shell("ulimit -f 1; " PROGRAM " " + sample("-f json -o " + target.string())).output,
              "OrbException: cannot write " + target.string() + ": File too large\n");
    EXPECT_EQ(contentOf(target), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

TEST(Output, ABrokenStandardOutputIsToldOnStandardError)
{
    const TemporaryFolder folder;
    const auto large = "-f json -s LoadTable=" + folder.file("t", largeTable()).string();
    const std::pair<std::string, const char*> cases[] = {
        {large + " >/dev/full", "No space left on device"},
        {"--version >/dev/full", "No space left on device"},
        {"--version >&-", "Bad file descriptor"},
    };
    for (const auto& [command, reason] : cases) {
        const auto run = program(command);
        EXPECT_NE(run.log.find("[5] output: cannot write standard output: " + std::string(reason)), std::string::npos)
            << run.log;
        EXPECT_EQ(run.exitCode, 0);
    }
}

TEST(Output, AReaderWhoHasSeenEnoughIsNoFault)
{
    const TemporaryFolder folder;
    const auto run = program("-f json " + folder.file("t", largeTable()).string() + " | true");
    EXPECT_EQ(run.log.find("output"), std::string::npos) << run.log;
    EXPECT_EQ(run.exitCode, 0);
}

TEST(Language, AnUnknownOneIsEnglish)
{
    const auto run = program(sample("-f json -l xx_YY --log-level 2"));
    EXPECT_EQ(run.output, program(sample("-f json")).output);
    EXPECT_NE(run.log.find("[2] language: there are no texts in xx_YY; English is used"), std::string::npos);
}

TEST(Language, ChangesTextsAlone)
{
    const std::string run = "XDG_CONFIG_HOME=/nonexistent " PROGRAM " " + sample("-f ndjson");
    const auto english = shell("LC_ALL=C " + run).output;
    const auto german = shell("LC_ALL=de_AT.UTF-8 " + run).output;
    EXPECT_NE(german.find(R"("name":"Gehäuse")"), std::string::npos);
    const std::regex texts(R"re(([:[,])"(?!SMBIOS|0x)(\\.|[^"\\])*"(?=[\],}]))re"); // but for identifiers and numbers
    EXPECT_EQ(std::regex_replace(german, texts, "$1"), std::regex_replace(english, texts, "$1"));
    EXPECT_NE(shell("LANG=zh_CN.GB18030 LC_ALL= LC_MESSAGES= " PROGRAM " --nonsense").output.find("没有选项"),
              std::string::npos);
}

TEST(Text, ColoursAndWidthAreATerminals)
{
    if (shell("command -v script").exitCode != 0)
        GTEST_SKIP() << "script, which makes a terminal, is not installed";
    const auto onTerminal = [](const std::string& environment, const std::string& arguments) {
        return shell("script -qec 'stty cols 60; TERM=xterm LC_ALL=C " + environment + " " PROGRAM " " +
                     sample(arguments) + " 2>/dev/null' /dev/null")
            .output;
    };
    EXPECT_NE(onTerminal("", "").find("\x1B[1m"), std::string::npos);
    for (const char* plain : {"NO_COLOR=1", "TERM=dumb"}) {
        std::istringstream lines(onTerminal(plain, ""));
        for (std::string line; std::getline(lines, line);)
            EXPECT_TRUE(line.find('\x1B') == std::string::npos && embedded_host::services::columnsOf(line) <= 61)
                << line;
    }
    EXPECT_EQ(onTerminal("", "-o /dev/null"), "");
    EXPECT_EQ(program(sample("")).output.find('\x1B'), std::string::npos);
}

TEST(Text, AllShowsWhatTheLastLineCounts)
{
    const auto usual = program(kSample).output;
    const auto all = program(kSample + " --all").output;
    for (const char* other : {"    Structure type ", "    Socket populated ", "    Device set ", "    Size    "}) {
        EXPECT_EQ(usual.find(other), std::string::npos) << other;
        EXPECT_NE(all.find(other), std::string::npos) << other;
    }
    const auto lines = [](const std::string& text) { return std::count(text.begin(), text.end(), '\n'); };
    EXPECT_NE(usual.find("\n" + std::to_string(lines(all) - lines(usual)) + " lines not shown (--all); 5 structures "),
              std::string::npos)
        << "both have a last line";
}

TEST(Types, RestrictEveryForm)
{
    const auto memory = program(kSample + " -t memory").output;
    EXPECT_NE(memory.find("|- Memory Device  DIMM A2, empty\n"), std::string::npos);
    EXPECT_EQ(memory.find("Processor"), std::string::npos);
    const auto battery = program(kSample + " -t 22 --all").output;
    EXPECT_NE(battery.find("\n`- Group  Service panel\n   |- Battery  "), std::string::npos) << "the way to the root";
    EXPECT_EQ(battery.find("Group name"), std::string::npos);

    const auto types = [](const std::string& arguments) {
        std::multiset<int> found;
        const auto document = parsed(program(kSample + " -f json " + arguments).output);
        for (const auto& device : document["devices"].GetArray())
            found.insert(device["properties"]["smbios2_hdr_type"].GetInt());
        return found;
    };
    EXPECT_EQ(types("-t 4,22"), (std::multiset<int>{4, 4, 22, 22}));
    EXPECT_EQ(types("-t processor -t 22"), (std::multiset<int>{4, 4, 22, 22}));
    EXPECT_EQ(types("-t 200"), std::multiset<int>()) << "no fault";
    EXPECT_EQ(program(std::string(MACHINES_FOLDER "/sample_dell.dmi") + " -f ndjson -t 208").output.find("t17_"),
              std::string::npos);

    const TemporaryFolder folder;
    TableBuilder table;
    table.add(200, 0x0001, 0x06);
    table.add(201, 0x0002, 0x06);
    const auto file = folder.file("t", table.dump64(3, 2, 0)).string();
    EXPECT_EQ(program(file).output,
              "SMBIOS  3.2.0\n2 lines not shown (--all); 2 structures have no device: types 200, 201\n");
    EXPECT_EQ(program(file + " -t 200").output, "SMBIOS  3.2.0\n1 structure has no device: type 200\n");
}

TEST(Saving, OthersReadASavedTableAsTheOriginal)
{
    const bool haveDmidecode = shell("command -v dmidecode").exitCode == 0;
    const TemporaryFolder temporary;
    const auto saved = (temporary / "saved.dmi").string();
    for (const std::filesystem::path folder : {MACHINES_FOLDER, SHARED_FOLDER "/tables"}) {
        if (!std::filesystem::exists(folder))
            continue; // real machines' tables, beside some checkouts only
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            const auto original = entry.path().string();
            if (entry.path().extension() != ".dmi")
                continue;
            const auto first = program("-f json -s LoadTable=" + original + " -s SaveTable=" + saved);
            EXPECT_GT(parsed(first.output)["devices"].Size(), 4u) << original;
            EXPECT_EQ(program("-f json -s LoadTable=" + saved).output, first.output) << original;
            if (haveDmidecode && contentOf(original).starts_with("_")) {
                EXPECT_EQ(shell("dmidecode --from-dump " + saved).log, shell("dmidecode --from-dump " + original).log);
            }
        }
    }
}

} // namespace
