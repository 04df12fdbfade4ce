// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <string>

namespace simulator::test {

/// A plain socket to a port of the loopback, to send and see single bytes. Waits are bounded; one
/// that ends without a byte fails the test.
class Wire
{
public:
    explicit Wire(int port);
    ~Wire();
    Wire(const Wire&) = delete;
    Wire& operator=(const Wire&) = delete;

    /// Sends all bytes; false when the other side takes no more.
    bool send(const std::string& bytes) const;

    /// What comes until that many bytes are there or the server closes.
    std::string read(size_t most = std::string::npos);

    /// Reads what stands before a body.
    std::string readHead();

    struct Answer
    {
        int status = 0; ///< 0 when the server closes without an answer
        std::string head;
        std::string body;
    };
    /// Reads an answer that announces its length.
    Answer readAnswer();

    /// Whether nothing has come and the connection is open.
    bool isSilent() const;

    bool closed = false; ///< the server has closed

private:
    const int descriptor;
};

/// The length that a head announces; fails the test where it announces none.
size_t announcedLength(const std::string& head);

} // namespace simulator::test
