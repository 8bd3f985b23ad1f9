// Texts of bodies that are made ahead of the drawings that they go into.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <TopoDS_Shape.hxx>
#include <optional>
#include <string>

namespace brenvik {

/// The body as text. Fails as a `WriteFailure` where ACIS text can't hold it.
std::string TextOfBody(const TopoDS_Shape& body);
/// The same; null where ACIS text can't hold it.
std::optional<std::string> BodyTextOf(const TopoDS_Shape& body);

/// Keeps the text of a body that is written next, in place of the one before: a text hangs on nothing but its
/// body, whichever drawing has that.
void KeepBodyText(const TopoDS_Shape& body, std::string text);
/// The kept text of the body, which is forgotten then; null where there is none.
std::optional<std::string> TakeBodyText(const TopoDS_Shape& body);

}  // namespace brenvik
