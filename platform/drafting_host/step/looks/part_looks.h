// The looks of products, solids and faces in the modeller's assembly document: layer, colour and whether they
// show.
#pragma once

#include <TDF_Label.hxx>
#include <TDocStd_Document.hxx>
#include <TopTools_DataMapOfShapeInteger.hxx>
#include <TopoDS_Shape.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_strings.h"

namespace brenvik::step {

/// A share of full colour, 0 to 1, as screens count it.
std::uint8_t ByteOf(double share);

/// What stands on a label, or is handed down to the parts in it.
struct PartLook {
    std::string layer;  ///< Empty for none.
    bool layerVisible = true;
    std::optional<Rgb> color;
    bool visible = true;

    /// Adds the looks that are missing here; whatever is hidden on either side stays hidden.
    void TakeMissing(const PartLook& other);
};

class PartLooks {
  public:
    PartLooks(const Handle(TDocStd_Document) & document, const StandIns& texts);

    PartLook Of(const TDF_Label& label) const;
    /// The values that all faces of a solid share; others are empty, and all are if a face has no look.
    PartLook OfAllFaces(const TDF_Label& product, const TopoDS_Shape& solid) const;

    /// Whether a face of the solid has another colour, or stands on another layer, than the part.
    bool HasOtherFaceColors(const TDF_Label& product, const TopoDS_Shape& solid,
                            const std::optional<Rgb>& color) const;
    bool HasOtherFaceLayers(const TDF_Label& product, const TopoDS_Shape& solid,
                            const std::string& layer) const;

  private:
    void TakeFaces(const TDF_Label& product) const;
    const PartLook* OfFace(const TopoDS_Shape& face) const;
    template <typename IsOther>
    bool AnyFace(const TDF_Label& product, const TopoDS_Shape& solid, IsOther isOther) const;

    Handle(XCAFDoc_ColorTool) mColors;
    Handle(XCAFDoc_LayerTool) mLayers;
    const StandIns& mTexts;
    /// The faces with looks of the product that was asked for last.
    mutable TDF_Label mProduct;
    mutable TopTools_DataMapOfShapeInteger mFaces;
    mutable std::vector<PartLook> mFaceLooks;
};

}  // namespace brenvik::step
