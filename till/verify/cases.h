// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QList>

#include <span>

namespace till::verify {

class Bench;

/// One thing that is tried on a server.
struct Case
{
    const char* name;        ///< the requirement's and its own, with a point between
    const char* requirement; ///< of the protocol's page
    /// Tries it. @throws Broken, NotTried
    void (*play)(Bench&);
};

/// The cases by what they are about, those first whose failure explains others'.
std::span<const Case> connectionCases();
std::span<const Case> transportCases();
std::span<const Case> credentialCases();
std::span<const Case> answerCases();
std::span<const Case> grantCases();
std::span<const Case> saleCases();
std::span<const Case> requestCases();
std::span<const Case> bookingCases();
std::span<const Case> refusalCases();
std::span<const Case> repeatCases();
std::span<const Case> returnCases();
std::span<const Case> returnRefusalCases();

/// All of them in this order. Names are unique.
QList<Case> allCases();

} // namespace till::verify
