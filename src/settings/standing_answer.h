// The standing answer to the question for a bit, which counts for the run in which it was given.
#pragma once

namespace brenvik {

struct StandingAnswer {
    bool isOn = false;
    int option = 0;  ///< Of the choice dialog, from 1; 0 is none.
};

/// Of the run that goes on, or what the settings hold.
StandingAnswer CurrentStandingAnswer();
/// Keeps the answer for the run, and in the settings: `skipandcontinuevalue`, and 1 in `Skipandcontinue`. In
/// a run beside another program's it stays out of the settings.
void KeepStandingAnswer(int option);
/// Puts both to 0, as the end of a run does.
void ForgetStandingAnswer();

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
