// Each solid is laid flat once more, as the run has laid it, and its files are read instead of written.
#include "cnc/run/prove_files.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/laying/alignment.h"
#include "cnc/output/closing.h"
#include "cnc/output/work_lists.h"
#include "cnc/part/part_file_name.h"
#include "cnc/part/part_material.h"
#include "cnc/part/part_measures.h"
#include "cnc/proof/file_checks.h"
#include "cnc/proof/part_silhouette.h"
#include "cnc/proof/run_proof.h"
#include "cnc/proof/target_of_names.h"
#include "cnc/proof/text_form.h"
#include "cnc/proof/written_text.h"
#include "cnc/run/part_files.h"
#include "cnc/run/part_loop.h"
#include "cnc/run/prove_lists.h"
#include "cnc/run/run_set_up.h"
#include "session/ports/files_port.h"
#include "session/session.h"
#include "session/session_drawing.h"
#include "settings/home_units.h"
#include "settings/materials.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr std::string_view PartFiles = "*.dxf";

std::string SecondSideOf(const std::string& file) { return std::string(SecondSideMark) + file; }

/// "Part_12_Side_7.dxf" has "_Side_7.dxf" behind its number, from the part's data.
std::string BehindNumber(const std::string& name) {
    const std::size_t end = name.find('_', PartFileHead.size());
    return end == std::string::npos ? "" : name.substr(end);
}

/// A file as long as it is looked at.
class OpenFile {
  public:
    OpenFile(AcadApplication& app, const std::string& path) : mDocument(app.Documents().Open(path)) {}
    ~OpenFile() {
        Skip([this] { mDocument->Close(false); });
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    AcadDocument& Document() const { return *mDocument; }

  private:
    AcadDocument* mDocument;
};

class FolderProof {
  public:
    FolderProof(AcadApplication& app, FilesOfRun files)
        : mFiles(std::move(files)),
          mSecondFolder(mFiles.folder + std::string(SecondSideFolderName) + "\\"),
          mLists(mFiles.form, mFiles.folder, mSecondFolder) {
        mRun.app = &app;
        mRun.form = mFiles.form;
        mRun.sessionDrawing = app.ActiveDocument();
        mRun.SpoilAmount = NumberSetting(setting::BiesseWorksSpoil);
        FilesPort& port = *ThePlatform().files;
        mFirst = port.ListFiles(mFiles.folder, FirstSideDxfFiles);
        if (port.FolderExists(mSecondFolder)) mSecond = port.ListFiles(mSecondFolder, SecondSideDxfFiles);
        if (!mFiles.target && !mFirst.empty()) mFiles.target = TargetOfFolder();
    }

    ProvedFiles Prove() {
        const PassWork steps{{AlignPart, Hold},
                             [](RunState&) {},
                             [](RunState&) {},
                             {},
                             {},
                             [this](RunState& run) { LookAt(run); }};
        std::vector<PartFile> parts;
        {
            LentQuantities quantities(mRun.report);
            AcadSelectionSet& prev = FreshSet(*mRun.sessionDrawing, "prev");
            Skip([&] { prev.Select(SelectMode::Previous); });
            std::optional<std::vector<PartFile>> written = WritePartFiles(mRun, prev, quantities, nullptr);
            if (!written) {
                mProved.report = std::move(mRun.report);
                return std::move(mProved);
            }
            parts = std::move(*written);
        }
        mParts = parts;
        mRun.report.parts = static_cast<int>(parts.size());
        mRun.report.complete =
            PartLoop(mRun, steps, parts).WorkOnAll("Comparing the parts") == PartsEnd::Whole;
        const std::size_t before = mRun.report.passedOver.size();
        TellTheRest(mFiles.folder, "");
        TellTheRest(mSecondFolder, std::string(SecondSideMark));
        std::ranges::move(mLists.Differences(mProved.parts == mRun.report.parts),
                          std::back_inserter(mRun.report.passedOver));
        mProved.strays = mRun.report.passedOver.size() - before;
        mProved.report = std::move(mRun.report);
        return std::move(mProved);
    }

  private:
    /// The solid as the run has held it when it closed the part.
    static PassOutcome Hold(RunState& run) {
        ReadPartTexts(run);
        MeasurePart(run, BoxOfPart(run));
        run.part.MaterialName = MaterialNameOf(LastSolid(*run.part.drawing));
        run.part.PartThickness = run.part.ExtentZ;
        ReadMaterial(run.part);
        HoldPartForProof(run);
        return PassOutcome::GoOn;
    }

    /// THERM names the sub assembly too.
    std::vector<std::string> NamesOf(RunState run) const {
        std::vector<std::string> names;
        for (const Target target : {Target::C2C, Target::THERM}) {
            run.target = target;
            run.part.SecondSidePass = false;
            names.push_back(WrittenFileName(run));
        }
        return names;
    }

    /// A file without a part's number in its name is no run's, and is reported with the strays.
    std::vector<std::string> Numbered() const {
        std::vector<std::string> files;
        std::ranges::copy_if(mFirst, std::back_inserter(files),
                             [](const std::string& file) { return PartNumberIn(file).has_value(); });
        return files;
    }

    /// The files that may be the part's. A group that a profile has made of parts with other names has the
    /// name of its first one.
    std::vector<std::string> CandidatesOf(const RunState& run) const {
        const std::vector<std::string> names = NamesOf(run);
        std::vector<std::string> candidates;
        for (const std::string& file : Numbered()) {
            const bool fits = std::ranges::any_of(names, [&](const std::string& name) {
                if (mFiles.form == RunForm::A) return EqualsIgnoreCase(file, name);
                return EqualsIgnoreCase(BehindNumber(file), BehindNumber(name));
            });
            if (fits) candidates.push_back(file);
        }
        return candidates;
    }

    struct Compared {
        std::string file;
        std::vector<std::string> differences;
    };

    Compared CompareWith(RunState& run, const std::shared_ptr<GatheredProof>& held, const std::string& file) {
        const std::string unproved = held->unproved;
        *held = {std::move(held->part), {}, {}, {}, unproved, held->width, held->thickness, false};
        run.part.proof = held;
        Compare(run, file);
        held->unproved = unproved;
        return {file, std::exchange(run.part.differences, {})};
    }

    /// That which fits best; of several that fit equally well, the one whose line in the list is the part's.
    Compared BestOf(const RunState& run, std::vector<Compared> all) const {
        std::size_t best = 0;
        const auto rank = [&](const Compared& one) {
            const bool listed = mFiles.form == RunForm::B && mLists.HasRoomFor(run, one.file);
            return std::pair(one.differences.size(), listed ? 0 : 1);
        };
        for (std::size_t i = 1; i < all.size(); ++i)
            if (rank(all[i]) < rank(all[best])) best = i;
        return std::move(all[best]);
    }

    void LookAt(RunState& run) {
        const std::shared_ptr<GatheredProof> held = std::exchange(run.part.proof, nullptr);
        // A part that could not be laid flat has been reported.
        if (!held) return;
        run.part.LeavesSecondSide = NumberSetting(setting::DontDoTwoSided) == 1;
        if (mFiles.target) run.target = *mFiles.target;
        std::vector<std::string> candidates = CandidatesOf(run);
        const bool byName = !candidates.empty();
        if (!byName && mFiles.form == RunForm::B) candidates = Numbered();
        std::vector<Compared> all;
        for (const std::string& file : candidates) {
            all.push_back(CompareWith(run, held, file));
            if (!byName && !all.back().differences.empty()) all.pop_back();
        }
        if (all.empty()) {
            mRun.report.passedOver.push_back("The part " + Label(run) + " has no file " +
                                             NamesOf(run).front() + " in the folder.");
            return;
        }
        Compared best = BestOf(run, std::move(all));
        mUsed.push_back(best.file);
        ExpectInLists(run, best.file);
        if (best.differences.empty())
            ++mProved.parts;
        else
            std::ranges::move(candidates, std::back_inserter(mUsed));
        run.part.differences = std::move(best.differences);
    }

    bool HasSecondSide(const std::string& file) const {
        return std::ranges::any_of(
            mSecond, [&](const std::string& name) { return EqualsIgnoreCase(name, SecondSideOf(file)); });
    }

    void ExpectInLists(const RunState& run, const std::string& file) {
        mLists.Expect(run, file, false);
        if (HasSecondSide(file)) mLists.Expect(run, SecondSideOf(file), true);
    }

    void Compare(RunState& run, const std::string& file) {
        const std::string second = SecondSideOf(file);
        const bool hasSecond = HasSecondSide(file);
        const std::optional<Failure> failure = Attempt([&] {
            const OpenFile first(*mRun.app, mFiles.folder + file);
            std::optional<OpenFile> other;
            if (hasSecond) other.emplace(*mRun.app, mSecondFolder + second);
            Gather(run, first.Document(), {mFiles.folder, file, false});
            if (other) Gather(run, other->Document(), {mSecondFolder, second, true});
            StandInForOutline(run);
            // Leads of tongues lie outside the outline, on each side in their own way.
            if (!SwitchIsOn(setting::ToungeProcessing) &&
                OutlinesDiffer(run.part.proof->operations, UnitOf(run)))
                run.part.proof->faults.push_back("the outlines of the two sides differ");
        });
        if (failure) NoteUnproved(run, failure->detail());
        TellLetterCase(run, file);
        ProveGathered(run);
    }

    /// On a machine that parts small letters from capitals a list's file is found by its very name.
    void TellLetterCase(const RunState& run, const std::string& file) const {
        const auto tell = [&run](const std::string& written, const std::string& wanted) {
            if (written != wanted && EqualsIgnoreCase(written, wanted))
                run.part.proof->faults.push_back("the file " + written +
                                                 " has other small and capital letters "
                                                 "than the name that the run gives it, " +
                                                 wanted);
        };
        // A group's file has the name of one of its parts, and the others' may differ in letters.
        if (mFiles.form == RunForm::A)
            for (const std::string& name : NamesOf(run)) tell(file, name);
        for (const std::string& name : mSecond) tell(name, SecondSideOf(file));
    }

    /// An outline that the run has left out is nowhere to be read: the part's own takes its place.
    static void StandInForOutline(const RunState& run) {
        GatheredProof& proof = *run.part.proof;
        const bool isThere = std::ranges::any_of(proof.operations, [](const WrittenOperation& each) {
            return each.kind == OperationKind::Outline && !each.secondSide;
        });
        if (SwitchIsOn(setting::BiesseWorksNest) && !isThere && proof.part)
            proof.leftOutOutlines.push_back(SilhouetteOf(*proof.part, UnitOf(run)));
    }

    /// A file of one side.
    struct SideFile {
        const std::string& folder;
        const std::string& name;
        bool secondSide;
    };

    void Gather(RunState& run, AcadDocument& document, const SideFile& file) const {
        LookAtText(run, document, file);
        GatherWrittenSide(run, document, file.secondSide);
        std::ranges::move(FaultsOfFile(run, document, file.secondSide),
                          std::back_inserter(run.part.proof->faults));
    }

    /// A receiver may read another thing in a text that isn't in good form than is read here.
    void LookAtText(RunState& run, AcadDocument& document, const SideFile& file) const {
        std::vector<std::string>& faults = run.part.proof->faults;
        const std::string text = ThePlatform().files->ReadFile(file.folder + file.name);
        if (!EndsAsDxf(text)) {
            faults.push_back("the file " + file.name + " is cut off: it doesn't end with EOF");
            return;
        }
        const TextForm form = FormOfText(text, {run.Metric(), mFiles.units});
        for (const std::string& fault : form.faults) faults.push_back("the file " + file.name + ", " + fault);
        std::size_t read = 0;
        document.ModelSpace().ForEach([&read](AcadEntity&) { ++read; });
        if (form.faults.empty() && read != form.entities)
            faults.push_back("of the " + std::to_string(form.entities) + " entities of the file " +
                             file.name + " " + std::to_string(read) + " can be read");
    }

    /// All files of a folder are for one CAM package; what its names lack gives away a file of another one
    /// among them.
    Target TargetOfFolder() const {
        FilesPort& port = *ThePlatform().files;
        std::vector<std::string> layers, tools;
        const auto take = [&](const std::string& path) {
            Skip([&] { std::ranges::move(LayersInText(port.ReadFile(path)), std::back_inserter(layers)); });
        };
        for (const std::string& file : mFirst) take(mFiles.folder + file);
        for (const std::string& file : mSecond) take(mSecondFolder + file);
        Skip([&] { tools = AllToolNumbers(); });
        const bool metric = UnitsOfRuns(GetSettingText(setting::ExportScaleSetting)) == MeasureUnits::Metric;
        return TargetOfNames(layers, metric, tools, [&](Target target) {
            return port.FileExists(mFiles.folder + std::string(WorkListName(target)));
        });
    }

    std::string Label(const RunState& run) const {
        return mParts[static_cast<std::size_t>(run.part.index)].label;
    }

    /// Whatever a file is called: a machine is given all of a folder.
    void TellTheRest(const std::string& folder, const std::string& mark) {
        FilesPort& port = *ThePlatform().files;
        if (!port.FolderExists(folder)) return;
        for (const std::string& file : port.ListFiles(folder, PartFiles)) {
            const bool used = std::ranges::any_of(
                mUsed, [&](const std::string& name) { return EqualsIgnoreCase(mark + name, file); });
            if (!used)
                mRun.report.passedOver.push_back("The file " + file + " is of no part that was looked at.");
        }
    }

    FilesOfRun mFiles;
    std::string mSecondFolder;
    WorkListProof mLists;
    RunState mRun;
    ProvedFiles mProved;
    std::vector<PartFile> mParts;
    std::vector<std::string> mFirst, mSecond;
    /// The first sides of parts, and where a part differs all that it might have.
    std::vector<std::string> mUsed;
};

}  // namespace

ProvedFiles ProveFiles(AcadApplication& app, const FilesOfRun& files) {
    const BackToDrawing back;
    return FolderProof(app, files).Prove();
}

}  // namespace brenvik
