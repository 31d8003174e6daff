#pragma once

#include <string>
#include <vector>

/// What the adapters asked of those parts of AppKit that the test machine lacks, in order.
extern std::vector<std::string> recordedCalls;

/// The status of the faked login item, and whether the next change succeeds.
extern long fakeLoginItemStatus;
extern bool fakeLoginItemSucceeds;
