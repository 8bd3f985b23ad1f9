// Files of the format's second and third edition: data in several sections, sections with values of their
// own, and sections of other things. Numbers of statements count for the whole file.
#pragma once

#include <string>

#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {

/// Whether a file has another form than one plain section of data.
bool HasManySections(const Statements& statements);

/// The content with the data in one plain section, the only form that the modeller reads. Anchors, which give
/// statements names for other files, go; references to other files go too, so that what refers to them has to
/// be taken out beforehand.
std::string WithOneSection(std::string content);

}  // namespace brenvik::step
