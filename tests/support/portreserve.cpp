// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/support/portreserve.h"

#include <arpa/inet.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

PortReserve::PortReserve() : descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    const int yes = 1; // lets the server listen beside it
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* const plain = reinterpret_cast<sockaddr*>(&address);
    if (::setsockopt(descriptor, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes) != 0 ||
        ::bind(descriptor, plain, length) != 0 || ::getsockname(descriptor, plain, &length) != 0) {
        ::close(descriptor);
        throw std::runtime_error("no free port on the loopback");
    }
    number = ntohs(address.sin_port);
}

PortReserve::~PortReserve()
{
    ::close(descriptor);
}
