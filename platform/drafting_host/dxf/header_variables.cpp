// The table of drawing variables.
#include "drafting_host/dxf/header_variables.h"

#include <array>

namespace brenvik {
namespace {

constexpr auto point = VariableKind::Point;
constexpr auto flat = VariableKind::FlatPoint;
constexpr auto value = VariableKind::Value;

constexpr auto variables = std::to_array<HeaderVariable>({
    {"$INSBASE", point, 10},       {"$LIMMIN", flat, 10},
    {"$LIMMAX", flat, 10},         {"$ORTHOMODE", value, 70},
    {"$REGENMODE", value, 70},     {"$FILLMODE", value, 70},
    {"$QTEXTMODE", value, 70},     {"$MIRRTEXT", value, 70},
    {"$LTSCALE", value, 40},       {"$ATTMODE", value, 70},
    {"$TEXTSIZE", value, 40},      {"$TRACEWID", value, 40},
    {"$CECOLOR", value, 62},       {"$CELTSCALE", value, 40},
    {"$DISPSILH", value, 70},      {"$LUNITS", value, 70},
    {"$LUPREC", value, 70},        {"$SKETCHINC", value, 40},
    {"$FILLETRAD", value, 40},     {"$AUNITS", value, 70},
    {"$AUPREC", value, 70},        {"$MENU", value, 1},
    {"$ELEVATION", value, 40},     {"$PELEVATION", value, 40},
    {"$THICKNESS", value, 40},     {"$LIMCHECK", value, 70},
    {"$CHAMFERA", value, 40},      {"$CHAMFERB", value, 40},
    {"$CHAMFERC", value, 40},      {"$CHAMFERD", value, 40},
    {"$SKPOLY", value, 70},        {"$TDCREATE", value, 40},
    {"$TDUCREATE", value, 40},     {"$TDUPDATE", value, 40},
    {"$TDUUPDATE", value, 40},     {"$TDINDWG", value, 40},
    {"$TDUSRTIMER", value, 40},    {"$USRTIMER", value, 70},
    {"$ANGBASE", value, 50},       {"$ANGDIR", value, 70},
    {"$PDMODE", value, 70},        {"$PDSIZE", value, 40},
    {"$PLINEWID", value, 40},      {"$SPLFRAME", value, 70},
    {"$SPLINETYPE", value, 70},    {"$SPLINESEGS", value, 70},
    {"$SURFTAB1", value, 70},      {"$SURFTAB2", value, 70},
    {"$SURFTYPE", value, 70},      {"$SURFU", value, 70},
    {"$SURFV", value, 70},         {"$UCSORGTOP", point, 10},
    {"$UCSORGBOTTOM", point, 10},  {"$UCSORGLEFT", point, 10},
    {"$UCSORGRIGHT", point, 10},   {"$UCSORGFRONT", point, 10},
    {"$UCSORGBACK", point, 10},    {"$PUCSORG", point, 10},
    {"$PUCSXDIR", point, 10},      {"$PUCSYDIR", point, 10},
    {"$PUCSORGTOP", point, 10},    {"$PUCSORGBOTTOM", point, 10},
    {"$PUCSORGLEFT", point, 10},   {"$PUCSORGRIGHT", point, 10},
    {"$PUCSORGFRONT", point, 10},  {"$PUCSORGBACK", point, 10},
    {"$USERI1", value, 70},        {"$USERI2", value, 70},
    {"$USERI3", value, 70},        {"$USERI4", value, 70},
    {"$USERI5", value, 70},        {"$USERR1", value, 40},
    {"$USERR2", value, 40},        {"$USERR3", value, 40},
    {"$USERR4", value, 40},        {"$USERR5", value, 40},
    {"$WORLDVIEW", value, 70},     {"$SHADEDGE", value, 70},
    {"$SHADEDIF", value, 70},      {"$TILEMODE", value, 70},
    {"$MAXACTVP", value, 70},      {"$PINSBASE", point, 10},
    {"$PLIMCHECK", value, 70},     {"$PLIMMIN", flat, 10},
    {"$PLIMMAX", flat, 10},        {"$UNITMODE", value, 70},
    {"$VISRETAIN", value, 70},     {"$PLINEGEN", value, 70},
    {"$PSLTSCALE", value, 70},     {"$TREEDEPTH", value, 70},
    {"$CMLJUST", value, 70},       {"$CMLSCALE", value, 40},
    {"$PROXYGRAPHICS", value, 70}, {"$CELWEIGHT", value, 370},
    {"$ENDCAPS", value, 280},      {"$JOINSTYLE", value, 280},
    {"$LWDISPLAY", value, 290},    {"$HYPERLINKBASE", value, 1},
    {"$XEDIT", value, 290},        {"$FINGERPRINTGUID", value, 2},
    {"$VERSIONGUID", value, 2},    {"$PSVPSCALE", value, 40},
    {"$OLESTARTUP", value, 290},
});

}  // namespace

std::span<const HeaderVariable> DxfHeaderVariables() { return variables; }

const HeaderVariable* FindHeaderVariable(std::string_view name) {
    for (const HeaderVariable& variable : variables) {
        if (variable.name == name) return &variable;
    }
    return nullptr;
}

}  // namespace brenvik
