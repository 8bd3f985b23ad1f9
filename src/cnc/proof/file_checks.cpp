// Each entity against the tables that name operations, the material's bits and the part's frame.
#include "cnc/proof/file_checks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <map>
#include <optional>

#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/text.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/part/run_state.h"
#include "cnc/part/told.h"
#include "cnc/plan/plan_piece.h"
#include "cnc/plan/plan_sides.h"
#include "cnc/proof/operation_names.h"
#include "cnc/proof/run_proof.h"
#include "cnc/targets/bore_rules.h"
#include "cnc/targets/target_table.h"
#include "session/ports/host_interface.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr int ByLayer = 256;
/// In millimetres: corners in files have six decimals, in inches too.
constexpr double SamePlace = 1e-3;
/// Diameters in names are as the library has them; THERM's are rounded.
constexpr double SameDiameter = 1e-3;

class FileCheck {
  public:
    FileCheck(const RunState& run, AcadDocument& file, bool secondSide)
        : mRun(run), mSecondSide(secondSide), mTools(ToolNumbersOf(run)) {
        for (int i = 0; i < file.Groups().Count(); ++i) {
            const AcadGroup& group = *file.Groups().Item(i);
            for (int member = 0; member < group.Count(); ++member)
                mGroups.emplace(file.Groups().Item(i)->Item(member)->Handle(), FoldUpper(group.Name()));
        }
    }

    void Look(const AcadEntity& entity) {
        mLayer = entity.Layer();
        if (const auto* sheet = dynamic_cast<const Acad3DPolyline*>(&entity)) return LookAtSheet(*sheet);
        const auto* path = dynamic_cast<const AcadLWPolyline*>(&entity);
        const auto* circle = dynamic_cast<const AcadCircle*>(&entity);
        if (path == nullptr && circle == nullptr) return;
        const double depth = std::abs(path != nullptr ? path->Thickness() : circle->Thickness());
        const auto name = ReadOperationName({mRun.target, mRun.Metric(), mTools, depth}, mLayer);
        if (!name) return;
        LookAtColor(entity, *name, path != nullptr, depth);
        if (IsOutline(*name, entity.Color())) LookAtOutline(depth);
        if (name->kind == OperationKind::Bore) LookAtGroup(entity, *name);
        if (name->kind == OperationKind::Hole || name->kind == OperationKind::Bore ||
            name->kind == OperationKind::Sheet)
            return;
        LookAtTool(*name);
        LookAtCompensation(*name, circle != nullptr);
        if (path != nullptr) LookAtDirection(*path, *name, depth);
    }

    std::vector<std::string> Faults() {
        if (mOutlines == 0 && !OutlineIsLeftOut()) Fault("the outline is missing");
        if (!SheetLayerName(mRun, mRun.part.ExtentZ).empty() && mSheets != 1)
            Fault(mSheets == 0 ? "the sheet is missing" : "there is more than one sheet");
        return std::move(mFaults);
    }

  private:
    void Fault(const std::string& what) {
        const std::string text = what + (mSecondSide ? " in the file of the second side" : " in the file");
        if (std::ranges::find(mFaults, text) == mFaults.end()) mFaults.push_back(text);
    }

    bool OutlineIsLeftOut() const {
        return SwitchIsOn(mSecondSide ? setting::DeleteOT : setting::BiesseWorksNest);
    }

    // The sheet lies around the part, below it.

    void LookAtSheet(const Acad3DPolyline& sheet) {
        ++mSheets;
        if (mLayer != SheetLayerName(mRun, mRun.part.ExtentZ)) Fault("the sheet is on layer " + mLayer);
        if (sheet.Color() != layers::SheetColor) Fault("the sheet has another colour than 7");
        if (!Near(sheet.Thickness(), mRun.part.ExtentZ)) Fault("the sheet is not as thick as the part");
        const std::vector<double> at = sheet.Coordinates();
        const std::array<double, 12> wanted{0,
                                            0,
                                            -mRun.part.ExtentZ,
                                            mRun.part.ExtentX,
                                            0,
                                            -mRun.part.ExtentZ,
                                            mRun.part.ExtentX,
                                            mRun.part.ExtentY,
                                            -mRun.part.ExtentZ,
                                            0,
                                            mRun.part.ExtentY,
                                            -mRun.part.ExtentZ};
        const bool same = sheet.Closed() && at.size() == wanted.size() &&
                          std::ranges::equal(at, wanted, [this](double a, double b) { return Near(a, b); });
        if (!same) Fault("the sheet does not lie around the part");
    }

    bool Near(double a, double b) const { return std::abs(a - b) < SamePlace * UnitOf(mRun); }

    // Colours and directions.

    /// A setting may stop through cuts above the spoil board.
    double DepthOfThroughCuts() const { return mRun.part.ExtentZ + std::min(mRun.SpoilAmount, 0.0); }
    bool GoesThrough(double depth) const { return depth > DepthOfThroughCuts() - SamePlace * UnitOf(mRun); }

    void LookAtColor(const AcadEntity& entity, const OperationName& name, bool path, double depth) {
        const int color = entity.Color();
        const bool outline = IsOutline(name, color);
        int wanted = color;
        if (outline)
            wanted = layers::OutlineColor;
        else if (name.kind == OperationKind::Hole)
            wanted = layers::HoleColor;
        else if (name.kind == OperationKind::Bore)
            wanted = path ? layers::BoreRectangleColor : layers::BoreColor;
        else if (path && GoesThrough(depth))
            wanted = layers::CutOutColor;
        else if (path)
            wanted = ByLayer;
        if (color != wanted)
            Fault(mLayer + " has the colour " + std::to_string(color) + " and not " + std::to_string(wanted));
    }

    static bool IsOutline(const OperationName& name, int color) {
        return name.kind == OperationKind::Outline ||
               (name.kind == OperationKind::Path && color == layers::OutlineColor);
    }

    /// An outline cuts the part free. How far it goes into the spoil board is the shop's choice of the day;
    /// one that stops above the board is a choice too, and a setting.
    void LookAtOutline(double depth) {
        ++mOutlines;
        if (!GoesThrough(depth))
            Fault("the outline is " + ReportedLength(depth) + " deep, and the part " +
                  ReportedLength(mRun.part.ExtentZ) + " thick, so that it does not cut the part free,");
    }

    void LookAtDirection(const AcadLWPolyline& path, const OperationName& name, double depth) {
        const bool outline = name.kind == OperationKind::Outline || path.Color() == layers::OutlineColor;
        const bool clockwise = outline              ? false
                               : GoesThrough(depth) ? true
                                                    : FoldLower(mRun.part.Material.direction) == "c";
        if ((SignedArea(SidesOf(path)) < 0) != clockwise)
            Fault(mLayer + " does not run " + (clockwise ? "clockwise" : "counter-clockwise"));
    }

    // Tools.

    /// A library's text may lose the blanks around it on the way; none come to it.
    static bool Names(const std::string& written, const std::string& own) {
        return written == own || written == Trim(own);
    }

    bool Agrees(const MaterialTool& tool, const OperationName& name) const {
        if (!name.tool.empty() && !Names(name.tool, tool.number)) return false;
        if (name.diameter && std::abs(*name.diameter - tool.diameter) > SameDiameter * UnitOf(mRun))
            return false;
        return (name.speed.empty() || Names(name.speed, tool.spindleSpeed)) &&
               (name.feed.empty() || Names(name.feed, tool.feedSpeed));
    }

    void LookAtTool(const OperationName& name) {
        const auto& tools = mRun.part.Material.tools;
        if (std::ranges::none_of(tools, [&](const MaterialTool& tool) { return Agrees(tool, name); }))
            Fault(mLayer + " names a tool that the material " + mRun.part.MaterialKeyText + " has not");
    }

    /// BW has the bit's side in letters, and other ones for round cut-outs. The rest of the second family has
    /// none.
    void LookAtCompensation(const OperationName& name, bool circle) {
        std::vector<std::string> wanted;
        if (TraitsOf(mRun.target).firstFamily) {
            if (name.compensation.empty()) return;
            wanted = {CompensationText(mRun)};
        } else if (mRun.target == Target::BW) {
            const std::string direction = FoldLower(mRun.part.Material.direction);
            wanted = {direction == "cc" ? "TC2" : direction == "c" ? "TC1" : ""};
            if (circle) wanted.emplace_back(direction == "c" ? "TC2DIR1" : "TC2");
        } else {
            return;
        }
        if (std::ranges::find(wanted, name.compensation) == wanted.end())
            Fault(mLayer + " has another compensation than the material's direction asks for");
    }

    /// A receiver that has an edge's bores as a group looks for them there.
    void LookAtGroup(const AcadEntity& entity, const OperationName& name) {
        if (!name.side) return;
        const std::string_view wanted = SideGroupName(mRun, Sides()[static_cast<std::size_t>(*name.side)]);
        const auto [first, last] = mGroups.equal_range(entity.Handle());
        const auto count = std::distance(first, last);
        if (wanted.empty() ? count == 0 : count == 1 && first->second == wanted) return;
        Fault(mLayer + " is in " + (count == 0 ? "no group" : "another group") +
              (wanted.empty() ? std::string() : ", and not in " + std::string(wanted)));
    }

    const RunState& mRun;
    bool mSecondSide;
    std::vector<std::string> mTools;
    /// The groups of entities, by their handles.
    std::multimap<std::string, std::string> mGroups;
    std::string mLayer;
    int mOutlines = 0, mSheets = 0;
    std::vector<std::string> mFaults;
};

}  // namespace

std::vector<std::string> FaultsOfFile(const RunState& run, AcadDocument& file, bool secondSide) {
    FileCheck check(run, file, secondSide);
    file.ModelSpace().ForEach([&check](AcadEntity& entity) { check.Look(entity); });
    return check.Faults();
}

}  // namespace brenvik
