// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

class BasicLoyaltySystem;

namespace till {

/// The credentials that a loyalty system gives its messages.
struct Credentials
{
    /// The queue that it puts messages into.
    QString queue;
    /// Value of the header "Authorization".
    QString authorization;

    /// Lets the system confirm an empty return, catches the message before it reaches the queue,
    /// and reads it: only the system knows how its credentials are built. Nothing is sent or
    /// stored. @throws Failure when the message carries none
    static Credentials of(BasicLoyaltySystem& system);
};

/// Lets the system confirm an empty return, which makes it hand the message of one to the queue in
/// place: what only the system knows, addresses and headers, stands in it.
void confirmEmptyReturn(BasicLoyaltySystem& system);

} // namespace till
