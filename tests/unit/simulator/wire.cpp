// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/simulator/wire.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace simulator::test {
namespace {

constexpr int wirePatience = 20'000; // milliseconds; an upper bound, not a wait

} // namespace

Wire::Wire(int port) : descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(::connect(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
}

Wire::~Wire()
{
    ::close(descriptor);
}

bool Wire::send(const std::string& bytes) const
{
    size_t sent = 0;
    while (sent < bytes.size()) {
        const auto count =
            ::send(descriptor, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count <= 0) {
            return false;
        }
        sent += static_cast<size_t>(count);
    }
    return true;
}

std::string Wire::read(size_t most)
{
    std::string all;
    pollfd waiting{descriptor, POLLIN, 0};
    while (all.size() < most) {
        if (::poll(&waiting, 1, wirePatience) != 1) {
            ADD_FAILURE() << "nothing comes after: " << all;
            break;
        }
        char byte = 0;
        if (::recv(descriptor, &byte, 1, 0) != 1) {
            closed = true;
            break;
        }
        all += byte;
    }
    return all;
}

std::string Wire::readHead()
{
    std::string head;
    while (!head.ends_with("\r\n\r\n") && !closed) {
        const std::string next = read(1);
        if (next.empty()) {
            break;
        }
        head += next;
    }
    return head;
}

Wire::Answer Wire::readAnswer()
{
    Answer answer;
    answer.head = readHead();
    if (answer.head.starts_with("HTTP/1.1 ")) {
        answer.status = std::stoi(answer.head.substr(9, 3));
        answer.body = read(announcedLength(answer.head));
    }
    return answer;
}

bool Wire::isSilent() const
{
    pollfd waiting{descriptor, POLLIN, 0};
    return ::poll(&waiting, 1, 0) == 0;
}

size_t announcedLength(const std::string& head)
{
    const size_t at = head.find("Content-Length: ");
    EXPECT_NE(at, std::string::npos) << head;
    return at == std::string::npos ? 0 : std::stoul(head.substr(at + 16));
}

} // namespace simulator::test
