// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Who asks.

#include "till/text.h"
#include "till/verify/bench.h"
#include "till/verify/cases.h"

using namespace Qt::StringLiterals;

namespace till::verify {
namespace {

constexpr QByteArrayView scheme = "Basic ";

enum class Part
{
    User,
    Password,
    Key,
};

/// The header with one of its three parts changed.
QByteArray spoiled(const Bench& bench, Part part)
{
    QByteArray value;
    for (const auto& [name, text] : bench.ways().headers) {
        if (name.compare("Authorization", Qt::CaseInsensitive) == 0) {
            value = text;
        }
    }
    QList<QByteArray> parts = QByteArray::fromBase64(value.mid(scheme.size())).split(':');
    if (parts.size() < 4) {
        parts.resize(4);
    }
    if (part == Part::User) {
        parts[0] += "-nobody";
    } else if (part == Part::Password) {
        parts[2] = QByteArray(40, '0');
    } else {
        parts[3] += "-none";
    }
    return scheme.toByteArray() + parts.join(':').toBase64();
}

void isUnauthorized(Bench& bench, const QUrl& url, const QByteArray& body, const QByteArray& value)
{
    bench.expectRefusal(bench.send(bench.outgoing(url, body).with("Authorization", value)), 401);
}

void refusesPart(Bench& bench, Part part)
{
    isUnauthorized(bench, bench.ways().precheck, bench.freshRequest().bytes(),
                   spoiled(bench, part));
}

void booksNothing(Bench& bench)
{
    const Papers papers = bench.sold(bench.basket());
    bench.mayBeBooked(papers);
    isUnauthorized(bench, bench.ways().paymentTry, papers.confirmation,
                   spoiled(bench, Part::Password));
    if (bench.pay(papers.confirmation).status != 200) {
        Bench::cannot(Text::tr("the server takes no payment try"));
    }
    const qint64 before = bench.balance(bench.card());
    // the check that the card was asked for last again: some servers confirm no other
    static_cast<void>(bench.precheck(papers.precheck.request));
    isUnauthorized(bench, bench.ways().confirm, papers.confirmation,
                   spoiled(bench, Part::Password));
    bench.expectBalance(bench.card(), before, 0);
}

const Case rows[] = {
    {"credentials-first.password", "credentials-first",
     [](Bench& bench) { refusesPart(bench, Part::Password); }},
    {"credentials-first.user", "credentials-first",
     [](Bench& bench) { refusesPart(bench, Part::User); }},
    {"credentials-first.key", "credentials-first",
     [](Bench& bench) { refusesPart(bench, Part::Key); }},
    {"credentials-first.none", "credentials-first",
     [](Bench& bench) {
         isUnauthorized(bench, bench.ways().precheck, bench.freshRequest().bytes(), {});
     }},
    {"credentials-first.whatever-body", "credentials-first",
     [](Bench& bench) {
         isUnauthorized(bench, bench.ways().precheck, "<RawCheck><id>",
                        spoiled(bench, Part::Password));
     }},
    {"credentials-first.books-nothing", "credentials-first", booksNothing},
};

} // namespace

std::span<const Case> credentialCases()
{
    return rows;
}

} // namespace till::verify
