// The table of targets.
#include "cnc/part/target_traits.h"

#include <array>

#include "base/invariant.h"
#include "cnc/drawing/work_layers.h"

namespace brenvik {

namespace {

using enum ChoiceDialog;

constexpr std::string_view OfMost[] = {"WORKLIST.TXT"}, OfBW[] = {"WORKLIST.TXT", "WorkList.txt"},
                           OfTHERM[] = {"WORKLIST.TXT", "Sheet1.csv", "CNCList.txt"},
                           OfCNCList[] = {"WORKLIST.TXT", "CNCList.txt"},
                           OfABC[] = {"WORKLIST.TXT", "CNCList.csv"};

constexpr auto Traits = std::to_array<TargetTraits>({
    {Target::C2C, "C2C", true, layers::HorzCircleHold, WithStandingAnswer, true, "WORKLIST.TXT", OfMost},
    {Target::ATP, "ATP", true, layers::HorzCircleHold, Plain, true, "WORKLIST.TXT", OfMost},
    {Target::ROV, "ROV", false, layers::MyHorzCircleHold, Plain, false, "WORKLIST.TXT", OfMost},
    {Target::CNI, "CNI", false, layers::MyHorzCircleHold, Plain, false, "WORKLIST.TXT", OfMost},
    {Target::ASP, "ASP", false, layers::MyHorzCircleHold, Plain, false, "WORKLIST.TXT", OfMost},
    {Target::WOP4, "WOP4", false, layers::MyHorzCircleHold, Plain, false, "WORKLIST.TXT", OfMost},
    {Target::WOP5, "WOP5", false, layers::MyHorzCircleHold, Plain, false, "WORKLIST.TXT", OfMost},
    {Target::THERM, "THERM", true, layers::HorzCircleHold, WithStandingAnswer, false, "Sheet1.csv", OfTHERM},
    {Target::BW, "BW", false, layers::MyHorzCircleHold, Plain, true, "WorkList.txt", OfBW},
    {Target::Enroute, "Enroute", true, layers::HorzCircleHold, Plain, true, "CNCList.txt", OfCNCList},
    {Target::ABC, "ABC", true, layers::HorzCircleHold, WithStandingAnswer, true, "CNCList.csv", OfABC},
    {Target::RCIM, "RCIM", true, layers::HorzCircleHold, Plain, true, "CNCList.txt", OfCNCList},
});

}  // namespace

const TargetTraits& TraitsOf(Target target) {
    for (const TargetTraits& traits : Traits)
        if (traits.target == target) return traits;
    Invariant(false, "every target has its row");
    return Traits.front();
}

}  // namespace brenvik
