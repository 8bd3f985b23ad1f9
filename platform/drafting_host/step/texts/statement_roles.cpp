// Kinds of the same role share words; the few that don't stand in lists of their own.
#include "drafting_host/step/texts/statement_roles.h"

#include <algorithm>
#include <array>

namespace brenvik::step {
namespace {

using Words = std::span<const std::string_view>;

constexpr std::array<std::string_view, 20> Bodies = {"MANIFOLD_SOLID_BREP",
                                                     "BREP_WITH_VOIDS",
                                                     "FACETED_BREP",
                                                     "SOLID_MODEL",
                                                     "SHELL_BASED_SURFACE_MODEL",
                                                     "GEOMETRIC_CURVE_SET",
                                                     "GEOMETRIC_SET",
                                                     "FACE_BASED_SURFACE_MODEL",
                                                     "EDGE_BASED_WIREFRAME_MODEL",
                                                     "CSG_SOLID",
                                                     "EXTRUDED_AREA_SOLID",
                                                     "REVOLVED_AREA_SOLID",
                                                     "SURFACE_CURVE_SWEPT_AREA_SOLID",
                                                     "EXTRUDED_FACE_SOLID",
                                                     "REVOLVED_FACE_SOLID",
                                                     "SURFACE_CURVE_SWEPT_FACE_SOLID",
                                                     "SWEPT_AREA_SOLID",
                                                     "SWEPT_DISK_SOLID",
                                                     "SOLID_REPLICA",
                                                     "MAPPED_ITEM"};

/// Beginnings of kinds that say how products hang together, and what their lengths are measured in.
constexpr std::array<std::string_view, 13> Structure = {"PRODUCT_DEFINITION",
                                                        "NEXT_ASSEMBLY_USAGE_OCCURRENCE",
                                                        "ASSEMBLY_COMPONENT_USAGE",
                                                        "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION",
                                                        "SHAPE_DEFINITION_REPRESENTATION",
                                                        "SHAPE_REPRESENTATION_RELATIONSHIP",
                                                        "REPRESENTATION_RELATIONSHIP",
                                                        "ITEM_DEFINED_TRANSFORMATION",
                                                        "REPRESENTATION_MAP",
                                                        "GEOMETRIC_REPRESENTATION_CONTEXT",
                                                        "GLOBAL_UNIT_ASSIGNED_CONTEXT",
                                                        "LENGTH_UNIT",
                                                        "PROPERTY_DEFINITION_REPRESENTATION"};

/// Words of kinds that only say how something looks.
constexpr std::array<std::string_view, 13> Looks = {
    "STYLE",  "COLOUR",    "FONT",         "LAYER",   "INVISIBILITY", "DRAUGHTING", "RENDERING",
    "CAMERA", "FILL_AREA", "TEXT_LITERAL", "CALLOUT", "SYMBOL",       "LEADER"};

/// Words of kinds that shapes don't hang on.
constexpr std::array<std::string_view, 39> Papers = {
    "PERSON",         "ORGANIZATION", "APPROVAL",
    "DATE",           "TIME",         "ASSIGNMENT",
    "SECURITY",       "DOCUMENT",     "CONTRACT",
    "CERTIFICATION",  "ROLE",         "DESCRIPTIVE",
    "PROPERTY",       "MATERIAL",     "GENERAL_",
    "CATEGORY",       "EFFECTIVITY",  "MEASURE_REPRESENTATION_ITEM",
    "PROTOCOL",       "CHANGE",       "ACTION",
    "IDENTIFICATION", "EXTERNAL",     "APPLIED_",
    "TOLERANCE",      "DATUM",        "DIMENSION",
    "ANNOTATION",     "ADDRESS",      "CLASSIFICATION",
    "VALUE_",         "CALENDAR",     "FEA_",
    "KINEMATIC",      "MECHANISM",    "_LINK_",
    "ELEMENT_",       "DERIVED_UNIT", "REP_ITEM_GROUP"};

bool HoldsOne(std::string_view kind, Words words) {
    return std::ranges::any_of(words, [&](std::string_view word) { return kind.find(word) != kind.npos; });
}

bool BeginsWithOne(std::string_view kind, Words words) {
    return std::ranges::any_of(words, [&](std::string_view word) { return kind.starts_with(word); });
}

bool IsOne(std::string_view kind, Words words) { return std::ranges::find(words, kind) != words.end(); }

Role RoleOf(std::string_view kind) {
    if (IsOne(kind, Bodies)) return Role::Body;
    if (kind == "DIMENSIONAL_EXPONENTS" || kind == "LENGTH_MEASURE_WITH_UNIT") return Role::Structure;
    if (kind == "PRODUCT" || BeginsWithOne(kind, Structure)) {
        // Contexts and sources of products are asked for by the format, and nothing hangs on them.
        const bool paper = kind.starts_with("PRODUCT_DEFINITION_CONTEXT") ||
                           kind.starts_with("PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS_");
        return paper || kind == "PROPERTY_DEFINITION_REPRESENTATION" ? Role::Paperwork : Role::Structure;
    }
    if (HoldsOne(kind, Looks)) return Role::Look;
    if (HoldsOne(kind, Papers) || kind.ends_with("_CONTEXT") || kind == "PRODUCT_CONCEPT")
        return Role::Paperwork;
    if (kind == "REPRESENTATION" || kind.ends_with("_REPRESENTATION"))
        return kind == "DEFINITIONAL_REPRESENTATION" ? Role::Geometry : Role::Items;
    return Role::Geometry;
}

}  // namespace

Role RoleOf(std::span<const std::string_view> kinds) {
    // Of several kinds the weightiest counts: a context of geometry and units is more than a context.
    Role role = Role::Paperwork;
    bool known = false;
    for (const std::string_view kind : kinds) {
        const Role one = RoleOf(kind);
        const bool weightier = one == Role::Structure || (one == Role::Body && role != Role::Structure);
        if (!known || weightier || (role == Role::Paperwork && one != Role::Paperwork)) role = one;
        known = true;
    }
    return known ? role : Role::Geometry;
}

bool IsSolid(std::string_view kind) {
    return kind == "MANIFOLD_SOLID_BREP" || kind == "BREP_WITH_VOIDS" || kind == "FACETED_BREP";
}

bool IsBody(std::string_view kind) { return IsSolid(kind) || kind == "SHELL_BASED_SURFACE_MODEL"; }

}  // namespace brenvik::step
