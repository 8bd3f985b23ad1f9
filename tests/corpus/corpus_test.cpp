// Every panel of the lots comes out as it is drawn, or its run tells; nothing is ever cut into wood that
// stays. BRENVIK_CORPUS_PANELS says how many panels of each lot (50), BRENVIK_CORPUS_FROM which is the first
// (0).
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>

#include "base/number_text.h"
#include "base/text.h"
#include "cnc/run/runs.h"
#include "corpus/file_checker.h"
#include "corpus/lot.h"
#include "corpus/panel_generator.h"
#include "drafting_host/document/files/drawing_files.h"
#include "session/library/cnc_commands.h"

namespace brenvik::corpus {
namespace {

constexpr int PanelsPerLot = 50;

int NumberFrom(const char* variable, int otherwise) {
    const char* const text = std::getenv(variable);
    return text == nullptr ? otherwise : std::atoi(text);
}

/// A lot of panels, and the share of it that has to come out whole.
struct CorpusLot {
    const char* name;
    Contacts contacts;
    bool clearCores = true;
    int wholePercent = 0;
    int cutInto = 0;  ///< How many are known to lose wood that stays, each told.
};
constexpr std::array Lots{CorpusLot{"OneKind", Contacts::OneKind, true, 98},
                          CorpusLot{"Apart", Contacts::Apart, true, 95},
                          CorpusLot{"Touching", Contacts::Touching, true, 94},
                          CorpusLot{"Overlapping", Contacts::Overlapping, true, 90},
                          // Routes leave what their bit doesn't reach.
                          CorpusLot{"Cores", Contacts::OneKind, false}};

void PrintTo(const CorpusLot& lot, std::ostream* out) { *out << lot.name; }

struct Share {
    /// `narrow` are those that are cut as they are drawn but for places that the bit doesn't get into.
    int exact = 0, told = 0, narrow = 0, cutInto = 0;
    int Percent() const { return exact + told == 0 ? 100 : 100 * exact / (exact + told); }
};

class Corpus : public CncTest, public ::testing::WithParamInterface<CorpusLot> {
  protected:
    /// Asked about a path with a side shorter than every bit, as one between two features that nearly meet,
    /// the operator clears it with the narrowest bit; what that one leaves is judged like all else.
    static void TakeNarrowestBit(Form& form) {
        form.Get<CheckControl>("Option6").SetValue(1);
        form.Get<Control>("cmdAccept").onClick();
    }

    /// Not so where features overlap to take a whole edge away: that is another panel, smaller by it.
    static bool HasItsSize(const Acad3DSolid& solid, const Panel& panel) {
        const Box3 box = solid.GetBoundingBox();
        const auto same = [](double a, double b) { return std::abs(a - b) < 1e-6; };
        return same(box.max.x - box.min.x, panel.length) && same(box.max.y - box.min.y, panel.width) &&
               same(box.max.z - box.min.z, panel.thickness);
    }

    /// Turned about any way, some square to the world.
    static void LayByLot(Acad3DSolid& solid, Lot& lot) {
        const auto angle = [&lot] { return lot.OneIn(2) ? lot.Below(4) * 90.0 : lot.Between(-180, 180); };
        if (!lot.OneIn(3))
            Lay(solid, angle(), angle(), angle(), {lot.Between(-900, 900), lot.Between(-900, 900), 5});
    }

    std::optional<std::vector<Drawn>> FileOf(std::string_view folder, std::string_view pattern) {
        const std::vector<std::string> names = FilesIn(folder, pattern);
        if (names.empty()) return std::nullopt;
        return Read(std::string(folder) + names.front());
    }

    /// What the run has told, in boxes and at its end.
    std::string Told() const {
        const RunReport& report = LastRunReport();
        std::vector<std::string> told = report.skipped;
        told.insert(told.end(), report.unexplained.begin(), report.unexplained.end());
        told.insert(told.end(), report.passedOver.begin(), report.passedOver.end());
        if (!report.complete) told.emplace_back("the run didn't end");
        return Join(told, "\n");
    }

    /// The drawing of a panel, for trials with the program.
    void SaveForTrial(std::uint32_t number) {
        const char* const folder = std::getenv("BRENVIK_CORPUS_SAVE");
        if (folder == nullptr) return;
        SaveDrawing(document, std::filesystem::path(folder) /
                                  (std::string(GetParam().name) + std::to_string(number) + ".dxf"));
    }

    static bool IsAboutBits(const std::string& told) {
        const std::vector<std::string> texts = Split(told, ';');
        return std::ranges::all_of(texts, [](const std::string& text) {
            return text.find("is too narrow for its bit") != std::string::npos;
        });
    }

    /// Runs one panel and judges it.
    void Look(const DrawnPanel& drawn, std::uint32_t number, std::map<std::string_view, Share>& shares) {
        SCOPED_TRACE(std::string(GetParam().name) + " " + std::to_string(number) + ": " + drawn.panel.Text());
        Lot lot(number + 77);
        AddLayer(document, "Parts");
        Acad3DSolid& solid = BuildSolid(drawn.panel, document.ModelSpace());
        if (!HasItsSize(solid, drawn.panel)) {
            solid.Delete();
            return;
        }
        GivePartData(solid, "Panel", lot.OneIn(2) ? "LWT" : "WLT");
        LayByLot(solid, lot);
        Choose({&solid});
        dialogs.messages.clear();
        dialogs.onModal = TakeNarrowestBit;
        SaveForTrial(number);
        RunOnSelection(host, Target::C2C, GridBeforeRuns());
        const std::string told = Told();
        const auto first = FileOf(OutputFolder, "Part_0_*.dxf"),
                   second = FileOf(SecondSideFolder, "BPart_0_*.dxf");
        Findings findings;
        if (first)
            findings = CheckFiles(drawn.panel, *first, second);
        else
            EXPECT_NE(told, "") << "no file";
        EXPECT_TRUE(!told.empty() || findings.Exact()) << "silent: " << findings.Text();
        Share& share = shares[drawn.kind];
        ++(told.empty() ? share.exact : IsAboutBits(told) ? share.narrow : share.told);
        share.cutInto += findings.gone.empty() ? 0 : 1;
        if ((std::getenv("BRENVIK_CORPUS_TELL") != nullptr && !told.empty()) || !findings.gone.empty())
            std::cout << number << " " << drawn.panel.Text() << "\n  told: " << told
                      << "\n  boxes: " << Join(Messages(), " | ") << "\n  found: " << findings.Text() << "\n";
        solid.Delete();
    }
};

TEST_P(Corpus, ComesOutAsItIsDrawnOrIsTold) {
    WriteMaterials({"16", "18", "19.05", "25"}, std::array{12.0, 6.0, 3.0});
    Set("ClearCores", GetParam().clearCores ? "1" : "0");
    const int panels = NumberFrom("BRENVIK_CORPUS_PANELS", PanelsPerLot);
    const int begin = NumberFrom("BRENVIK_CORPUS_FROM", 0);
    ASSERT_GT(panels, 0);
    std::map<std::string_view, Share> shares;
    for (int i = begin; i < begin + panels; ++i) {
        const auto number = static_cast<std::uint32_t>(i);
        Look(DrawPanel(GetParam().contacts, number), number, shares);
    }
    Share all;
    for (const auto& [kind, share] : shares) {
        all.exact += share.exact;
        all.told += share.told;
        all.narrow += share.narrow;
        all.cutInto += share.cutInto;
        if (!kind.empty())
            std::cout << "  " << kind << ": " << share.exact << " exact, " << share.told << " told\n";
    }
    std::cout << GetParam().name << ": " << all.exact << " exact, " << all.told << " told, of these "
              << all.cutInto << " cut into wood that stays\n";
    std::cout << "  and " << all.narrow << " told for places that are too narrow for the bit alone\n";
    EXPECT_LE(all.cutInto, GetParam().cutInto);
    EXPECT_GE(all.Percent(), GetParam().wholePercent);
}

INSTANTIATE_TEST_SUITE_P(All, Corpus, ::testing::ValuesIn(Lots),
                         [](const auto& one) { return std::string(one.param.name); });

}  // namespace
}  // namespace brenvik::corpus
