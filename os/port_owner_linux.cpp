#include "port_owner_linux.h"

#include <netinet/in.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace quenchly {
namespace {

struct Listener {
    std::string address;  ///< hexadecimal digits
    unsigned port = 0;
    uid_t user = 0;
};

/// An address as the tables write it: each 32 bits as a number in the machine's own order.
template <class Address>
std::string hexadecimal(const Address& address)
{
    std::array<std::uint32_t, sizeof address / sizeof(std::uint32_t)> words{};
    std::memcpy(words.data(), &address, sizeof address);
    std::string digits;
    for (const std::uint32_t word : words) {
        std::array<char, 9> text{};
        std::snprintf(text.data(), text.size(), "%08X", word);
        digits += text.data();
    }
    return digits;
}

in6_addr mapped(in_addr_t address)
{
    in6_addr result{};
    result.s6_addr[10] = result.s6_addr[11] = 0xFF;
    std::memcpy(&result.s6_addr[12], &address, sizeof address);
    return result;
}

bool isOfThisMachine(std::string_view address)
{
    static const std::array<std::string, 6> own{
        hexadecimal(htonl(INADDR_LOOPBACK)),
        hexadecimal(htonl(INADDR_ANY)),
        hexadecimal(in6addr_loopback),
        hexadecimal(in6addr_any),
        hexadecimal(mapped(htonl(INADDR_LOOPBACK))),
        hexadecimal(mapped(htonl(INADDR_ANY))),
    };
    return std::ranges::find(own, address) != own.end();
}

void addListeners(const std::filesystem::path& table, std::vector<Listener>& listeners)
{
    constexpr unsigned listening = 0x0A;
    std::ifstream file(table);
    for (std::string line; std::getline(file, line);) {
        std::istringstream fields(line);
        std::string number, queues, timer, retransmissions, remote;
        Listener listener;
        unsigned state = 0;
        std::getline(fields >> number >> std::ws, listener.address, ':');
        fields >> std::hex >> listener.port >> remote >> state >> queues >> timer >> retransmissions >> std::dec >>
            listener.user;
        if (fields && state == listening)
            listeners.push_back(listener);
    }
}

}  // namespace

PortOwner portOwner(std::uint16_t port, const std::filesystem::path& procfs)
{
    std::vector<Listener> listeners;
    for (const char* table : {"net/tcp", "net/tcp6"})
        addListeners(procfs / table, listeners);
    std::erase_if(listeners, [port](const Listener& l) { return l.port != port || !isOfThisMachine(l.address); });
    if (listeners.empty())
        return PortOwner::nobody;
    const bool allOurs = std::ranges::all_of(listeners, [](const Listener& l) { return l.user == geteuid(); });
    return allOurs ? PortOwner::thisUser : PortOwner::anotherUser;
}

PortOwner portOwner(std::uint16_t port)
{
    return portOwner(port, "/proc");
}

}  // namespace quenchly
