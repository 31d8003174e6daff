#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "login_item.h"
#include "test_files.h"

namespace quenchly {
namespace {

using Status = LoginItem::Status;

class AutostartTest : public ::testing::Test {
protected:
    testing::ScratchFolder settings;
    std::filesystem::path entry = settings / "autostart/quenchly.desktop";

    std::unique_ptr<LoginItem> itemFor(const std::filesystem::path& executable) const
    {
        return makeLoginItem(settings.path(), executable);
    }

    std::string entryText() const
    {
        std::ostringstream text;
        text << std::ifstream(entry).rdbuf();
        return text.str();
    }
};

TEST_F(AutostartTest, RegisteringWritesAnEntryThatStartsTheProgram)
{
    const auto item = itemFor("/opt/quenchly/quenchly-menubar");
    EXPECT_EQ(item->status(), Status::notRegistered);
    EXPECT_EQ(item->registerItem(), "");
    EXPECT_EQ(item->status(), Status::enabled);
    EXPECT_NE(entryText().find("\nExec=\"/opt/quenchly/quenchly-menubar\"\n"), std::string::npos) << entryText();
    EXPECT_EQ(item->unregisterItem(), "");
    EXPECT_EQ(item->status(), Status::notRegistered);
    EXPECT_FALSE(std::filesystem::exists(entry));
}

TEST_F(AutostartTest, SpecialCharactersOfThePathAreEscaped)
{
    ASSERT_EQ(itemFor("/a b/100%/$x\"y\\z`")->registerItem(), "");
    EXPECT_NE(entryText().find(R"(Exec="/a b/100%%/\\$x\\"y\\\\z\\`")"), std::string::npos) << entryText();
}

TEST_F(AutostartTest, AnEntryThatTheUserSwitchedOffIsNotEnabled)
{
    for (const char* line : {"Hidden=true", "X-GNOME-Autostart-enabled=false"}) {
        settings.write("autostart/quenchly.desktop", std::string("[Desktop Entry]\nType=Application\n") + line + "\n");
        EXPECT_EQ(itemFor("/x")->status(), Status::notRegistered) << line;
        EXPECT_EQ(itemFor("/x")->registerItem(), "");
        EXPECT_EQ(itemFor("/x")->status(), Status::enabled) << line;
    }
}

TEST_F(AutostartTest, RemovingWhatIsNotThereSucceeds)
{
    EXPECT_EQ(itemFor("/x")->unregisterItem(), "");
}

TEST_F(AutostartTest, AFolderThatCannotBeMadeIsReported)
{
    settings.write("autostart", "a file where the folder should be");
    EXPECT_NE(itemFor("/x")->registerItem(), "");
    EXPECT_EQ(itemFor("/x")->status(), Status::notRegistered);
}

}  // namespace
}  // namespace quenchly
