// Waiting by trying again: claims answer at once.
#include "file_roots/folder_turn.h"

#include <chrono>
#include <thread>

namespace brenvik {

FolderTurn::FolderTurn(const std::filesystem::path& folder) {
    constexpr auto pause = std::chrono::milliseconds(5);
    constexpr int mostPauses = 4000;
    for (int pauses = 0;; ++pauses) {
        mHeld.reset();
        mHeld = std::make_unique<const Held>(folder);
        if (mHeld->claim.Outcome() != Claim::State::Taken || pauses == mostPauses) return;
        std::this_thread::sleep_for(pause);
    }
}

}  // namespace brenvik
