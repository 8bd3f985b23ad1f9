// Reads a STEP file through the modeller's assembly document and flattens it into solids at their
// places.
#include "drafting_host/step/step_reader.h"

#include <Interface_CheckIterator.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <StepShape_FaceBasedSurfaceModel.hxx>
#include <StepShape_GeometricSet.hxx>
#include <StepShape_ManifoldSolidBrep.hxx>
#include <StepShape_ShellBasedSurfaceModel.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp_Explorer.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>
#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "drafting_host/solids/guard.h"
#include "drafting_host/solids/transform.h"
#include "drafting_host/step/looks/double_looks.h"
#include "drafting_host/step/looks/statement_looks.h"
#include "drafting_host/step/models/ball_faces.h"
#include "drafting_host/step/models/body_faults.h"
#include "drafting_host/step/models/rounded_planes.h"
#include "drafting_host/step/part_flattener.h"
#include "drafting_host/step/places/part_places.h"
#include "drafting_host/step/places/place_operators.h"
#include "drafting_host/step/places/specified_usages.h"
#include "drafting_host/step/places/step_units.h"
#include "drafting_host/step/products/double_bodies.h"
#include "drafting_host/step/products/double_relations.h"
#include "drafting_host/step/products/mesh_shapes.h"
#include "drafting_host/step/products/product_shapes.h"
#include "drafting_host/step/products/shared_solids.h"
#include "drafting_host/step/products/step_externals.h"
#include "drafting_host/step/products/step_notes.h"
#include "drafting_host/step/products/usage_faults.h"
#include "drafting_host/step/products/variant_notes.h"
#include "drafting_host/step/step_loading.h"
#include "drafting_host/step/texts/misspelt_kinds.h"
#include "drafting_host/step/texts/modeller_session.h"
#include "drafting_host/step/texts/step_strings.h"
#include "drafting_host/step/texts/step_text.h"

namespace brenvik::step {
namespace {

void NameTheNameless(StepDocument& document, const std::filesystem::path& path) {
    const auto nameless =
        std::ranges::count_if(document.solids, [](const StepSolid& part) { return part.name.empty(); });
    const std::string stem = path.stem().string();
    int number = 0;
    for (StepSolid& part : document.solids) {
        if (!part.name.empty()) continue;
        ++number;
        part.name = nameless == 1 ? stem : stem + " " + std::to_string(number);
    }
}

void NoteFailedEntities(const STEPControl_Reader& reader, StepDocument& document) {
    const Handle(Transfer_TransientProcess) process = reader.WS()->TransferReader()->TransientProcess();
    if (process.IsNull()) return;
    int failed = 0;
    Interface_CheckIterator checks = process->CheckList(Standard_True);
    for (checks.Start(); checks.More(); checks.Next())
        if (checks.Value()->HasFailed()) ++failed;
    if (failed > 0)
        document.notes.push_back({std::to_string(failed) + " entity(s) of the file could not be converted"});
}

using NamesByShape = std::map<const Standard_Transient*, std::string>;

/// The name of the part that a statement's solids became; null if one of them became none. Where the
/// modeller mends a solid it may give several back, gathered in one shape.
std::optional<std::string> PartMadeOf(STEPCAFControl_Reader& reader,
                                      const Handle(Standard_Transient) & statement,
                                      const NamesByShape& names) {
    const Handle(Transfer_TransientProcess) process =
        reader.Reader().WS()->TransferReader()->TransientProcess();
    const TopoDS_Shape shape = TransferBRep::ShapeResult(process, statement);
    std::optional<std::string> part;
    if (shape.IsNull()) return part;
    for (TopExp_Explorer solid(shape, TopAbs_SOLID); solid.More(); solid.Next()) {
        const auto name = names.find(solid.Current().TShape().get());
        if (name == names.end()) return std::nullopt;
        if (!part) part = name->second;
    }
    return part;
}

/// Reports solids that contradict themselves: they are read, but nobody should trust their sizes.
void NoteBodyFaults(STEPCAFControl_Reader& reader, const BodyChecks& checks, LengthUnit unit,
                    const Handle(StepData_StepModel) & model, const NamesByShape& names,
                    const Statements& text, StepDocument& document) {
    const auto note = [&](const Handle(Standard_Transient) & solid, const std::string& reason, int number) {
        const std::string name = PartMadeOf(reader, solid, names).value_or("");
        const std::string part = name.empty() ? "a part" : "part \"" + name + "\"";
        document.notes.push_back(
            {part + ": " + reason + "; its sizes and operations may be wrong", text.LineOf(number)});
    };
    for (const BodyFault& fault : checks.faults) note(fault.solid, fault.fault.reason, fault.fault.number);
    const Handle(Transfer_TransientProcess) process =
        reader.Reader().WS()->TransferReader()->TransientProcess();
    for (const BallSizes& balls : checks.balls) {
        const TopoDS_Shape shape = TransferBRep::ShapeResult(process, balls.solid);
        if (shape.IsNull()) continue;
        const BallsMade made = BallsIn(shape);
        const double millimetre = 1 / MillimetresIn(unit);
        const double stated = balls.area * millimetre * millimetre;
        constexpr double rough = 0.04;  // of an area that is known to about a percent
        constexpr double widest = 0.1;  // millimetres, ten times what pieces of a sound file may gape
        if (std::abs(made.area - stated) <= rough * stated && made.gap <= widest * millimetre) continue;
        note(balls.solid, "its faces on balls came out of another size or place than their edges have",
             model->IdentLabel(balls.solid));
    }
}

bool WasRead(STEPCAFControl_Reader& reader, const Handle(Standard_Transient) & statement) {
    const Handle(Transfer_TransientProcess) process =
        reader.Reader().WS()->TransferReader()->TransientProcess();
    return !TransferBRep::ShapeResult(process, statement).IsNull();
}

bool IsSheet(const Handle(Standard_Transient) & entity) {
    return entity->IsKind(STANDARD_TYPE(StepShape_ShellBasedSurfaceModel)) ||
           entity->IsKind(STANDARD_TYPE(StepShape_FaceBasedSurfaceModel));
}

bool IsCurveSet(const Handle(Standard_Transient) & entity) {
    return entity->IsKind(STANDARD_TYPE(StepShape_GeometricSet));
}

/// Reports solids and sheets that no part of the file's structure leads to; remarks on sets of curves, which
/// are no parts.
void NoteUnlisted(STEPCAFControl_Reader& reader, const Handle(StepData_StepModel) & model,
                  const NamesByShape& names, const std::set<int>& copied, const Statements& text,
                  StepDocument& document) {
    for (int index = 1; index <= model->NbEntities(); ++index) {
        const Handle(Standard_Transient) entity = model->Value(index);
        const bool isSheet = IsSheet(entity), isCurve = IsCurveSet(entity);
        if (!isSheet && !isCurve && !entity->IsKind(STANDARD_TYPE(StepShape_ManifoldSolidBrep))) continue;
        if (isSheet || isCurve ? WasRead(reader, entity) : PartMadeOf(reader, entity, names).has_value())
            continue;
        const int number = model->IdentLabel(entity);
        if (copied.contains(number)) continue;
        const char* const kind = isSheet ? "surface model" : isCurve ? "set of curves" : "solid";
        document.notes.push_back(
            {std::string("the ") + kind + " #" + std::to_string(number) + " is left out: no part leads to it",
             text.LineOf(number), !isCurve});
    }
}

/// The own solids of a file by the shapes that the modeller has made of them.
OwnUsesByShape OwnUsesIn(Loading& file) {
    OwnUsesByShape uses;
    if (file.OwnSolids().empty()) return uses;
    const StatementLooks looks(file.Text(), file.Page());
    const Handle(Transfer_TransientProcess) process =
        file.Reader().Reader().WS()->TransferReader()->TransientProcess();
    std::map<int, const OwnSolid*> byNumber;
    for (const OwnSolid& solid : file.OwnSolids()) byNumber.emplace(solid.number, &solid);
    for (int index = 1; index <= file.Model()->NbEntities(); ++index) {
        const Handle(Standard_Transient) entity = file.Model()->Value(index);
        const auto own = byNumber.find(file.Model()->IdentLabel(entity));
        if (own == byNumber.end()) continue;
        const TopoDS_Shape shape = TransferBRep::ShapeResult(process, entity);
        if (shape.IsNull()) continue;
        const OwnUse use{looks.Of(own->second->chain),
                         ProductName(file.Text(), own->second->owner, file.Page()), own->second->isMirrored};
        for (TopExp_Explorer solid(shape, TopAbs_SOLID); solid.More(); solid.Next())
            uses.emplace(solid.Current().TShape().get(), use);
    }
    return uses;
}

/// Solids that others of the same original stand for, one of which is a part.
std::set<int> StoodFor(Loading& file, const NamesByShape& names) {
    std::set<int> listed, numbers;
    std::map<int, int> originals;
    for (const OwnSolid& solid : file.OwnSolids()) originals[solid.number] = solid.original;
    for (int index = 1; !originals.empty() && index <= file.Model()->NbEntities(); ++index) {
        const Handle(Standard_Transient) entity = file.Model()->Value(index);
        const auto own = originals.find(file.Model()->IdentLabel(entity));
        if (own != originals.end() && PartMadeOf(file.Reader(), entity, names)) listed.insert(own->second);
    }
    for (const auto& [number, original] : originals)
        if (listed.contains(original)) numbers.insert({number, original});
    return numbers;
}

void PutRoundedPlanesOnCorners(const Handle(TDocStd_Document) & assembly, LengthUnit unit) {
    TDF_LabelSequence roots;
    XCAFDoc_DocumentTool::ShapeTool(assembly->Main())->GetFreeShapes(roots);
    for (const TDF_Label& root : roots)
        PutPlanesOnCorners(XCAFDoc_ShapeTool::GetShape(root), MillimetresIn(unit));
}

/// For a file of which no part comes. A solid that nothing leads to says more than what the modeller counts.
[[noreturn]] void RefuseEmpty(Loading& file, const PartFlattener& parts, const StepDocument& document) {
    StepDocument unlisted;
    NoteUnlisted(file.Reader(), file.Model(), parts.NamesByShape(), {}, file.Text(), unlisted);
    std::erase_if(unlisted.notes, [](const StepNote& note) { return !note.text.starts_with("the solid #"); });
    unlisted.notes.insert(unlisted.notes.end(), document.notes.begin(), document.notes.end());
    file.RefuseEmpty(unlisted.notes);
}

/// Files that are being read, each for the sake of the one before.
using Chain = std::vector<std::filesystem::path>;

StepDocument Read(const std::filesystem::path& path, LengthUnit unit, Chain& chain);

/// Brings in the parts that lie in files of their own, or reports where they are missing.
class Externals {
  public:
    Externals(const std::filesystem::path& path, LengthUnit unit, Chain& chain, StepDocument& document)
        : mPath(path), mUnit(unit), mChain(chain), mDocument(document) {}

    void Take(const OutsidePart& part) {
        const StepDocument* read = DocumentOf(part);
        if (read == nullptr) return;
        for (const StepSolid& solid : read->solids) {
            StepSolid placed = solid;
            placed.shape = solids::Placed(solid.shape.Moved(part.place));
            if (placed.assembly.empty()) placed.assembly = part.assembly;
            if (placed.layer.empty()) {
                placed.layer = part.look.layer;
                placed.layerVisible = part.look.layerVisible;
            }
            if (!placed.color) placed.color = part.look.color;
            placed.visible = placed.visible && part.look.visible;
            mDocument.solids.push_back(std::move(placed));
        }
    }

  private:
    const StepDocument* DocumentOf(const OutsidePart& part) {
        const auto known = mRead.find(part.file);
        if (known != mRead.end()) return &known->second;
        StepDocument& read = mRead[part.file];
        const std::string what = "part \"" + part.name + "\" lies in the file \"" + part.file + "\"";
        const std::filesystem::path path = ExternalPath(mPath, part.file);
        if (path.empty()) {
            mDocument.notes.push_back({what + ", which isn't beside this one: it is left out"});
        } else if (std::ranges::find(mChain, path) != mChain.end()) {
            mDocument.notes.push_back({what + ", which refers back to it: it is left out"});
        } else {
            try {
                read = Read(path, mUnit, mChain);
                Report(part.file, read);
            } catch (const Failure& failure) {
                mDocument.notes.push_back({what + ", which can't be read: " + failure.detail()});
            }
        }
        return &read;
    }

    void Report(const std::string& file, const StepDocument& read) {
        for (const StepNote& note : read.notes) {
            const std::string line = note.line > 0 ? ", line " + std::to_string(note.line) : "";
            mDocument.notes.push_back({file + line + ": " + note.text, 0, note.lost});
        }
        for (const double size : read.millimetresPerUnit)
            if (std::ranges::find(mDocument.millimetresPerUnit, size) == mDocument.millimetresPerUnit.end())
                mDocument.millimetresPerUnit.push_back(size);
    }

    const std::filesystem::path& mPath;
    LengthUnit mUnit;
    Chain& mChain;
    StepDocument& mDocument;
    std::map<std::string, StepDocument> mRead;
};

/// What reading the file itself gives; parts in files of their own come into `outside`.
StepDocument ReadOwn(Loading& file, const std::filesystem::path& path, LengthUnit unit,
                     std::vector<OutsidePart>& outside) {
    StepDocument document;
    Handle(TDocStd_Document) assembly = new TDocStd_Document("BinXCAF");
    if (file.Contexts().NameUnits()) document.millimetresPerUnit = MillimetresPerUnit(file.Model());
    BringBodiesTo(unit);
    if (!file.Reader().Transfer(assembly)) file.RefuseEmpty();
    PutRoundedPlanesOnCorners(assembly, unit);
    NoteCodePage(file.Page(), document);
    NoteMendedTexts(file.Texts(), document);
    NoteBrokenEscapes(file.Texts(), file.Text(), document);
    NoteUnits(file.Text(), file.Page(), document);
    file.Contexts().Note(unit, document);
    const bool ownFile = IsWrittenHere(file.Text().Content());
    document.isWrittenHere = ownFile;
    document.notes.insert(document.notes.end(), file.Notes().begin(), file.Notes().end());
    PartFlattener parts(assembly, file.Texts(), ownFile, ExternalFiles(file.Text(), file.Page()),
                        OwnUsesIn(file), document);
    parts.Run();
    parts.NoteWithoutSolid(file.Taken().LostBodies().size() + file.EmptiedProducts());
    parts.NoteLooks();
    parts.NoteNameless();
    if (document.solids.empty() && parts.Outside().empty()) RefuseEmpty(file, parts, document);
    NoteQuarantine(file.Taken(), file.Text(), file.Page(), document);
    NoteMisspeltKinds(file.Text(), document);
    NoteDoubleLooks(file.Text(), file.Taken(), file.Page(), document);
    NoteContextLooks(file.Text(), file.Taken(), document);
    NoteBodyFaults(file.Reader(), file.Checks(), unit, file.Model(), parts.NamesByShape(), file.Text(),
                   document);
    NoteUnlisted(file.Reader(), file.Model(), parts.NamesByShape(), StoodFor(file, parts.NamesByShape()),
                 file.Text(), document);
    NoteContradictingUsages(file.Text(), document);
    NoteDoubtfulPlaces(file.Text(), document);
    NoteUntiedShapes(file.Text(), file.Page(), document);
    NoteMeshShapes(file.Text(), file.Page(), document);
    NoteUnplacedUsages(file.Text(), file.Page(), document);
    NoteLoosePieces(file.Text(), file.Page(), document);
    NoteDoubleBodies(file.Text(), document);
    NoteDoubleRelations(file.Text(), document);
    NoteSharedSolids(file.Text(), file.Page(), document);
    NoteDoubtfulUsages(file.Text(), document);
    NoteSpecifiedPlaces(file.Text(), document);
    NoteVariants(file.Text(), file.Page(), document);
    // The modeller counts a product whose shape lies elsewhere as failed.
    if (parts.Outside().empty()) NoteFailedEntities(file.Reader().Reader(), document);
    NoteTail(file.Text(), document);
    if (!ownFile) NameTheNameless(document, path);
    outside = parts.Outside();
    return document;
}

StepDocument Read(const std::filesystem::path& path, LengthUnit unit, Chain& chain) {
    std::vector<OutsidePart> outside;
    Loading file(path, unit);
    file.Run();
    StepDocument document = ReadOwn(file, path, unit, outside);
    if (outside.empty()) return document;
    chain.push_back(path);
    Externals externals(path, unit, chain, document);
    for (const OutsidePart& part : outside) externals.Take(part);
    chain.pop_back();
    if (document.solids.empty()) file.RefuseEmpty(document.notes);
    return document;
}

}  // namespace

StepDocument ReadStep(const std::filesystem::path& path, LengthUnit unit) {
    const std::string what = "reading " + path.string();
    Chain chain;
    return solids::Guarded(what.c_str(), [&] { return Read(path, unit, chain); });
}

}  // namespace brenvik::step
