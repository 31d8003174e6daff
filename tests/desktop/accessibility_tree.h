#pragma once

#include <QRect>
#include <QString>
#include <optional>
#include <vector>

namespace quenchly::testing {

/// What an assistive technology is told about one object on the screen.
struct Accessible {
    /// By the numbers of the accessibility bus.
    enum class Role : unsigned { alert = 2, frame = 23, label = 29, progressBar = 42, pushButton = 43, scrollBar = 48 };
    enum class State {
        active = 1,
        enabled = 8,
        focusable = 11,
        focused = 12,
        sensitive = 24,
        showing = 25,
        isDefault = 39
    };

    QString path;  ///< where it answers on the accessibility bus
    Role role{};
    QString name;
    QString description;
    quint64 states = 0;

    bool is(State state) const { return (states >> static_cast<unsigned>(state) & 1U) != 0; }
    /// Whether it can be pressed, set or read off, other than as a text.
    bool isControl() const;
};

/// The tree that a program shows to assistive technologies, as they read it: over the accessibility bus.
class AccessibilityTree {
public:
    /// Tells every program of the desktop that an assistive technology is there.
    static void announceAssistance();

    explicit AccessibilityTree(qint64 processId);

    /// Everything that shows, a parent before its children and these in their order. Empty until the program has joined
    /// the bus.
    std::vector<Accessible> showing() const;

    /// Where it is, in points of the screen.
    QRect place(const Accessible& object) const;
    /// Presses a button. False when the object offers no such action.
    bool press(const Accessible& object) const;
    /// What a meter shows, in the range that it announces.
    std::optional<double> value(const Accessible& object) const;
    double largestValue(const Accessible& object) const;

private:
    QString service_;
};

}  // namespace quenchly::testing
