#pragma once

#include <QWidget>
#include <vector>

#include "menu_content.h"

class QVBoxLayout;

namespace quenchly {

class SectionHeading;
class TargetRowView;
class TextLabel;

/// What Protection applies to: the listed AI servers, each with a dot in the colour of its state.
class TargetsView : public QWidget {
    Q_OBJECT

public:
    explicit TargetsView(QWidget* parent = nullptr);

    void setContent(const MenuContent::Targets& content);

private:
    void showRows(const std::vector<MenuContent::Target>& targets);

    SectionHeading* heading_;
    QVBoxLayout* rowColumn_;
    std::vector<TargetRowView*> rows_;
    TextLabel* more_;
    TextLabel* note_;
    TextLabel* honesty_;
};

}  // namespace quenchly
