// Binary forms against the text of the same content: drawings (DWG and DXF of the sample files, entities a
// second) and ACIS bodies (binary data and text, solids a second). Rates are by processor time.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "drafting_host/dwg/dwg_reader.h"
#include "drafting_host/dxf/reading/dxf_reader.h"
#include "job_files.h"
#include "support/binary_acis.h"

#include "drafting_host/acis/acis_text.h"

namespace brenvik::bench {
namespace {

std::string ContentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::int64_t EntitiesOf(const DrawingData& data) {
    std::int64_t count = 0;
    for (const BlockData& block : data.blocks) count += static_cast<std::int64_t>(block.entities.size());
    return count;
}

/// Releases of which the samples hold the same drawing in both forms.
constexpr int releases[] = {1015, 1018, 1024, 1027, 1032};

template <class Read>
void ReadSample(benchmark::State& state, const std::string& folder, const std::string& ending, Read read) {
    const std::string name = "ACadSharp__sample_AC" + std::to_string(state.range(0)) + ending;
    const std::filesystem::path path = std::filesystem::path(BRENVIK_SAMPLES) / folder / name;
    const std::string content = ContentOf(path);
    if (content.empty()) return state.SkipWithError(("no sample at " + path.string()).c_str());
    std::int64_t entities = 0;
    for (auto step : state) entities = EntitiesOf(read(content, name));
    state.SetItemsProcessed(state.iterations() * entities);
    state.counters["bytes"] = static_cast<double>(content.size());
}

void ReadDwgSample(benchmark::State& state) {
    ReadSample(state, "dwg", ".dwg",
               [](std::string_view content, const std::string& name) { return ReadDwg(content, name); });
}

void ReadDxfSample(benchmark::State& state) {
    ReadSample(state, "dxf", "_ascii.dxf",
               [](std::string_view content, const std::string& name) { return ReadDxf(content, name); });
}

void Releases(benchmark::internal::Benchmark* bench) {
    bench->ArgName("release")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
    for (const int release : releases) bench->Arg(release);
}

/// The bodies of a job, each as ACIS text.
std::vector<std::string> Bodies(int holes) {
    constexpr int solids = 100;
    const std::filesystem::path file = JobFile(FileFormat::Dxf, solids, holes);
    std::vector<std::string> bodies;
    const DrawingData data = ReadDxf(ContentOf(file), file.string());
    for (const EntityData& entity : data.blocks.front().entities)
        if (const auto* body = std::get_if<AcisData>(&entity.geometry)) bodies.push_back(body->text);
    return bodies;
}

void ReadBodies(benchmark::State& state, bool isBinary) {
    std::vector<std::string> bodies = Bodies(static_cast<int>(state.range(0)));
    if (isBinary)
        for (std::string& body : bodies) body = test::BinaryAcis(body);
    for (auto step : state)
        for (const std::string& body : bodies) benchmark::DoNotOptimize(acis::ReadText(body));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(bodies.size()));
}

void ReadAcisText(benchmark::State& state) { ReadBodies(state, false); }
void ReadAcisBinary(benchmark::State& state) { ReadBodies(state, true); }

void Holes(benchmark::internal::Benchmark* bench) {
    bench->ArgName("holes")
        ->Arg(0)
        ->Arg(10)
        ->Arg(100)
        ->Unit(benchmark::kMillisecond)
        ->MeasureProcessCPUTime();
}

BENCHMARK(ReadDwgSample)->Apply(Releases);
BENCHMARK(ReadDxfSample)->Apply(Releases);
BENCHMARK(ReadAcisText)->Apply(Holes);
BENCHMARK(ReadAcisBinary)->Apply(Holes);

}  // namespace
}  // namespace brenvik::bench
