// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What a strict server says of requests in which one thing is wrong.

#include "tests/unit/simulator/mismatch/mutation.h"
#include "tests/unit/simulator/servicefixture.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

Rules strictRules()
{
    Rules rules = builtIn();
    rules.isStrict = true;
    return rules;
}

/// The path that a reason begins with, positions kept of lines only.
QString causeIn(const QString& reason)
{
    static const QRegularExpression otherPosition(u"(?<!RawItem)\\[\\d+\\]"_s);
    return reason.section(u' ', 0, 0).remove(otherPosition);
}

bool isNamed(const Mutation& mutation, const QString& reason)
{
    const QString cause = causeIn(reason);
    const bool isMisspelt = mutation.kind == u"misspelt"_s && cause == mutation.path + u's';
    return isMisspelt || cause == mutation.path;
}

/// Whether the difference of an amount is said where the server sees that it is another one.
bool isCounted(const Mutation& mutation, const QString& reason)
{
    if (mutation.kopecks == 0) {
        return true;
    }
    const qint64 size = qAbs(mutation.kopecks);
    return reason.contains(u"%1 kopeck%2 too %3"_s.arg(size).arg(
        size == 1 ? u""_s : u"s"_s, mutation.kopecks > 0 ? u"much"_s : u"little"_s));
}

class Mismatch : public ServiceFixture
{
protected:
    Mismatch() { reopen(strictRules()); }
};

TEST_F(Mismatch, ofAHundredRequestsIsNamedFirstWithItsKopecks)
{
    constexpr int wanted = 100;
    std::mt19937 random(20'240'305);
    StrictStory story(*service);
    int refused = 0;
    int named = 0;
    int amounts = 0;
    int taken = 0;
    QStringList missed;
    while (refused < wanted && taken < 4 * wanted) {
        StrictStory::Step step = story.next(random);
        const Mutation mutation = mutated(step.body, random);
        step.body = mutation.body;
        const Answer answer = story.ask(step);
        if (answer.status == 200) {
            ++taken; // another sale, as good as the one that was meant
            continue;
        }
        ++refused;
        amounts += mutation.kopecks == 0 ? 0 : 1;
        if (isNamed(mutation, answer.reason) && isCounted(mutation, answer.reason)) {
            ++named;
        } else {
            missed.append(u"%1 %2 %3 (%4): %5"_s.arg(
                QString::fromLatin1(step.endpoint), mutation.path, mutation.kind,
                QString::number(mutation.kopecks), answer.reason));
        }
    }
    ASSERT_EQ(refused, wanted) << taken << " were taken";
    EXPECT_GE(amounts, 40);
    EXPECT_GE(named, 95) << missed.join(u'\n').toStdString();
    std::printf(
        "%d of %d causes named first, %d of them amounts; %d changes were no mistakes\n%s\n", named,
        refused, amounts, taken, qPrintable(missed.join(u'\n')));
}

} // namespace
} // namespace simulator::test
