#include "user_home.h"

#include <gtest/gtest.h>

namespace quenchly {
namespace {

TEST(UserHome, AFieldThatIsNoAbsolutePathStandsForTheRoot)
{
    for (const char* field : {"", ".", "home/ann", static_cast<const char*>(nullptr)})
        EXPECT_EQ(homeFolderNamed(field), "/");
    EXPECT_EQ(homeFolderNamed("/home/ann"), "/home/ann");
    EXPECT_TRUE(userHomeFolder().is_absolute());
}

}  // namespace
}  // namespace quenchly
