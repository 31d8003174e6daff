// Usage: soak refreshes|openings|growth [--count N] [--seed S]
//   refreshes  a watcher, its item and its panel, refreshed N times with a clock that runs as fast as it can, while
//              another process spoils every file, kills the stand-in checker and lets AI servers come and go
//   openings   the panel opened and closed N times in every language with ever different contents, and its help
//   growth     N refreshes of a quiet day, with the item in the tray of the session
// Ends with 1 when something was found. The same seed gives the same changes.

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
constexpr int openingsToUseEverything = 24;

constexpr std::size_t situations = 10;
/// The one in which the looks are compared; rows of the section that it shows are kept until it shows others.
constexpr std::size_t setAside = 6;

struct Options {
    std::string_view part;
    int count = 0;
    std::uint64_t seed = std::random_device()();
};

/// To root every file is readable.
void becomeOrdinaryUser()
{
    if (::geteuid() != 0)
        return;
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

/// Everything is made whole, a second passes, and what is shown must be right.
void mendAndCompare(SoakedApplication& application, Rewriter& rewriter, RestCheck& check, std::size_t situation)
{
    rewriter.mend(situation, application.now());
    application.refresh();
    if (const std::string error = application.error(); !error.empty())
        check.fail(error);
}

/// Opens and closes the help of the row number `place`.
void openHelp(const MenuPanel& panel, std::size_t place, RestCheck& check)
{
    std::vector<HelpIcon*> icons;
    for (HelpIcon* icon : panel.findChildren<HelpIcon*>())
        if (icon->isVisible())
            icons.push_back(icon);
    if (icons.empty())
        return check.fail("the panel has no help");
    HelpIcon* icon = icons[place % icons.size()];
    QTest::mouseClick(icon, Qt::LeftButton);
    if (!icon->isPopoverOpen())
        check.fail("help does not open");
    if (place % 3 == 0)
        return;  // it goes with the panel
    QTest::mouseClick(icon, Qt::LeftButton);
}

bool openPanel(SoakedApplication& application, RestCheck& check)
{
    const bool opened = SoakedApplication::letHappenUntil([&] {
        if (!application.showsPanel())
            application.press();
        return application.showsPanel();
    });
    if (!opened)
        check.fail("a press does not open the panel");
    return opened;
}

void openOnce(int opening, Dice& dice, SoakedApplication& application, Rewriter& rewriter, RestCheck& check)
{
    L10n::testingLanguage = static_cast<AppLanguage>(opening % static_cast<int>(rawValues<AppLanguage>.size()));
    rewriter.mendWithSetAside(dice.below(situations), dice.below(mostSetAside), application.now());
    rewriter.changeTargets();
    application.refresh();
    if (!openPanel(application, check))
        return;
    application.refresh();
    if (dice.oneIn(2))
        openHelp(*application.openPanel(), dice.below(20), check);
    rewriter.mendWithSetAside(dice.below(situations), dice.below(mostSetAside), application.now());
    application.refresh();
    application.press();
    if (application.showsPanel())
        check.fail("a press does not close the panel");
}

/// Shows the same each time before it looks.
void lookAtRest(int done, SoakedApplication& application, Rewriter& rewriter, RestCheck& check)
{
    check.rest();
    L10n::testingLanguage = AppLanguage::en;
    mendAndCompare(application, rewriter, check, setAside);
    if (openPanel(application, check))
        application.awaitScan();
    check.look(done);
}

/// What is made on first use and then kept is no growth: the panel, what Qt keeps of the typefaces of every language.
void useEverything(Dice& dice, SoakedApplication& application, Rewriter& rewriter, RestCheck& check)
{
    for (int opening = 0; opening < openingsToUseEverything; ++opening)
        openOnce(opening, dice, application, rewriter, check);
    application.watcher().startLiveData();
    application.watcher().unloadListed();
    lookAtRest(0, application, rewriter, check);
}

void soakRefreshes(const Options& options, SoakedApplication& application, Rewriter& rewriter, RestCheck& check)
{
    Dice dice(options.seed + 1);
    useEverything(dice, application, rewriter, check);
    const int between = std::max(options.count / looks, 1);
    for (int refresh = 1; refresh <= options.count; ++refresh) {
        rewriter.spoil(application.now());
        application.refresh();
        if (dice.oneIn(press))
            application.press();
        if (dice.oneIn(action))
            application.act(dice);
        if (dice.oneIn(kill))
            killSome(dice, rewriter.process());
        if (refresh % between != 0)
            continue;
        check.rest();
        for (std::size_t situation = 0; situation < situations; ++situation)
            mendAndCompare(application, rewriter, check, situation);
        lookAtRest(refresh, application, rewriter, check);
    }
}

void soakOpenings(const Options& options, SoakedApplication& application, Rewriter& rewriter, RestCheck& check)
{
    Dice dice(options.seed + 1);
    useEverything(dice, application, rewriter, check);
    const int between = std::max(options.count / looks, 1);
    for (int opening = 1; opening <= options.count; ++opening) {
        openOnce(opening, dice, application, rewriter, check);
        if (opening % between == 0)
            lookAtRest(opening, application, rewriter, check);
    }
}

void watchGrowth(const Options& options, SoakedApplication& application, Rewriter& rewriter, RestCheck& check)
{
    const int between = std::max(options.count / looks, 1);
    for (int refresh = 1; refresh <= options.count; ++refresh) {
        if (refresh % refreshesPerCheck == 0)
            rewriter.mend(setAside, application.now());
        application.refresh();
        if (refresh % between == 0)
            check.look(refresh);
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
    part(options, application, rewriter, check);
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
