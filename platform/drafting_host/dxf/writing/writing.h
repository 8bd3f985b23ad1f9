// The parts of the writer: each writes one section, or the records of one kind of thing.
#pragma once

#include <string_view>

#include "drafting_host/dxf/writing/group_writer.h"
#include "drafting_host/dxf/writing/write_plan.h"

namespace brenvik {

void WriteHeader(GroupWriter& out, const WritePlan& plan);
void WriteClasses(GroupWriter& out, const WritePlan& plan);
void WriteTables(GroupWriter& out, WritePlan& plan);
void WriteBlocks(GroupWriter& out, WritePlan& plan);
void WriteEntities(GroupWriter& out, const WritePlan& plan);
void WriteObjects(GroupWriter& out, WritePlan& plan);

/// All entities of a block, in order.
void WriteEntitiesOf(GroupWriter& out, const WritePlan& plan, const WritePlan::BlockPlan& block);
/// What an entity's record holds behind its common part, up to its extended data.
void WriteGeometry(GroupWriter& out, const WritePlan& plan, const EntityData& entity);
/// Groups of a record that were kept, as far as they fit into the file.
void WriteKept(GroupWriter& out, const WritePlan& plan, std::string_view kind, const std::string& groups);
void WriteXData(GroupWriter& out, const WritePlan& plan, const std::vector<XDataOfApp>& xdata);

void BeginSection(GroupWriter& out, std::string_view name);
void EndSection(GroupWriter& out);

}  // namespace brenvik
