// How fast a job goes through a run, from the selection to the files and the list: by the number of holes in
// each panel, by the number of panels in the job, for panels that need a second pass, for each target, and
// with the proof of the parts left out. Items are parts. "with" and "without" are the milliseconds of a part
// with and without its proof, and "percent" is what the proof adds. "MB" is the memory that the run has taken
// on between its tenth part and its last one.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include "cnc/part/run_report.h"
#include "cnc/part/target.h"
#include "cnc/proof/run_proof.h"
#include "job_files.h"
#include "session/library/cnc_commands.h"
#include "settings/materials.h"
#include "settings/settings_store.h"
#include "workshop.h"

#include <cstddef>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <span>
#include <sstream>
#include <string>

namespace brenvik::bench {
namespace {

constexpr int SettledPart = 10;  // By then everything that is made once has been made.

double MegabytesInUse() {
    std::ifstream memory("/proc/self/statm");
    double inAll = 0, resident = 0;
    memory >> inAll >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1024 * 1024);
}

// A shop in millimetres that has the panels' material and three bits.
void EquipShop(Workshop& workshop) {
    CreateInitialSettings(MeasureUnits::Metric, workshop.Files().InstallFolder(), true);
    MaterialTexts oak{"18 OAK", "0", "cc"};
    constexpr std::size_t firstTool = 3, fieldsOfATool = 4;
    constexpr std::size_t tools = 3;
    const std::string diameters[tools] = {"12", "6", "3"};
    for (std::size_t tool = 0; tool < tools; ++tool) {
        const std::size_t field = firstTool + fieldsOfATool * tool;
        oak[field] = std::to_string(tool + 1);
        oak[field + 1] = diameters[tool];
        oak[field + 2] = "18000";
        oak[field + 3] = "300";
    }
    workshop.Files().WriteFile(MaterialsPath(), MaterialsText(std::span(&oak, 1), "\r\n"));
}

// A run over the whole job; whether every part has come out with all its features.
bool RunJob(Workshop& workshop, Target target, double& settledMegabytes) {
    ObserveRuns([&settledMegabytes](const RunProgress& progress) {
        if (progress.part == SettledPart) settledMegabytes = MegabytesInUse();
    });
    RunReport report;
    ObserveRunEnds([&report](const RunReport& ended) { report = ended; });
    RunOnSelection(workshop.Host(), target, GridBeforeRuns());
    ObserveRunEnds({});
    return report.complete && report.unexplained.empty() && report.passedOver.empty() &&
           report.skipped.empty();
}

void RunParts(benchmark::State& state, int parts, const std::filesystem::path& file, Target target) {
    std::ostringstream told;
    Workshop workshop(told);
    EquipShop(workshop);
    workshop.Host().OpenDrawing(file);
    workshop.SelectSolids();
    double settled = MegabytesInUse();
    for (auto step : state)
        if (!RunJob(workshop, target, settled)) state.SkipWithError(told.str().c_str());
    state.SetItemsProcessed(state.iterations() * parts);
    state.counters["MB"] = MegabytesInUse() - settled;
}

void RunJobOfPanels(benchmark::State& state) {
    const int parts = static_cast<int>(state.range(0)), holes = static_cast<int>(state.range(1));
    RunParts(state, parts, MachinedJobFile(parts, holes, Machining::OneSide), Target::C2C);
}

void RunJobOfTwoSides(benchmark::State& state) {
    const int parts = static_cast<int>(state.range(0)), holes = static_cast<int>(state.range(1));
    RunParts(state, parts, MachinedJobFile(parts, holes, Machining::BothSides), Target::C2C);
}

// To be read beside the same jobs with their proof.
void RunJobWithoutProof(benchmark::State& state) {
    SetProof(false);
    RunJobOfPanels(state);
    SetProof(true);
}

void RunTwoSidesWithoutProof(benchmark::State& state) {
    SetProof(false);
    RunJobOfTwoSides(state);
    SetProof(true);
}

/// Processor time of one run over the job, in milliseconds.
double TimeOfRun(Workshop& workshop, bool proof) {
    double settled = 0;
    SetProof(proof);
    const std::clock_t from = std::clock();
    RunJob(workshop, Target::C2C, settled);
    const std::clock_t to = std::clock();
    SetProof(true);
    return 1000.0 * static_cast<double>(to - from) / CLOCKS_PER_SEC;
}

// What the proof costs a part, with the same job run both ways in turn so that both see the same machine.
void ProofOfAPart(benchmark::State& state) {
    constexpr int parts = 10;
    const int holes = static_cast<int>(state.range(1));
    const Machining machining = state.range(0) == 1 ? Machining::OneSide : Machining::BothSides;
    std::ostringstream told;
    Workshop workshop(told);
    EquipShop(workshop);
    workshop.Host().OpenDrawing(MachinedJobFile(parts, holes, machining));
    workshop.SelectSolids();
    TimeOfRun(workshop, true);
    double with = 0, without = 0;
    for (auto step : state) {
        without += TimeOfRun(workshop, false);
        with += TimeOfRun(workshop, true);
    }
    const double runs = static_cast<double>(state.iterations()) * parts;
    state.counters["with"] = with / runs;
    state.counters["without"] = without / runs;
    state.counters["percent"] = 100 * (with - without) / without;
}

void RunJobForTarget(benchmark::State& state) {
    constexpr int parts = 10, holes = 40;
    const auto target = static_cast<Target>(state.range(0));
    RunParts(state, parts, MachinedJobFile(parts, holes, Machining::OneSide), target);
}

void Processor(benchmark::internal::Benchmark* bench) {
    bench->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
}

void Jobs(benchmark::internal::Benchmark* bench) {
    Processor(bench);
    bench->ArgNames({"parts", "holes"});
    for (const int holes : {0, 10, 40, 100}) bench->Args({10, holes});
    // A job of this size says enough at once.
    for (const int parts : {100, 500}) bench->Args({parts, 40});
}

BENCHMARK(RunJobOfPanels)->Apply(Jobs);
BENCHMARK(RunJobOfTwoSides)->Apply(Processor)->ArgNames({"parts", "holes"})->Args({10, 40});
BENCHMARK(RunJobWithoutProof)->Apply(Jobs);
BENCHMARK(RunTwoSidesWithoutProof)->Apply(Processor)->ArgNames({"parts", "holes"})->Args({10, 40});
BENCHMARK(ProofOfAPart)
    ->Apply(Processor)
    ->Iterations(5)
    ->ArgNames({"sides", "holes"})
    ->Args({1, 40})
    ->Args({2, 40})
    ->Args({2, 200});
BENCHMARK(RunJobForTarget)->Apply(Processor)->ArgName("target")->DenseRange(1, AllTargets.size());

}  // namespace
}  // namespace brenvik::bench
