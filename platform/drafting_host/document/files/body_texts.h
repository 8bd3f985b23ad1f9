// Bodies and their texts: texts that are made ahead of the drawings that they go into, and shapes that are
// made of texts.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <TopoDS_Shape.hxx>
#include <optional>
#include <string>
#include <vector>

#include "drafting_host/document/geometry/shape_source.h"

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

/// The body that a text holds: the only one, all of them together, or a null shape.
TopoDS_Shape OneShapeOf(const std::vector<TopoDS_Shape>& bodies);
/// The source of the body that was read from this text, which arrived as `OneShapeOf` gave it.
ShapeSourcePointer SourceOfText(std::string text);

}  // namespace brenvik
