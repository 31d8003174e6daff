#include "port_owner_linux.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <memory>
#include <string>

#include "descriptor.h"
#include "test_files.h"

namespace quenchly {
namespace {

constexpr const char* heading =
    "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  timeout inode\n";

/// The port of a listening socket of whoever asks; 0 where the machine has no such address.
struct Listener {
    Descriptor socket;
    std::uint16_t port = 0;

    explicit Listener(const char* address)
    {
        const bool wide = std::string(address).find(':') != std::string::npos;
        socket = Descriptor(::socket(wide ? AF_INET6 : AF_INET, SOCK_STREAM, 0));
        sockaddr_in6 six{};
        sockaddr_in four{};
        four.sin_family = AF_INET;
        six.sin6_family = AF_INET6;
        inet_pton(wide ? AF_INET6 : AF_INET, address, wide ? static_cast<void*>(&six.sin6_addr) : &four.sin_addr);
        auto* name = wide ? reinterpret_cast<sockaddr*>(&six) : reinterpret_cast<sockaddr*>(&four);
        socklen_t size = wide ? sizeof six : sizeof four;
        if (bind(socket.number(), name, size) != 0 || listen(socket.number(), 1) != 0 ||
            getsockname(socket.number(), name, &size) != 0)
            return;
        port = ntohs(wide ? six.sin6_port : four.sin_port);
    }
};

constexpr const char* ownAddresses[] = {"127.0.0.1", "0.0.0.0", "::1", "::", "::ffff:127.0.0.1"};

TEST(PortOwner, ARealListenerOfOursIsOurs)
{
    for (const char* address : ownAddresses) {
        const Listener listener(address);
        if (listener.port != 0) {
            EXPECT_EQ(portOwner(listener.port), PortOwner::thisUser) << address;
        }
    }
    EXPECT_NE(Listener("127.0.0.1").port, 0);
}

TEST(PortOwner, ARealListenerOfAnotherUserIsNot)
{
    if (!testing::anotherUser())
        GTEST_SKIP() << "only root can listen as another user";
    for (const char* address : ownAddresses) {
        std::unique_ptr<Listener> listener;
        {
            const testing::OrdinaryUser stranger;
            listener = std::make_unique<Listener>(address);
        }
        if (listener->port != 0) {
            EXPECT_EQ(portOwner(listener->port), PortOwner::anotherUser) << address;
        }
    }
}

TEST(PortOwner, RootIsAnotherUserToEverybodyElse)
{
    if (!testing::anotherUser())
        GTEST_SKIP() << "only root can listen as root";
    const Listener listener("127.0.0.1");
    const testing::OrdinaryUser user;
    EXPECT_EQ(portOwner(listener.port), PortOwner::anotherUser);
}

TEST(PortOwner, WhereNobodyListensItIsNobody)
{
    std::uint16_t port = 0;
    {
        const Listener listener("127.0.0.1");
        port = listener.port;
        const Descriptor bound(::socket(AF_INET, SOCK_STREAM, 0));
        EXPECT_EQ(portOwner(port, "/nonexistent"), PortOwner::nobody);
    }
    EXPECT_EQ(portOwner(port), PortOwner::nobody);
}

class PortTableTest : public ::testing::Test {
protected:
    /// A listener's line; the port 8280 is 2058 there.
    static std::string line(const std::string& address, uid_t user, const std::string& state = "0A")
    {
        return "   0: " + address + " 00000000:0000 " + state + " 00000000:00000000 00:00000000 00000000 " +
               std::to_string(user) + "        0 620 1 0 100 0 0 10 0\n";
    }

    PortOwner ownerOf(const std::string& lines, const std::string& wideLines = {}) const
    {
        scratch.write("net/tcp", heading + lines);
        scratch.write("net/tcp6", heading + wideLines);
        return portOwner(8280, scratch.path());
    }

    static std::string address(const char* text, const char* port = ":2058")
    {
        std::array<std::uint32_t, 4> words{};
        const int family = std::string(text).find(':') == std::string::npos ? AF_INET : AF_INET6;
        EXPECT_EQ(inet_pton(family, text, words.data()), 1);
        char digits[33];
        std::snprintf(digits, sizeof digits, "%08X%08X%08X%08X", words[0], words[1], words[2], words[3]);
        return std::string(digits, family == AF_INET ? 8 : 32) + port;
    }

    testing::ScratchFolder scratch;
    uid_t self = geteuid();
    uid_t stranger = self + 1;
};

TEST_F(PortTableTest, EachAddressOfThisMachineCounts)
{
    for (const char* text : {"127.0.0.1", "0.0.0.0"}) {
        EXPECT_EQ(ownerOf(line(address(text), self)), PortOwner::thisUser) << text;
        EXPECT_EQ(ownerOf(line(address(text), stranger)), PortOwner::anotherUser) << text;
    }
    for (const char* text : {"::1", "::", "::ffff:127.0.0.1", "::ffff:0.0.0.0"}) {
        EXPECT_EQ(ownerOf("", line(address(text), self)), PortOwner::thisUser) << text;
        EXPECT_EQ(ownerOf("", line(address(text), stranger)), PortOwner::anotherUser) << text;
    }
}

TEST_F(PortTableTest, OneOfAnotherUserIsEnough)
{
    const std::string ours = line(address("127.0.0.1"), self);
    EXPECT_EQ(ownerOf(ours + line(address("0.0.0.0"), stranger)), PortOwner::anotherUser);
    EXPECT_EQ(ownerOf(line(address("0.0.0.0"), stranger) + ours), PortOwner::anotherUser);
    EXPECT_EQ(ownerOf(ours, line(address("::"), stranger)), PortOwner::anotherUser);
    EXPECT_EQ(ownerOf(ours, line(address("::"), self)), PortOwner::thisUser);
}

TEST_F(PortTableTest, OtherPortsAddressesAndStatesDoNotCount)
{
    EXPECT_EQ(ownerOf(line(address("127.0.0.1", ":2059"), stranger)), PortOwner::nobody);
    EXPECT_EQ(ownerOf(line(address("192.0.2.1"), stranger)), PortOwner::nobody);
    EXPECT_EQ(ownerOf(line(address("127.0.0.1"), stranger, "01")), PortOwner::nobody);
    EXPECT_EQ(ownerOf("", line(address("2001:db8::1"), stranger)), PortOwner::nobody);
}

TEST_F(PortTableTest, WhatIsNoTableIsPassedOver)
{
    EXPECT_EQ(ownerOf("\n:\n0: 0100007F:2058\n0: zz:zz 0 0A\n"), PortOwner::nobody);
    EXPECT_EQ(ownerOf("\n0: 0100007F\n" + line(address("127.0.0.1"), self)), PortOwner::thisUser);
}

}  // namespace
}  // namespace quenchly
