// The assembly document of the modeller, flattened: each solid at its place in the world, with what its
// products and instances hand down to it.
#pragma once

#include <TDF_Label.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDocStd_Document.hxx>
#include <TopLoc_Location.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <map>
#include <string>
#include <vector>

#include "drafting_host/step/looks/part_looks.h"
#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_strings.h"

namespace brenvik::step {

/// What an instance hands down to the parts in it.
struct Inherited {
    TopLoc_Location place;
    std::string assembly;
    std::string instance;
    PartLook look;
};

/// A part whose body lies in another file.
struct OutsidePart : Inherited {
    std::string file, name;
};

/// What a solid has that the modeller was given for one use of a shape.
struct OwnUse {
    PartLook look;
    std::string name;         ///< Of the product whose shape is mapped there; blank for none.
    bool isMirrored = false;  ///< Across the YZ plane of its shape.
};
using OwnUsesByShape = std::map<const Standard_Transient*, OwnUse>;

class PartFlattener {
  public:
    /// `toTheLetter` leaves the blanks at the ends of names. `externalFiles` are those of products.
    PartFlattener(const Handle(TDocStd_Document) & document, const StandIns& texts, bool toTheLetter,
                  std::map<std::string, std::string> externalFiles, OwnUsesByShape ownUses,
                  StepDocument& result);

    void Run();  ///< Fills the result with the solids in their world places.

    /// The names of the parts by the shape that they share with their copies.
    const std::map<const Standard_Transient*, std::string>& NamesByShape() const { return mNamesByShape; }

    /// Parts that have no shape here since another file holds it.
    const std::vector<OutsidePart>& Outside() const { return mOutside; }

    /// Reports products without a solid, and other shapes beside the solids of products, with what they hold.
    /// Of the empty products, `known` are reported elsewhere. Curves and points beside a solid are a remark.
    void NoteWithoutSolid(std::size_t known);

    /// Remarks on parts whose faces have looks of their own, and on parts that are hidden in the file.
    void NoteLooks();

    /// Remarks on parts in assemblies that nobody has named: pieces of a product's shape, for one.
    void NoteNameless();

  private:
    /// How many parts something is the matter with, and the first one's name.
    struct Met {
        std::size_t count = 0;
        std::string first;
        void Take(const std::string& name);
    };

    std::string NameOf(const TDF_Label& label) const;
    std::string NameOf(const TDF_Label& product, const std::string& instance) const;
    bool IsRepeatedRoot(const TDF_Label& root, const TDF_LabelSequence& roots) const;
    void Walk(const TDF_Label& label, Inherited inherited, int depth);
    void AddPart(const TDF_Label& product, const Inherited& inherited);
    void Refine(const TDF_Label& product, const TopoDS_Shape& solid, PartLook& look, std::string& name) const;
    bool TakeOwnUse(const TopoDS_Shape& solid, PartLook& look, std::string& name,
                    std::string& assembly) const;
    void NoteMet(const Met& met, const std::string& what);

    Handle(XCAFDoc_ShapeTool) mShapes;
    PartLooks mLooks;
    const StandIns& mTexts;
    bool mToTheLetter;
    std::map<std::string, std::string> mExternalFiles;  ///< By product.
    OwnUsesByShape mOwnUses;
    std::vector<OutsidePart> mOutside;
    StepDocument& mResult;
    std::map<std::string, int> mWithoutSolid, mSheetsBeside, mCurvesBeside;
    Met mFaceColors, mFaceLayers, mHidden, mNameless;
    std::size_t mEmpty = 0;
    std::map<const Standard_Transient*, std::string> mNamesByShape;
};

}  // namespace brenvik::step
