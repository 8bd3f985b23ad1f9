// Reads a STEP file through the modeller's assembly document and flattens it into solids at their
// places.
#include "drafting_host/step/step_reader.h"

#include <BRep_Tool.hxx>
#include <Interface_CheckIterator.hxx>
#include <Quantity_ColorRGBA.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <StepShape_ManifoldSolidBrep.hxx>
#include <TColStd_HSequenceOfExtendedString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>
#include <algorithm>
#include <cmath>
#include <map>

#include "drafting_host/solids/guard.h"
#include "drafting_host/solids/transform.h"
#include "drafting_host/step/body_faults.h"
#include "drafting_host/step/modeller_session.h"
#include "drafting_host/step/step_externals.h"
#include "drafting_host/step/step_loading.h"
#include "drafting_host/step/step_notes.h"
#include "drafting_host/step/step_strings.h"
#include "drafting_host/step/step_text.h"
#include "drafting_host/step/step_units.h"

namespace brenvik::step {
namespace {

std::string Utf8(const TCollection_ExtendedString& text) {
    std::string result(static_cast<std::size_t>(text.LengthOfCString()), '\0');
    char* place = result.data();
    text.ToUTF8CString(place);
    return result;
}

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

Rgb ScreenColor(const Quantity_ColorRGBA& color) {
    double red = 0, green = 0, blue = 0;
    color.GetRGB().Values(red, green, blue, Quantity_TOC_sRGB);
    const auto byte = [](double part) {
        return static_cast<std::uint8_t>(std::clamp(std::lround(part * 255), 0L, 255L));
    };
    return {byte(red), byte(green), byte(blue)};
}

/// What an instance hands down to the parts in it.
struct Inherited {
    TopLoc_Location place;
    std::string assembly;
    std::string instance;
    std::string layer;
    std::optional<Rgb> color;
};

std::size_t CountOf(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind, TopAbs_ShapeEnum within) {
    std::size_t count = 0;
    for (TopExp_Explorer one(shape, kind, within); one.More(); one.Next()) ++count;
    return count;
}

/// What a shape without a solid is made of: "an open shell of 5 faces".
std::string ContentsOf(const TopoDS_Shape& shape) {
    const auto counted = [](std::size_t count, const char* thing) {
        return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
    };
    const std::size_t faces = CountOf(shape, TopAbs_FACE, TopAbs_SHAPE);
    std::size_t shells = 0, open = 0;
    for (TopExp_Explorer shell(shape, TopAbs_SHELL); shell.More(); shell.Next()) {
        ++shells;
        if (!BRep_Tool::IsClosed(shell.Current())) ++open;
    }
    if (shells > 0) {
        const std::string closed = counted(shells - open, "closed shell");
        const std::string opened = counted(open, "open shell");
        const std::string all = open == 0 ? closed : open == shells ? opened : opened + " and " + closed;
        return "a surface model, " + all + " of " + counted(faces, "face");
    }
    if (faces > 0) return "a surface model of " + counted(faces, "face");
    const std::size_t edges = CountOf(shape, TopAbs_EDGE, TopAbs_SHAPE);
    return edges > 0 ? counted(edges, "curve")
                     : counted(CountOf(shape, TopAbs_VERTEX, TopAbs_SHAPE), "point");
}

/// A part whose body lies in another file.
struct OutsidePart : Inherited {
    std::string file, name;
};

class Flattener {
  public:
    /// `toTheLetter` leaves the blanks at the ends of names. `externalFiles` are those of products.
    Flattener(const Handle(TDocStd_Document) & document, const StandIns& texts, bool toTheLetter,
              std::map<std::string, std::string> externalFiles, StepDocument& result)
        : mShapes(XCAFDoc_DocumentTool::ShapeTool(document->Main())),
          mColors(XCAFDoc_DocumentTool::ColorTool(document->Main())),
          mLayers(XCAFDoc_DocumentTool::LayerTool(document->Main())),
          mTexts(texts),
          mToTheLetter(toTheLetter),
          mExternalFiles(std::move(externalFiles)),
          mResult(result) {}

    /// The names of the parts by the shape that they share with their copies.
    const std::map<const Standard_Transient*, std::string>& NamesByShape() const { return mNamesByShape; }

    /// Parts that have no shape here since another file holds it.
    const std::vector<OutsidePart>& Outside() const { return mOutside; }

    void Run() {
        TDF_LabelSequence roots;
        mShapes->GetFreeShapes(roots);
        for (const TDF_Label& root : roots) Walk(root, {}, 0);
    }

    /// Tells the products without a solid and what they hold. Of those that hold nothing, `known` have been
    /// told otherwise.
    void NoteWithoutSolid(std::size_t known) {
        for (const auto& [what, times] : mWithoutSolid) {
            mResult.notes.push_back(
                {(times == 1 ? what : std::to_string(times) + " times " + what) + " is passed over"});
        }
        if (mEmpty > known) {
            mResult.notes.push_back(
                {std::to_string(mEmpty - known) + " object(s) without any shape passed over"});
        }
    }

  private:
    std::string NameOf(const TDF_Label& label) const {
        Handle(TDataStd_Name) name;
        if (!label.FindAttribute(TDataStd_Name::GetID(), name)) return {};
        const std::string text = mTexts.TextFor(Utf8(name->Get()));
        return mToTheLetter ? text : Trimmed(text);
    }

    /// A product's name, or its instance's. Where this program named nothing, the modeller makes up the
    /// latter.
    std::string NameOf(const TDF_Label& product, const std::string& instance) const {
        const std::string name = NameOf(product);
        return name.empty() && !mToTheLetter ? instance : name;
    }

    std::string LayerOf(const TDF_Label& label) const {
        Handle(TColStd_HSequenceOfExtendedString) layers;
        if (!mLayers->GetLayers(label, layers) || layers.IsNull() || layers->IsEmpty()) return {};
        return mTexts.TextFor(Utf8(layers->First()));
    }

    std::optional<Rgb> ColorOf(const TDF_Label& label) const {
        Quantity_ColorRGBA color;
        for (const XCAFDoc_ColorType type : {XCAFDoc_ColorSurf, XCAFDoc_ColorGen, XCAFDoc_ColorCurv}) {
            if (mColors->GetColor(label, type, color)) return ScreenColor(color);
        }
        return std::nullopt;
    }

    /// An instance's own layer and colour stand above those of its product.
    static void Overlay(Inherited& inherited, std::string layer, const std::optional<Rgb>& color) {
        if (inherited.layer.empty()) inherited.layer = std::move(layer);
        if (!inherited.color) inherited.color = color;
    }

    void Walk(const TDF_Label& label, Inherited inherited, int depth) {
        // An assembly that holds itself would never end. Real ones are nested a handful deep.
        if (depth > 200) throw InvalidCall("STEP: assemblies are nested deeper than 200");
        Overlay(inherited, LayerOf(label), ColorOf(label));
        TDF_Label product = label;
        if (XCAFDoc_ShapeTool::IsReference(label)) {
            inherited.instance = NameOf(label);
            inherited.place = inherited.place * XCAFDoc_ShapeTool::GetLocation(label);
            XCAFDoc_ShapeTool::GetReferredShape(label, product);
            Overlay(inherited, LayerOf(product), ColorOf(product));
        }
        if (!XCAFDoc_ShapeTool::IsAssembly(product)) {
            AddPart(product, inherited);
            return;
        }
        inherited.assembly = NameOf(product, inherited.instance);
        TDF_LabelSequence components;
        XCAFDoc_ShapeTool::GetComponents(product, components);
        for (const TDF_Label& component : components) Walk(component, inherited, depth + 1);
    }

    void AddPart(const TDF_Label& product, const Inherited& inherited) {
        const TopoDS_Shape shape = XCAFDoc_ShapeTool::GetShape(product);
        const std::string name = NameOf(product, inherited.instance);
        if (shape.IsNull() || !TopExp_Explorer(shape, TopAbs_VERTEX).More()) {
            const auto external = mExternalFiles.find(name);
            if (external == mExternalFiles.end())
                ++mEmpty;
            else
                mOutside.push_back({inherited, external->second, name});
            return;
        }
        if (!TopExp_Explorer(shape, TopAbs_SOLID).More()) {
            ++mWithoutSolid[(name.empty() ? "a part" : "part \"" + name + "\"") + " without a solid (" +
                            ContentsOf(shape) + ")"];
            return;
        }
        for (TopExp_Explorer solid(shape, TopAbs_SOLID); solid.More(); solid.Next()) {
            StepSolid part{solids::Placed(solid.Current().Moved(inherited.place)), name, inherited.assembly,
                           inherited.layer, inherited.color};
            Refine(product, solid.Current(), part);
            mNamesByShape.emplace(solid.Current().TShape().get(), part.name);
            mResult.solids.push_back(std::move(part));
        }
    }

    /// Layer and colour that stand on the solid or on all its faces alike rather than on the product.
    void Refine(const TDF_Label& product, const TopoDS_Shape& solid, StepSolid& part) const {
        TDF_Label own;
        if (XCAFDoc_ShapeTool::GetShape(product).IsSame(solid)) {
            own = product;
        } else if (mShapes->FindSubShape(product, solid, own)) {
            const std::string name = NameOf(own);
            if (part.name.empty() && !mToTheLetter) part.name = name;
            if (part.layer.empty()) part.layer = LayerOf(own);
            if (const auto color = ColorOf(own)) part.color = color;
        }
        if (!part.color) part.color = CommonFaceColor(product, solid);
        if (part.layer.empty()) part.layer = CommonFaceLayer(product, solid);
    }

    std::optional<Rgb> CommonFaceColor(const TDF_Label& product, const TopoDS_Shape& solid) const {
        std::optional<Rgb> common;
        for (TopExp_Explorer face(solid, TopAbs_FACE); face.More(); face.Next()) {
            TDF_Label label;
            if (!mShapes->FindSubShape(product, face.Current(), label)) return std::nullopt;
            const std::optional<Rgb> color = ColorOf(label);
            if (!color || (common && *common != *color)) return std::nullopt;
            common = color;
        }
        return common;
    }

    std::string CommonFaceLayer(const TDF_Label& product, const TopoDS_Shape& solid) const {
        std::string common;
        for (TopExp_Explorer face(solid, TopAbs_FACE); face.More(); face.Next()) {
            TDF_Label label;
            if (!mShapes->FindSubShape(product, face.Current(), label)) return {};
            const std::string layer = LayerOf(label);
            if (layer.empty() || (!common.empty() && common != layer)) return {};
            common = layer;
        }
        return common;
    }

    Handle(XCAFDoc_ShapeTool) mShapes;
    Handle(XCAFDoc_ColorTool) mColors;
    Handle(XCAFDoc_LayerTool) mLayers;
    const StandIns& mTexts;
    bool mToTheLetter;
    std::map<std::string, std::string> mExternalFiles;  ///< By product.
    std::vector<OutsidePart> mOutside;
    StepDocument& mResult;
    std::map<std::string, int> mWithoutSolid;
    std::size_t mEmpty = 0;
    std::map<const Standard_Transient*, std::string> mNamesByShape;
};

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
    for (checks.Start(); checks.More(); checks.Next()) {
        if (checks.Value()->HasFailed()) ++failed;
    }
    if (failed > 0)
        document.notes.push_back({std::to_string(failed) + " entity(s) of the file could not be converted"});
}

using NamesByShape = std::map<const Standard_Transient*, std::string>;

/// The name of the part that a statement's solids became; nothing where one of them became none. Where the
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

/// Tells the solids that contradict themselves: they are read, but nobody should trust their sizes.
void NoteBodyFaults(STEPCAFControl_Reader& reader, const std::vector<BodyFault>& faults,
                    const NamesByShape& names, const Statements& text, StepDocument& document) {
    for (const BodyFault& fault : faults) {
        const std::string name = PartMadeOf(reader, fault.solid, names).value_or("");
        const std::string part = name.empty() ? "a part" : "part \"" + name + "\"";
        document.notes.push_back(
            {part + ": " + fault.fault.reason + "; its sizes and operations may be wrong",
             text.LineOf(fault.fault.number)});
    }
}

/// Tells the solids that the file holds and no part of its structure leads to.
void NoteUnlistedSolids(STEPCAFControl_Reader& reader, const Handle(StepData_StepModel) & model,
                        const NamesByShape& names, const Statements& text, StepDocument& document) {
    for (int index = 1; index <= model->NbEntities(); ++index) {
        const Handle(Standard_Transient) entity = model->Value(index);
        if (!entity->IsKind(STANDARD_TYPE(StepShape_ManifoldSolidBrep))) continue;
        if (PartMadeOf(reader, entity, names)) continue;
        const int number = model->IdentLabel(entity);
        document.notes.push_back(
            {"the solid #" + std::to_string(number) + " is left out: no part leads to it",
             text.LineOf(number)});
    }
}

/// Files that are being read, each for the sake of the one before.
using Chain = std::vector<std::filesystem::path>;

StepDocument Read(const std::filesystem::path& path, LengthUnit unit, Chain& chain);

/// Brings in the parts that lie in files of their own, or tells where they are missing.
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
            if (placed.layer.empty()) placed.layer = part.layer;
            if (!placed.color) placed.color = part.color;
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
    document.millimetresPerUnit = MillimetresPerUnit(file.Model());
    BringBodiesTo(unit);
    if (!file.Reader().Transfer(assembly)) file.RefuseEmpty();
    NoteCodePage(file.Page(), document);
    NoteMendedTexts(file.Texts(), document);
    NoteBrokenEscapes(file.Texts(), file.Text(), document);
    NoteUnits(file.Text(), file.Page(), document);
    const bool ownFile = IsWrittenHere(file.Text().Content());
    document.isWrittenHere = ownFile;
    Flattener parts(assembly, file.Texts(), ownFile, ExternalFiles(file.Text(), file.Page()), document);
    parts.Run();
    parts.NoteWithoutSolid(file.Taken().LostBodies().size());
    if (document.solids.empty() && parts.Outside().empty()) file.RefuseEmpty(document.notes);
    NoteQuarantine(file.Taken(), file.Text(), file.Page(), document);
    NoteBodyFaults(file.Reader(), file.Contradictions(), parts.NamesByShape(), file.Text(), document);
    NoteUnlistedSolids(file.Reader(), file.Model(), parts.NamesByShape(), file.Text(), document);
    NoteContradictingUsages(file.Text(), document);
    // The modeller counts a product whose shape lies elsewhere as failed.
    if (parts.Outside().empty()) NoteFailedEntities(file.Reader().Reader(), document);
    NoteTail(file.Text(), document);
    if (!ownFile) NameTheNameless(document, path);
    outside = parts.Outside();
    return document;
}

StepDocument Read(const std::filesystem::path& path, LengthUnit unit, Chain& chain) {
    std::vector<OutsidePart> outside;
    Loading file(path);
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
