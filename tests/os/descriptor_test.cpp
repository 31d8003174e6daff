#include "descriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

namespace quenchly {
namespace {

bool isOpen(int number)
{
    return fcntl(number, F_GETFD) != -1;
}

TEST(Descriptor, ItsEndClosesWhatItOwns)
{
    int number = -1;
    {
        const Descriptor owned(open("/dev/null", O_RDONLY | O_CLOEXEC));
        number = owned.number();
        ASSERT_TRUE(isOpen(number));
    }
    EXPECT_FALSE(isOpen(number));
}

TEST(Descriptor, MovingHandsOverAndTheOldOwnerClosesNothing)
{
    Descriptor kept;
    int number = -1;
    {
        Descriptor first(open("/dev/null", O_RDONLY | O_CLOEXEC));
        number = first.number();
        Descriptor second(std::move(first));
        kept = std::move(second);
    }
    EXPECT_EQ(kept.number(), number);
    EXPECT_TRUE(isOpen(number));
    kept.close();
    EXPECT_EQ(kept.number(), -1);
    EXPECT_FALSE(isOpen(number));
}

TEST(Descriptor, AReadThatWouldWaitReturnsAtOnceWhereItMayNotBlock)
{
    std::array<int, 2> ends{-1, -1};
    ASSERT_EQ(pipe(ends.data()), 0);
    const Descriptor reader(ends[0]);
    const Descriptor writer(ends[1]);
    ASSERT_TRUE(neverBlock(reader.number()));
    char byte = 0;
    EXPECT_EQ(read(reader.number(), &byte, 1), -1);
    EXPECT_EQ(errno, EAGAIN);
    EXPECT_FALSE(neverBlock(-1));
}

}  // namespace
}  // namespace quenchly
