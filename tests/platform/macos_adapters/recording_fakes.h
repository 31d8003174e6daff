#pragma once

#include <string>
#include <vector>

/// What the adapters asked of those parts of AppKit that the test machine lacks, in order.
extern std::vector<std::string> recordedCalls;

/// The status of the faked login item, and whether the next change succeeds.
extern long fakeLoginItemStatus;
extern bool fakeLoginItemSucceeds;

/// The button that the user presses in the next alert, counted from 0; another number closes it without one.
extern long fakeAnswer;

/// Whether moving to the Trash succeeds.
extern bool fakeTrashSucceeds;

/// From now on the update framework's controller can be looked up, as if the framework were loaded.
void offerUpdateFramework();

/// What the machine answers to "hw.model"; none makes every system control fail.
extern const char* fakeHardwareModel;
