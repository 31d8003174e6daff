#pragma once

#include <QByteArray>
#include <QString>

namespace quenchly {

/// The text of a .desktop file that starts something at login. What somebody else wrote into it is kept.
class DesktopEntry {
public:
    explicit DesktopEntry(QByteArray text) : text_(std::move(text)) {}

    /// An entry of this application that starts `executable`, as long as it exists.
    static DesktopEntry starting(const QString& executable);

    const QByteArray& text() const { return text_; }

    /// The value of a key of the type string; empty when the entry lacks it.
    QString string(const QByteArray& key) const;

    /// Whether desktops pass it over at login: it says so, or it names no program.
    bool isSwitchedOff() const;
    DesktopEntry switchedOn() const;
    DesktopEntry switchedOff() const;

    bool operator==(const DesktopEntry&) const = default;

private:
    DesktopEntry withoutSwitches() const;

    QByteArray text_;
};

}  // namespace quenchly
