#include "alert.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QEventLoop>
#include <QFont>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>

#include "breakable_words.h"

namespace quenchly {
namespace {

constexpr int iconSide = 48;
constexpr int textWidth = 300;  // at least, so that alerts that follow each other are alike

void embolden(QLabel* label)
{
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
}

/// A message box that can always be closed without an answer. Its own class also keeps it from being replaced by the
/// desktop's native one.
class AlertBox final : public QMessageBox {
    Q_OBJECT

public:
    explicit AlertBox(const Alert& alert)
    {
        setWindowFlag(Qt::WindowStaysOnTopHint);  // as the panel does
        const QIcon icon = QApplication::windowIcon();
        icon.isNull() ? setIcon(QMessageBox::Information) : setIconPixmap(icon.pixmap(iconSide));
        setWindowTitle(QStringLiteral("Quenchly"));
        setText(QString::fromStdString(alert.title));
        addText(alert.text);
        for (QLabel* label : findChildren<QLabel*>())
            label->setTextFormat(Qt::PlainText);
        embolden(findChild<QLabel*>(QStringLiteral("qt_msgbox_label")));
        for (const std::string& button : alert.buttons)
            addPlainButton(QString::fromStdString(button));
    }

    std::optional<std::size_t> answer() const
    {
        const auto place = buttons_.indexOf(clickedButton());
        return place < 0 ? std::nullopt : std::optional<std::size_t>(place);
    }

private:
    void addText(const std::string& text)
    {
        setInformativeText(QString::fromStdString(withBreakableWords(withUnbrokenPrefixes(text))));
        if (auto* label = findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"))) {
            label->setMinimumWidth(std::max(textWidth, label->minimumSizeHint().width()));
            label->setAccessibleName(QString::fromStdString(text));
        }
    }

    void addPlainButton(QString text)
    {
        // Buttons of one role stay in the order in which they are added, on every desktop.
        QPushButton* button = addButton(text.replace(u'&', QStringLiteral("&&")), QMessageBox::ActionRole);
        if (buttons_.isEmpty())
            setDefaultButton(button);
        buttons_ += button;
    }

    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->matches(QKeySequence::Cancel))
            reject();
        else
            QMessageBox::keyPressEvent(event);
    }

    void closeEvent(QCloseEvent* event) override { QDialog::closeEvent(event); }

    QList<QAbstractButton*> buttons_;
};

}  // namespace

std::optional<std::size_t> runAlert(const Alert& alert)
{
    AlertBox box(alert);
    box.setModal(true);
    QEventLoop untilAnswered;
    QObject::connect(&box, &QDialog::finished, &untilAnswered, &QEventLoop::quit);
    // By the loop itself, which does not run once the program was told to end: the alert would only flash up.
    QMetaObject::invokeMethod(&box, &QWidget::show, Qt::QueuedConnection);
    if (untilAnswered.exec(QEventLoop::DialogExec) < 0)
        return std::nullopt;
    // A caller that blocks now must not leave the closed box on the screen.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    return box.answer();
}

}  // namespace quenchly

#include "alert_linux.moc"
