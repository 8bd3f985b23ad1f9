// The look of a part by its entity and its layer, and of the picture around it.
#include "drawing_view/part_looks.h"

#include <Graphic3d_MaterialAspect.hxx>
#include <Prs3d_LineAspect.hxx>
#include <V3d_AmbientLight.hxx>
#include <V3d_DirectionalLight.hxx>
#include <algorithm>

#include "base/failure.h"
#include "drafting_host/document/host_document.h"
#include "drafting_host/document/host_entity.h"
#include "drafting_host/document/host_layers.h"
#include "drafting_host/document/host_solids.h"
#include "drafting_host/dxf/data/aci_colors.h"

namespace brenvik::desktop {

namespace {

/// Of the lamp and of the light from everywhere. A face square to the eye gets about its own colour, as
/// measured on the screen, and none much more: beyond that every colour ends in white.
constexpr float LampLight = 0.55F, AmbientLight = 0.27F;
/// Share of the mark in the colour of what is selected: enough on boards that are blue themselves, and little
/// enough for two kinds of boards to be told apart.
constexpr double MarkShare = 0.75;
/// Where lines are seen on a dark ground, and on a light one: as the eye weighs colours, from 0 to 1.
constexpr double LightEnough = 0.25, DarkEnough = 0.22;

Quantity_Color Rgb(double red, double green, double blue) { return {red, green, blue, Quantity_TOC_sRGB}; }

Quantity_Color ColorOf(int index) {
    const ScreenColor color = ColorOfIndex(index < 1 || index > 255 ? 7 : index);
    return Rgb(color.red / 255.0, color.green / 255.0, color.blue / 255.0);
}

double Luminance(const Quantity_Color& color) {
    return 0.2126 * color.Red() + 0.7152 * color.Green() + 0.0722 * color.Blue();
}

/// Between two colours, in the measure in which light adds up.
Quantity_Color Mixed(const Quantity_Color& one, const Quantity_Color& other, double share) {
    const auto part = [share](double from, double to) { return from + (to - from) * share; };
    return {part(one.Red(), other.Red()), part(one.Green(), other.Green()), part(one.Blue(), other.Blue()),
            Quantity_TOC_RGB};
}

/// The colour of a line, made darker or lighter until it is seen on the ground.
Quantity_Color WireColor(const Quantity_Color& color, bool onDarkGround) {
    const double seen = Luminance(color);
    if (onDarkGround) {
        if (seen >= LightEnough) return color;
        return Mixed(color, Rgb(1, 1, 1), (LightEnough - seen) / (1 - seen));
    }
    return seen <= DarkEnough ? color : Mixed(color, Rgb(0, 0, 0), 1 - DarkEnough / seen);
}

Quantity_Color EdgeColor(const Quantity_Color& face) {
    constexpr double darkFace = 0.06;
    return Luminance(face) < darkFace ? Rgb(0.75, 0.75, 0.75) : Rgb(0.15, 0.15, 0.15);
}

void SetLine(Prs3d_LineAspect& line, const Quantity_Color& color, double width) {
    line.SetColor(color);
    line.SetWidth(width);
}

}  // namespace

Quantity_Color PartColor(const HostEntity& entity) {
    const int own = entity.Look().color;
    const int index = own == 256 || own == 0 ? entity.LayerObject().Values().color : own;
    return index == 7 ? Rgb(0.87, 0.78, 0.62) : ColorOf(index);
}

bool IsShown(const HostEntity& entity) {
    const LayerData& layer = entity.LayerObject().Values();
    return !entity.Erased() && entity.Look().visible && layer.on && !layer.frozen;
}

int ColorKey(const HostEntity& entity) {
    return entity.Look().color * 1000 + entity.LayerObject().Values().color;
}

double SizeOf(const HostEntity& entity) {
    const Box3 box = entity.GetBoundingBox();
    return std::max({box.max.x - box.min.x, box.max.y - box.min.y, box.max.z - box.min.z});
}

Bnd_Box BoxOfShown(HostDocument& document) {
    Bnd_Box all;
    if (document.Closed()) return all;
    for (const HostEntity* entity : document.Model().Entities()) {
        if (dynamic_cast<const HostSolid*>(entity) == nullptr || !IsShown(*entity)) continue;
        try {
            const Box3 box = entity->GetBoundingBox();
            all.Update(box.min.x, box.min.y, box.min.z, box.max.x, box.max.y, box.max.z);
        } catch (const Failure&) {
            continue;  // A body without an extent takes no room.
        }
    }
    return all;
}

Quantity_Color PointedColor() { return Quantity_NOC_DEEPSKYBLUE2; }
Quantity_Color MarkedEdgeColor() { return Rgb(1, 1, 1); }

void Dress(AIS_Shape& part, const PartLook& look) {
    const Quantity_Color mark = Rgb(0.10, 0.42, 0.95);
    const Quantity_Color face = look.marked ? Mixed(look.color, mark, MarkShare) : look.color;
    Graphic3d_MaterialAspect matt(Graphic3d_NOM_UserDefined);
    matt.SetMaterialType(Graphic3d_MATERIAL_ASPECT);
    matt.SetAmbientColor(Quantity_NOC_WHITE);
    matt.SetDiffuseColor(Quantity_NOC_WHITE);
    matt.SetSpecularColor(Quantity_NOC_BLACK);
    matt.SetEmissiveColor(Quantity_NOC_BLACK);
    part.SetMaterial(matt);
    part.SetColor(face);
    // A shape's colour is that of its lines too, so these come after it. They are changed in place: what is
    // shown already holds on to them.
    const Handle(Prs3d_Drawer)& drawer = part.Attributes();
    drawer->SetFaceBoundaryDraw(true);
    drawer->SetupOwnFaceBoundaryAspect();
    const double width = look.marked ? 2 : 1;
    SetLine(*drawer->FaceBoundaryAspect(), look.marked ? MarkedEdgeColor() : EdgeColor(face), width);
    const Quantity_Color wire = WireColor(look.marked ? mark : look.color, look.onDarkGround);
    for (const Handle(Prs3d_LineAspect) & line :
         {drawer->WireAspect(), drawer->LineAspect(), drawer->FreeBoundaryAspect(),
          drawer->UnFreeBoundaryAspect()})
        SetLine(*line, wire, width);
    part.SynchronizeAspects();
}

/// The lamp stands above the eye's left shoulder and goes along with it, so that the faces of a corner differ
/// from wherever it is seen.
void LightUp(V3d_Viewer& viewer) {
    const Handle(V3d_DirectionalLight) lamp =
        new V3d_DirectionalLight(gp_Dir(0.3, -0.5, -1), Quantity_NOC_WHITE, true);
    lamp->SetIntensity(LampLight);
    const Handle(V3d_AmbientLight) around = new V3d_AmbientLight(Quantity_NOC_WHITE);
    around->SetIntensity(AmbientLight);
    viewer.AddLight(lamp);
    viewer.AddLight(around);
    viewer.SetLightOn(lamp);
    viewer.SetLightOn(around);
}

void LayGround(V3d_View& view, bool dark) {
    const Quantity_Color above = dark ? Rgb(0.13, 0.15, 0.18) : Rgb(0.80, 0.85, 0.90);
    const Quantity_Color below = dark ? Rgb(0.23, 0.25, 0.28) : Rgb(0.95, 0.96, 0.97);
    view.SetBgGradientColors(above, below, Aspect_GFM_VER);
    view.TriedronDisplay(Aspect_TOTP_LEFT_LOWER, dark ? Quantity_NOC_GRAY80 : Quantity_NOC_GRAY30, 0.08,
                         V3d_ZBUFFER);
}

}  // namespace brenvik::desktop
