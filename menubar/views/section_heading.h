#pragma once

#include <QColor>
#include <QWidget>
#include <string>

namespace quenchly {

class HelpIcon;
class TextLabel;

/// The heading of a section with its help icon.
class SectionHeading : public QWidget {
    Q_OBJECT

public:
    explicit SectionHeading(const QColor& ink, QWidget* parent = nullptr);

    void setContent(const std::string& heading, const std::string& help);

private:
    TextLabel* heading_;
    HelpIcon* help_;
};

}  // namespace quenchly
