// From the run's state to the proof, and from its spots to the operator's words.
#include "cnc/proof/run_proof.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <span>

#include "base/failure.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/skip.h"
#include "base/text.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/part/lengths.h"
#include "cnc/part/run_state.h"
#include "cnc/part/told.h"
#include "cnc/plan/plan_sides.h"
#include "cnc/proof/reach_checks.h"
#include "cnc/proof/single_operations.h"
#include "session/module_state.h"
#include "session/ports/platform.h"
#include "session/session.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

/// How many differences of one part are reported; a part that is wrong all over has hundreds.
constexpr std::size_t MostTold = 12;
/// In millimetres: by how much a bit may be wider than a neck and get in, since widths are found by halving.
constexpr double FitSlack = 0.01;

struct ProofModule {
    bool off = false;
};

bool OpensUp(const ProofSpot& spot, const RunState& run, double slack) {
    return spot.box.max.z > run.part.proof->thickness - slack;
}
bool OpensDown(const ProofSpot& spot, double slack) { return spot.box.min.z < slack; }

std::string Place(const ProofSpot& spot, const RunState& run) {
    const double slack = 0.02 * UnitOf(run);
    const Point3 &low = spot.box.min, &high = spot.box.max;
    const std::string size = ReportedLength(high.x - low.x) + " by " + ReportedLength(high.y - low.y);
    const std::string span =
        " from " + ReportedPlace({low.x, low.y}) + " to " + ReportedPlace({high.x, high.y});
    const std::string depth = ReportedLength(high.z - low.z);
    const bool up = OpensUp(spot, run, slack), down = OpensDown(spot, slack);
    if (up && down) return size + ", right through," + span;
    if (up) return size + ", " + depth + " deep," + span + " on the top face";
    if (down) return size + ", " + depth + " deep," + span + " on the underside";
    return size + ", " + depth + " high," + span + ", " + ReportedLength(low.z) + " above the underside";
}

/// Where pockets are turned into routes on purpose, the setting has no say.
bool MayBecomePockets() { return !SwitchIsOn(setting::ClearCores) && !SwitchIsOn(setting::PocketConversion); }

/// Good to a hundredth of a millimetre.
std::string Width(double width, const RunState& run) {
    return NumberToText(RoundHalfEven(width, run.Metric() ? 2 : 3));
}

/// Which bit gets in: of the part's material, or if none of those does, any.
std::string BitThatGetsIn(double widest, const RunState& run) {
    if (widest <= 0) return {};
    double best = 0;
    for (const MaterialTool& tool : run.part.Material.tools) {
        const bool there = !tool.number.empty() && Trim(tool.number) != "0";
        if (there && tool.diameter <= widest + FitSlack * UnitOf(run)) best = std::max(best, tool.diameter);
    }
    if (best > 0) return " (the material's bit of " + ReportedLength(best) + " gets in)";
    return " (one of " + Width(widest, run) + " would get in, and the material has none so narrow)";
}

std::string WhyItStays(const ProofSpot& spot, const std::string& cause, const RunState& run) {
    if (spot.inCorner)
        return ", where the bit of " + ReportedLength(spot.bit) + " leaves a corner of " + cause +
               " round that is none of the part";
    if (spot.notReached)
        return ", where " + cause + " is too narrow for its bit of " + ReportedLength(spot.bit) +
               BitThatGetsIn(spot.wouldReach, run);
    if (spot.bit > 0)
        return ", in the middle of " + cause + ", whose bit of " + ReportedLength(spot.bit) +
               " does not reach it" + (MayBecomePockets() ? " (a pocket with the setting ClearCores)" : "");
    return {};
}

std::string TextOf(const ProofSpot& spot, const RunState& run) {
    const std::string cause =
        (spot.layer.empty() ? "the outline" : spot.layer) + (spot.secondSide ? " of the second side" : "");
    switch (spot.difference) {
        case Difference::Standing:
            return "wood stays that the part has not, " + Place(spot, run) + WhyItStays(spot, cause, run);
        case Difference::Gone:
            return "wood is cut away that the part has, " + Place(spot, run) + ", by " + cause;
        case Difference::Sought:
            return cause + " leads into wood that the part has, " + Place(spot, run) +
                   ", where it is too narrow for its bit of " + ReportedLength(spot.bit);
    }
    return {};
}

bool Touches(const Box3& place, const Box3& spot, double slack) {
    const auto lap = [slack](double low, double high, double otherLow, double otherHigh) {
        return low <= otherHigh + slack && high >= otherLow - slack;
    };
    return lap(place.min.x, place.max.x, spot.min.x, spot.max.x) &&
           lap(place.min.y, place.max.y, spot.min.y, spot.max.y) &&
           lap(place.min.z, place.max.z, spot.min.z, spot.max.z);
}

/// Whether boxes hold all of another one together, as seen from above.
bool Cover(std::span<const Box3> boxes, const PlanBox& whole) {
    if (whole.maxX <= whole.minX || whole.maxY <= whole.minY) return true;
    if (boxes.empty()) return false;
    const Point3 &low = boxes.front().min, &high = boxes.front().max;
    const std::span<const Box3> others = boxes.subspan(1);
    const double left = std::clamp(low.x, whole.minX, whole.maxX),
                 right = std::clamp(high.x, left, whole.maxX),
                 front = std::clamp(low.y, whole.minY, whole.maxY),
                 back = std::clamp(high.y, front, whole.maxY);
    return Cover(others, {whole.minX, whole.minY, left, whole.maxY}) &&
           Cover(others, {right, whole.minY, whole.maxX, whole.maxY}) &&
           Cover(others, {left, whole.minY, right, front}) && Cover(others, {left, back, right, whole.maxY});
}

/// The notes whose places hold all of a spot together, as seen from above: a note knows the place of a
/// feature, but not always how deep it is. None where they hold less than all of it.
std::vector<std::string> Explaining(const RunState& run, const ProofSpot& spot, double slack) {
    std::vector<std::string> notes;
    std::vector<Box3> places;
    for (const auto& [text, place] : run.part.notePlaces) {
        if (!Touches(place, spot.box, slack)) continue;
        notes.push_back(text);
        places.push_back(
            {{place.min.x - slack, place.min.y - slack, 0}, {place.max.x + slack, place.max.y + slack, 0}});
    }
    const bool all =
        std::ranges::all_of(spot.stripes, [&](const PlanBox& stripe) { return Cover(places, stripe); });
    return all ? notes : std::vector<std::string>();
}

/// With the second side left out on purpose, what only it or an edge machine could have made is none.
bool LeftOutOnPurpose(const ProofSpot& spot, const RunState& run) {
    return run.part.LeavesSecondSide && spot.difference == Difference::Standing &&
           !OpensUp(spot, run, 0.02 * UnitOf(run));
}

/// A place longer than the round of a bit is more than a corner, whatever corner lies in it: its reason is
/// the core that the bit leaves, or another one, and a note may know it.
void DropCornersOfLargerPlaces(std::vector<ProofSpot>& spots) {
    for (ProofSpot& spot : spots) {
        const double longest = std::max(spot.box.max.x - spot.box.min.x, spot.box.max.y - spot.box.min.y);
        if (!spot.inCorner || longest <= spot.bit) continue;
        spot.inCorner = spot.notReached = false;
        if (!spot.hasCore) spot.bit = 0;
    }
}

/// What a bit leaves in the middle of its route is no feature without an operation.
bool MayBeNoted(const ProofSpot& spot) { return spot.difference == Difference::Standing && spot.bit <= 0; }

/// A feature is reported once. The recogniser's notes take precedence if they cover the whole place;
/// otherwise the proof reports it. A note that covers no difference is withdrawn: its feature is made all the
/// same, or is a part of what the proof reports.
void Settle(RunState& run, std::vector<ProofSpot>& spots) {
    DropCornersOfLargerPlaces(spots);
    std::set<std::string> kept;
    if (!std::ranges::all_of(spots, [](const ProofSpot& spot) {
            return spot.difference == Difference::Standing && spot.bit > 0;
        }))
        kept = run.part.wholePartNotes;
    std::erase_if(spots, [&](const ProofSpot& spot) {
        if (!MayBeNoted(spot)) return false;
        const std::vector<std::string> notes = Explaining(run, spot, UnitOf(run));
        kept.insert(notes.begin(), notes.end());
        return !notes.empty();
    });
    std::erase_if(spots, [&run](const ProofSpot& spot) { return LeftOutOnPurpose(spot, run); });
    std::erase_if(run.part.unexplained, [&](const std::string& text) {
        const bool settled = run.part.wholePartNotes.contains(text) || run.part.notePlaces.contains(text);
        return settled && !kept.contains(text);
    });
}

void Tell(RunState& run, const std::vector<std::string>& texts) {
    const std::size_t told = std::min(texts.size(), MostTold);
    run.part.differences.insert(run.part.differences.end(), texts.begin(),
                                texts.begin() + static_cast<std::ptrdiff_t>(told));
    if (told < texts.size())
        run.part.differences.push_back("and " + std::to_string(texts.size() - told) + " places more");
}

}  // namespace

bool ProofIsOn() { return !StateOf<ProofModule>().off; }
void SetProof(bool on) { StateOf<ProofModule>().off = !on; }

double UnitOf(const RunState& run) { return MillimetreIn(run.Metric()); }

std::vector<std::string> ToolNumbersOf(const RunState& run) {
    std::vector<std::string> tools;
    for (const MaterialTool& tool : run.part.Material.tools)
        if (!tool.number.empty()) tools.push_back(tool.number);
    return tools;
}

void HoldPartForProof(RunState& run) {
    if (!run.FirstPass()) return;
    run.part.proof = std::make_shared<GatheredProof>();
    run.part.LeavesSecondSide = false;
    SectionPort* const sections = ThePlatform().sections;
    if (!ProofIsOn() || sections == nullptr) return;
    run.part.proof->width = run.part.ExtentY;
    run.part.proof->thickness = run.part.ExtentZ;
    const std::optional<Failure> failure =
        Attempt([&] { run.part.proof->part = sections->HoldSolid(LastSolid(*run.part.drawing).ObjectID()); });
    if (failure) run.part.proof->unproved = failure->detail();
}

void NoteLeftOutOutline(RunState& run, const AcadLWPolyline& outline) {
    if (run.part.proof && run.part.proof->part) run.part.proof->leftOutOutlines.push_back(SidesOf(outline));
}

void GatherWrittenSide(RunState& run, AcadDocument& file, bool secondSide) {
    if (!run.part.proof) return;
    run.part.proof->written = true;
    if (!run.part.proof->part) return;
    GatheredProof& proof = *run.part.proof;
    const std::vector<std::string> tools = ToolNumbersOf(run);
    WrittenSide side =
        ReadWrittenSide(file, {run.target, run.Metric(), secondSide, proof.width, proof.thickness, tools,
                               run.part.Material.tools, std::max(-run.SpoilAmount, 0.0)});
    std::ranges::move(side.operations, std::back_inserter(proof.operations));
    std::ranges::move(side.faults, std::back_inserter(proof.faults));
}

void NoteUnproved(RunState& run, const std::string& why) {
    if (!run.part.proof) return;
    run.part.proof->written = true;
    run.part.proof->unproved = why;
}

void ProveGathered(RunState& run) {
    const std::shared_ptr<GatheredProof> gathered = run.part.proof;
    if (!gathered || !gathered->written) return;
    std::vector<std::string> texts = gathered->faults;
    if (gathered->part && gathered->unproved.empty()) {
        PartProof proof;
        const std::optional<Failure> failure = Attempt([&] {
            proof = ProvePart(*gathered->part, gathered->operations, gathered->leftOutOutlines, UnitOf(run));
            std::ranges::move(FaultsOfReach(run, gathered->part->Box(), gathered->operations),
                              std::back_inserter(proof.faults));
        });
        if (failure) {
            gathered->unproved = failure->detail().empty() ? failure->description() : failure->detail();
        } else {
            Settle(run, proof.spots);
            std::ranges::sort(proof.spots, std::greater<>(), &ProofSpot::volume);
            texts.insert(texts.end(), proof.faults.begin(), proof.faults.end());
            for (const ProofSpot& spot : proof.spots) texts.push_back(TextOf(spot, run));
        }
    }
    if (!gathered->unproved.empty())
        texts.push_back("it could not be compared with its files (" + gathered->unproved + ")");
    Tell(run, texts);
    run.part.proof.reset();
}

}  // namespace brenvik
