// From an object's stream to an entity's shape.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "drafting_host/dwg/links.h"
#include "drafting_host/dwg/names.h"
#include "drafting_host/dwg/objects.h"

namespace brenvik::dwg {

/// What an entity's shape needs besides its own object.
struct Surroundings {
    const Names& names;
    /// The bodies of release 2013 on, by the handles of their entities.
    const std::unordered_map<HandleValue, std::string>& bodies;
    Links& links;
    /// The objects that belong to another one (vertices of a polyline), in order, opened and read up to their
    /// own values. Throws Damage for one that can't be read: a polyline less a vertex would be another shape.
    std::function<std::vector<Object>(const std::vector<HandleValue>& listed, HandleValue first,
                                      HandleValue last)>
        parts;
};

/// What a body says of itself beside its ACIS data.
struct BodyWitness {
    std::optional<Point3> middle;
    /// In front of ACIS data within the entity. No DXF has it, and its meaning isn't known.
    std::optional<bool> mark;
    bool isText = false;
};

/// What an entity has besides its shape.
struct Further {
    std::string groups;  ///< As group text of a DXF file.
    /// A spline through points: what of its curve the file doesn't settle. Blank where it does.
    std::string unsettled;
    bool losesColumns = false;        ///< A text in columns, which a drawing has in one.
    std::string doubt;                ///< Why something of it may be missing; blank for nothing.
    std::vector<std::string> mended;  ///< Values that its kind settles, whatever the file says.
    BodyWitness body;
};

/// Whether thickness and extrusion take a single bit at their defaults.
inline bool IsShort(const Object& object) { return object.streams.IsAtLeast(Release::R2000); }

/// Whether ReadShape takes the kind.
bool IsShapeKind(std::string_view kind);
/// Whether it is a vertex or a face of a polyline of many objects.
bool IsVertexKind(std::string_view kind);

/// The shape of an entity that stands behind its common part. Throws Damage.
EntityGeometry ReadShape(Object& object, const Common& common, std::string_view kind,
                         const Surroundings& surroundings, Further& further);

// By kinds of shapes.
EntityGeometry ReadPolyline(Object& object, std::string_view kind, const Surroundings& surroundings,
                            Further& further);
EntityGeometry ReadSpline(Object& object, Further& further);
EntityGeometry ReadText(Object& object, const Surroundings& surroundings);
EntityGeometry ReadMText(Object& object, const Surroundings& surroundings, Further& further);
EntityGeometry ReadViewport(Object& object, Further& further);
EntityGeometry ReadAcis(Object& object, const Common& common, std::string_view kind,
                        const Surroundings& surroundings, Further& further);

}  // namespace brenvik::dwg
