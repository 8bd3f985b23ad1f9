// Long work that shows its progress. Without a port that shows it, progress is invisible and can't be
// cancelled.
#pragma once

#include <string_view>

#include "session/ports/progress_port.h"

namespace brenvik {

/// Sets who shows the progress of long work, until the library is unloaded; null for nobody.
void ShowProgressBy(ProgressPort* port);

/// One task, from its making to its end.
class Progress {
  public:
    explicit Progress(const ProgressTask& task);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Ahead of each step. False when a task that can be cancelled is to end here; from then on always.
    bool Next(std::string_view name);

  private:
    ProgressPort* mPort;
    bool mCanCancel;
    bool mCancelled = false;
    int mStep = 0;
};

}  // namespace brenvik
