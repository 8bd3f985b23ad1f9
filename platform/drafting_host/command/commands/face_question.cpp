// Picking faces: the solid is found first, then its faces under the point.
#include "drafting_host/command/commands/face_question.h"

#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <algorithm>

#include "drafting_host/command/session/answers.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/command/session/picking.h"

namespace brenvik {

FaceQuestion::FaceQuestion(CommandSession& session, HostSolid* solid) : Question(session) {
    mChosen.solid = solid;
}

std::string FaceQuestion::Prompt() const {
    if (mRemoving) return "Remove faces or [Undo/Add/ALL]:";
    return mChosen.faces.empty() ? "Select faces or [Undo/Remove]:" : "Select faces or [Undo/Remove/ALL]:";
}

bool FaceQuestion::Take(const std::string& answer) {
    if (answer.empty()) return true;
    const std::string word = MatchKeyword("Undo Remove Add ALL", answer);
    if (word == "Undo") {
        if (mBefore.empty()) return false;
        mChosen.faces = std::move(mBefore.back());
        mBefore.pop_back();
    } else if (word == "Remove" || word == "Add") {
        mRemoving = word == "Remove";
    } else if (word == "ALL") {
        std::vector<TopoDS_Face> faces;
        if (mChosen.solid == nullptr) {
            Session().Refuse("A face of the solid is to be picked first.");
            return false;
        }
        for (TopExp_Explorer each(mChosen.solid->Shape(), TopAbs_FACE); each.More(); each.Next())
            faces.push_back(TopoDS::Face(each.Current()));
        Put(faces);
    } else if (const std::optional<Point3> point = Session().PointFrom(answer)) {
        Session().SetLastPoint(*point);
        TakeAt(*point);
    } else {
        Session().Refuse("\"" + answer +
                         "\" picks no face: a point on a face or Undo/Remove/Add/ALL is expected.");
    }
    return false;
}

void FaceQuestion::TakeAt(const Point3& point) {
    // Once a solid is being edited, another one that touches it at the point doesn't get in the way.
    std::vector<TopoDS_Face> faces;
    if (mChosen.solid != nullptr) faces = FacesAt(Session(), mChosen.solid->Shape(), point);
    if (faces.empty() && mChosen.faces.empty()) {
        auto* solid = dynamic_cast<HostSolid*>(EntityAt(Session(), point));
        if (solid != nullptr && solid->LayerObject().Locked()) {
            Session().Refuse("The solid is on a locked layer.");
            return;
        }
        if (solid != nullptr) {
            mChosen.solid = solid;
            faces = FacesAt(Session(), solid->Shape(), point);
        }
    }
    if (faces.empty())
        Session().Refuse("No face lies there.");
    else
        Put(faces);
}

void FaceQuestion::Put(const std::vector<TopoDS_Face>& faces) {
    mBefore.push_back(mChosen.faces);
    for (const TopoDS_Face& face : faces) {
        const auto held =
            std::ranges::find_if(mChosen.faces, [&](const TopoDS_Face& other) { return other.IsSame(face); });
        if (mRemoving && held != mChosen.faces.end()) mChosen.faces.erase(held);
        if (!mRemoving && held == mChosen.faces.end()) mChosen.faces.push_back(face);
    }
    Session().Tell(std::to_string(faces.size()) + (faces.size() == 1 ? " face found, " : " faces found, ") +
                   std::to_string(mChosen.faces.size()) + " in all.");
}

}  // namespace brenvik
