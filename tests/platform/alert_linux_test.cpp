#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <functional>

#include "alert.h"

namespace quenchly {
namespace {

using Answer = std::optional<std::size_t>;

const Alert question{.title = "Remove <b>it</b>?",
                     .text = "<img src='/etc/passwd'>First line & second\nhttps://brindlemoor.example",
                     .buttons = {"Remove & forget", "Keep", "Later"}};

class AlertTest : public ::testing::Test {
protected:
    /// The answer to the alert after `act` was done to its box on the screen.
    static Answer answerAfter(const Alert& alert, const std::function<void(QMessageBox&)>& act)
    {
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr)
                return;
            look.stop();
            act(*box);
        });
        look.start(0);
        return runAlert(alert);
    }

    static QList<QAbstractButton*> buttonsFromLeftToRight(const QMessageBox& box)
    {
        QList<QAbstractButton*> buttons = box.buttons();
        std::ranges::sort(buttons, {}, [](const QAbstractButton* button) { return button->x(); });
        return buttons;
    }

    static void dismiss(QMessageBox& box) { box.close(); }
};

TEST_F(AlertTest, EveryTextIsShownAsItIs)
{
    answerAfter(question, [](QMessageBox& box) {
        EXPECT_TRUE(box.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        EXPECT_EQ(box.icon(), QMessageBox::Information);
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Quenchly"));
        EXPECT_EQ(box.text(), QStringLiteral("Remove <b>it</b>?"));
        QStringList shown;
        for (const QLabel* label : box.findChildren<QLabel*>()) {
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
            if (!label->text().isEmpty())
                shown += label->text();
        }
        EXPECT_EQ(shown.size(), 2);
        EXPECT_TRUE(shown.contains(QString::fromStdString(question.text)));
        dismiss(box);
    });
}

TEST_F(AlertTest, TheButtonsStandInTheirOrderAndReturnTheirPlace)
{
    for (int place = 0; place < 3; ++place) {
        const Answer answer = answerAfter(question, [place](QMessageBox& box) {
            const auto buttons = buttonsFromLeftToRight(box);
            ASSERT_EQ(buttons.size(), 3);
            EXPECT_EQ(buttons.at(0)->text(), QStringLiteral("Remove && forget"));
            EXPECT_EQ(buttons.at(1)->text(), QStringLiteral("Keep"));
            EXPECT_EQ(buttons.at(2)->text(), QStringLiteral("Later"));
            QTest::mouseClick(buttons.at(place), Qt::LeftButton);
        });
        EXPECT_EQ(answer, static_cast<std::size_t>(place));
    }
}

TEST_F(AlertTest, ReturnPressesTheFirstButton)
{
    EXPECT_EQ(answerAfter(question, [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); }), 0u);
}

TEST_F(AlertTest, EscapeAndTheWindowsCloseButtonAnswerNothingHoweverManyButtonsThereAre)
{
    const Alert notice{.title = "Done", .text = "All of it.", .buttons = {"OK"}};
    const Alert choice{.title = "Sure?", .text = "Really?", .buttons = {"Go", "Cancel"}};
    for (const Alert& alert : {notice, choice, question}) {
        EXPECT_EQ(answerAfter(alert, [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); }), std::nullopt);
        EXPECT_EQ(answerAfter(alert, [](QMessageBox& box) { EXPECT_TRUE(box.close()); }), std::nullopt);
    }
}

TEST_F(AlertTest, ALongWordIsBrokenAndReadOutWhole)
{
    const std::string folder = "/" + std::string(300, 'W');
    const Alert alert{.title = "Sure?", .text = "In\n" + folder, .buttons = {"Go"}};
    answerAfter(alert, [&](QMessageBox& box) {
        const auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"));
        ASSERT_NE(label, nullptr);
        const QRect column(0, 0, label->width(), QWIDGETSIZE_MAX);
        const QRect text = label->fontMetrics().boundingRect(column, Qt::TextWordWrap, label->text());
        EXPECT_LT(box.width(), 800);
        EXPECT_LE(text.width(), label->width());
        EXPECT_LE(text.height(), label->height());
        EXPECT_EQ(label->accessibleName().toStdString(), alert.text);
        dismiss(box);
    });
}

/// Counts the alerts that come onto the screen while it lives.
class ShownAlerts : public QObject {
public:
    ShownAlerts() { qApp->installEventFilter(this); }
    int count = 0;

    bool eventFilter(QObject* object, QEvent* event) override
    {
        count += event->type() == QEvent::Show && qobject_cast<QMessageBox*>(object) != nullptr;
        return false;
    }
};

TEST_F(AlertTest, AProgramThatIsToldToEndLeavesTheAlertUnansweredAndShowsNoOther)
{
    ShownAlerts shown;
    std::vector<Answer> answers;
    QTimer::singleShot(0, qApp, [&] {
        answers.push_back(answerAfter(question, [](QMessageBox&) { QCoreApplication::exit(3); }));
        answers.push_back(runAlert(question));
    });
    EXPECT_EQ(QCoreApplication::exec(), 3);
    EXPECT_EQ(answers, (std::vector<Answer>{std::nullopt, std::nullopt}));
    EXPECT_EQ(shown.count, 1);
}

}  // namespace
}  // namespace quenchly
