// Jobs made by code alone: plain boards with part data in a drawing, and rows in the part table.
#pragma once

namespace brenvik::bench {

class Workshop;

/// A new drawing with so many boards, each with name, material, letters and the extents of its last Apply,
/// all of them selected.
void DrawBoards(Workshop& workshop, int count);

/// Adds rows to the part table of the open list, behind those that it has. The grid isn't refreshed.
void AddRows(int count);

}  // namespace brenvik::bench
