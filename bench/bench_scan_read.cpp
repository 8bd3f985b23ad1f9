// How fast drawings are read and scanned, by the number of solids and of holes in each: items are solids.
// The modeller's bare STEP reader on the same file is the measure that our own is held against. Rates are
// by processor time, so that other work on the machine doesn't change the ratios.
#include <benchmark/benchmark.h>

#include "job_files.h"
#include "workshop.h"

#include <STEPCAFControl_Reader.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFApp_Application.hxx>

#include <memory>

namespace brenvik::bench {
namespace {

void Jobs(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"solids", "holes"})->ArgsProduct({{100, 1000}, {0, 10, 100}});
    bench->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
}

int Solids(const benchmark::State& state) { return static_cast<int>(state.range(0)); }

int Holes(const benchmark::State& state) { return static_cast<int>(state.range(1)); }

void CountSolids(benchmark::State& state, int perIteration) {
    state.SetItemsProcessed(state.iterations() * perIteration);
}

void ReadJob(benchmark::State& state, FileFormat format) {
    const std::filesystem::path file = JobFile(format, Solids(state), Holes(state));
    for (auto step : state) {
        auto host = std::make_unique<HostApplication>();
        host->OpenDrawing(file);
        state.PauseTiming();
        host.reset();
        state.ResumeTiming();
    }
    CountSolids(state, Solids(state));
}

void ReadDxfJob(benchmark::State& state) { ReadJob(state, FileFormat::Dxf); }

void ReadStepJob(benchmark::State& state) { ReadJob(state, FileFormat::Step); }

void ReadStepBare(benchmark::State& state) {
    const std::filesystem::path file = JobFile(FileFormat::Step, Solids(state), Holes(state));
    const opencascade::handle<XCAFApp_Application> application = XCAFApp_Application::GetApplication();
    for (auto step : state) {
        opencascade::handle<TDocStd_Document> document;
        application->NewDocument("BinXCAF", document);
        STEPCAFControl_Reader reader;
        if (reader.ReadFile(file.c_str()) != IFSelect_RetDone || !reader.Transfer(document))
            state.SkipWithError("the modeller can't read the file");
        state.PauseTiming();
        application->Close(document);
        state.ResumeTiming();
    }
    CountSolids(state, Solids(state));
}

// From the selection to the list: part data, measuring, the table, the grid. Every solid has been measured
// once before, as when a person opens the list again.
void ScanJob(benchmark::State& state) {
    Workshop workshop;
    workshop.Host().OpenDrawing(JobFile(FileFormat::Dxf, Solids(state), Holes(state)));
    workshop.SelectSolids();
    workshop.Scan();
    for (auto step : state) {
        workshop.SelectSolids();
        if (workshop.Scan() != Solids(state)) state.SkipWithError("solids are missing in the list");
    }
    CountSolids(state, Solids(state));
}

// The first scan of a drawing just read: nothing has been measured before.
void FirstScanJob(benchmark::State& state) {
    const std::filesystem::path file = JobFile(FileFormat::Dxf, Solids(state), Holes(state));
    for (auto step : state) {
        state.PauseTiming();
        auto workshop = std::make_unique<Workshop>();
        workshop->Host().OpenDrawing(file);
        workshop->SelectSolids();
        state.ResumeTiming();
        if (workshop->Scan() != Solids(state)) state.SkipWithError("solids are missing in the list");
        state.PauseTiming();
        workshop.reset();
        state.ResumeTiming();
    }
    CountSolids(state, Solids(state));
}

BENCHMARK(ReadDxfJob)->Apply(Jobs);
BENCHMARK(ReadStepJob)->Apply(Jobs);
BENCHMARK(ReadStepBare)->Apply(Jobs);
BENCHMARK(FirstScanJob)->Apply(Jobs);
BENCHMARK(ScanJob)->Apply(Jobs);

}  // namespace
}  // namespace brenvik::bench
