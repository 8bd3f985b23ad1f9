// Extended data of one object: per application a list of items, in the order in which the applications
// came. Application names compare without regard to case and are kept as first written.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik {

/// The most that all the extended data of one object may take, in bytes as a drawing file counts them.
inline constexpr std::size_t XdataTotalLimit = 16383;

/// The data as an object is given them: codes and values of one or several applications, each led by its
/// application entry (1001). Values are put into the type that their code wants.
///
/// Throws Failure for lists of different lengths, a first item that is no application entry, an unknown
/// code, a value that doesn't fit its code, a text longer than XDataTextLimit.
std::vector<XDataOfApp> ParseXData(std::span<const std::int16_t> types, std::span<const XDataValue> values);

/// Puts `changes` into `data`: an application with items replaces what it had, one without loses it.
/// Throws Failure where the whole would be larger than `XdataTotalLimit`, and then changes nothing.
void MergeXData(std::vector<XDataOfApp>& data, const std::vector<XDataOfApp>& changes);

/// Whether two objects have the same data: the order of the applications says nothing, that of one's items
/// does.
bool IsSameXData(const std::vector<XDataOfApp>& a, const std::vector<XDataOfApp>& b);

/// Codes and values of one application, or of all with a blank name, application entries included. Both
/// come back empty where there are none.
void ListXData(const std::vector<XDataOfApp>& data, std::string_view app, std::vector<std::int16_t>& types,
               std::vector<XDataValue>& values);

}  // namespace brenvik
