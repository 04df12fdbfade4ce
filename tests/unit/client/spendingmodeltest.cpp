// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/spendingmodel.h"
#include "client/interface.h"
#include "tests/support/logcapture.h"
#include "tests/support/mocked.h"

#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <sstream>

using tests::ModelResult;
using tests::SpendingAnswer;
using tests::SpendingLine;

namespace {

std::vector<std::pair<int, double>>& recorded()
{
    static std::vector<std::pair<int, double>> amounts;
    return amounts;
}

} // namespace

// The host keeps only the sum of the amounts recorded for a position, so it cannot show that an
// amount of 0 was recorded. This program brings its own recording, which the linker prefers to
// the one of the host library.
void DocumentImpact::addDetailForPosition(int position, double sum)
{
    recorded().emplace_back(position, sum);
    positionSums[position] += sum;
}

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Bit for bit, but for what kind of "not a number" it is.
bool same(double left, double right)
{
    return std::bit_cast<quint64>(left) == std::bit_cast<quint64>(right) ||
           (std::isnan(left) && std::isnan(right));
}

std::string text(double value)
{
    return QByteArray::number(value, 'g', 17).toStdString();
}

std::string text(const std::vector<std::pair<int, double>>& amounts)
{
    std::ostringstream all;
    for (const auto& [position, amount] : amounts) {
        all << ' ' << position << ':' << text(amount);
    }
    return all.str();
}

/// Spreads amounts over lines by the client and by the model.
class Comparison : public ::testing::Test
{
protected:
    Comparison()
    {
        for (std::size_t count = 0; count <= 6; ++count) {
            answers.emplace_back(count);
        }
    }

    /// Empty when both agree, else what each of them did.
    std::string difference(const std::vector<SpendingLine>& lines, double amount, double maximum)
    {
        SpendingAnswer& answer = answers.at(lines.size());
        answer.set(lines);
        client.setLastResponse(answer.document());
        recorded().clear();
        const auto impacts = client.generateBonusImpacts(record, amount, maximum);
        const ModelResult model = tests::spreadByModel(lines, amount, maximum);

        bool agree = recorded().size() == model.records.size() &&
                     static_cast<std::size_t>(impacts.size()) == model.impacts.size();
        for (std::size_t i = 0; agree && i < recorded().size(); ++i) {
            agree = recorded()[i].first == model.records[i].first &&
                    same(recorded()[i].second, model.records[i].second);
        }
        std::vector<std::pair<int, double>> shares;
        for (const auto& impact : impacts) {
            const auto totals = impact->getTotals();
            shares.emplace_back(totals->getPosition(), totals->getDiscountSum());
            agree = agree && same(totals->getDiscountRate().toDouble(), totals->getDiscountSum());
        }
        std::vector<std::pair<int, double>> modelShares;
        for (const auto& impact : model.impacts) {
            modelShares.emplace_back(impact.position, impact.share);
        }
        for (std::size_t i = 0; agree && i < shares.size(); ++i) {
            agree = shares[i].first == modelShares[i].first &&
                    same(shares[i].second, modelShares[i].second);
        }
        if (agree) {
            return {};
        }
        std::vector<std::pair<int, double>> given;
        for (const SpendingLine& line : lines) {
            given.emplace_back(line.position, line.allowance);
        }
        return "amount " + text(amount) + ", maximum " + text(maximum) + ", lines" + text(given) +
               "\nclient: records" + text(recorded()) + ", shares" + text(shares) +
               "\nmodel:  records" + text(model.records) + ", shares" + text(modelShares);
    }

    tests::LogSilence silence;
    tests::StoppedClock clock{QDateTime(QDate(2024, 3, 5), QTime(14, 20, 31))};
    QSharedPointer<DocumentCardRecord> record = QSharedPointer<DocumentCardRecord>::create();
    orva::Interface client;
    std::vector<SpendingAnswer> answers;
};

/// Draws amounts and lines, the same ones from the same seed.
class Draw
{
public:
    explicit Draw(quint64 seed) : random(seed) {}

    int below(int limit) { return static_cast<int>(random() % static_cast<quint64>(limit)); }
    double kopecks(int limit) { return below(limit) / 100.0; }
    double real() { return std::uniform_real_distribution<double>(-1, 1)(random); }

    /// Amounts of every kind, ordinary ones most often.
    double amount()
    {
        switch (below(16)) {
        case 0:
            return 0.0;
        case 1:
            return -kopecks(10000);
        case 2:
            return real() * 0.01;
        case 3:
            return real() * 100;
        case 4:
            return std::ldexp(real(), below(200) - 60);
        case 5:
            return std::ldexp(real(), below(2100) - 1060);
        case 6:
            return special();
        case 7:
            return kopecks(10);
        case 8:
            return below(10000) / 1000.0;
        default:
            return kopecks(below(2) == 0 ? 1000 : 1000000);
        }
    }
    /// A maximum for the amount: itself, more, less or something else.
    double maximumFor(double amount)
    {
        switch (below(6)) {
        case 0:
            return amount;
        case 1:
            return amount + kopecks(1000);
        case 2:
            return amount + kopecks(1000000);
        case 3:
            return amount - kopecks(1000);
        case 4:
            return amount * (1 + below(100));
        default:
            return this->amount();
        }
    }
    /// Few positions, so that lines share them.
    std::vector<SpendingLine> lines()
    {
        std::vector<SpendingLine> drawn(static_cast<std::size_t>(below(7)));
        for (SpendingLine& line : drawn) {
            line = {below(8) - 1, amount()};
        }
        return drawn;
    }
    std::vector<SpendingLine> ordinaryLines()
    {
        std::vector<SpendingLine> drawn(static_cast<std::size_t>(below(6) + 1));
        for (std::size_t i = 0; i < drawn.size(); ++i) {
            drawn[i] = {static_cast<int>((i * 7 + 3) % 11), kopecks(below(3) == 0 ? 30 : 30000)};
        }
        return drawn;
    }

private:
    double special()
    {
        const double values[] = {infinite, -infinite, notANumber, -0.0,
                                 0.005,    -0.005,    0.0049999,  0.0050001,
                                 1e17,     -1e17,     1e300,      92233720368547758.07,
                                 5e-324,   1.7e308,   0.125,      -0.125};
        return values[below(static_cast<int>(std::size(values)))];
    }

    std::mt19937_64 random;
};

constexpr quint64 seed = 20240305;

} // namespace

TEST_F(Comparison, recordsASecondAmountForTheLowestPositionEvenWhenItIsZero)
{
    ASSERT_EQ(difference({{3, 10}, {1, 20}}, 10, 30), "");
    ASSERT_EQ(recorded().size(), 3U);
    EXPECT_EQ(recorded().at(0), std::pair(3, 3.33));
    EXPECT_EQ(recorded().at(1), std::pair(1, 6.67));
    EXPECT_EQ(recorded().at(2), std::pair(1, 0.0));
}

TEST_F(Comparison, recordsTheRestOfThreeEqualLinesOnceAndStops)
{
    ASSERT_EQ(difference({{1, 1}, {2, 1}, {3, 1}}, 1, 3), "");
    ASSERT_EQ(recorded().size(), 4U);
    EXPECT_EQ(recorded().at(3), std::pair(1, 0.009999999999999898));
}

TEST_F(Comparison, recordsForALineThatIsReplacedLater)
{
    ASSERT_EQ(difference({{1, 10}, {1, 10}}, 10, 20), "");
    ASSERT_EQ(recorded().size(), 3U);
    EXPECT_EQ(recorded().at(0), std::pair(1, 5.0));
    EXPECT_EQ(recorded().at(1), std::pair(1, 5.0));
    EXPECT_EQ(recorded().at(2), std::pair(1, 0.0));
}

TEST_F(Comparison, writesAndReadsEveryNumberUnchanged)
{
    Draw draw(seed);
    for (int i = 0; i < 10000; ++i) {
        // adding zero takes the sign off a negative one, which is not written
        const double value = draw.amount() + 0.0;
        const QString written = QString::number(value, 'g', 17);
        ASSERT_TRUE(same(written.toDouble(), value)) << written.toStdString();
    }
}

TEST_F(Comparison, agreesOnAmountsThatAreNoOrdinaryNumbers)
{
    const double values[] = {infinite, -infinite, notANumber, 0.0,  -0.0,  0.005,
                             -0.005,   10,        -10,        1e17, -1e17, 1e300};
    for (const double amount : values) {
        for (const double maximum : values) {
            for (const double allowance : values) {
                ASSERT_EQ(difference({{2, allowance}, {1, 5}, {2, 3}}, amount, maximum), "");
                ASSERT_EQ(difference({{2, 7}, {1, allowance}, {3, allowance}}, amount, maximum),
                          "");
            }
        }
    }
}

TEST_F(Comparison, agreesOnRandomAnswersOfEveryKind)
{
    Draw draw(seed);
    for (int i = 0; i < 70000; ++i) {
        const std::vector<SpendingLine> lines = draw.lines();
        const double amount = draw.amount();
        const double maximum = draw.maximumFor(amount);
        ASSERT_EQ(difference(lines, amount, maximum), "") << "case " << i << " of seed " << seed;
    }
}

TEST_F(Comparison, agreesOnRandomOrdinaryAnswers)
{
    Draw draw(seed);
    std::size_t impacts = 0;
    for (int i = 0; i < 50000; ++i) {
        const std::vector<SpendingLine> lines = draw.ordinaryLines();
        const double amount = draw.kopecks(draw.below(3) == 0 ? 100 : 50000);
        const double maximum = amount + (draw.below(2) == 0 ? 0 : draw.kopecks(100000));
        ASSERT_EQ(difference(lines, amount, maximum), "") << "case " << i << " of seed " << seed;
        impacts += recorded().size();
    }
    // the answers are such that amounts are placed at all
    EXPECT_GT(impacts, 50000U);
}
