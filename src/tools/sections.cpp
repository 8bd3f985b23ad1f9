// Section views by the host's own view clipping. The clipping plane stands a little in front of the picked
// point, and the camera looks along an axis; the selected solids can be held on a layer that only the
// section's viewport shows.
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/skip.h"
#include "base/text.h"
#include "cnc/drawing/drawing_walk.h"
#include "session/session.h"
#include "tools/change_or_tell.h"
#include "tools/drawing_tools.h"

namespace brenvik::commands {

namespace {

constexpr std::string_view SectionLayer = "bv-section";

/// A way to look at the model: the axis, and how far target and camera stand from the picked point.
struct Looking {
    std::string_view word, initial;
    double Point3::*axis;
    double target, camera;
};

constexpr auto VerticalLooks = std::to_array<Looking>({{"left", "l", &Point3::x, 0.125, 0.25},
                                                       {"right", "r", &Point3::x, -0.125, -0.25},
                                                       {"front", "f", &Point3::y, 0.125, 0.25},
                                                       {"back", "b", &Point3::y, -0.125, -0.25}});
constexpr auto PlanLooks =
    std::to_array<Looking>({{"down", "d", &Point3::z, 0.125, 1.0}, {"up", "u", &Point3::z, -0.125, -1.0}});

/// What the user chose: how to look, and where.
struct Section {
    const Looking* looking = nullptr;
    Point3 point;
};

std::string AskWord(AcadUtility& utility, std::string_view prompt) {
    return FoldLower(Trim(utility.GetKeyword(prompt)));
}

const Looking* FindLook(std::span<const Looking> looks, std::string_view answer) {
    const auto found = std::find_if(looks.begin(), looks.end(), [answer](const Looking& look) {
        return answer == look.word || answer == look.initial;
    });
    return found == looks.end() ? nullptr : &*found;
}

/// Null for an answer outside the keywords, and when a prompt is cancelled.
std::optional<Section> AskSection(AcadUtility& utility) {
    Section section;
    Skip([&] {
        const std::string kind =
            AskWord(utility, "Please specify Vertical or Plan section (a space terminates input): ");
        if (kind == "v" || kind == "vertical") {
            const Looking* look = FindLook(
                VerticalLooks,
                AskWord(utility,
                        "Please specify looking Left, Right, Front or Back (a space terminates input): "));
            if (look == nullptr) return;
            section.point = utility.GetPoint("Enter point of vertical section: ");
            section.looking = look;
        } else if (kind == "p" || kind == "plan") {
            const Looking* look =
                FindLook(PlanLooks,
                         AskWord(utility, "Please specify looking Down or Up (a space terminates input): "));
            if (look == nullptr) return;
            section.point = utility.GetPoint("Enter point of plan section: ");
            section.looking = look;
        }
    });
    if (section.looking == nullptr) return std::nullopt;
    return section;
}

std::string Typed(const Point3& point) { return Trim(PointAnswer(point)); }

void LookAt(AcadDocument& drawing, const Section& section) {
    Point3 target = section.point, camera = section.point;
    target.*section.looking->axis += section.looking->target;
    camera.*section.looking->axis += section.looking->camera;
    drawing.SendCommand("dview\rp\r\rpo\r" + Typed(target) + "\r" + Typed(camera) + "\rcl\rf\r0\r\r");
}

std::string FreeSectionLayer(AcadDocument& drawing) {
    int number = 1;
    while (LayerExists(drawing, std::string(SectionLayer) + std::to_string(number))) ++number;
    return std::string(SectionLayer) + std::to_string(number);
}

/// Solids keep their part data: moving to another layer takes nothing from them.
void HoldSolids(AcadSelectionSet& selected, std::string_view layer) {
    constexpr int byLayer = 256;
    for (int i = 0; i < selected.Count(); ++i) {
        AcadEntity& entity = *selected.Item(i);
        if (!EqualsIgnoreCase(entity.ObjectName(), "acdb3dsolid")) continue;
        ChangeOrTell(entity, [layer](AcadEntity& each) {
            each.SetLayer(layer);
            each.SetColor(byLayer);
        });
    }
}

void FreezeInCurrent(AcadDocument& drawing, std::string_view layer) {
    drawing.SendCommand("vplayer f " + std::string(layer) + "\rcurrent\r\r");
}

/// Only the viewport that is current now goes on showing the layer.
void ShowInThisViewportOnly(AcadDocument& drawing, std::string_view layer) {
    FreezeInCurrent(drawing, layer);
    AcadPViewport* own = nullptr;
    Skip([&] { own = drawing.ActivePViewport(); });
    if (own != nullptr) {
        const std::string ownHandle = own->Handle();
        std::vector<AcadPViewport*> others;
        drawing.PaperSpace().ForEach([&](AcadEntity& entity) {
            auto* viewport = dynamic_cast<AcadPViewport*>(&entity);
            if (viewport != nullptr && entity.Handle() != ownHandle) others.push_back(viewport);
        });
        for (AcadPViewport* other : others)
            Skip([&] {
                drawing.SetActivePViewport(*other);
                FreezeInCurrent(drawing, layer);
            });
        Skip([&] { drawing.SetActivePViewport(*own); });
    }
    drawing.SendCommand("vplayer t " + std::string(layer) + "\rcurrent\r\r");
    drawing.SendCommand("pspace\r");
}

/// The view and the clipping; the answers, and the selection that the section is of. Null if the user
/// left.
std::optional<AcadSelectionSet*> MakeSection(AcadDocument& drawing) {
    const std::optional<Section> section = AskSection(drawing.Utility());
    if (!section) return std::nullopt;
    AcadSelectionSet& selected = FreshSet(drawing, "prev");
    selected.Select(SelectMode::Previous);
    LookAt(drawing, *section);
    return &selected;
}

/// A viewport between two corners of the sheet, entered.
void EnterNewViewport(AcadDocument& drawing, const Point3& first, const Point3& second) {
    drawing.SetActiveSpace(ActiveSpaceKind::PaperSpace);
    const Point3 middle{(first.x + second.x) / 2, (first.y + second.y) / 2, 0};
    AcadPViewport* viewport =
        drawing.PaperSpace().AddPViewport(middle, std::abs(second.x - first.x), std::abs(second.y - first.y));
    viewport->Display(true);
    drawing.SetActivePViewport(*viewport);
    drawing.SetMSpace(true);
}

}  // namespace

void BVSection1(AcadApplication&) { MakeSection(*TheSession().AcadDoc); }

void BVSection2(AcadApplication&) {
    AcadDocument& drawing = *TheSession().AcadDoc;
    const std::optional<AcadSelectionSet*> selected = MakeSection(drawing);
    if (!selected) return;
    const std::string layer = FreeSectionLayer(drawing);
    AddLayer(drawing, layer);
    HoldSolids(**selected, layer);
    ShowInThisViewportOnly(drawing, layer);
}

void BVMakeView(AcadApplication&) {
    AcadDocument& drawing = *TheSession().AcadDoc;
    Point3 first, second;
    const bool answered = Skip([&] {
        first = drawing.Utility().GetPoint("Enter first point of viewport: ");
        second = drawing.Utility().GetPoint("Enter second point of viewport: ");
    });
    if (!answered) return;
    EnterNewViewport(drawing, first, second);
    drawing.SendCommand("dview\r\rcl\roff\r\r");
    for (const std::string_view words : {"mview ", "hideplot ", "on ", "all ", " "})
        drawing.SendCommand(words);
}

void BVFreezeSections(AcadApplication&) {
    TheSession().AcadDoc->SendCommand("-layer\rf\r" + std::string(SectionLayer) + "*\r\r");
}

void BVUNFreezeSections(AcadApplication&) {
    TheSession().AcadDoc->SendCommand("-layer\rt\r" + std::string(SectionLayer) + "*\r\r");
}

}  // namespace brenvik::commands
