#include "panel_button.h"

#include <gtest/gtest.h>

#include <QTest>

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

}  // namespace
}  // namespace quenchly
