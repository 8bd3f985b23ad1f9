// What the statements of a STEP file are there for, by their kinds: what a fault in one takes with it depends
// on that.
#pragma once

#include <span>
#include <string_view>

namespace brenvik::step {

enum class Role {
    Geometry,   ///< Points to bodies: nothing made of a faulty one can be trusted.
    Body,       ///< A solid or a surface model, the last of the geometry.
    Items,      ///< A representation: a list of items, of which each can be missing.
    Structure,  ///< Products and their places in assemblies: without one all parts may be misplaced.
    Look,       ///< Styles, colours, layers.
    Paperwork   ///< Persons, dates, approvals, properties, texts.
};

/// The role of a statement of these kinds (one, or several of a statement in brackets).
Role RoleOf(std::span<const std::string_view> kinds);

/// Whether a statement of this kind is a solid given by its faces.
bool IsSolid(std::string_view kind);

/// Whether it is such a solid or a surface model of shells.
bool IsBody(std::string_view kind);

}  // namespace brenvik::step
