// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/service.h"

#include <QDomDocument>

#include <random>

namespace simulator::test {

/// Takes checks through a strict server up to a request that is to be changed.
class StrictStory
{
public:
    /// service: strict, with the built-in rules; must outlive it
    explicit StrictStory(Service& strict) : service(strict) {}

    /// A request that would be answered 200 if it came as it is.
    struct Step
    {
        const char* endpoint;
        QByteArray body;
    };
    /// Makes one of a check of its own: a pre-check, a payment try or a confirmation of a sale, or
    /// a pre-check or a confirmation of a return.
    Step next(std::mt19937& random);

    Answer ask(const Step& step);

private:
    void mustBeTaken(const Step& step);
    QByteArray confirmationOf(const QByteArray& answer);
    void book(const QString& id);

    Service& service;
    int number = 0;
};

/// One change of a request.
struct Mutation
{
    QByteArray body;
    QString kind;
    QString path;       ///< of the element that was changed, as a server names it
    qint64 kopecks = 0; ///< by how much, where an amount was changed to another
};

/// Changes one element without children: its text, its name, or whether it is there.
Mutation mutated(const QByteArray& body, std::mt19937& random);

} // namespace simulator::test
