// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "client/interface.h"
#include "tests/support/logcapture.h"
#include "tests/support/mocked.h"
#include "tests/unit/client/spendinganswer.h"

#include <numeric>
#include <rapidcheck.h>

using tests::SpendingAnswer;
using tests::SpendingLine;

namespace {

/// What must hold for ordinary answers: unique positions, allowances not negative and in whole
/// kopecks, a maximum not below the amount.
class SpendingProperties : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        // RC_PARAMS of the environment, for instance a seed to repeat, comes first
        qputenv("RC_PARAMS", "max_success=100000 " + qgetenv("RC_PARAMS"));
    }

    SpendingProperties()
    {
        for (std::size_t count = 0; count <= mostLines; ++count) {
            answers.emplace_back(count);
        }
    }

    /// The recorded amount of every position, by ascending position; fails when an impact says
    /// something else or stands elsewhere.
    std::vector<std::pair<int, double>> spread(const std::vector<SpendingLine>& lines,
                                               double amount, double maximum)
    {
        SpendingAnswer& answer = answers.at(lines.size());
        answer.set(lines);
        client.setLastResponse(answer.document());
        std::vector<std::pair<int, double>> placed;
        for (const auto& impact : client.generateBonusImpacts(record, amount, maximum)) {
            const auto sums = impact->getPositionSums();
            RC_ASSERT(sums.size() == 1);
            RC_ASSERT(sums.firstKey() == impact->getTotals()->getPosition());
            placed.emplace_back(sums.firstKey(), sums.first());
        }
        return placed;
    }

    static constexpr std::size_t mostLines = 6;

    tests::LogSilence silence;
    tests::StoppedClock clock{QDateTime(QDate(2024, 3, 5), QTime(14, 20, 31))};
    QSharedPointer<DocumentCardRecord> record = QSharedPointer<DocumentCardRecord>::create();
    orva::Interface client;
    std::vector<SpendingAnswer> answers;
};

/// Numbers below the limit, drawn evenly whatever the size of the case.
rc::Gen<int> below(int limit)
{
    return rc::gen::resize(rc::kNominalSize, rc::gen::inRange(0, limit));
}

/// Kopecks: few, some and many about equally often.
rc::Gen<int> kopecks()
{
    return rc::gen::oneOf(below(20), below(1000), below(1000000));
}

/// Amounts in kopecks with four more digits, mostly zero.
rc::Gen<double> amounts()
{
    return rc::gen::oneOf(rc::gen::map(kopecks(), [](int value) { return value / 100.0; }),
                          rc::gen::map(kopecks(), [](int value) { return value / 100.0; }),
                          rc::gen::map(below(10000000), [](int value) { return value / 10000.0; }));
}

constexpr double halfAKopeck = 0.005;
/// What additions of doubles of this size may be off.
constexpr double slack = 1e-9;

} // namespace

TEST_F(SpendingProperties, holdForOrdinaryAnswers)
{
    const bool held = rc::check("points are spread over an ordinary answer", [this] {
        const auto count = static_cast<std::size_t>(*below(mostLines + 1));
        const auto positions = *rc::gen::unique<std::vector<int>>(count, below(50));
        const auto allowed = *rc::gen::container<std::vector<int>>(count, kopecks());
        const double amount = *amounts();
        const double maximum = amount + *amounts();

        std::vector<SpendingLine> lines;
        std::map<int, double> allowances;
        for (std::size_t i = 0; i < count; ++i) {
            lines.push_back({positions[i], allowed[i] / 100.0});
            allowances[positions[i]] = allowed[i] / 100.0;
        }
        const double room = std::accumulate(allowed.begin(), allowed.end(), 0) / 100.0;

        const auto placed = spread(lines, amount, maximum);

        double total = 0;
        for (const auto& [position, sum] : placed) {
            RC_ASSERT(allowances.contains(position));
            RC_ASSERT(sum <= allowances[position] + slack);
            RC_ASSERT(sum >= 0);
            total += sum;
        }
        RC_ASSERT(std::abs(total - std::min(amount, room)) <= halfAKopeck + slack);
        RC_ASSERT(std::is_sorted(placed.begin(), placed.end(),
                                 [](const auto& a, const auto& b) { return a.first <= b.first; }) ||
                  placed.size() < 2);
        RC_ASSERT(spread(lines, amount, maximum) == placed);
    });
    EXPECT_TRUE(held);
}
