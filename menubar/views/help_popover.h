#pragma once

#include <QFrame>

namespace quenchly {

class TextLabel;

/// A small dark card with a paragraph of help, beside the widget that it belongs to. A press outside closes it, and so
/// do Escape, Return and Space.
class HelpPopover : public QFrame {
    Q_OBJECT

public:
    static constexpr int widest = 260;

    /// What `anchor` stands in is what the help is about.
    HelpPopover(const QString& help, QWidget* anchor);

    void setHelp(const QString& help);
    /// Below what the help is about, or above it where there is no room, and wholly on its screen.
    void open();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void fit();
    QRect anchorOnScreen() const;
    QRect subjectOnScreen() const;

    QWidget* anchor_;
    TextLabel* text_;
};

}  // namespace quenchly
