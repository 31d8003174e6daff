#include "updater.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <map>
#include <optional>

#include "product.h"
#include "scripted_system.h"
#include "shown_language.h"

namespace quenchly {
namespace {

using namespace std::chrono_literals;
using Info = std::map<std::string, std::string>;
using Events = std::vector<std::string>;

constexpr const char* feed = "https://updates.example/appcast.xml";
constexpr const char* key = "q7Z2m0hYx1sP9dKf4tVb8nRc3wLg6jUe5aQi0oXy+/E=";

struct Framework {
    bool automaticChecks = false;
    std::optional<bool> automaticDownloads;
    Events* events = nullptr;
};

class ScriptedBackend final : public UpdaterBackend {
public:
    explicit ScriptedBackend(Framework& framework) : framework_(framework) {}

    bool automaticallyChecksForUpdates() const override { return framework_.automaticChecks; }
    void setAutomaticallyChecksForUpdates(bool enabled) override { framework_.automaticChecks = enabled; }
    void setAutomaticallyDownloadsUpdates(bool enabled) override { framework_.automaticDownloads = enabled; }
    void checkForUpdates() override { framework_.events->push_back("check"); }

private:
    Framework& framework_;
};

class UpdaterTest : public ::testing::Test {
protected:
    testing::ScriptedSystem world;
    Framework framework{.events = &world.desktop.events};

    System configuredSystem()
    {
        System system = world.system();
        system.bundleInfo = {{"SUFeedURL", feed}, {"SUPublicEDKey", key}};
        system.startUpdaterBackend = [this] { return std::make_unique<ScriptedBackend>(framework); };
        return system;
    }
};

TEST(SparkleConfigurationTest, AnHttpsFeedAndARealKeyAreEnough)
{
    EXPECT_TRUE(Updater::isSparkleConfigured({{"SUFeedURL", feed}, {"SUPublicEDKey", key}}));
    EXPECT_TRUE(Updater::isSparkleConfigured({{"SUFeedURL", "HTTPS://Updates.example/a"}, {"SUPublicEDKey", key}}));
}

TEST(SparkleConfigurationTest, AFeedThatIsMissingOrNotHttpsIsNone)
{
    EXPECT_FALSE(Updater::isSparkleConfigured({{"SUPublicEDKey", key}}));
    for (const char* other : {"", "http://updates.example/a", "httpsx://updates.example/a", "updates.example/a",
                              "https", "://updates.example", " https://updates.example/a", "https://updates example/a",
                              "https://updates.example/a b"})
        EXPECT_FALSE(Updater::isSparkleConfigured({{"SUFeedURL", other}, {"SUPublicEDKey", key}})) << other;
}

TEST(SparkleConfigurationTest, AKeyOfAnotherLengthOrInOtherLettersIsNone)
{
    EXPECT_FALSE(Updater::isSparkleConfigured({{"SUFeedURL", feed}}));
    const std::string good = key;
    const std::string others[] = {
        "",
        "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA==",  // 31 bytes
        "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA",  // 33 bytes
        good.substr(0, 43),
        good + "\n",
        " " + good,
        good.substr(0, 20) + " " + good.substr(21),
        good.substr(0, 41) + "_-=",
    };
    for (const std::string& other : others)
        EXPECT_FALSE(Updater::isSparkleConfigured({{"SUFeedURL", feed}, {"SUPublicEDKey", other}})) << other;
}

TEST(SparkleConfigurationTest, APlaceholderIsNoKeyEvenWhereItsLengthIsRight)
{
    const std::string rest(32, 'A');
    EXPECT_TRUE(Updater::isSparkleConfigured({{"SUFeedURL", feed}, {"SUPublicEDKey", "PLACEH0LDER" + rest + "="}}));
    for (const char* word : {"PLACEHOLDER", "placeholder", "PlaceHolder"})
        EXPECT_FALSE(Updater::isSparkleConfigured({{"SUFeedURL", feed}, {"SUPublicEDKey", word + rest + "="}})) << word;
}

TEST_F(UpdaterTest, AConfiguredFrameworkIsStartedWithoutAutomaticDownloads)
{
    framework.automaticChecks = true;
    const Updater updater(configuredSystem());
    EXPECT_TRUE(updater.isConfigured());
    EXPECT_EQ(framework.automaticDownloads, false);
    EXPECT_TRUE(updater.automaticChecksEnabled());
    EXPECT_TRUE(world.log.empty());
}

TEST_F(UpdaterTest, WithoutConfigurationNothingIsStartedAndThatIsLogged)
{
    System system = configuredSystem();
    system.bundleInfo.erase("SUPublicEDKey");
    const Updater updater(system);
    EXPECT_FALSE(updater.isConfigured());
    EXPECT_FALSE(updater.automaticChecksEnabled());
    EXPECT_FALSE(framework.automaticDownloads.has_value());
    EXPECT_EQ(world.log, Events{"Quenchly: Sparkle not configured (missing/placeholder SUFeedURL or SUPublicEDKey); "
                                "updater not started."});
}

TEST_F(UpdaterTest, NothingIsStartedOrLoggedBeforeTheFirstUse)
{
    const Updater configured(configuredSystem());
    EXPECT_FALSE(framework.automaticDownloads.has_value());
    const Updater notConfigured(world.system());
    EXPECT_TRUE(world.log.empty());
    EXPECT_TRUE(configured.isConfigured());
    EXPECT_FALSE(notConfigured.isConfigured());
    EXPECT_FALSE(notConfigured.automaticChecksEnabled());
    EXPECT_EQ(framework.automaticDownloads, false);
    EXPECT_EQ(world.log.size(), 1u) << "and once only";
}

TEST_F(UpdaterTest, AFrameworkThatCannotBeLoadedIsAsGoodAsNone)
{
    System system = configuredSystem();
    system.startUpdaterBackend = [] { return nullptr; };
    Updater updater(system);
    EXPECT_FALSE(updater.isConfigured());
    EXPECT_EQ(world.log, Events{"Quenchly: Sparkle is configured but could not be loaded; updater not started."});
    updater.checkForUpdates();
    EXPECT_EQ(world.desktop.alerts.size(), 1u);
}

TEST_F(UpdaterTest, TheSettingIsTheFrameworksOwn)
{
    Updater updater(configuredSystem());
    QSignalSpy published(&updater, &Updater::published);
    updater.setAutomaticChecksEnabled(true);
    EXPECT_TRUE(framework.automaticChecks);
    EXPECT_EQ(published.count(), 1);
    updater.setAutomaticChecksEnabled(true);
    EXPECT_EQ(published.count(), 1);
    framework.automaticChecks = false;  // in the framework's own window
    EXPECT_FALSE(updater.automaticChecksEnabled());
}

TEST_F(UpdaterTest, WithoutAFrameworkTheSettingStaysOff)
{
    Updater updater(world.system());
    QSignalSpy published(&updater, &Updater::published);
    updater.setAutomaticChecksEnabled(true);
    EXPECT_FALSE(updater.automaticChecksEnabled());
    EXPECT_EQ(published.count(), 0);
}

TEST_F(UpdaterTest, ACheckBringsTheFrameworksWindowToTheFrontAndTwoSecondsLaterLeavesTheDock)
{
    std::optional<Updater> updater(std::in_place, configuredSystem());
    updater->checkForUpdates();
    EXPECT_EQ(world.desktop.events, (Events{"regular", "check"}));
    ASSERT_EQ(world.desktop.delays, std::vector<std::chrono::milliseconds>{2s});
    updater.reset();
    world.desktop.tasks.front()();
    EXPECT_EQ(world.desktop.events, (Events{"regular", "check", "accessory"}));
}

TEST_F(UpdaterTest, ACheckWithoutConfigurationSaysSoInAnAlert)
{
    Updater updater(world.system());
    updater.checkForUpdates();
    EXPECT_EQ(world.desktop.events, (Events{"regular", "activate", "alert Updates not configured yet", "accessory"}));
    const Alert& alert = world.desktop.alerts.front();
    EXPECT_EQ(alert.buttons, Events{"OK"});
    const std::string host = Product::vendorHost;
    EXPECT_EQ(alert.text, "Checking will work once updates are published on " + host +
                              ". Until then, new versions come from https://" + host + "/quenchly/.");
    EXPECT_TRUE(world.desktop.tasks.empty());
}

TEST_F(UpdaterTest, TheAlertSaysHowElseTheSystemUpdatesPrograms)
{
    System system = world.system();
    system.updateAdvice = "updates_by_package_manager";
    Updater(system).checkForUpdates();
    const std::string text = world.desktop.alerts.front().text;
    EXPECT_TRUE(text.ends_with("/quenchly/.\n\nIf Quenchly came as a package, the package manager updates it."))
        << text;
}

class UpdaterLanguages : public UpdaterTest, public ::testing::WithParamInterface<AppLanguage> {};

TEST_P(UpdaterLanguages, TheAlertSpeaksTheLanguageInForce)
{
    L10n::testingLanguage = GetParam();
    System system = world.system();
    system.updateAdvice = "updates_by_package_manager";
    Updater(system).checkForUpdates();
    const std::string host = Product::vendorHost;
    EXPECT_EQ(world.desktop.alerts.front(),
              (Alert{.title = L10n::t("updates_not_configured"),
                     .text = L10n::tf("updates_text", {host, host}) + "\n\n" + L10n::t("updates_by_package_manager"),
                     .buttons = {L10n::t("ok")}}));
    L10n::testingLanguage.reset();
}

INSTANTIATE_TEST_SUITE_P(All, UpdaterLanguages, ::testing::ValuesIn(testing::allLanguages),
                         [](const auto& language) { return std::string(rawValue(language.param)); });

}  // namespace
}  // namespace quenchly
