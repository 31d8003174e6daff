#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "recorded_tool.h"
#include "system.h"

namespace quenchly {
namespace {

class OpenAddressTest : public ::testing::Test {
protected:
    testing::ScratchFolder scratch;
    testing::RecordedTool handler{scratch};
    std::string pathBefore = std::getenv("PATH");

    OpenAddressTest()
    {
        setenv("PATH", (scratch / "bin").c_str(), 1);
        for (const auto& [name, value] : handler.environment("hang"))
            setenv(name.c_str(), value.c_str(), 1);
    }
    ~OpenAddressTest() override
    {
        setenv("PATH", pathBefore.c_str(), 1);
        for (const auto& [name, value] : handler.environment())
            unsetenv(name.c_str());
    }

    bool open() const { return makeSystem(scratch.path()).openAddress("http://127.0.0.1:8280"); }
};

TEST_F(OpenAddressTest, TheDesktopsHandlerIsGivenTheAddressAndNotWaitedFor)
{
    scratch.makeLink("bin/xdg-open", testing::RecordedTool::program());
    EXPECT_TRUE(open());
    EXPECT_FALSE(handler.hasEnded());
    handler.release();
    EXPECT_TRUE(testing::eventually(testing::hasNoChild));
    EXPECT_EQ(handler.runs(), (std::vector<std::vector<std::string>>{{"http://127.0.0.1:8280"}}));
}

TEST_F(OpenAddressTest, WithoutADesktopsHandlerNothingIsOpened)
{
    EXPECT_FALSE(open());
    EXPECT_TRUE(testing::hasNoChild());
}

}  // namespace
}  // namespace quenchly
