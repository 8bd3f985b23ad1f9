// The options that commands share, worded once.
#include "shell/drawing_options.h"

#include "base/letter_case.h"
#include "drafting_host/document/files/extension.h"
#include "settings/material_keys.h"

namespace brenvik::app {

namespace {

/// A set of letters is a permutation of L, W and T.
std::string CheckLetters(std::string& letters) {
    if (EqualsIgnoreCase(letters, "none")) {
        letters.clear();
        return {};
    }
    letters = FoldUpper(letters);
    for (const std::string_view known : {"LWT", "LTW", "WLT", "WTL", "TLW", "TWL"})
        if (letters == known) return {};
    return "expected L, W and T in some order, or none; found " + letters;
}

/// A material's name has to go through the list and into the library's file.
std::string CheckMaterial(std::string& material) {
    if (material.find('\'') != std::string::npos)
        return "expected a name without single quotes, which the list's statements can't take; found " +
               material;
    // The key of a part is its thickness and the name, so what a key can be says what a name can be.
    if (MaterialKeyFault("1 " + material).empty()) return {};
    return "expected the name of a material, of 255 characters at most, without blanks around it or control "
           "characters; found \"" +
           material + "\"";
}

}  // namespace

Argument DrawingOptions::DrawingWord() {
    return Argument("DRAWING", &drawing, "The drawing: .dxf, .step, .stp, .sat, or the drafting host's own")
        .Required();
}

Argument DrawingOptions::OutWord() {
    return Argument("OUT", &save, "The drawing to write: " + EndingsOfWrittenDrawings()).Required();
}

Argument DrawingOptions::Letters() {
    return Argument("--letters", &letters,
                    "Orientation letters for the solids of a STEP or SAT file: the names of the largest, the "
                    "middle "
                    "and the smallest extent, or none")
        .Named("LWT|none")
        .Checked([this](std::string& text) {
            lettersGiven = true;
            return CheckLetters(text);
        })
        .ShowsDefault();
}

Argument DrawingOptions::Material() {
    return Argument("--material", &material, "The material of parts that have none, for this call")
        .Named("TEXT")
        .Checked(CheckMaterial);
}

Argument DrawingOptions::Save() { return {"--save", &save, "Save the drawing under this name afterwards"}; }

Argument DrawingOptions::Select() {
    return Argument("--select", &handles, "Only the entities with these handles; every solid by default")
        .Named("HANDLE");
}

Argument DrawingOptions::Quiet() {
    return {"--quiet", &quiet, "Leave out progress and remarks; errors and message boxes are still printed"};
}

}  // namespace brenvik::app
