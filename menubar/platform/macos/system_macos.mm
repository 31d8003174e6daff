#import <AppKit/AppKit.h>

#include <system_error>

#include "child_process.h"
#include "cocoa_support.h"
#include "confined_home.h"
#include "current_instant.h"
#include "live_sample.h"
#include "log_line.h"
#include "pasteboard.h"
#include "run_later.h"
#include "settings_of_this_run.h"
#include "sysctl_string.h"
#include "system.h"
#include "user_home.h"

namespace quenchly {
namespace {

std::filesystem::path currentDirectory()
{
    std::error_code error;
    return std::filesystem::current_path(error);
}

std::filesystem::path mainExecutable()
{
    @autoreleasepool {
        return utf8Text([[NSBundle mainBundle] executablePath]);
    }
}

/// The "bundle" of a program outside of any is the folder that it lies in, with all that lies there too.
std::filesystem::path applicationItem(const std::filesystem::path& executable)
{
    @autoreleasepool {
        const std::filesystem::path bundle = utf8Text([[NSBundle mainBundle] bundlePath]);
        return bundle.extension() == ".app" ? bundle : executable;
    }
}

std::map<std::string, std::string> textsOfMainBundle()
{
    @autoreleasepool {
        std::map<std::string, std::string> texts;
        NSDictionary* info = [[NSBundle mainBundle] infoDictionary];
        for (NSString* key in info)
            if (id value = [info objectForKey:key]; [value isKindOfClass:[NSString class]])
                texts.emplace(utf8Text(key), utf8Text(value));
        return texts;
    }
}

bool openWithDefaultHandler(const std::string& address)
{
    @autoreleasepool {
        NSURL* url = [NSURL URLWithString:nsString(address)];
        return url != nil && [[NSWorkspace sharedWorkspace] openURL:url];
    }
}

/// NSLog repeats the line on standard error when that is a terminal.
void writeToSystemLog(const std::string& line)
{
    @autoreleasepool {
        NSLog(@"%@", nsString(logLine(line)));  // a percent sign in it is no conversion
    }
}

}  // namespace

System makeSystem(const std::optional<std::filesystem::path>& homeFolder)
{
    const std::filesystem::path home = homeFolder ? *homeFolder : userHomeFolder();
    const std::filesystem::path executable = mainExecutable();
    System system{
        .homeFolder = home,
        .keepsToHomeFolder = homeFolder.has_value(),
        .currentDirectory = currentDirectory(),
        .executableFolder = executable.parent_path(),
        .launchAgentsFolder = home / "Library/LaunchAgents",
        .environment = environmentVariables(),
        .applicationItem = applicationItem(executable),
        .bundleInfo = textsOfMainBundle(),
        .launchctl = "/bin/launchctl",
        .now = currentInstant,
        .sampleMetrics = LiveMetricsSampler::sample,
        .processes = makeProcessTable(),
        .makeProcesses = makeProcessTable,
        .loginItem = homeFolder ? makeLoginItemOfThisRun() : makeLoginItem({.executable = executable}),
        .userDefaults = homeFolder ? makeUserDefaultsOfThisRun() : makeUserDefaults(home),
        .application = makeRunningApplication(),
        .runAlert = runAlert,
        .copyToPasteboard = copyToPasteboard,
        .moveToTrash = makeTrash({}),
        .startUpdaterBackend = startUpdaterBackend,
        .runLater = runLater,
        .sysctlString = sysctlString,
        .openAddress = openWithDefaultHandler,
        .portOwner = [](std::uint16_t port) { return portOwner(port); },
        .log = writeToSystemLog,
    };
    if (homeFolder)
        confineToHomeFolder(system);
    return system;
}

}  // namespace quenchly
