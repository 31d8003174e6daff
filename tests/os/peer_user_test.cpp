#include "peer_user.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include "descriptor.h"

namespace quenchly {
namespace {

TEST(PeerUser, IsTheOneAtTheOtherEnd)
{
    int ends[2] = {-1, -1};
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    const Descriptor one(ends[0]);
    const Descriptor other(ends[1]);
    EXPECT_EQ(peerUser(one.number()), geteuid());
}

TEST(PeerUser, NoneWithoutAnotherEnd)
{
    const Descriptor file(open("/dev/null", O_RDONLY));
    const Descriptor unconnected(socket(AF_UNIX, SOCK_STREAM, 0));
    EXPECT_EQ(peerUser(file.number()), std::nullopt);
    EXPECT_EQ(peerUser(unconnected.number()), std::nullopt);
    EXPECT_EQ(peerUser(-1), std::nullopt);
}

}  // namespace
}  // namespace quenchly
