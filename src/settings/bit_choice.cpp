// The rules of the choice, and the messages where they find nothing.
#include "settings/bit_choice.h"

#include <algorithm>

#include "base/number_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "session/message.h"
#include "settings/bit_in_hand.h"
#include "settings/frm_choice.h"
#include "settings/frm_choicetherm.h"
#include "settings/settings_store.h"
#include "settings/standing_answer.h"

namespace brenvik {

namespace {

/// Not 2: a bit of exactly half the side would leave a seam down the middle.
constexpr double ClearingFactor = 1.999999;

/// Sides of inside routes and diameters of circles are compared at this many decimals.
constexpr int Decimals = 5;

/// Ends in the blank that the sentence around it lacks.
constexpr std::string_view SupportAddress = "support@brenvik.example ";

bool Usable(const MaterialTool& tool) { return Trim(tool.number) != "0"; }

bool AnyUsableFits(const MaterialRecord& material, double measure) {
    return std::ranges::any_of(material.tools, [measure](const MaterialTool& tool) {
        return Usable(tool) && tool.diameter <= measure;
    });
}

using Found = std::optional<std::size_t>;

/// The first of two tools that passes, or the second.
template <class Passes>
Found FirstOf(std::size_t first, std::size_t second, const Passes& passes) {
    if (passes(first)) return first;
    if (passes(second)) return second;
    return std::nullopt;
}

/// The bit that clears the inside of a contour by following its line.
Found ClearingBit(const MaterialRecord& material, double side) {
    const auto& tools = material.tools;
    const auto clears = [&](std::size_t tool) {
        return Usable(tools[tool]) && tools[tool].diameter <= side &&
               tools[tool].diameter * ClearingFactor > side;
    };
    if (clears(0)) return 0;
    Found found;
    // A small first tool asks for the wider of the others.
    if (tools[0].diameter * ClearingFactor < side) {
        if (tools[1].diameter > tools[2].diameter) found = FirstOf(1, 2, clears);
        if (tools[2].diameter > tools[1].diameter) found = FirstOf(2, 1, clears);
    }
    return found ? found : FirstOf(1, 2, clears);
}

/// The bit for a pocket. Each of the later tools is compared with the one before it, not with the one in
/// hand: a third tool can win over a wider first one.
Found PocketBit(const MaterialRecord& material, double side) {
    const auto& tools = material.tools;
    Found found;
    for (std::size_t tool = 0; tool < tools.size(); ++tool) {
        if (!Usable(tools[tool]) || tools[tool].diameter > side) continue;
        if (!found || tools[tool].diameter > tools[tool - 1].diameter) found = tool;
    }
    return found;
}

std::string TooBig(std::string_view key, double shortestSide) {
    return "Your router bits appears too big, for your material " + std::string(key) +
           ", with a route path who's shortest line is " + NumberToText(shortestSide) +
           " long, so you need to make a choice.";
}

std::string NoneSmallEnough(std::string_view key, double shortestSide) {
    return "You do not have a small enough router bit for your material " + std::string(key) +
           " with route path who's shortest line is " + NumberToText(shortestSide) +
           " long, so you need to make a choice.";
}

std::string SomeProblem() {
    return "There is some sort of problem with finding a router bit for this part. Please zip this dwg up "
           "and "
           "email it to " +
           std::string(SupportAddress) + "with you material.txt file. This part will now be skipped.";
}

std::string CircleTooSmall(std::string_view key, double diameter) {
    return "Your default router bit is not small enough to cut this circular through route path with a "
           "diameter of " +
           NumberToText(diameter) +
           ". You need to either change the value  for the largest circle to be drilled in the Brenvik "
           "settings "
           "(BSET) or you need provide a router bit small enough for your circular through route in the  "
           "material database (BVMAT) for you material " +
           std::string(key) + ". This part will now be skipped.";
}

std::string CircleTooSmallForPocket(std::string_view key, double diameter) {
    return "You do not have a router bit small enough to pocket this circular non-through route path with a "
           "diameter of " +
           NumberToText(diameter) +
           ". You need to either change the value  for the largest circle to be drilled in the Brenvik "
           "settings "
           "(BSET) or you need provide a router bit small enough for your circular route in the  material "
           "database (BVMAT) for you material " +
           std::string(key) + ", in any of the slots. This part will now be skipped.";
}

/// Gives the part up; the user has had the message.
bool GiveUp(BitChoice& choice) {
    choice.RouteSkip = true;
    return false;
}

}  // namespace

std::string_view PathKindText(PathKind kind) {
    switch (kind) {
        case PathKind::None:
            return "none";
        case PathKind::RT:
            return "RT";
        case PathKind::PKC:
            return "PKC";
        case PathKind::PKS:
            return "PKS";
    }
    return {};
}

void UseTool(BitChoice& choice, const MaterialTool& tool) {
    TakeBitInHand();
    choice.ToolDiameter = tool.diameter;
    choice.ToolDiameterText = LayerNumberText(tool.diameter, std::nullopt, "p");
    choice.ToolNumber = tool.number;
    choice.ToolSpeed = tool.spindleSpeed;
    choice.ToolFeed = tool.feedSpeed;
}

ThroughContourBit BitForThroughContour(const MaterialRecord& material, double shortestSide) {
    const auto& tools = material.tools;
    const auto fits = [&](std::size_t tool) {
        return Usable(tools[tool]) && tools[tool].diameter <= shortestSide;
    };
    if (fits(0)) return {0, true};
    Found found;
    if (tools[1].diameter < tools[2].diameter) found = FirstOf(1, 2, fits);
    if (tools[2].diameter < tools[1].diameter) found = FirstOf(2, 1, fits);
    return {found, AnyUsableFits(material, shortestSide)};
}

InsideRouteBit BitForInsideRoute(const MaterialRecord& material, double shortestSide) {
    const double side = RoundHalfEven(shortestSide, Decimals);
    if (!AnyUsableFits(material, side)) return {};
    if (const Found tool = ClearingBit(material, side)) return {tool, PathKind::RT};
    return {PocketBit(material, side), PathKind::PKC};
}

std::optional<std::size_t> BitForThroughCircle(const MaterialRecord& material, double circleDiameter) {
    const double circle = RoundHalfEven(circleDiameter, Decimals);
    const auto diameter = [&](std::size_t tool) {
        return RoundHalfEven(material.tools[tool].diameter, Decimals);
    };
    const auto fits = [&](std::size_t tool) {
        return Usable(material.tools[tool]) && circle >= diameter(tool);
    };
    if (fits(0)) return 0;
    for (const std::size_t tool : {std::size_t{1}, std::size_t{2}})
        if (diameter(tool) < diameter(0) && fits(tool)) return tool;
    // A first slot that is empty has no diameter to be smaller than.
    if (!Usable(material.tools[0])) return FirstOf(1, 2, fits);
    return std::nullopt;
}

std::optional<std::size_t> BitForCirclePocket(const MaterialRecord& material, double circleDiameter) {
    const double circle = RoundHalfEven(circleDiameter, Decimals);
    Found found;
    for (std::size_t tool = 0; tool < material.tools.size(); ++tool) {
        const MaterialTool& candidate = material.tools[tool];
        if (!Usable(candidate) || RoundHalfEven(candidate.diameter, Decimals) >= circle) continue;
        if (!found || candidate.diameter < material.tools[*found].diameter) found = tool;
    }
    return found;
}

bool ChooseThroughContourBit(BitChoice& choice, const MaterialRecord& material, std::string_view key,
                             double shortestSide) {
    const ThroughContourBit bit = BitForThroughContour(material, shortestSide);
    if (bit.tool) UseTool(choice, material.tools[*bit.tool]);
    CutWithBitInHand();
    if (bit.anyFits) return true;
    ShowMessage(TooBig(key, shortestSide));
    AskForBit(choice, material, ChoiceDialog::Plain);
    return !choice.RouteSkip;
}

bool ChooseInsideRouteBit(BitChoice& choice, const MaterialRecord& material, std::string_view key,
                          double shortestSide, ChoiceDialog dialog) {
    choice.kind = PathKind::None;
    const InsideRouteBit bit = BitForInsideRoute(material, shortestSide);
    if (bit.tool) {
        UseTool(choice, material.tools[*bit.tool]);
        choice.kind = bit.kind;
        return true;
    }
    if (dialog == ChoiceDialog::WithStandingAnswer && CurrentStandingAnswer().isOn) {
        if (TakeOption(choice, material, CurrentStandingAnswer().option)) return true;
    } else {
        ShowMessage(NoneSmallEnough(key, RoundHalfEven(shortestSide, Decimals)));
        AskForBit(choice, material, dialog);
        if (choice.RouteSkip) return false;
        if (choice.kind != PathKind::None) return true;
    }
    ShowMessage(SomeProblem());
    return GiveUp(choice);
}

bool ChooseThroughCircleBit(BitChoice& choice, const MaterialRecord& material, std::string_view key,
                            double circleDiameter) {
    UseTool(choice, material.tools[0]);
    if (const Found tool = BitForThroughCircle(material, circleDiameter)) {
        UseTool(choice, material.tools[*tool]);
        return true;
    }
    ShowMessage(CircleTooSmall(key, RoundHalfEven(circleDiameter, Decimals)));
    return GiveUp(choice);
}

bool ChooseCirclePocketBit(BitChoice& choice, const MaterialRecord& material, std::string_view key,
                           double circleDiameter) {
    choice.kind = PathKind::None;
    if (const Found tool = BitForCirclePocket(material, circleDiameter)) {
        UseTool(choice, material.tools[*tool]);
        choice.kind = PathKind::PKS;
        return true;
    }
    ShowMessage(CircleTooSmallForPocket(key, RoundHalfEven(circleDiameter, Decimals)));
    return GiveUp(choice);
}

bool TakeOption(BitChoice& choice, const MaterialRecord& material, int option) {
    if (option < 1 || option > ChoiceOptionCount) return false;
    const MaterialTool& tool = material.tools[static_cast<std::size_t>((option - 1) / 2)];
    if (!Usable(tool)) return false;
    UseTool(choice, tool);
    choice.kind = option % 2 == 1 ? PathKind::RT : PathKind::PKC;
    return true;
}

}  // namespace brenvik
