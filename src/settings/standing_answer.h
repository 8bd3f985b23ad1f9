// How long a user's standing answer counts: for the run in which it was given.
#pragma once

namespace brenvik {

/// While it lives, the answers of the run count. One that stands in the settings is taken at the beginning
/// and not looked at again, so that the end of another program's run doesn't put it to 0 under way. A program
/// beside another one neither takes nor writes what stands there: it would be about the other's parts.
class StandingAnswersOfRun {
  public:
    StandingAnswersOfRun();
    ~StandingAnswersOfRun();
    StandingAnswersOfRun(const StandingAnswersOfRun&) = delete;
    StandingAnswersOfRun& operator=(const StandingAnswersOfRun&) = delete;
};

}  // namespace brenvik
