// A STEP file on its way into the modeller: its text checked, what is faulty taken out, its statements
// loaded.
#pragma once

#include <STEPCAFControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/length_unit.h"
#include "drafting_host/step/models/body_faults.h"
#include "drafting_host/step/places/context_units.h"
#include "drafting_host/step/places/own_uses.h"
#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_quarantine.h"
#include "drafting_host/step/texts/step_statements.h"
#include "drafting_host/step/texts/step_strings.h"

namespace brenvik::step {

class Loading {
  public:
    /// Reads the text and takes out what it shows to be faulty. Throws Failure for a file that is no whole
    /// STEP file, or whose products hang on a fault.
    /// Lengths without a unit are in this one.
    Loading(const std::filesystem::path& path, LengthUnit unit);

    /// Has the modeller read it, and where statements are faulty once more without them. Throws as the
    /// constructor does.
    void Run();

    STEPCAFControl_Reader& Reader() { return *mReader; }
    const Handle(StepData_StepModel) & Model() const { return mModel; }
    const Statements& Text() const { return mStatements; }
    const UnitContexts& Contexts() const { return mContexts; }
    const Quarantine& Taken() const { return mQuarantine; }
    const StandIns& Texts() const { return *mTexts; }
    CodePage Page() const { return mCodePage; }
    const BodyChecks& Checks() const { return mChecks; }
    /// Solids that the modeller was given for uses that differ from others of the same shape.
    const std::vector<OwnSolid>& OwnSolids() const { return mOwnSolids; }
    /// Products that have no shape any more, since all their uses have copies.
    std::size_t EmptiedProducts() const { return mEmptiedProducts; }
    /// What was said differently before anything else was looked at.
    const std::vector<StepNote>& Notes() const { return mNotes; }

    /// The failure of a file without a solid: the first fault where there was one, or the first loss of
    /// `notes`.
    [[noreturn]] void RefuseEmpty(const std::vector<StepNote>& notes = {}) const;

  private:
    void Remove(const StatementFault& fault);
    void Read();
    bool Sound();
    bool RemoveFalseItems();
    bool IsPaper(int number) const;

    std::filesystem::path mPath;
    LengthUnit mUnit;
    std::vector<StepNote> mNotes;
    std::string mContent;
    Statements mStatements;
    UnitContexts mContexts;
    Quarantine mQuarantine;
    CodePage mCodePage = CodePage::Utf8;
    std::optional<STEPCAFControl_Reader> mReader;
    std::optional<StandIns> mTexts;
    Handle(StepData_StepModel) mModel;
    BodyChecks mChecks;
    std::vector<OwnSolid> mOwnSolids;
    std::size_t mEmptiedProducts = 0;
};

}  // namespace brenvik::step
