#include <gtest/gtest.h>

#include "application_on_desktop.h"
#include "desktop.h"

namespace quenchly {
namespace {

using namespace testing;
using Role = Accessible::Role;

class AccessibilityTest : public ApplicationOnDesktop {
protected:
    void openIn(const char* scenario)
    {
        showScenario(scenario);
        openPanel();
    }

    std::vector<Accessible> controls() const
    {
        std::vector<Accessible> found = tree().showing();
        std::erase_if(found, [](const Accessible& object) { return !object.isControl(); });
        return found;
    }

    void expectEveryControlIsTold()
    {
        for (const Accessible& control : controls()) {
            EXPECT_TRUE(control.role == Role::pushButton || control.role == Role::progressBar ||
                        control.role == Role::scrollBar)
                << static_cast<unsigned>(control.role);
            EXPECT_FALSE(control.name.isEmpty()) << control.path.toStdString();
            EXPECT_FALSE(control.description.isEmpty()) << control.name.toStdString();
        }
    }
};

TEST_F(AccessibilityTest, EveryControlHasARoleANameAndADescription)
{
    openIn("set-aside");
    ASSERT_TRUE(waitFor([this] { return shows(QStringLiteral("SET ASIDE (3)")); }));
    // Four of the header, one per heading, three entries and their help, both of Clear all, seven actions and theirs.
    EXPECT_GE(controls().size(), 30U);
    expectEveryControlIsTold();
    playScenario("swap-critical");
    ASSERT_TRUE(waitFor([this] { return shows(QStringLiteral("Unload listed AI")); }));
    expectEveryControlIsTold();
    playScenario("not-set-up");
    ASSERT_TRUE(waitFor([this] { return shows(QStringLiteral("Start background checks")); }));
    expectEveryControlIsTold();
}

TEST_F(AccessibilityTest, EveryTextOfThePanelIsTold)
{
    openIn("set-aside");
    for (const char* text :
         {"Protection On", "Protection applies to", "Ollama", "SET ASIDE (3)", "Acknowledge", "Clear all (3)",
          "Only Ollama, MLX, LM Studio.", "Open at Login: On", "Live data", "Check for Updates...", "Report a problem",
          "Uninstall…", "Quit Quenchly", "Updates not configured yet"})
        EXPECT_TRUE(waitFor([&] { return shows(QString::fromUtf8(text)); })) << text;
}

TEST_F(AccessibilityTest, TheMetersAreProgressBarsWithValues)
{
    openIn("holding");
    const AccessibilityTree accessibility = tree();
    std::vector<Accessible> meters = controls();
    std::erase_if(meters, [](const Accessible& object) { return object.role != Role::progressBar; });
    ASSERT_EQ(meters.size(), 2U);
    EXPECT_EQ(meters[0].name, QStringLiteral("load"));
    EXPECT_TRUE(meters[1].name == QStringLiteral("swap") || meters[1].name == QStringLiteral("extra memory on disk"));
    for (const Accessible& meter : meters) {
        const std::optional<double> value = accessibility.value(meter);
        ASSERT_TRUE(value);
        EXPECT_GE(*value, 0);
        EXPECT_LE(*value, 100);
        EXPECT_EQ(accessibility.largestValue(meter), 100);
    }
}

TEST_F(AccessibilityTest, PressingTheProtectionRowSwitchesItOff)
{
    openIn("calm");
    ASSERT_FALSE(buttonNamed(QStringLiteral("Protection On")).isEmpty());
    const std::vector<Accessible> rows = named(QStringLiteral("Protection On"));
    const auto button =
        std::find_if(rows.begin(), rows.end(), [](const Accessible& row) { return row.role == Role::pushButton; });
    ASSERT_NE(button, rows.end());
    ASSERT_TRUE(tree().press(*button));
    EXPECT_TRUE(waitFor([this] { return toolRuns() == QStringList{QStringLiteral("disable")}; }));
    EXPECT_TRUE(waitFor([this] { return !buttonNamed(QStringLiteral("Protection Off")).isEmpty(); }));
    EXPECT_FALSE(shows(QStringLiteral("Protection On")));
}

}  // namespace
}  // namespace quenchly
