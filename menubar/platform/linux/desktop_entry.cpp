#include "desktop_entry.h"

#include <QByteArrayList>
#include <algorithm>
#include <optional>

namespace quenchly {
namespace {

constexpr const char* header = "[Desktop Entry]";
constexpr const char* hidden = "Hidden";
constexpr const char* gnomeSwitch = "X-GNOME-Autostart-enabled";

/// A value of the type string: there a backslash begins an escape sequence. A line break would begin a key of its own.
QString escaped(const QString& value)
{
    return QString(value)
        .replace(u'\\', QStringLiteral("\\\\"))
        .replace(u'\n', QStringLiteral("\\n"))
        .replace(u'\r', QStringLiteral("\\r"));
}

QChar escapedBy(QChar letter)
{
    switch (letter.unicode()) {
        case u's':
            return u' ';
        case u'n':
            return u'\n';
        case u'r':
            return u'\r';
        default:
            return letter;
    }
}

QString unescaped(const QString& value)
{
    QString plain;
    for (qsizetype i = 0; i < value.size(); ++i) {
        const bool isEscape = value[i] == u'\\' && i + 1 < value.size();
        const QChar c = isEscape ? value[++i] : value[i];
        plain += isEscape ? escapedBy(c) : c;
    }
    return plain;
}

/// A program's path as the Exec key takes it: quoted, and with the key's own "%" doubled.
QString execQuoted(const QString& path)
{
    QString quoted;
    for (const QChar c : path) {
        if (QStringLiteral("\\\"`$").contains(c))
            quoted += u'\\';
        else if (c == u'%')
            quoted += u'%';
        quoted += c;
    }
    return u'"' + quoted + u'"';
}

QByteArray keyOf(const QByteArray& line)
{
    const qsizetype equals = line.indexOf('=');
    return equals < 0 ? QByteArray() : line.first(equals).trimmed();
}

bool isGroupHeader(const QByteArray& line)
{
    return line.trimmed().startsWith('[');
}

bool isOurHeader(const QByteArray& line)
{
    return line.trimmed() == header;
}

/// Calls `visit(line)` for the lines of the group that desktops read, and `other(line)` for the rest.
template <typename Visit, typename Other>
void forEachLine(const QByteArray& text, const Visit& visit, const Other& other)
{
    bool inGroup = false;
    for (const QByteArray& line : text.split('\n')) {
        if (isGroupHeader(line))
            inGroup = isOurHeader(line);
        if (inGroup && !isGroupHeader(line))
            visit(line);
        else
            other(line);
    }
}

std::optional<QByteArray> valueOf(const QByteArray& text, const QByteArray& key)
{
    std::optional<QByteArray> value;
    forEachLine(
        text,
        [&](const QByteArray& line) {
            if (!value && keyOf(line) == key)
                value = line.sliced(line.indexOf('=') + 1).trimmed();
        },
        [](const QByteArray&) {});
    return value;
}

}  // namespace

DesktopEntry DesktopEntry::starting(const QString& executable)
{
    return DesktopEntry(QStringLiteral("%1\nType=Application\nName=Quenchly\nExec=%2\nTryExec=%3\nIcon=quenchly\n"
                                       "Terminal=false\n")
                            .arg(QLatin1String(header), escaped(execQuoted(executable)), escaped(executable))
                            .toUtf8());
}

QString DesktopEntry::string(const QByteArray& key) const
{
    return unescaped(QString::fromUtf8(valueOf(text_, key).value_or(QByteArray())));
}

bool DesktopEntry::isSwitchedOff() const
{
    return valueOf(text_, hidden) == "true" || valueOf(text_, gnomeSwitch) == "false" ||
           valueOf(text_, "Exec").value_or(QByteArray()).isEmpty();
}

DesktopEntry DesktopEntry::switchedOn() const
{
    return withoutSwitches();
}

DesktopEntry DesktopEntry::switchedOff() const
{
    QByteArrayList lines = withoutSwitches().text_.split('\n');
    if (const auto group = std::ranges::find_if(lines, isOurHeader); group != lines.end())
        lines.insert(group + 1, "Hidden=true");
    return DesktopEntry(lines.join('\n'));
}

DesktopEntry DesktopEntry::withoutSwitches() const
{
    QByteArrayList kept;
    const auto keep = [&kept](const QByteArray& line) { kept.append(line); };
    forEachLine(
        text_,
        [&](const QByteArray& line) {
            if (keyOf(line) != hidden && keyOf(line) != gnomeSwitch)
                keep(line);
        },
        keep);
    return DesktopEntry(kept.join('\n'));
}

}  // namespace quenchly
