// The table of drawing variables.
#include "drafting_host/dxf/data/header_variables.h"

#include <array>

namespace brenvik {
namespace {

constexpr auto Point = VariableKind::Point;
constexpr auto Flat = VariableKind::FlatPoint;
constexpr auto Value = VariableKind::Value;

constexpr auto Variables = std::to_array<HeaderVariable>({
    {"$INSBASE", Point, 10},       {"$LIMMIN", Flat, 10},
    {"$LIMMAX", Flat, 10},         {"$ORTHOMODE", Value, 70},
    {"$REGENMODE", Value, 70},     {"$FILLMODE", Value, 70},
    {"$QTEXTMODE", Value, 70},     {"$MIRRTEXT", Value, 70},
    {"$LTSCALE", Value, 40},       {"$ATTMODE", Value, 70},
    {"$TEXTSIZE", Value, 40},      {"$TRACEWID", Value, 40},
    {"$CECOLOR", Value, 62},       {"$CELTSCALE", Value, 40},
    {"$DISPSILH", Value, 70},      {"$LUNITS", Value, 70},
    {"$LUPREC", Value, 70},        {"$SKETCHINC", Value, 40},
    {"$FILLETRAD", Value, 40},     {"$AUNITS", Value, 70},
    {"$AUPREC", Value, 70},        {"$MENU", Value, 1},
    {"$ELEVATION", Value, 40},     {"$PELEVATION", Value, 40},
    {"$THICKNESS", Value, 40},     {"$LIMCHECK", Value, 70},
    {"$CHAMFERA", Value, 40},      {"$CHAMFERB", Value, 40},
    {"$CHAMFERC", Value, 40},      {"$CHAMFERD", Value, 40},
    {"$SKPOLY", Value, 70},        {"$TDCREATE", Value, 40},
    {"$TDUCREATE", Value, 40},     {"$TDUPDATE", Value, 40},
    {"$TDUUPDATE", Value, 40},     {"$TDINDWG", Value, 40},
    {"$TDUSRTIMER", Value, 40},    {"$USRTIMER", Value, 70},
    {"$ANGBASE", Value, 50},       {"$ANGDIR", Value, 70},
    {"$PDMODE", Value, 70},        {"$PDSIZE", Value, 40},
    {"$PLINEWID", Value, 40},      {"$SPLFRAME", Value, 70},
    {"$SPLINETYPE", Value, 70},    {"$SPLINESEGS", Value, 70},
    {"$SURFTAB1", Value, 70},      {"$SURFTAB2", Value, 70},
    {"$SURFTYPE", Value, 70},      {"$SURFU", Value, 70},
    {"$SURFV", Value, 70},         {"$UCSORGTOP", Point, 10},
    {"$UCSORGBOTTOM", Point, 10},  {"$UCSORGLEFT", Point, 10},
    {"$UCSORGRIGHT", Point, 10},   {"$UCSORGFRONT", Point, 10},
    {"$UCSORGBACK", Point, 10},    {"$PUCSORG", Point, 10},
    {"$PUCSXDIR", Point, 10},      {"$PUCSYDIR", Point, 10},
    {"$PUCSORGTOP", Point, 10},    {"$PUCSORGBOTTOM", Point, 10},
    {"$PUCSORGLEFT", Point, 10},   {"$PUCSORGRIGHT", Point, 10},
    {"$PUCSORGFRONT", Point, 10},  {"$PUCSORGBACK", Point, 10},
    {"$USERI1", Value, 70},        {"$USERI2", Value, 70},
    {"$USERI3", Value, 70},        {"$USERI4", Value, 70},
    {"$USERI5", Value, 70},        {"$USERR1", Value, 40},
    {"$USERR2", Value, 40},        {"$USERR3", Value, 40},
    {"$USERR4", Value, 40},        {"$USERR5", Value, 40},
    {"$WORLDVIEW", Value, 70},     {"$SHADEDGE", Value, 70},
    {"$SHADEDIF", Value, 70},      {"$TILEMODE", Value, 70},
    {"$MAXACTVP", Value, 70},      {"$PINSBASE", Point, 10},
    {"$PLIMCHECK", Value, 70},     {"$PLIMMIN", Flat, 10},
    {"$PLIMMAX", Flat, 10},        {"$UNITMODE", Value, 70},
    {"$VISRETAIN", Value, 70},     {"$PLINEGEN", Value, 70},
    {"$PSLTSCALE", Value, 70},     {"$TREEDEPTH", Value, 70},
    {"$CMLJUST", Value, 70},       {"$CMLSCALE", Value, 40},
    {"$PROXYGRAPHICS", Value, 70}, {"$CELWEIGHT", Value, 370},
    {"$ENDCAPS", Value, 280},      {"$JOINSTYLE", Value, 280},
    {"$LWDISPLAY", Value, 290},    {"$HYPERLINKBASE", Value, 1},
    {"$XEDIT", Value, 290},        {"$FINGERPRINTGUID", Value, 2},
    {"$VERSIONGUID", Value, 2},    {"$PSVPSCALE", Value, 40},
    {"$OLESTARTUP", Value, 290},
});

}  // namespace

std::span<const HeaderVariable> DxfHeaderVariables() { return Variables; }

const HeaderVariable* FindHeaderVariable(std::string_view name) {
    for (const HeaderVariable& variable : Variables)
        if (variable.name == name) return &variable;
    return nullptr;
}

}  // namespace brenvik
