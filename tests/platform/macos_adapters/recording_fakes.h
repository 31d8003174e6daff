#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tool_output.h"

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

struct FakeBundleFacts {
    std::string path = "/Applications/Some.app";
    /// A program that is in no bundle has none.
    std::optional<std::string> identifier = "some.identifier";
    /// Texts. The information dictionary has one value more, which is a number.
    std::map<std::string, std::string> info;
};

/// As long as it lives, the program lies in a bundle with these facts, and each framework fails to load.
class FakeBundle {
public:
    explicit FakeBundle(FakeBundleFacts facts = {});
    ~FakeBundle();
    FakeBundle(const FakeBundle&) = delete;
    FakeBundle& operator=(const FakeBundle&) = delete;
};

/// Whether an alert is up.
extern bool fakeAlertIsUp;

/// Whether a browser can be started.
extern bool fakeAddressOpens;

/// What the next tool of the system does. Its command line is recorded.
extern std::optional<quenchly::ToolOutput> fakeToolOutput;

/// Does what was to be done once the event loop runs.
void runWhatWasPutOff();

/// Tells the program that somebody started it again; false when it does not listen.
bool startAgain();

/// What the machine answers to "hw.model"; none makes every system control fail.
extern const char* fakeHardwareModel;
