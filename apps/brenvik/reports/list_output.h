// The cut list as text: a table for people, CSV for spreadsheets, JSON for programs.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "session/ports/database_port.h"

namespace brenvik::app {

enum class ListFormat { Table, Csv, Json };

/// Rows of the part table with their columns' names ("bv_length") and captions ("Length").
struct ListColumn {
    std::string name, caption;
    bool number = false;
};
struct PartList {
    std::vector<ListColumn> columns;
    std::vector<std::vector<FieldValue>> rows;
};

/// No rows: the columns of the part table, in its order, or the quantity and the columns of a grouped list,
/// by their captions.
PartList EmptyPartList(const std::vector<std::string>& groupedBy = {});

/// All records. Columns that the part table has not take their name for caption.
PartList ReadPartList(const Recordset& records);

/// Puts a column with the drawing's name ahead of the others.
void NameDrawing(PartList& list, const std::string& drawing);

/// The lists of several drawings as one output: tables below their names, one object of JSON by name, one
/// table of CSV under one header.
class JointLists {
  public:
    JointLists(ListFormat format, std::ostream& out) : mFormat(format), mOut(out) {}
    /// Takes a drawing's list as it was written; a blank one is null in JSON, and left out otherwise.
    void Add(const std::string& drawing, std::string list);
    void End();

  private:
    ListFormat mFormat;
    std::ostream& mOut;
    bool mHasOne = false;
};

/// A table has aligned columns under captions; columns without a value are left out but for the usual
/// ones, and the raw extents are shown only where a part has no letters yet. CSV follows RFC 4180: all
/// columns, captions first, CR LF. JSON is an array of objects keyed by column name, numbers as numbers.
void WritePartList(const PartList& list, ListFormat format, std::ostream& out);

}  // namespace brenvik::app
