#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "program.h"
#include "property_list.h"
#include "test_files.h"

namespace quenchly {
namespace {

namespace fs = std::filesystem;
using testing::ProgramRun;

constexpr const char* identity = "Developer ID Application: Some One (ABCDE12345)";
constexpr const char* key = "MCowBQYDK2VwAyEAm0k5S9dZ4x1mK3u4aQ7w8e9r0t0=";

/// Notes how it was called, one line a call.
void writeRecorder(const testing::ScratchFolder& folder, const fs::path& program)
{
    const fs::path file = folder.write(program,
                                       "#!/bin/sh\nline=${0##*/}\nfor word in \"$@\"; do\n    "
                                       "line=\"$line|$word\"\ndone\necho \"$line\" >>\"$QUENCHLY_CALLS\"\n");
    fs::permissions(file, fs::perms::owner_all);
}

/// The project is configured for macOS with the cross compiler, files of its build are made up, and what macOS alone
/// has is recorded. So the install rules run as they will there, on other files.
class Bundle : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        if (!fs::exists("/usr/bin/clang++-19"))
            GTEST_SKIP() << "clang-19 is not installed";
        folder = std::make_unique<testing::ScratchFolder>();
        makeUpWhatMacosHas();
        configure();
        makeUpWhatIsBuilt();
        folder->write("out/Quenchly.app/Contents/MacOS/of-another-version", "");
        install();
    }
    static void TearDownTestSuite() { folder.reset(); }
    void SetUp() override
    {
        if (!folder)
            GTEST_SKIP() << "clang-19 is not installed";
    }

    static void makeUpWhatMacosHas()
    {
        folder->makeFolder("headers/third-party");
        folder->write("Qt/libqoffscreen.dylib", "offscreen");
        writeRecorder(*folder, "tools/macdeployqt");
        writeRecorder(*folder, "tools/codesign");
        const fs::path framework = "Sparkle.framework";
        folder->write(framework / "Versions/B/Sparkle", "");
        folder->write(framework / "Versions/B/Autoupdate", "");
        folder->write(framework / "Versions/B/Updater.app/Contents/Info.plist", "");
        folder->write(framework / "Versions/B/XPCServices/Downloader.xpc/Contents/Info.plist", "");
        folder->write(framework / "Versions/B/XPCServices/Installer.xpc/Contents/Info.plist", "");
        folder->makeLink(framework / "Versions/Current", "B");
        folder->makeLink(framework / "Sparkle", "Versions/Current/Sparkle");
    }

    static void configure()
    {
        const std::string root = QUENCHLY_ROOT;
        const ProgramRun run =
            cmake({"-G", "Ninja", "-S", root, "-B", *folder / "build",
                   "-DCMAKE_TOOLCHAIN_FILE=" + root + "/macos-check/cmake/toolchain.cmake",
                   "-DQUENCHLY_STAGED_HEADERS=" + (*folder / "headers").string(), "-DQUENCHLY_VENDOR_NAME=Ein Anbieter",
                   "-DQUENCHLY_UPDATE_FEED=https://updates.example/feed.xml?channel=1",
                   "-DQUENCHLY_UPDATE_KEY=" + std::string(key),
                   "-DQUENCHLY_UPDATE_FRAMEWORK=" + (*folder / "Sparkle.framework").string(),
                   "-DQUENCHLY_MACDEPLOYQT=" + (*folder / "tools/macdeployqt").string(),
                   "-DQUENCHLY_OFFSCREEN_PLUGIN=" + (*folder / "Qt/libqoffscreen.dylib").string(),
                   "-DQUENCHLY_SIGNING_IDENTITY=" + std::string(identity)});
        ASSERT_EQ(run.exitStatus, 0) << run.output << run.errors;
    }

    static void makeUpWhatIsBuilt()
    {
        const fs::path contents = "build/bin/QuenchlyMenuBar.app/Contents";
        for (const fs::path& program :
             {contents / "MacOS/QuenchlyMenuBar", contents / "Helpers/quenchly", fs::path("build/bin/quenchly-status")})
            fs::permissions(folder->write(program, program.string()), fs::perms::owner_all);
        folder->write(contents / "Resources/Quenchly.icns", "icon");
    }

    static void install()
    {
        const ProgramRun run = cmake({"--install", *folder / "build", "--prefix", *folder / "out"});
        ASSERT_EQ(run.exitStatus, 0) << run.output << run.errors;
    }

    static ProgramRun cmake(const std::vector<std::string>& arguments)
    {
        return testing::runProgram(QUENCHLY_CMAKE, arguments, variables());
    }

    static std::map<std::string, std::string> variables()
    {
        return {{"QUENCHLY_CALLS", *folder / "calls"},
                {"PATH", (*folder / "tools").string() + ":/usr/bin:/bin"},
                {"CFLAGS", ""},
                {"CXXFLAGS", ""}};
    }

    static std::vector<std::string> calls()
    {
        std::vector<std::string> lines;
        std::ifstream file(*folder / "calls");
        const std::string bundle = *folder / "out/Quenchly.app";
        for (std::string line; std::getline(file, line);) {
            for (std::size_t at = 0; (at = line.find(bundle, at)) != std::string::npos;)
                line.replace(at, bundle.size(), "APP");
            lines.push_back(line);
        }
        return lines;
    }

    static std::set<std::string> installedFiles()
    {
        std::set<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(*folder / "out"))
            if (!entry.is_directory() || entry.is_symlink())
                names.insert(entry.path().lexically_relative(*folder / "out").string());
        return names;
    }

    static inline std::unique_ptr<testing::ScratchFolder> folder;
};

TEST_F(Bundle, IsAllThatIsInstalledAndHoldsNothingOfAnEarlierOne)
{
    const std::string contents = "Quenchly.app/Contents/";
    const std::string framework = contents + "Frameworks/Sparkle.framework/";
    std::set<std::string> expected;
    for (const char* name : {"Info.plist", "MacOS/QuenchlyMenuBar", "Helpers/quenchly", "Helpers/quenchly-status",
                             "Resources/Quenchly.icns", "Resources/man/man1/quenchly-menubar.1",
                             "Resources/man/man1/quenchly-status.1", "PlugIns/platforms/libqoffscreen.dylib"})
        expected.insert(contents + name);
    for (const char* name :
         {"Sparkle", "Versions/Current", "Versions/B/Sparkle", "Versions/B/Autoupdate",
          "Versions/B/Updater.app/Contents/Info.plist", "Versions/B/XPCServices/Downloader.xpc/Contents/Info.plist",
          "Versions/B/XPCServices/Installer.xpc/Contents/Info.plist"})
        expected.insert(framework + name);
    EXPECT_EQ(installedFiles(), expected);
    EXPECT_EQ(fs::read_symlink(*folder / "out" / framework / "Versions/Current"), "B");
    for (const char* program : {"MacOS/QuenchlyMenuBar", "Helpers/quenchly", "Helpers/quenchly-status"})
        EXPECT_NE(fs::status(*folder / "out" / contents / program).permissions() & fs::perms::owner_exec,
                  fs::perms::none)
            << program;
}

TEST_F(Bundle, ItsInformationIsThatOfTheBuild)
{
    const std::map<std::string, std::string> expected{
        {"CFBundleDevelopmentRegion", "en"},
        {"CFBundleDisplayName", "Quenchly"},
        {"CFBundleExecutable", "QuenchlyMenuBar"},
        {"CFBundleIconFile", "Quenchly"},
        {"CFBundleIdentifier", "com.brindlemoor.quenchly.menubar"},
        {"CFBundleInfoDictionaryVersion", "6.0"},
        {"CFBundleLocalizations", "en,ja,fil,zh-Hans,zh-Hant,ko"},
        {"CFBundleName", "Quenchly"},
        {"CFBundlePackageType", "APPL"},
        {"CFBundleShortVersionString", QUENCHLY_VERSION},
        {"CFBundleVersion", QUENCHLY_VERSION},
        {"LSApplicationCategoryType", "public.app-category.utilities"},
        {"LSMinimumSystemVersion", "13.0"},
        {"LSUIElement", "true"},
        {"NSHighResolutionCapable", "true"},
        {"NSHumanReadableCopyright", "© 2026 Ein Anbieter"},
        {"NSPrincipalClass", "NSApplication"},
        {"NSSupportsAutomaticGraphicsSwitching", "true"},
        {"SUFeedURL", "https://updates.example/feed.xml?channel=1"},
        {"SUPublicEDKey", key},
    };
    EXPECT_EQ(testing::readPropertyList(*folder / "out/Quenchly.app/Contents/Info.plist"), expected);
}

TEST_F(Bundle, GetsItsLibrariesBeforeItIsSignedFromTheInsideOut)
{
    const std::string sign = "codesign|--force|--preserve-metadata=entitlements|--options|runtime|--timestamp|--sign|" +
                             std::string(identity) + "|APP";
    const std::string version = sign + "/Contents/Frameworks/Sparkle.framework/Versions/Current";
    const std::vector<std::string> expected{
        "macdeployqt|APP|-always-overwrite|-executable=APP/Contents/Helpers/quenchly-status|"
        "-executable=APP/Contents/PlugIns/platforms/libqoffscreen.dylib",
        version + "/XPCServices/Downloader.xpc",
        version + "/XPCServices/Installer.xpc",
        version + "/Updater.app",
        version + "/Autoupdate",
        sign + "/Contents/Frameworks/Sparkle.framework",
        sign + "/Contents/PlugIns/platforms/libqoffscreen.dylib",
        sign + "/Contents/Helpers/quenchly",
        sign + "/Contents/Helpers/quenchly-status",
        sign,
        "codesign|--verify|--deep|--strict|APP",
    };
    EXPECT_EQ(calls(), expected);
}

TEST_F(Bundle, WithoutAnIdentityItIsSignedForThisMachineOnly)
{
    const testing::ScratchFolder other;
    writeRecorder(other, "tools/codesign");
    other.write("A b.app/Contents/MacOS/QuenchlyMenuBar", "");
    other.write("A b.app/Contents/MacOS/quenchly", "");
    const ProgramRun run = testing::runProgram(
        "/bin/sh", {QUENCHLY_ROOT "/packaging/macos/sign-bundle", other / "A b.app", "-"},
        {{"QUENCHLY_CALLS", other / "calls"}, {"PATH", (other / "tools").string() + ":/usr/bin:/bin"}});
    EXPECT_EQ(run.exitStatus, 0) << run.errors;
    const std::string app = other / "A b.app";
    const std::string sign = "codesign|--force|--preserve-metadata=entitlements|--sign|-|" + app;
    EXPECT_EQ(testing::contentOf(other / "calls"),
              sign + "/Contents/MacOS/quenchly\n" + sign + "\ncodesign|--verify|--deep|--strict|" + app + "\n");
}

TEST_F(Bundle, AnInstallationThatCannotBeSignedFails)
{
    const testing::ScratchFolder other;
    const fs::path failing = other.write("tools/codesign", "#!/bin/sh\nexit 1\n");
    fs::permissions(failing, fs::perms::owner_all);
    std::map<std::string, std::string> environment = variables();
    environment["PATH"] = (other / "tools").string() + ":/usr/bin:/bin";
    const ProgramRun run =
        testing::runProgram(QUENCHLY_CMAKE, {"--install", *folder / "build", "--prefix", other / "out"}, environment);
    EXPECT_NE(run.exitStatus, 0);
}

}  // namespace
}  // namespace quenchly
