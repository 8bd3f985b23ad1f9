// Keys of the material library, thickness and name: which ones can be, which of the library are near one that
// isn't there, and new records as copies of others.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "settings/materials.h"

namespace brenvik {

/// Whether the values name a first tool: without one they are no material for a run.
bool HasFirstTool(const MaterialTexts& texts);

/// Whether two keys name one material: ".75 oak" and "0.75 OAK" do.
bool SameMaterialKey(std::string_view a, std::string_view b);

/// The form of a key that is the same for all that name one material.
std::string ComparableMaterialKey(std::string_view key);

/// What was expected of a key that no part could ever have: a thickness as runs write it, one blank, a name.
/// Blank for a key that can be.
std::string MaterialKeyFault(std::string_view key);
/// The same of a key that is to be added: a run from a drawing would find one with a single quote, but the
/// statements of lists can't take it.
std::string NewMaterialKeyFault(std::string_view key);

/// The record that a run would take for this key, or null.
const MaterialTexts* FindMaterialIn(const MaterialLibrary& library, std::string_view key);

/// The keys of records with a first tool, the nearest first, at most `count`: the same name goes before a
/// similar one, and a similar one before others; among those the nearest thickness first.
std::vector<std::string> NearMaterials(const MaterialLibrary& library, std::string_view key,
                                       std::size_t count);

/// Adds a record behind the last one of the file, whose other bytes stay as they are, and keeps the file as
/// it was as `materials.bak`. Fails as reading and writing do, the library untouched.
void AppendMaterial(const MaterialTexts& material);

}  // namespace brenvik
