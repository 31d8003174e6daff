#include "menu_rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

#include "menu_content_fixture.h"

namespace quenchly {
namespace {

class MenuRowsTest : public testing::MenuContentTest {
protected:
    void setAside(std::vector<const char*> ids)
    {
        status.quarantine.clear();
        for (const char* id : ids)
            status.quarantine.push_back(testing::setAsideProcess(id));
    }

    std::vector<std::string> idsOf(const MenuContent& content) const
    {
        std::vector<std::string> ids;
        for (const MenuContent::SetAsideEntry& entry : content.setAside->entries)
            ids.push_back((entry.isListed ? "" : "gone ") + entry.id.utf8());
        return ids;
    }

    std::vector<MenuContent::Row> flat(const MenuContent& content) const
    {
        std::vector<MenuContent::Row> rows;
        for (const auto& group : content.actions)
            rows.insert(rows.end(), group.begin(), group.end());
        return rows;
    }
};

TEST_F(MenuRowsTest, WhatIsOnlySaidDifferentlyLeavesTheRowsTheSame)
{
    status.lastMetrics.emplace();
    setAside({"a", "b"});
    const MenuContent before = content();
    const std::function<void()> changes[] = {
        [this] { status.headline = "Something else that is much longer than it was."; },
        [this] { status.lastMetrics->load1 = 9; },
        [this] { status.managementDisabled = true; },
        [this] { notSetUp(); },
        [this] {
            targetRows[0] = {"Ollama", TargetRow::State::running, "running"};
        },
        [this] { status.stillOverloaded = true; },
        [this] { situation.protectBusy = situation.ackBusy = situation.checkInFlight = situation.openAtLogin = true; },
    };
    for (const auto& change : changes) {
        change();
        EXPECT_NE(content(), before);
        EXPECT_TRUE(haveSameRows(content(), before));
        EXPECT_EQ(withRowsOf(before, content()), content()) << "everything is shown as it is";
    }
}

TEST_F(MenuRowsTest, EachRowThatComesOrGoesIsNoticedAndCanBeHeldBack)
{
    setAside({"a"});
    const MenuContent before = content();
    const std::function<void()> changes[] = {
        [this] { status.lastMetrics.emplace(); },
        [this] {
            targetRows.push_back({"mymodel", TargetRow::State::paused, "Eased back"});
        },
        [this] {
            targetRows.resize(12, {"mymodel", TargetRow::State::paused, "Eased back"});
        },
        [this] { setAside({}); },
        [this] { setAside({"b"}); },
        [this] {
            setAside({"a", "b"});
        },
        [this] { swapCriticalWithLiveAi(); },
        [this] { situation.updaterConfigured = false; },
    };
    for (const auto& change : changes) {
        change();
        EXPECT_FALSE(haveSameRows(content(), before));
        EXPECT_TRUE(haveSameRows(withRowsOf(before, content()), before)) << "held back";
        EXPECT_TRUE(haveSameRows(withRowsOf(content(), before), content())) << "kept";
        status = testing::calmStatus();
        targetRows = testing::idleTargets();
        situation.updaterConfigured = true;
        setAside({"a"});
        ASSERT_EQ(content(), before);
    }
}

TEST_F(MenuRowsTest, ActionsThatComeOrGoAloneListTheSame)
{
    setAside({"a"});
    const MenuContent before = content();
    situation.updaterConfigured = false;
    EXPECT_TRUE(listTheSame(content(), before));
    setAside({"b"});
    EXPECT_FALSE(listTheSame(content(), before));
}

TEST_F(MenuRowsTest, AnEntryThatIsGoneKeepsItsPlaceAndCannotBePressed)
{
    setAside({"a", "b", "c"});
    const MenuContent before = content();
    setAside({"d", "b"});
    const MenuContent held = withRowsOf(before, content());
    EXPECT_EQ(idsOf(held), (std::vector<std::string>{"gone a", "b", "gone c"}));
    EXPECT_EQ(held.setAside->heading, "SET ASIDE (2)") << "what is said is of now";
    EXPECT_TRUE(held.setAside->enabled);
    EXPECT_FALSE(held.setAside->showsAll) << "d waits: nobody is to clear what they do not see";
    EXPECT_EQ(idsOf(withRowsOf(held, before)), (std::vector<std::string>{"a", "b", "c"})) << "back again";
    setAside({});
    EXPECT_EQ(idsOf(withRowsOf(held, content())), (std::vector<std::string>{"gone a", "gone b", "gone c"}));
    EXPECT_FALSE(withRowsOf(held, content()).setAside->enabled);
}

TEST_F(MenuRowsTest, AnActionThatIsGoneKeepsItsPlaceAndCannotBePressed)
{
    const MenuContent without = content();
    swapCriticalWithLiveAi();
    const MenuContent before = content();
    const auto unload = [this](const MenuContent& shown) {
        const std::vector<MenuContent::Row> rows = flat(shown);
        return std::ranges::find(rows, MenuAction::unloadListed, &MenuContent::Row::action)->enabled;
    };
    ASSERT_TRUE(unload(before));
    const MenuContent held = withRowsOf(before, without);
    EXPECT_FALSE(unload(held));
    EXPECT_EQ(flat(held).size(), flat(before).size());
    EXPECT_TRUE(flat(held).front().enabled) << "the others can be";
}

TEST_F(MenuRowsTest, ATargetThatIsGoneHasNoStateAndOnesOfOneNameAreToldApart)
{
    using State = TargetRow::State;
    targetRows.push_back({"llama.cpp", State::paused, "Eased back"});
    targetRows.push_back({"mymodel", State::paused, "Eased back"});
    const MenuContent before = content();
    targetRows = testing::idleTargets();
    targetRows.push_back({"llama.cpp", State::running, "running"});
    const MenuContent held = withRowsOf(before, content());
    ASSERT_EQ(held.targets.rows.size(), 6U);
    EXPECT_EQ(held.targets.rows[3], (MenuContent::Target{State::unknown, "llama.cpp", "Idle"}));
    EXPECT_EQ(held.targets.rows[4], (MenuContent::Target{State::running, "llama.cpp", "running"}));
    EXPECT_EQ(held.targets.rows[5], (MenuContent::Target{State::unknown, "mymodel", ""}));
}

TEST_F(MenuRowsTest, TheTwoPositionsOfASwitchAreOneRow)
{
    using enum MenuAction;
    EXPECT_EQ(standingFor(installAgent), standingFor(protectOff));
    EXPECT_EQ(standingFor(openAtLoginOff), standingFor(openAtLoginOn));
    EXPECT_EQ(standingFor(automaticChecksOff), standingFor(automaticChecksOn));
    EXPECT_EQ(standingFor(quit), quit);
}

}  // namespace
}  // namespace quenchly
