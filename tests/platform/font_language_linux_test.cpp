#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "font_language.h"
#include "system.h"
#include "test_files.h"

namespace quenchly {
namespace {

TEST(FontLanguageLinux, FontconfigIsToldAndWhatIsStartedIsNot)
{
    const testing::ScratchFolder home;
    const std::string variable = "FC_LANG";
    unsetenv(variable.c_str());
    chooseFontsFor(AppLanguage::zhHans);
    EXPECT_STREQ(std::getenv(variable.c_str()), "zh-cn");
    EXPECT_FALSE(makeSystem(home.path()).environment.contains(variable));

    setenv(variable.c_str(), "de", 1);
    chooseFontsFor(AppLanguage::tl);
    EXPECT_STREQ(std::getenv(variable.c_str()), "fil");
    EXPECT_EQ(makeSystem(home.path()).environment.at(variable), "de");
    unsetenv(variable.c_str());
}

}  // namespace
}  // namespace quenchly
