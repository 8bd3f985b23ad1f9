// Layers, colours and visibility stand on labels; a part takes them from several.
#include "drafting_host/step/looks/part_looks.h"

#include <Quantity_ColorRGBA.hxx>
#include <TDF_LabelSequence.hxx>
#include <TopExp_Explorer.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <algorithm>
#include <cmath>

namespace brenvik::step {
namespace {

Rgb ScreenColor(const Quantity_ColorRGBA& color) {
    double red = 0, green = 0, blue = 0;
    color.GetRGB().Values(red, green, blue, Quantity_TOC_sRGB);
    return {ByteOf(red), ByteOf(green), ByteOf(blue), ByteOf(color.Alpha())};
}

}  // namespace

std::uint8_t ByteOf(double share) {
    return static_cast<std::uint8_t>(std::clamp(std::lround(share * 255), 0L, 255L));
}

void PartLook::TakeMissing(const PartLook& other) {
    if (layer.empty()) {
        layer = other.layer;
        layerVisible = other.layerVisible;
    }
    if (!color) color = other.color;
    visible = visible && other.visible;
}

PartLooks::PartLooks(const Handle(TDocStd_Document) & document, const StandIns& texts)
    : mColors(XCAFDoc_DocumentTool::ColorTool(document->Main())),
      mLayers(XCAFDoc_DocumentTool::LayerTool(document->Main())),
      mTexts(texts) {}

PartLook PartLooks::Of(const TDF_Label& label) const {
    PartLook look;
    TDF_LabelSequence layers;
    if (mLayers->GetLayers(label, layers) && !layers.IsEmpty()) {
        TCollection_ExtendedString name;
        mLayers->GetLayer(layers.First(), name);
        look.layer = mTexts.TextFor(Utf8(name));
        look.layerVisible = mLayers->IsVisible(layers.First());
    }
    Quantity_ColorRGBA color;
    for (const XCAFDoc_ColorType type : {XCAFDoc_ColorSurf, XCAFDoc_ColorGen, XCAFDoc_ColorCurv}) {
        if (look.color || !mColors->GetColor(label, type, color)) continue;
        look.color = ScreenColor(color);
    }
    look.visible = mColors->IsVisible(label);
    return look;
}

/// Only faces with looks have labels, which most products have none of.
void PartLooks::TakeFaces(const TDF_Label& product) const {
    if (mProduct == product) return;
    mProduct = product;
    mFaces.Clear();
    mFaceLooks.clear();
    TDF_LabelSequence labels;
    XCAFDoc_ShapeTool::GetSubShapes(product, labels);
    for (const TDF_Label& label : labels) {
        const TopoDS_Shape shape = XCAFDoc_ShapeTool::GetShape(label);
        if (shape.IsNull() || shape.ShapeType() != TopAbs_FACE) continue;
        mFaces.Bind(shape, static_cast<int>(mFaceLooks.size()));
        mFaceLooks.push_back(Of(label));
    }
}

const PartLook* PartLooks::OfFace(const TopoDS_Shape& face) const {
    const int* place = mFaces.Seek(face);
    return place == nullptr ? nullptr : &mFaceLooks[static_cast<std::size_t>(*place)];
}

PartLook PartLooks::OfAllFaces(const TDF_Label& product, const TopoDS_Shape& solid) const {
    TakeFaces(product);
    std::optional<PartLook> common;
    for (TopExp_Explorer face(solid, TopAbs_FACE); face.More(); face.Next()) {
        const PartLook* look = OfFace(face.Current());
        if (look == nullptr) return {};
        if (!common) common = *look;
        if (common->color != look->color) common->color.reset();
        if (common->layer != look->layer) common->layer.clear();
        common->visible = common->visible || look->visible;
    }
    return common.value_or(PartLook());
}

template <typename IsOther>
bool PartLooks::AnyFace(const TDF_Label& product, const TopoDS_Shape& solid, IsOther isOther) const {
    TakeFaces(product);
    if (mFaceLooks.empty()) return false;
    for (TopExp_Explorer face(solid, TopAbs_FACE); face.More(); face.Next()) {
        const PartLook* look = OfFace(face.Current());
        if (look != nullptr && isOther(*look)) return true;
    }
    return false;
}

bool PartLooks::HasOtherFaceColors(const TDF_Label& product, const TopoDS_Shape& solid,
                                   const std::optional<Rgb>& color) const {
    return AnyFace(product, solid, [&](const PartLook& look) { return look.color && look.color != color; });
}

bool PartLooks::HasOtherFaceLayers(const TDF_Label& product, const TopoDS_Shape& solid,
                                   const std::string& layer) const {
    return AnyFace(product, solid,
                   [&](const PartLook& look) { return !look.layer.empty() && look.layer != layer; });
}

}  // namespace brenvik::step
