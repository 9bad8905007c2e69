// Benchmarks of a run's steps inside one process, over tables of four sizes. Items are structures.
#include "discovery.h"
#include "embedded_host/session.h"
#include "inventory/json_inventory.h"
#include "inventory/text_inventory.h"
#include "services/logging.h"
#include "smbios2.h"

#include <benchmark/benchmark.h>

namespace
{

using namespace embedded_host;
using Layout = inventory::JsonInventory::Layout;

std::string tableFile(const benchmark::State& state)
{
    auto file = BENCH_FOLDER "/" + std::to_string(state.range()) + ".dmi";
    if (!std::filesystem::exists(file))
        throw std::runtime_error(file + " is missing: cmake --build --preset bench");
    return file;
}

class NoDevices : public DeviceSink
{
    void take(DeviceRecord&& device) override { benchmark::DoNotOptimize(device); }
};

class NoOutput : public writing::Output
{
    void writeThrough(std::string_view text) override { benchmark::DoNotOptimize(text); }
    void complete() override {}
};

/// A discovery of the state's table, whatever settings this machine's user has.
void discoverInto(DeviceSink& sink, const benchmark::State& state)
{
    discover({{{"LoadTable", tableFile(state)}}, BENCH_FOLDER "/empty.ini"}, sink);
}

void countStructures(benchmark::State& state)
{
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * state.range());
}

void load(benchmark::State& state)
{
    const lum::String file(tableFile(state));
    for ([[maybe_unused]] const auto _ : state)
        benchmark::DoNotOptimize(libsmbios2::Smbios2::instance().loadTableFromFile(file, true));
    countStructures(state);
}

void discovery(benchmark::State& state)
{
    for ([[maybe_unused]] const auto _ : state) {
        NoDevices sink;
        discoverInto(sink, state);
    }
    countStructures(state);
}

template <class Inventory, auto form>
void print(benchmark::State& state)
{
    for ([[maybe_unused]] const auto _ : state) {
        NoOutput output;
        Inventory sink(output, form);
        discoverInto(sink, state);
        sink.end();
        output.finish();
    }
    countStructures(state);
}

void tableSizes(benchmark::internal::Benchmark* each)
{
    for (const int structures : {60, 1000, 10000, 60000})
        each->Arg(structures);
    each->Unit(benchmark::kMillisecond);
}

BENCHMARK(load)->Apply(tableSizes);
BENCHMARK(discovery)->Apply(tableSizes);
BENCHMARK(print<inventory::JsonInventory, Layout::Document>)->Name("json")->Apply(tableSizes);
BENCHMARK(print<inventory::JsonInventory, Layout::Lines>)->Name("ndjson")->Apply(tableSizes);
BENCHMARK(print<inventory::TextInventory, inventory::Detail::Usual>)->Name("text")->Apply(tableSizes);

} // namespace

int main(int argc, char* argv[])
{
    orb5::SysInfoModule::setDiscoverDevicesCallback(zorpsysinfosmbios2::DiscoverSMBIOS);
    services::setLogSink([](int, auto, auto) {}); // the sample makes the module warn
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
}
