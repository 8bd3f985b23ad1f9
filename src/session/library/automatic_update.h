// The automatic update: after the host has changed solids, the letters and the saved extents of the previous
// selection are brought up to date, with nothing shown.
#pragma once

namespace brenvik {

class AcadApplication;

namespace commands {

/// The update if the setting `SettingsEvent` is 1; what the host calls behind its solid-editing commands.
/// Fails with 13 when the setting is no number. Failures of the update itself are ignored.
void EventBrenvik(AcadApplication& app);
/// The update in any case, once the host has finished what it was doing.
void UpdateNow(AcadApplication& app);
/// The same if the setting `SettingsEvent` is 1; fails as `EventBrenvik` does.
void UpdateNow2(AcadApplication& app);

}  // namespace commands

}  // namespace brenvik
