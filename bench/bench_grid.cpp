// How fast the grid does what a person waits for, by the number of rows: items are rows. Everything goes
// through the forms, down to the part table on disk and up to the solids of the drafting host. Rates are by
// processor time, so that other work on the machine doesn't change the ratios.
#include <benchmark/benchmark.h>

#include <functional>
#include <memory>
#include <string_view>

#include "grid/frm_main.h"
#include "grid/grid_columns.h"
#include "grid/quick_copy.h"
#include "part_jobs.h"
#include "query/list_driver.h"
#include "query/list_options.h"
#include "workshop.h"

namespace brenvik::bench {
namespace {

constexpr int MaterialColumn = 5;

void Rows(benchmark::internal::Benchmark* bench) {
    bench->ArgName("rows")->Arg(100)->Arg(1000)->Arg(10000);
    bench->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
}

int RowCount(const benchmark::State& state) { return static_cast<int>(state.range(0)); }

void CountRows(benchmark::State& state) { state.SetItemsProcessed(state.iterations() * RowCount(state)); }

/// The first list of a drawing: every board is measured, its row written, the grid bound.
void LoadList(benchmark::State& state) {
    for (auto step : state) {
        state.PauseTiming();
        auto workshop = std::make_unique<Workshop>();
        DrawBoards(*workshop, RowCount(state));
        state.ResumeTiming();
        workshop->WithList([&](frmMain& form) {
            state.PauseTiming();
            if (form.fpSpread1.MaxRows() != RowCount(state)) state.SkipWithError("rows are missing");
            state.ResumeTiming();
        });
        state.PauseTiming();
        workshop.reset();
        state.ResumeTiming();
    }
    CountRows(state);
}

/// Times `work` on a list that is open, and looks with `done` whether it did what it should.
void OnOpenList(benchmark::State& state, const std::function<void(frmMain&)>& work,
                const std::function<bool(const frmMain&)>& done) {
    Workshop workshop;
    DrawBoards(workshop, RowCount(state));
    workshop.WithList([&](frmMain& form) {
        for (auto step : state) work(form);
        if (!done(form)) state.SkipWithError("the list isn't as it should be");
    });
    CountRows(state);
}

bool CellIs(const frmMain& form, int column, int row, std::string_view text) {
    return form.fpSpread1.CellText(column, row) == text;
}

void SortList(benchmark::State& state) {
    const ListChoices choices = ParseListChoices("Length desc, Part Name", "", "");
    OnOpenList(
        state, [&](frmMain&) { ApplyListChoices(choices); },
        [](const frmMain& form) { return CellIs(form, LengthColumn, 1, "990"); });
}

void GroupList(benchmark::State& state) {
    const ListChoices choices = ParseListChoices("", "Part Name, Material", "");
    OnOpenList(
        state, [&](frmMain&) { ApplyListChoices(choices); },
        [](const frmMain& form) { return form.fpSpread1.MaxRows() == 20; });
}

void FilterList(benchmark::State& state) {
    const ListChoices choices = ParseListChoices("", "", "Material = Oak");
    OnOpenList(
        state, [&](frmMain&) { ApplyListChoices(choices); },
        [&](const frmMain& form) { return form.fpSpread1.MaxRows() == RowCount(state) / 4; });
}

void CopyCell(benchmark::State& state, int column, std::string_view text) {
    OnOpenList(
        state,
        [&](frmMain& form) {
            form.fpSpread1.SetActiveCell(column, 1);
            QuickCopy(form);
        },
        [&](const frmMain& form) { return CellIs(form, column, RowCount(state), text); });
}

void CopyMaterial(benchmark::State& state) { CopyCell(state, MaterialColumn, "Oak"); }

/// Letters take the sizes of every row along.
void CopyLetters(benchmark::State& state) { CopyCell(state, OrieColumn, "LWT"); }

void NumberParts(benchmark::State& state) {
    constexpr int partNumberColumn = 16;
    OnOpenList(
        state, [](frmMain& form) { form.AutoPN(); },
        [&](const frmMain& form) { return !CellIs(form, partNumberColumn, RowCount(state), ""); });
}

void ApplyToDrawing(benchmark::State& state) {
    OnOpenList(
        state, [](frmMain& form) { form.Apply(); }, [](const frmMain&) { return true; });
}

BENCHMARK(LoadList)->Apply(Rows);
BENCHMARK(SortList)->Apply(Rows);
BENCHMARK(GroupList)->Apply(Rows);
BENCHMARK(FilterList)->Apply(Rows);
BENCHMARK(CopyMaterial)->Apply(Rows);
BENCHMARK(CopyLetters)->Apply(Rows);
BENCHMARK(NumberParts)->Apply(Rows);
BENCHMARK(ApplyToDrawing)->Apply(Rows);

}  // namespace
}  // namespace brenvik::bench
