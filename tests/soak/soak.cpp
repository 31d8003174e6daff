// Usage: soak refreshes|openings|growth [--count N] [--seed S]
//   refreshes  a watcher, its item and its panel, refreshed N times with a clock that runs as fast as it can, while
//              another process spoils every file, kills the stand-in checker and lets AI servers come and go
//   openings   the panel opened and closed N times in every language with ever different contents, and its help
//   growth     N refreshes of a quiet day, with the item in the tray of the session
// Ends with 1 when something was found. The same seed gives the same changes.

#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <QApplication>
#include <QTest>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string_view>

#include "help_icon.h"
#include "l10n.h"
#include "rest_check.h"
#include "rewriter.h"
#include "soaked_application.h"
#include "test_files.h"

namespace {

using namespace quenchly;
using namespace quenchly::soak;

constexpr int refreshesOfADay = 86'400;
constexpr int usualOpenings = 1'000;
constexpr uid_t nobody = 65534;

/// How often in a soak it is looked whether all is right; the first time when everything has been used once.
constexpr int looks = 20;

/// How seldom things happen, one in so many refreshes.
constexpr std::size_t press = 60;
constexpr std::size_t action = 100;
constexpr std::size_t kill = 8;

constexpr int refreshesPerCheck = 60;
constexpr std::size_t mostSetAside = 7;
constexpr int languages = static_cast<int>(rawValues<AppLanguage>.size());
/// Every situation in every language.
constexpr int openingsToUseEverything = 30;
constexpr std::size_t helpIcons = 25;

constexpr std::size_t situations = 10;
/// The one in which the looks are compared; rows of the section that it shows are kept until it shows others.
constexpr std::size_t setAside = 6;

struct Options {
    std::string_view part;
    int count = 0;
    std::uint64_t seed = std::random_device()();
};

bool canBeRun(const char* program)
{
    return ::faccessat(AT_FDCWD, program, X_OK, AT_EACCESS) == 0;
}

/// To root every file is readable. Where others may not look into the build folder it stays at that.
void becomeOrdinaryUser()
{
    if (::geteuid() != 0 || ::setegid(nobody) != 0 || ::seteuid(nobody) != 0)
        return;
    const bool works = canBeRun("/proc/self/exe") && canBeRun(QUENCHLY_DEMO_TOOL_PATH);
    if (::seteuid(0) != 0 || ::setegid(0) != 0)
        std::exit(1);
    if (!works) {
        std::printf("as root, to whom every file is readable\n");
        return;
    }
    if (::setresgid(nobody, nobody, nobody) != 0 || ::setresuid(nobody, nobody, nobody) != 0)
        std::exit(1);
    ::prctl(PR_SET_DUMPABLE, 1);  // else what /proc tells of this process is root's still
}

void killSome(Dice& dice, pid_t spared)
{
    for (const OwnChild& child : ownChildren())
        if (child.process != spared && dice.oneIn(2))
            killOwnChild(child.process);
}

/// What takes part in a soak.
struct Scene {
    SoakedApplication& application;
    Rewriter& rewriter;
    RestCheck& check;
    Dice dice;
};

/// Everything is made whole, a second passes, and what is shown must be right.
void mendAndCompare(Scene& scene, std::size_t situation)
{
    scene.rewriter.mend(situation, scene.application.now());
    scene.application.refresh();
    if (const std::string error = scene.application.error(); !error.empty())
        scene.check.fail(error);
}

/// Opens the help of the row number `place`, and closes it again or leaves that to the panel.
void openHelp(Scene& scene, std::size_t place, bool closes)
{
    std::vector<HelpIcon*> icons;
    for (HelpIcon* icon : scene.application.openPanel()->findChildren<HelpIcon*>())
        if (icon->isVisible())
            icons.push_back(icon);
    if (icons.empty())
        return scene.check.fail("the panel has no help");
    HelpIcon* icon = icons[place % icons.size()];
    QTest::mouseClick(icon, Qt::LeftButton);
    if (!icon->isPopoverOpen())
        scene.check.fail("help does not open");
    if (closes)
        QTest::mouseClick(icon, Qt::LeftButton);
}

bool openPanel(Scene& scene)
{
    const bool opened = SoakedApplication::letHappenUntil([&] {
        if (!scene.application.showsPanel())
            scene.application.press();
        return scene.application.showsPanel();
    });
    if (!opened)
        scene.check.fail("a press does not open the panel");
    return opened;
}

void closePanel(Scene& scene)
{
    scene.application.press();
    if (scene.application.showsPanel())
        scene.check.fail("a press does not close the panel");
}

void speak(int language)
{
    L10n::testingLanguage = static_cast<AppLanguage>(language % languages);
}

void showSomething(Scene& scene)
{
    scene.rewriter.mendWithSetAside(scene.dice.below(situations), scene.dice.below(mostSetAside),
                                    scene.application.now());
    scene.application.refresh();
}

void openOnce(int opening, Scene& scene)
{
    speak(opening);
    scene.rewriter.changeTargets();
    showSomething(scene);
    if (!openPanel(scene))
        return;
    scene.application.refresh();
    if (scene.dice.oneIn(2))
        openHelp(scene, scene.dice.below(helpIcons), scene.dice.oneIn(2));
    showSomething(scene);
    closePanel(scene);
}

/// Shows the same each time before it looks.
void lookAtRest(int done, Scene& scene)
{
    scene.check.rest();
    L10n::testingLanguage = AppLanguage::en;
    mendAndCompare(scene, setAside);
    if (openPanel(scene))
        scene.application.awaitScan();
    scene.check.look(done);
}

/// What is made on first use and then kept is no growth: the panel, what Qt keeps of the typefaces of every language.
void useEverything(Scene& scene)
{
    for (int opening = 0; opening < openingsToUseEverything; ++opening) {
        speak(opening);
        scene.rewriter.mendWithSetAside(static_cast<std::size_t>(opening), mostSetAside, scene.application.now());
        scene.application.refresh();
        if (!openPanel(scene))
            return;
        for (std::size_t place = 0; place < helpIcons; ++place)
            openHelp(scene, place, true);
        scene.application.refresh();
        closePanel(scene);
    }
    scene.application.watcher().startLiveData();
    scene.application.watcher().unloadListed();
    lookAtRest(0, scene);
}

void soakRefreshes(int count, Scene& scene)
{
    useEverything(scene);
    for (int refresh = 1; refresh <= count; ++refresh) {
        scene.rewriter.spoil(scene.application.now());
        scene.application.refresh();
        if (scene.dice.oneIn(press))
            scene.application.press();
        if (scene.dice.oneIn(action))
            scene.application.act(scene.dice);
        if (scene.dice.oneIn(kill))
            killSome(scene.dice, scene.rewriter.process());
        if (refresh % std::max(count / looks, 1) != 0)
            continue;
        scene.check.rest();
        for (std::size_t situation = 0; situation < situations; ++situation)
            mendAndCompare(scene, situation);
        lookAtRest(refresh, scene);
    }
}

void soakOpenings(int count, Scene& scene)
{
    useEverything(scene);
    for (int opening = 1; opening <= count; ++opening) {
        openOnce(opening, scene);
        if (opening % std::max(count / looks, 1) == 0)
            lookAtRest(opening, scene);
    }
}

void watchGrowth(int count, Scene& scene)
{
    for (int refresh = 1; refresh <= count; ++refresh) {
        if (refresh % refreshesPerCheck == 0)
            scene.rewriter.mend(setAside, scene.application.now());
        scene.application.refresh();
        if (refresh % std::max(count / looks, 1) == 0)
            scene.check.look(refresh);
    }
}

Options optionsOf(int argc, char** argv)
{
    Options options;
    if (argc > 1)
        options.part = argv[1];
    options.count = options.part == "openings" ? usualOpenings : refreshesOfADay;
    for (int place = 2; place + 1 < argc; place += 2) {
        if (argv[place] == std::string_view("--count"))
            options.count = std::atoi(argv[place + 1]);
        else if (argv[place] == std::string_view("--seed"))
            options.seed = std::strtoull(argv[place + 1], nullptr, 10);
        else
            options.part = {};
    }
    return options;
}

int soakPart(const Options& options)
{
    const auto part = options.part == "refreshes"  ? soakRefreshes
                      : options.part == "openings" ? soakOpenings
                      : options.part == "growth"   ? watchGrowth
                                                   : nullptr;
    if (part == nullptr || options.count <= 0) {
        std::fprintf(stderr, "Usage: soak refreshes|openings|growth [--count N] [--seed S]\n");
        return 2;
    }
    std::printf("%s: %d, seed %llu\n", std::string(options.part).c_str(), options.count,
                static_cast<unsigned long long>(options.seed));
    std::printf("  %8s %16s %14s %12s %8s %8s %8s\n", "done", "allocated", "private", "descriptors", "threads",
                "widgets", "messages");
    const testing::ScratchFolder scratch;
    const CheckedHome home{scratch.makeFolder("home")};
    Rewriter rewriter(home, scratch.makeFolder("rewriter"), options.seed);
    rewriter.mend(setAside, Instant());
    SoakedApplication application(home, scratch / "tools", options.part == "growth");
    RestCheck check(application, rewriter);
    Scene scene{application, rewriter, check, Dice(options.seed + 1)};
    part(options.count, scene);
    std::printf("%s\n", check.failures() == 0 ? "nothing found" : "something was found");
    return check.failures() == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc == 5 && argv[1] == std::string_view("rewriter"))
        return runRewriter(argv[2], argv[3], std::strtoull(argv[4], nullptr, 10));
    const Options options = optionsOf(argc, argv);
    if (options.part != "growth")
        becomeOrdinaryUser();
    const QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setQuitOnLastWindowClosed(false);
    return soakPart(options);
}
