#include "panel_button.h"

#include <gtest/gtest.h>

#include <QTest>

#include "l10n.h"

namespace quenchly {
namespace {

class PlainButton : public PanelButton {
public:
    using PanelButton::PanelButton;

protected:
    void paintEvent(QPaintEvent*) override {}
};

class PanelButtonTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        window.setFocusPolicy(Qt::ClickFocus);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        button->setFocus(Qt::TabFocusReason);
        ASSERT_TRUE(button->hasFocus());
    }

    QWidget window;
    PlainButton* button = new PlainButton(&window);
};

TEST_F(PanelButtonTest, TheFocusComesBackWithAButtonThatWasDisabled)
{
    button->setAvailable(false);
    EXPECT_TRUE(window.hasFocus());
    button->setAvailable(true);
    EXPECT_TRUE(button->hasFocus());
}

TEST_F(PanelButtonTest, AButtonThatWasHiddenMeanwhileHasLostTheFocusForGood)
{
    button->setAvailable(false);
    button->hide();
    button->show();
    button->setAvailable(true);
    EXPECT_TRUE(window.hasFocus());
}

TEST_F(PanelButtonTest, TheReasonOfAGreyButtonIsItsTooltipAndComesFirstForScreenReaders)
{
    L10n::testingLanguage = AppLanguage::en;
    button->describe("What it does.", "Needs <a tool>");
    EXPECT_EQ(button->toolTip().toStdString(), "<p>Needs &lt;a tool&gt;</p>");
    EXPECT_EQ(button->accessibleDescription().toStdString(), "Needs <a tool>. What it does.");
    button->describe("What it does.", "");
    EXPECT_EQ(button->toolTip().toStdString(), "");
    EXPECT_EQ(button->accessibleDescription().toStdString(), "What it does.");
    L10n::testingLanguage = AppLanguage::ja;
    button->describe("何をするか。", "ツールが必要です");
    EXPECT_EQ(button->accessibleDescription().toStdString(), "ツールが必要です。何をするか。");
    L10n::testingLanguage.reset();
}

}  // namespace
}  // namespace quenchly
