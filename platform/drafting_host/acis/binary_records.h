// Binary ACIS data (SAB): the same records as ACIS text in other tokens. Each token is a byte for its kind
// and the bytes of its value.
#pragma once

#include "drafting_host/acis/sat_records.h"

#include <string_view>

namespace brenvik::acis {

/// Splits binary data into head and records, as SplitRecords does for text, with which it shares what records
/// mean: positions and vectors become three numbers, the pieces of a name one name with hyphens. Words of the
/// text whose meaning hangs on their place (forward, in, full) are choices here. Records have no line. Data
/// that break off keep the records that are whole and get a problem with the place in bytes. The result
/// refers to `data`, which has to outlive it.
RecordText SplitBinaryRecords(std::string_view data);

}  // namespace brenvik::acis
