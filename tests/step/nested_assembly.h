// A job of two carcasses that hold the same side twice: assemblies in assemblies, as other programs
// write them.
#pragma once

#include <BRepPrimAPI_MakeBox.hxx>
#include <Interface_Static.hxx>
#include <STEPCAFControl_Controller.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <filesystem>
#include <fstream>
#include <gp_Ax1.hxx>
#include <gp_Ax3.hxx>
#include <iterator>
#include <string>

#include "drafting_host/solids/transform.h"

namespace brenvik::step {

/// Writes the job. With `variant` "namelessSide" the side's product has no name.
inline void WriteNested(const std::filesystem::path& path, const std::string& variant) {
    STEPCAFControl_Controller::Init();
    Interface_Static::SetCVal("write.step.unit", "MM");
    Handle(TDocStd_Document) document = new TDocStd_Document("BinXCAF");
    const Handle(XCAFDoc_ShapeTool) shapes = XCAFDoc_DocumentTool::ShapeTool(document->Main());
    const auto name = [](const TDF_Label& label, const char* text) { TDataStd_Name::Set(label, text); };
    const auto shifted = [](double x, double y, double z) {
        gp_Trsf move;
        move.SetTranslation(gp_Vec(x, y, z));
        return TopLoc_Location(move);
    };
    const TDF_Label side = shapes->AddShape(BRepPrimAPI_MakeBox(18.5, 560, 720).Solid(), Standard_False);
    name(side, "Side");
    const TDF_Label carcass = shapes->NewShape();
    name(carcass, "Carcass");
    name(shapes->AddComponent(carcass, side, TopLoc_Location()), "Left");
    name(shapes->AddComponent(carcass, side, shifted(582.25, 0, 0)), "Right");
    const TDF_Label job = shapes->NewShape();
    name(job, "Job");
    name(shapes->AddComponent(job, carcass, TopLoc_Location()), "Carcass 1");
    gp_Trsf turned;
    turned.SetRotation(gp_Ax1(gp_Pnt(0, 0, 0), gp::DZ()), 1.5707963267948966);
    turned = solids::Cleaned(turned);
    turned.SetTranslationPart(gp_Vec(1000.5, 0, 0));
    name(shapes->AddComponent(job, carcass, TopLoc_Location(turned)), "Carcass 2");
    shapes->UpdateAssemblies();
    STEPCAFControl_Writer writer;
    writer.Transfer(document, STEPControl_AsIs);
    writer.Write(path.string().c_str());
    if (variant != "namelessSide") return;
    std::ifstream in(path, std::ios::binary);
    std::string content(std::istreambuf_iterator<char>(in), {});
    in.close();
    const std::string product = "PRODUCT('Side','Side'";
    const std::size_t place = content.find(product);
    if (place != std::string::npos) content.replace(place, product.size(), "PRODUCT('',''");
    std::ofstream(path, std::ios::binary) << content;
}

}  // namespace brenvik::step
