// Walks from the roots down; a value nearer to the root overrides the product's own.
#include "drafting_host/step/part_flattener.h"

#include <TDataStd_Name.hxx>
#include <TopExp_Explorer.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <gp.hxx>
#include <gp_Ax2.hxx>
#include <gp_Trsf.hxx>
#include <utility>

#include "base/failure.h"
#include "base/trimmed.h"
#include "drafting_host/solids/transform.h"
#include "drafting_host/step/shape_contents.h"

namespace brenvik::step {
namespace {

std::string Shown(const std::string& name) { return name.empty() ? "a part" : "part \"" + name + "\""; }

StepSolid PartOf(const TopoDS_Shape& shape, std::string name, std::string assembly, const PartLook& look) {
    StepSolid part{shape, std::move(name), std::move(assembly), look.layer, look.color};
    part.layerVisible = look.layerVisible;
    part.visible = look.visible;
    return part;
}

/// What the solids of a shape share with their copies, in their order.
std::vector<const Standard_Transient*> SolidsIn(const TopoDS_Shape& shape) {
    std::vector<const Standard_Transient*> solids;
    for (TopExp_Explorer solid(shape, TopAbs_SOLID); solid.More(); solid.Next())
        solids.push_back(solid.Current().TShape().get());
    return solids;
}

/// A mirrored solid is so ahead of its place in the shape, which lies in the solid's own location.
TopoDS_Shape InPlace(const TopoDS_Shape& solid, const TopLoc_Location& place, bool isMirrored) {
    if (!isMirrored) return solids::Placed(solid.Moved(place));
    gp_Trsf mirror;
    mirror.SetMirror(gp_Ax2(gp::Origin(), gp::DX()));
    const TopoDS_Shape own = solids::Transformed(solid.Located(TopLoc_Location()), mirror);
    return solids::Placed(own.Located(place * solid.Location()));
}

}  // namespace

PartFlattener::PartFlattener(const Handle(TDocStd_Document) & document, const StandIns& texts,
                             bool toTheLetter, std::map<std::string, std::string> externalFiles,
                             OwnUsesByShape ownUses, StepDocument& result)
    : mShapes(XCAFDoc_DocumentTool::ShapeTool(document->Main())),
      mLooks(document, texts),
      mTexts(texts),
      mToTheLetter(toTheLetter),
      mExternalFiles(std::move(externalFiles)),
      mOwnUses(std::move(ownUses)),
      mResult(result) {}

void PartFlattener::Met::Take(const std::string& name) {
    if (count++ == 0) first = name;
}

void PartFlattener::Run() {
    TDF_LabelSequence roots;
    mShapes->GetFreeShapes(roots);
    for (const TDF_Label& root : roots)
        if (!IsRepeatedRoot(root, roots)) Walk(root, {}, 0);
}

/// A product that is one mapped shape, made of several, refers to that shape's content: the modeller gives
/// both as roots, the shape without a name.
bool PartFlattener::IsRepeatedRoot(const TDF_Label& root, const TDF_LabelSequence& roots) const {
    if (!NameOf(root).empty() || !XCAFDoc_ShapeTool::IsAssembly(root)) return false;
    std::vector<const Standard_Transient*> solids;
    for (const TDF_Label& other : roots) {
        if (other == root || !XCAFDoc_ShapeTool::IsReference(other)) continue;
        if (solids.empty()) solids = SolidsIn(XCAFDoc_ShapeTool::GetShape(root));
        if (!solids.empty() && SolidsIn(XCAFDoc_ShapeTool::GetShape(other)) == solids) return true;
    }
    return false;
}

void PartFlattener::NoteWithoutSolid(std::size_t known) {
    const auto tell = [&](const std::map<std::string, int>& all, bool lost) {
        for (const auto& [what, times] : all) {
            mResult.notes.push_back(
                {(times == 1 ? what : std::to_string(times) + " times " + what) + " is passed over", 0,
                 lost});
        }
    };
    tell(mWithoutSolid, true);
    tell(mSheetsBeside, true);
    tell(mCurvesBeside, false);
    if (mEmpty > known) {
        mResult.notes.push_back(
            {std::to_string(mEmpty - known) + " object(s) without any shape passed over"});
    }
}

void PartFlattener::NoteMet(const Met& met, const std::string& what) {
    if (met.count == 0) return;
    mResult.notes.push_back({what + ": " + std::to_string(met.count) + " part(s), the first one " +
                                 (met.first.empty() ? "without a name" : "\"" + met.first + "\""),
                             0, false});
}

void PartFlattener::NoteLooks() {
    NoteMet(mFaceColors, "colours of single faces are passed over, a part has one colour");
    NoteMet(mFaceLayers, "layers of single faces are passed over, a part stands on one layer");
    // A file written here has them from a drawing in which they are hidden too.
    if (!mToTheLetter) NoteMet(mHidden, "hidden in this file and parts all the same");
}

void PartFlattener::NoteNameless() {
    if (mToTheLetter || mNameless.count == 0 || mNameless.first.empty()) return;
    mResult.notes.push_back(
        {std::to_string(mNameless.count) +
             " part(s) without a name of their own are named after the file, the first one in \"" +
             mNameless.first + "\"",
         0, false});
}

std::string PartFlattener::NameOf(const TDF_Label& label) const {
    Handle(TDataStd_Name) name;
    if (!label.FindAttribute(TDataStd_Name::GetID(), name)) return {};
    const std::string text = mTexts.TextFor(Utf8(name->Get()));
    return mToTheLetter ? text : std::string(Trimmed(text));
}

/// A product's name, or its instance's. Where this program named nothing, the modeller makes up the latter.
std::string PartFlattener::NameOf(const TDF_Label& product, const std::string& instance) const {
    const std::string name = NameOf(product);
    return name.empty() && !mToTheLetter ? instance : name;
}

void PartFlattener::Walk(const TDF_Label& label, Inherited inherited, int depth) {
    // An assembly that holds itself would never end. Real ones are nested a handful deep.
    if (depth > 200) throw InvalidCall("STEP: assemblies are nested deeper than 200");
    inherited.look.TakeMissing(mLooks.Of(label));
    TDF_Label product = label;
    if (XCAFDoc_ShapeTool::IsReference(label)) {
        inherited.instance = NameOf(label);
        inherited.place = inherited.place * XCAFDoc_ShapeTool::GetLocation(label);
        XCAFDoc_ShapeTool::GetReferredShape(label, product);
        inherited.look.TakeMissing(mLooks.Of(product));
    }
    if (!XCAFDoc_ShapeTool::IsAssembly(product)) {
        AddPart(product, inherited);
        return;
    }
    // A mapped shape that is made of others is an assembly to the modeller, but one that nobody has named.
    const std::string name = NameOf(product, inherited.instance);
    if (!name.empty() || mToTheLetter) inherited.assembly = name;
    TDF_LabelSequence components;
    XCAFDoc_ShapeTool::GetComponents(product, components);
    for (const TDF_Label& component : components) Walk(component, inherited, depth + 1);
}

void PartFlattener::AddPart(const TDF_Label& product, const Inherited& inherited) {
    const TopoDS_Shape shape = XCAFDoc_ShapeTool::GetShape(product);
    const std::string name = NameOf(product, inherited.instance);
    if (shape.IsNull() || !TopExp_Explorer(shape, TopAbs_VERTEX).More()) {
        const auto external = mExternalFiles.find(name);
        if (external == mExternalFiles.end())
            ++mEmpty;
        else
            mOutside.push_back({inherited, external->second, name});
        return;
    }
    if (!TopExp_Explorer(shape, TopAbs_SOLID).More()) {
        ++mWithoutSolid[Shown(name) + " without a solid (" + ContentsOf(shape) + ")"];
        return;
    }
    for (TopExp_Explorer solid(shape, TopAbs_SOLID); solid.More(); solid.Next()) {
        PartLook look = inherited.look;
        std::string own = name;
        Refine(product, solid.Current(), look, own);
        std::string assembly = inherited.assembly;
        const bool isMirrored = TakeOwnUse(solid.Current(), look, own, assembly);
        if (own.empty()) mNameless.Take(assembly);
        mNamesByShape.emplace(solid.Current().TShape().get(), own);
        if (mLooks.HasOtherFaceColors(product, solid.Current(), look.color)) mFaceColors.Take(own);
        if (mLooks.HasOtherFaceLayers(product, solid.Current(), look.layer)) mFaceLayers.Take(own);
        if (!look.visible || !look.layerVisible) mHidden.Take(own);
        mResult.solids.push_back(
            PartOf(InPlace(solid.Current(), inherited.place, isMirrored), own, assembly, look));
    }
    const TopoDS_Shape rest = BesideSolids(shape);
    if (rest.IsNull()) return;
    ++(HoldsFaces(rest)
           ? mSheetsBeside
           : mCurvesBeside)["what stands beside the solid of " + Shown(name) + " (" + ContentsOf(rest) + ")"];
}

/// Adds what stands on the use that a solid was made for; true where that mirrors it. A product's shape that
/// is mapped into another's is a part of the one in the other.
bool PartFlattener::TakeOwnUse(const TopoDS_Shape& solid, PartLook& look, std::string& name,
                               std::string& assembly) const {
    const auto found = mOwnUses.find(solid.TShape().get());
    if (found == mOwnUses.end()) return false;
    const OwnUse& use = found->second;
    PartLook own = use.look;
    own.TakeMissing(look);
    look = own;
    if (!use.name.empty()) {
        if (!name.empty()) assembly = name;
        name = use.name;
    }
    return use.isMirrored;
}

/// The look that stands on the solid, or on all its faces alike, rather than on the product.
void PartFlattener::Refine(const TDF_Label& product, const TopoDS_Shape& solid, PartLook& look,
                           std::string& name) const {
    TDF_Label own;
    if (!XCAFDoc_ShapeTool::GetShape(product).IsSame(solid) && mShapes->FindSubShape(product, solid, own)) {
        if (name.empty() && !mToTheLetter) name = NameOf(own);
        const PartLook solidLook = mLooks.Of(own);
        // A colour of the solid itself is nearer to it than what its product hands down.
        if (solidLook.color) look.color = solidLook.color;
        look.TakeMissing(solidLook);
    }
    look.TakeMissing(mLooks.OfAllFaces(product, solid));
}

}  // namespace brenvik::step
