// Builds an assembly document of the solids and has the modeller put it into statements.
#include "drafting_host/step/step_writer.h"

#include <APIHeaderSection_MakeHeader.hxx>
#include <BRepBuilderAPI_Copy.hxx>
#include <Quantity_ColorRGBA.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <STEPControl_Writer.hxx>
#include <StepData_Protocol.hxx>
#include <StepData_StepModel.hxx>
#include <StepData_StepWriter.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_WorkSession.hxx>
#include <map>
#include <sstream>

#include "drafting_host/solids/guard.h"
#include "drafting_host/solids/mass.h"
#include "drafting_host/solids/transform.h"
#include "drafting_host/step/texts/modeller_session.h"
#include "drafting_host/step/texts/step_strings.h"
#include "drafting_host/step/texts/step_text.h"

namespace brenvik::step {
namespace {

class Assembler {
  public:
    Assembler(const Handle(TDocStd_Document) & document, StandIns& texts)
        : mTexts(texts),
          mShapes(XCAFDoc_DocumentTool::ShapeTool(document->Main())),
          mColors(XCAFDoc_DocumentTool::ColorTool(document->Main())),
          mLayers(XCAFDoc_DocumentTool::LayerTool(document->Main())) {}

    void Add(const StepSolid& part) {
        if (!solids::IsSolid(part.shape))
            throw InvalidCall("writing STEP: \"" + part.name + "\" is no solid");
        // The document merges a shape that it knows into one product. A copy keeps equal parts apart, each
        // with its name.
        const TopoDS_Shape shape = BRepBuilderAPI_Copy(solids::Placed(part.shape)).Shape();
        const TDF_Label product = mShapes->AddShape(shape, Standard_False);
        TDataStd_Name::Set(product, Word(part.name));
        if (!part.layer.empty()) {
            TDF_Label layer = mLayers->AddLayer(Word(part.layer));
            mLayers->SetLayer(product, layer);
            if (!part.layerVisible) mLayers->SetVisibility(layer, Standard_False);
        }
        if (part.color) SetColor(product, *part.color);
        // The format hides styles. A part without a colour gets white, in which the usual one of layers
        // shows.
        if (!part.visible) mColors->SetVisibility(product, Standard_False);
        if (part.assembly.empty()) return;
        const TDF_Label instance =
            mShapes->AddComponent(AssemblyOf(part.assembly), product, TopLoc_Location());
        TDataStd_Name::Set(instance, Word(part.name));
    }

    void Finish() { mShapes->UpdateAssemblies(); }

  private:
    TCollection_ExtendedString Word(const std::string& text) { return mTexts.WordFor(text).c_str(); }

    void SetColor(const TDF_Label& product, const Rgb& rgb) {
        const Quantity_Color color(rgb.red / 255.0, rgb.green / 255.0, rgb.blue / 255.0, Quantity_TOC_sRGB);
        mColors->SetColor(product, Quantity_ColorRGBA(color, static_cast<float>(rgb.opacity) / 255),
                          XCAFDoc_ColorSurf);
    }

    TDF_Label AssemblyOf(const std::string& name) {
        const auto known = mAssemblies.find(name);
        if (known != mAssemblies.end()) return known->second;
        const TDF_Label label = mShapes->NewShape();
        TDataStd_Name::Set(label, Word(name));
        mAssemblies.emplace(name, label);
        return label;
    }

    StandIns& mTexts;
    Handle(XCAFDoc_ShapeTool) mShapes;
    Handle(XCAFDoc_ColorTool) mColors;
    Handle(XCAFDoc_LayerTool) mLayers;
    std::map<std::string, TDF_Label> mAssemblies;
};

void WriteHeader(STEPCAFControl_Writer& writer, const std::filesystem::path& path, StandIns& texts) {
    const Handle(StepData_StepModel) model =
        Handle(StepData_StepModel)::DownCast(writer.ChangeWriter().WS()->Model());
    if (model.IsNull()) return;
    APIHeaderSection_MakeHeader header(model);
    header.SetName(new TCollection_HAsciiString(texts.WordFor(path.filename().string()).c_str()));
    header.SetOriginatingSystem(new TCollection_HAsciiString(OriginatingSystem().c_str()));
}

/// The model as text, in the modeller's own order of statements.
std::string TextOf(const STEPCAFControl_Writer& writer) {
    const Handle(StepData_StepModel) model =
        Handle(StepData_StepModel)::DownCast(writer.Writer().WS()->Model());
    const Handle(StepData_Protocol) protocol =
        model.IsNull() ? nullptr : Handle(StepData_Protocol)::DownCast(model->Protocol());
    if (protocol.IsNull()) throw InvalidCall("writing STEP: the modeller has no model to write");
    StepData_StepWriter statements(model);
    statements.SendModel(protocol);
    std::ostringstream text;
    if (!statements.Print(text)) throw InvalidCall("writing STEP: the modeller can't write its model");
    return text.str();
}

std::string Write(const std::filesystem::path& path, std::span<const StepSolid> parts, LengthUnit unit) {
    PrepareWriting(unit);
    Handle(TDocStd_Document) document = new TDocStd_Document("BinXCAF");
    StandIns texts;
    Assembler assembler(document, texts);
    for (const StepSolid& part : parts) assembler.Add(part);
    assembler.Finish();
    STEPCAFControl_Writer writer;
    writer.SetColorMode(Standard_True);
    writer.SetNameMode(Standard_True);
    writer.SetLayerMode(Standard_True);
    writer.SetPropsMode(Standard_False);
    if (!writer.Transfer(document, STEPControl_AsIs))
        throw InvalidCall("writing STEP: the modeller can't convert the solids");
    WriteHeader(writer, path, texts);
    return texts.Resolve(WithoutNoise(TextOf(writer)));
}

}  // namespace

std::string StepText(const std::filesystem::path& path, std::span<const StepSolid> parts, LengthUnit unit) {
    if (parts.empty()) throw InvalidCall("writing " + path.string() + ": there is no solid to write");
    const std::string what = "writing " + path.string();
    return solids::Guarded(what.c_str(), [&] { return Write(path, parts, unit); });
}

}  // namespace brenvik::step
