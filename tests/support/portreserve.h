// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// A port of the loopback that stays this process's own while no server listens at it: connections
/// to it are refused, and nobody else can take it meanwhile.
class PortReserve
{
public:
    /// @throws std::runtime_error
    PortReserve();
    ~PortReserve();
    PortReserve(const PortReserve&) = delete;
    PortReserve& operator=(const PortReserve&) = delete;

    int port() const { return number; }

private:
    int descriptor;
    int number = 0;
};
