// How fast a list goes out as a CSV file, by the number of rows and of adjustments: items are rows. Each run
// is a whole export through its dialog: adjustments and profile read, the statement, the lines, the file.
// Rates are by processor time, so that other work on the machine doesn't change the ratios.
#include <benchmark/benchmark.h>

#include <ostream>
#include <string>

#include "export/adjustment_file.h"
#include "export/export_options.h"
#include "export/profiles.h"
#include "grid/frm_main.h"
#include "part_jobs.h"
#include "workshop.h"

namespace brenvik::bench {
namespace {

constexpr std::string_view Profile =
    "[Saw]\nextension=csv\n"
    "columns=PN,QTY,Part Name,Sub Assembly,Material,Length,Width,Thickness,L x W x T,Notes,EB1,EB2\n";

/// Sections with two criteria each, of which every row meets some.
std::string Adjustments(int count) {
    constexpr std::size_t partName = 2, material = 4, length = 20, width = 21;
    std::string text;
    for (int number = 0; number < count; ++number) {
        AdjustmentRow row(AdjustmentColumnCount);
        row.front() = "Adjustment " + std::to_string(number);
        row[partName] = "Shelf " + std::to_string(number % 20);
        row[material] = number % 2 == 0 ? "Oak" : "Birch";
        row[length] = "2.5";
        row[width] = "-1";
        text += AdjustmentText(row, "\r\n");
    }
    return text;
}

void ExportList(benchmark::State& state) {
    // Each export tells that it is done.
    std::ostream nowhere(nullptr);
    Workshop workshop(nowhere);
    DrawBoards(workshop, 1);
    workshop.InstallFile(CsvProfileFile, Profile);
    CsvExportChoices choices;
    choices.path = workshop.InstallFile("list.csv", "");
    choices.profile = "Saw";
    choices.fractions = state.range(2) != 0;
    choices.adjustments =
        workshop.InstallFile("adjustments.txt", Adjustments(static_cast<int>(state.range(1))));
    workshop.WithList([&](frmMain&) {
        AddRows(static_cast<int>(state.range(0)) - 1);
        for (auto step : state)
            if (!ExportToCsv(choices)) state.SkipWithError("the export didn't go to its end");
    });
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(ExportList)
    ->ArgNames({"rows", "adjustments", "fractions"})
    ->ArgsProduct({{1000, 100000}, {0, 200}, {0, 1}})
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime();

}  // namespace
}  // namespace brenvik::bench
