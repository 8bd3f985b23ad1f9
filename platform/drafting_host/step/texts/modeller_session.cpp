// Sets every exchange setting that matters before each use, so that no earlier use shows through.
#include "drafting_host/step/texts/modeller_session.h"

#include <Interface_Static.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_Printer.hxx>
#include <STEPCAFControl_Controller.hxx>
#include <StepData_GlobalFactors.hxx>
#include <XCAFDoc_ShapeTool.hxx>

namespace brenvik::step {
namespace {

const char* NameOf(LengthUnit unit) { return unit == LengthUnit::Inch ? "INCH" : "MM"; }

/// The modeller takes the setting over when it transfers; what is measured before then goes by the last one.
void SetBodyUnit(LengthUnit unit) {
    Interface_Static::SetCVal("xstep.cascade.unit", NameOf(unit));
    StepData_GlobalFactors::Intance().SetCascadeUnit(MillimetresIn(unit));
}

void Prepare() {
    // Standard output belongs to lists; the modeller's chatter would end up in them.
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_Printer));
    STEPCAFControl_Controller::Init();
    SetBodyUnit(LengthUnit::Millimetre);
    // Names that the modeller makes up ("SOLID", "=>[0:1:1:2]") would pass for the file's.
    XCAFDoc_ShapeTool::SetAutoNaming(Standard_False);
}

}  // namespace

Resource_FormatType FormatOf(CodePage codePage) {
    switch (codePage) {
        case CodePage::Utf8:
            return Resource_FormatType_UTF8;
        case CodePage::Cyrillic:
            return Resource_FormatType_CP1251;
        case CodePage::Western:
            return Resource_FormatType_CP1252;
        case CodePage::Japanese:
            return Resource_FormatType_SJIS;
    }
    return Resource_FormatType_UTF8;
}

void PrepareReading() {
    Prepare();
    // It sees no bytes beyond ASCII.
    Interface_Static::SetIVal("read.step.codepage", Resource_FormatType_UTF8);
    // It would take one of the coordinate systems among a root's items for the root's own place. They place
    // nothing by themselves.
    Interface_Static::SetCVal("read.step.root.transformation", "OFF");
}

void BringBodiesTo(LengthUnit unit) { SetBodyUnit(unit); }

void PrepareWriting(LengthUnit unit) {
    Prepare();
    BringBodiesTo(unit);
    Interface_Static::SetCVal("write.step.schema", "AP214IS");
    Interface_Static::SetCVal("write.step.unit", NameOf(unit));
    Interface_Static::SetIVal("write.step.assembly", 1);
}

}  // namespace brenvik::step
