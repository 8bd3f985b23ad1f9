// "Select faces:" as a question: faces of one solid, picked by points.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <TopoDS_Face.hxx>
#include <string>
#include <vector>

#include "drafting_host/command/session/question.h"

namespace brenvik {

class HostSolid;

/// Faces of one solid, in the order picked.
struct ChosenFaces {
    HostSolid* solid = nullptr;
    std::vector<TopoDS_Face> faces;
};

/// Answers: points on faces (a point on an edge takes both), ALL for all faces of the solid, Remove and Add,
/// Undo. The first pick determines the solid; an empty answer ends.
class FaceQuestion final : public Question {
  public:
    /// `solid` may be known already from an earlier pick; null otherwise.
    FaceQuestion(CommandSession& session, HostSolid* solid);

    std::string Prompt() const override;
    bool Take(const std::string& answer) override;
    PointedAt ByPointing() const override { return PointedAt::Point; }
    ChosenFaces await_resume() const { return mChosen; }

  private:
    void TakeAt(const Point3& point);
    void Put(const std::vector<TopoDS_Face>& faces);

    ChosenFaces mChosen;
    bool mRemoving = false;
    std::vector<std::vector<TopoDS_Face>> mBefore;
};

}  // namespace brenvik
