#include "menu_rows.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quenchly {
namespace {

/// What tells the rows of a content apart.
struct RowNames {
    bool meters = false;
    std::vector<std::string> targets;
    bool moreTargets = false;
    std::optional<std::vector<Text>> setAside;
    bool clearAll = false;
    std::vector<std::vector<MenuAction>> actions;

    bool operator==(const RowNames&) const = default;
};

RowNames rowNames(const MenuContent& content)
{
    RowNames names{.meters = content.header.meters.has_value(), .moreTargets = content.targets.moreRows > 0};
    std::ranges::transform(content.targets.rows, std::back_inserter(names.targets), &MenuContent::Target::name);
    if (content.setAside) {
        std::ranges::transform(content.setAside->entries, std::back_inserter(names.setAside.emplace()),
                               &MenuContent::SetAsideEntry::id);
        names.clearAll = !content.setAside->clearAll.empty();
    }
    for (const auto& group : content.actions)
        std::ranges::transform(group, std::back_inserter(names.actions.emplace_back()),
                               [](const MenuContent::Row& row) { return standingFor(row.action); });
    return names;
}

/// Takes the first of `rows` with that name out of them.
template <class Row, class Name, class NameOf>
std::optional<Row> take(std::vector<Row>& rows, const Name& name, NameOf nameOf)
{
    const auto found = std::ranges::find(rows, name, nameOf);
    if (found == rows.end())
        return std::nullopt;
    Row row = std::move(*found);
    rows.erase(found);
    return row;
}

void keepTargets(const MenuContent::Targets& shown, MenuContent::Targets& next)
{
    std::vector<MenuContent::Target> rows;
    for (const MenuContent::Target& row : shown.rows)
        rows.push_back(
            take(next.rows, row.name, &MenuContent::Target::name).value_or(MenuContent::Target{.name = row.name}));
    next.rows = std::move(rows);
    next.moreRows = shown.moreRows;
}

MenuContent::SetAside keepSetAside(const MenuContent::SetAside& shown, std::optional<MenuContent::SetAside> next)
{
    MenuContent::SetAside kept = next.value_or(shown);
    std::vector<MenuContent::SetAsideEntry> listed = next ? std::move(next->entries) : decltype(kept.entries){};
    kept.enabled = kept.enabled && next;
    kept.entries = shown.entries;
    for (MenuContent::SetAsideEntry& entry : kept.entries) {
        entry.isListed = false;
        if (auto now = take(listed, entry.id, &MenuContent::SetAsideEntry::id))
            entry = std::move(*now);
    }
    if (kept.clearAll.empty() != shown.clearAll.empty())
        kept.clearAll = shown.clearAll;
    kept.showsAll = listed.empty() && kept.heading == shown.heading;
    return kept;
}

std::vector<std::vector<MenuContent::Row>> keepActions(const std::vector<std::vector<MenuContent::Row>>& shown,
                                                       const std::vector<std::vector<MenuContent::Row>>& next)
{
    std::vector<MenuContent::Row> offered;
    for (const auto& group : next)
        offered.insert(offered.end(), group.begin(), group.end());
    const auto place = [](const MenuContent::Row& row) { return standingFor(row.action); };
    auto kept = shown;
    for (auto& group : kept)
        for (MenuContent::Row& row : group) {
            row.enabled = false;
            if (auto now = take(offered, place(row), place))
                row = std::move(*now);
        }
    return kept;
}

}  // namespace

MenuAction standingFor(MenuAction action)
{
    switch (action) {
        case MenuAction::installAgent:
        case MenuAction::protectOff:
            return MenuAction::protectOn;
        case MenuAction::openAtLoginOff:
            return MenuAction::openAtLoginOn;
        case MenuAction::automaticChecksOff:
            return MenuAction::automaticChecksOn;
        default:
            return action;
    }
}

bool haveSameRows(const MenuContent& one, const MenuContent& other)
{
    return rowNames(one) == rowNames(other);
}

bool listTheSame(const MenuContent& one, const MenuContent& other)
{
    RowNames names = rowNames(one);
    RowNames others = rowNames(other);
    names.actions.clear();
    others.actions.clear();
    return names == others;
}

MenuContent withRowsOf(const MenuContent& shown, MenuContent next)
{
    if (next.header.meters.has_value() != shown.header.meters.has_value())
        next.header.meters = shown.header.meters;
    keepTargets(shown.targets, next.targets);
    if (shown.setAside)
        next.setAside = keepSetAside(*shown.setAside, std::move(next.setAside));
    else
        next.setAside.reset();
    next.actions = keepActions(shown.actions, next.actions);
    return next;
}

}  // namespace quenchly
