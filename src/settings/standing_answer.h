// How long a user's standing answer counts: for the run in which it was given.
#pragma once

namespace brenvik {

/// While it lives, a standing answer that is given stays with this program: one in the settings would choose
/// the bits of another program's run, and outlast a run that dies. An answer that stands in the settings
/// before is taken as ever.
class StandingAnswersOfRun {
  public:
    StandingAnswersOfRun();
    ~StandingAnswersOfRun();
    StandingAnswersOfRun(const StandingAnswersOfRun&) = delete;
    StandingAnswersOfRun& operator=(const StandingAnswersOfRun&) = delete;
};

}  // namespace brenvik
