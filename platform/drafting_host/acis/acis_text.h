// ACIS data, text (SAT) or binary (SAB): the bodies that drawings carry behind their 3DSOLID, REGION and BODY
// entities, and that stand alone in .sat files. Reading gives boundary representations of the modeller with
// analytic surfaces and curves and with splines; writing gives version 400, which every drafting program
// since R2000 takes.
#pragma once

#include <TopoDS_Shape.hxx>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik::acis {

/// Something in a text that could not be read, with its place.
struct Problem {
    std::size_t line = 0;  ///< Line of the text, counted from 1; 0 where no line is to blame.
    long record = -1;      ///< Index of the record, -1 where no record is to blame.
    std::string text;      ///< What was found and what was expected.
    bool lost = true;      ///< False where all of the body arrived, such as after healing.
};

/// What the head of a text says about itself. Nothing of it changes the geometry: coordinates are
/// drawing units whatever `millimetresPerUnit` says.
struct TextHeader {
    int version = 0;           ///< 400 for R2000, 700, 20800, ...; 0 where the text has no head.
    long declaredRecords = 0;  ///< 0 where the writer did not count.
    long declaredBodies = 0;   ///< Entities that the writer meant to hand over.
    std::string product;       ///< The program that wrote the text.
    std::string modeller;      ///< Its modelling kernel.
    std::string date;          ///< Often empty.
    double millimetresPerUnit = 0;
    std::string unreadableUnit;  ///< What stands there instead of a number; empty where one does.
};

/// The outcome of reading one text.
struct ReadResult {
    /// One shape per body record that could be built, in the order of the records: a solid, a
    /// compound of solids for several lumps, a face or a compound of faces for sheets (regions).
    std::vector<TopoDS_Shape> bodies;
    /// Parallel to `bodies`: the record index of each.
    std::vector<long> bodyRecords;
    std::vector<Problem> problems;  ///< Empty where everything was read.
    TextHeader header;
    std::size_t recordCount = 0;
};

/// Reads a whole text, unmasked, its lines ended by \n or \r\n, or whole binary data. Never throws for
/// damaged data: what can't be read is reported in `problems`, and the bodies that are whole still arrive.
ReadResult ReadText(std::string_view text);

/// Whether data are binary, by how they begin.
bool IsBinary(std::string_view data);

/// The shape's bodies as ACIS text of version 400, unmasked: one line per record, several for a spline.
/// Solids, compounds of solids, faces, shells and compounds of them are taken. Throws WriteFailure.
std::vector<std::string> WriteText(const TopoDS_Shape& shape);

/// The same for several bodies in one text, one body for each shape.
std::vector<std::string> WriteBodies(const std::vector<TopoDS_Shape>& shapes);

/// A shape that ACIS text of version 400 cannot hold here; the text names the face and the reason.
class WriteFailure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A body and its text, which gives it back with the same solids, faces, volume and box.
struct ProvenBody {
    TopoDS_Shape
        shape;  ///< The body as written: itself, or with its edges fitted, or with splines for faces.
    std::vector<std::string> lines;
};

/// The text of one body, verified: by formula for plain bodies, by reading it back for others. Throws
/// WriteFailure if no text of the body gives it back.
ProvenBody ProveBody(const TopoDS_Shape& shape);

/// Takes the mask off a line as it stands in a drawing, after UnescapeDxf.
std::string DecodeLine(std::string_view masked);
/// Puts the mask on a line for a drawing; EscapeDxf has to follow in a text drawing.
std::string EncodeLine(std::string_view plain);
/// Text drawings write a circumflex as the pair circumflex, blank; this drops the blank. The pair
/// may straddle two groups, so the groups of a line have to be joined before.
std::string UnescapeDxf(std::string_view line);
/// The counterpart of UnescapeDxf.
std::string EscapeDxf(std::string_view line);

}  // namespace brenvik::acis
