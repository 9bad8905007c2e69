// zorpinventory record
#include "commands.h"

#include "compare/changes.h"
#include "document/problem.h"
#include "platform/journal.h"
#include "platform/surroundings.h"
#include "tell/history.h"

#include <chrono>
#include <cstdio>
#include <utility>

namespace zorpinventory::commands
{

namespace
{

using commandline::Arguments;
using commandline::Option;
using embedded_host::services::message;
using embedded_host::services::translatable;
using embedded_host::writing::JsonWriter;
using embedded_host::writing::Output;

constexpr Option kAt{.names = "--at",
                     .value = "TIME",
                     .says = translatable("when the machine was so, in UTC: 2026-11-01 or 2026-11-01T08:30:00Z; "
                                          "otherwise now")};
constexpr Option kJournal{.names = "--journal",
                          .says = translatable("tell it to the system's journal instead of standard output")};
constexpr Option kOptions[] = {
    commandline::kFormat,  kAt, kJournal, commandline::kMachine, commandline::kDatabase, commandline::kOutput,
    commandline::kLanguage};

/// How far it is, on a terminal, for whoever waits longer than a second.
class Progress
{
public:
    void expect(std::size_t all) { all_ = all; }

    void step()
    {
        ++done_;
        const auto now = Clock::now();
        if (!isSeen_ || now - told_ < std::chrono::seconds(1))
            return;
        told_ = now;
        isTold_ = true;
        std::fprintf(stderr, "\r%zu / %zu", done_, all_);
    }

    /// Leaves the line to others.
    void clear()
    {
        if (std::exchange(isTold_, false))
            std::fputs("\r\x1B[K", stderr);
    }

private:
    using Clock = std::chrono::steady_clock;

    bool isSeen_ = embedded_host::platform::isTerminal(embedded_host::platform::Stream::Errors);
    bool isTold_ = false;
    Clock::time_point told_ = Clock::now();
    std::size_t all_ = 0;
    std::size_t done_ = 0;
};

/// A text in the making.
class Text : public Output
{
public:
    const std::string& text() const { return text_; }

private:
    void writeThrough(std::string_view text) override { text_ += text; }
    void complete() override {}

    std::string text_;
};

/// One entry for each record: what it is about and how much it matters has names and numbers that stay.
void tellJournal(const tell::RecordChanges& recorded)
{
    constexpr const char* kRecorded = "0d8c1f5e7a3b4c6299e1b7d04a5f2c83";
    constexpr const char* kChanged = "5c6f7a1b2de34a0f9b0d2e8c4f716a35";
    constexpr const char* kInformation = "6";
    constexpr const char* kWarning = "4";
    Text text;
    tell::recordedAsText(text, recorded, {});
    text.finish();
    const bool isChanged = !recorded.changes.empty();
    const std::pair<std::string_view, std::string> fields[] = {{"MESSAGE", std::string(document::trimmed(text.text()))},
                                                               {"MESSAGE_ID", isChanged ? kChanged : kRecorded},
                                                               {"PRIORITY", isChanged ? kWarning : kInformation},
                                                               {"SYSLOG_IDENTIFIER", "zorpinventory"},
                                                               {"ZORP_MACHINE", recorded.record.machine},
                                                               {"ZORP_RECORD", std::to_string(recorded.record.number)}};
    try {
        embedded_host::platform::tellJournal(fields);
    } catch (const std::system_error& error) {
        throw Problem(
            message("cannot write %1: %2", message("the system's journal"), embedded_host::services::reason(error)));
    }
}

/// Takes sightings, keeps them in portions, and tells what is kept.
class Recorder
{
public:
    Recorder(history::History& history, Output& output, const Arguments& arguments)
        : history_(history), output_(output), arguments_(arguments), json_(output),
          at_(time(arguments, kAt, history::Of::DaysBegin))
    {
        if (!isJson())
            return;
        json_.beginObject();
        json_.member("format", "zorp-record-1");
        json_.key("records");
        json_.beginArray();
    }

    void record(const std::vector<std::string>& sources)
    {
        sources::seeAll(
            sources, place(arguments_), [&](std::size_t all) { progress_.expect(all); },
            [&](const sources::Sighting& sighting, const std::string& text) { take(sighting, text); },
            [&](const std::string& sentence) { fail(sentence); });
        keep();
        progress_.clear();
        if (isJson()) {
            json_.endArray();
            json_.endObject();
            json_.endLine();
        }
    }

    Exit exit() const
    {
        if (anyFailed_)
            return Exit::Problem;
        return anyChanged_ ? Exit::Otherwise : Exit::Good;
    }

    /// Why what is kept could not be told; null when it could.
    std::exception_ptr untold() const { return untold_; }

private:
    bool isJson() const { return arguments_.json() && !arguments_.has(kJournal.key()); }

    void take(const sources::Sighting& sighting, const std::string& text)
    {
        constexpr std::size_t kMostSnapshots = 256;
        constexpr std::size_t kMostBytes = 0x1000000;
        constexpr std::chrono::seconds kLongest(2);
        if (sighting.machine.empty()) {
            fail(message("%1 has neither a serial number nor a UUID of its own; name the machine with --machine",
                         sources::nameOf(sighting.source)));
            return;
        }
        if (snapshots_.empty())
            begun_ = std::chrono::steady_clock::now();
        snapshots_.push_back({sighting.machine, at_.value_or(sighting.taken.empty() ? history::now() : sighting.taken),
                              sighting.source, document::partsOf(text), history::serialsOf(sighting.document)});
        bytes_ += text.size();
        progress_.step();
        if (snapshots_.size() == kMostSnapshots || bytes_ > kMostBytes ||
            std::chrono::steady_clock::now() - begun_ > kLongest)
            keep();
    }

    void fail(const std::string& sentence)
    {
        progress_.clear();
        note(sentence);
        anyFailed_ = true;
    }

    /// A portion is in the history before anybody hears of it.
    void keep()
    {
        if (snapshots_.empty())
            return;
        const auto kept = history_.keep(snapshots_);
        snapshots_.clear();
        bytes_ = 0;
        for (const auto& each : kept)
            tell(each);
        if (!untold_)
            telling([&] { output_.flush(); });
    }

    void tell(const history::Kept& kept)
    {
        std::optional<document::Document> a;
        std::optional<document::Document> b;
        tell::RecordChanges recorded{kept.record, kept.before, {}};
        if (kept.before && kept.before->document != kept.record.document) {
            a = document::read(history_.text(*kept.before), history_.name());
            b = document::read(history_.text(kept.record), history_.name());
            recorded.changes = compare::changes(*a, *b);
        }
        anyChanged_ = anyChanged_ || !recorded.changes.empty();
        if (arguments_.has(kJournal.key()))
            tellJournal(recorded);
        if (untold_ || arguments_.has(kJournal.key()))
            return;
        progress_.clear();
        telling([&] {
            if (arguments_.json())
                tell::recordAsJson(json_, recorded);
            else
                tell::recordedAsText(output_, recorded, looks(arguments_));
        });
    }

    /// Whoever does not hear of it does not keep it from being recorded.
    template <class Telling>
    void telling(Telling telling)
    {
        try {
            telling();
        } catch (const std::system_error&) {
            untold_ = std::current_exception();
        }
    }

    history::History& history_;
    Output& output_;
    const Arguments& arguments_;
    JsonWriter json_;
    std::optional<std::string> at_;
    Progress progress_;
    std::vector<history::Snapshot> snapshots_;
    std::size_t bytes_ = 0;
    std::chrono::steady_clock::time_point begun_;
    std::exception_ptr untold_;
    bool anyFailed_ = false;
    bool anyChanged_ = false;
};

Exit run(const Arguments& arguments)
{
    const auto sources =
        arguments.sources.empty() ? std::vector<std::string>{sources::kThisMachine} : arguments.sources;
    Exit exit = Exit::Good;
    write(arguments, [&](Output& output) {
        history::History history(place(arguments).file(), history::Access::Change);
        Recorder recorder(history, output, arguments);
        recorder.record(sources);
        exit = recorder.exit();
        if (recorder.untold())
            std::rethrow_exception(recorder.untold());
    });
    return exit;
}

} // namespace

const commandline::Command kRecord{.name = "record",
                                   .says = translatable("keep this machine, or what is named, in the history, and tell "
                                                        "what changed since the last time"),
                                   .sources = "[SOURCE]...",
                                   .leastSources = 0,
                                   .mostSources = static_cast<std::size_t>(-1),
                                   .options = kOptions,
                                   .good = translatable("recorded; it is the first record, or nothing changed"),
                                   .otherwise = translatable("recorded; something changed"),
                                   .run = run};

} // namespace zorpinventory::commands
