#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace quenchly::testing {

/// The tests of one program by the source file that they stand in.
/// Call it after InitGoogleTest, in place of RUN_ALL_TESTS: `--subject NAME` runs the tests of NAME.cpp and fails if there
/// are none; without it, and beside a filter of GoogleTest's, all run.
inline int runSubject(int argc, char** argv)
{
    constexpr std::string_view option = "--subject";
    const bool isGiven = argc == 3 && argv[1] == option;
    if (!isGiven || ::testing::GTEST_FLAG(filter) != "*")
        return RUN_ALL_TESTS();

    const std::string source = "/" + std::string(argv[2]) + ".cpp";
    std::string filter;
    const ::testing::UnitTest& all = *::testing::UnitTest::GetInstance();
    for (int i = 0; i < all.total_test_suite_count(); ++i) {
        const ::testing::TestSuite& suite = *all.GetTestSuite(i);
        for (int j = 0; j < suite.total_test_count(); ++j) {
            const ::testing::TestInfo& test = *suite.GetTestInfo(j);
            if (("/" + std::string(test.file())).ends_with(source))
                filter += std::string(suite.name()) + "." + test.name() + ":";
        }
    }
    if (filter.empty()) {
        std::fprintf(stderr, "no test stands in %s.cpp\n", argv[2]);
        return 1;
    }
    ::testing::GTEST_FLAG(filter) = filter;
    return RUN_ALL_TESTS();
}

}  // namespace quenchly::testing
