#pragma once

/// The desktop's bar with the tray, on the session bus of the test.
namespace quenchly::testing {

bool barRuns();

/// Waits until it is gone.
void killBar();

/// Starts another in the place of one that is gone, and waits until it has a tray.
void startBar();

/// Ends one that was started here.
void endBar();

}  // namespace quenchly::testing
