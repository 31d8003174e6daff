#include <gtest/gtest.h>

#include "application_on_desktop.h"
#include "desktop.h"

namespace quenchly {
namespace {

using namespace testing;

/// Keeps a picture of the open panel in every situation and in every language.
class PicturesTest : public ApplicationOnDesktop {
protected:
    /// A label that had to be cut describes itself by its whole text. Only the detail may be.
    void expectNothingIsCut() const
    {
        for (const Accessible& object : tree().showing()) {
            const bool isDetail = object.name.startsWith(QStringLiteral("load ")) ||
                                  object.name.startsWith(QStringLiteral("The menu bar icon is running"));
            const bool isText = object.role == Accessible::Role::label && !object.name.isEmpty() && !isDetail;
            EXPECT_FALSE(isText && object.description == object.name) << object.name.toStdString();
        }
    }

    void keepPanel(const QString& name)
    {
        EXPECT_TRUE(screenRests());
        EXPECT_TRUE(workArea().contains(panel()));
        expectNothingIsCut();
        keepPicture(name);
    }
};

TEST_F(PicturesTest, EveryScenarioInTurnInTheOpenPanel)
{
    showScenario("calm");
    openPanel();
    // Beside each the text by which it is known to show, after the one before it.
    const std::vector<std::pair<const char*, const char*>> scenarios{
        {"calm", "Machine is calm. AI keeps running as usual."},
        {"overload", "Overload. Watching."},
        {"holding", "Holding until pressure drops. The machine is not fighting the AI for CPU."},
        {"easing", "AI is eased back. The machine is not fighting the AI for CPU."},
        {"false-heat", "Using extra memory on disk. Work is progressing."},
        {"set-aside", "SET ASIDE (3)"},
        {"swap-critical", "Unload listed AI"},
        {"stale", "Checking in a moment."},
        {"protection-off", "Protection Off"},
        {"not-set-up", "Checks not set up"},
    };
    for (const auto& [scenario, text] : scenarios) {
        playScenario(scenario);
        EXPECT_TRUE(waitFor([&] { return shows(QString::fromUtf8(text)); })) << scenario;
        keepPanel(QLatin1String(scenario));
    }
}

class LanguagePicturesTest : public PicturesTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(LanguagePicturesTest, ThePanelHasRoomForIt)
{
    playScenario("set-aside");
    startApplication({}, GetParam());
    openPanel();
    keepPanel(QStringLiteral("set-aside-") + QLatin1String(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Languages, LanguagePicturesTest,
                         ::testing::Values("en", "ja", "fil", "zh-Hans", "zh-Hant", "ko"));

}  // namespace
}  // namespace quenchly
