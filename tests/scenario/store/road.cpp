// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/store/road.h"

#include <arpa/inet.h>
#include <array>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace {

sockaddr_in loopback(int port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    return address;
}

int connectedTo(int port)
{
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = loopback(port);
    if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        ::close(socket);
        return -1;
    }
    return socket;
}

/// @return false: it has ended
bool passOn(int from, int to)
{
    std::array<char, 65536> bytes{};
    const ssize_t count = ::recv(from, bytes.data(), bytes.size(), 0);
    return count > 0 &&
           ::send(to, bytes.data(), static_cast<std::size_t>(count), MSG_NOSIGNAL) == count;
}

struct Pair
{
    int client;
    int server;
};

} // namespace

Road::Road(int toPort) : target(toPort), listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in address = loopback(0);
    auto* const plain = reinterpret_cast<sockaddr*>(&address);
    socklen_t length = sizeof address;
    if (::bind(listener, plain, length) != 0 || ::listen(listener, 16) != 0 ||
        ::getsockname(listener, plain, &length) != 0) {
        throw std::runtime_error("no free port on the loopback");
    }
    ownPort = ntohs(address.sin_port);
    thread = std::thread(&Road::run, this);
}

Road::~Road()
{
    ending = true;
    thread.join();
    ::close(listener);
}

void Road::run()
{
    constexpr int betweenLooks = 20;
    std::vector<Pair> pairs;
    while (!ending) {
        std::vector<pollfd> watched{{listener, POLLIN, 0}};
        for (const Pair& pair : pairs) {
            watched.push_back({pair.client, POLLIN, 0});
            watched.push_back({pair.server, POLLIN, 0});
        }
        if (silent) {
            ::poll(nullptr, 0, betweenLooks);
            continue;
        }
        ::poll(watched.data(), watched.size(), betweenLooks);
        for (std::size_t i = pairs.size(); i-- > 0;) {
            const bool lives =
                (watched[1 + 2 * i].revents == 0 || passOn(pairs[i].client, pairs[i].server)) &&
                (watched[2 + 2 * i].revents == 0 || passOn(pairs[i].server, pairs[i].client));
            if (!lives) {
                ::close(pairs[i].client);
                ::close(pairs[i].server);
                pairs.erase(pairs.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
        if (watched[0].revents != 0) {
            const int client = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
            pairs.push_back({client, connectedTo(target)});
        }
    }
    for (const Pair& pair : pairs) {
        ::close(pair.client);
        ::close(pair.server);
    }
}
