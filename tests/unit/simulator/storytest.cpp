// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/simulator/servicefixture.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <random>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

/// A share of an amount with halves rounded up, by quotient and remainder.
Kopecks rounded(Kopecks amount, qint64 part, qint64 whole)
{
    const Kopecks product = amount * part;
    return product / whole + (product % whole * 2 >= whole ? 1 : 0);
}

/// A line of a sale as the till remembers it.
struct TillLine
{
    int pieces = 1;
    int returned = 0;
    Kopecks total = 0;
    Kopecks spent = 0;
    Kopecks earned = 0;
};

/// Random sales and returns, delivered with repetitions and restarts; the till's side of the
/// figures is reckoned here, apart from the simulator.
class Story : public ServiceFixture
{
protected:
    int upTo(int limit) { return static_cast<int>(random() % (static_cast<unsigned>(limit) + 1U)); }

    /// Delivers a step once or more, now and then with a restart in between. The first delivery
    /// must be accepted, the others be answered with the status of a repetition.
    QByteArray deliver(const char* endpoint, const QByteArray& body, int repeatedStatus)
    {
        const Answer first = service->handle(post(endpoint, body));
        EXPECT_EQ(first.status, 200) << endpoint << ": " << first.reason.toStdString();
        for (int again = upTo(3) == 0 ? upTo(2) : 0; again > 0; --again) {
            if (upTo(9) == 0) {
                reopen();
            }
            EXPECT_EQ(service->handle(post(endpoint, body)).status, repeatedStatus) << endpoint;
        }
        return first.body;
    }

    void sellRandom(const QString& id)
    {
        std::vector<TillLine> lines(1 + static_cast<size_t>(upTo(3)));
        TextCheck check{id, card, {}, {}};
        Kopecks gross = 0;
        for (size_t i = 0; i < lines.size(); ++i) {
            lines[i] = {1 + upTo(6), 0, upTo(50'000), 0, 0};
            gross += lines[i].total;
            check.lines.push_back({QString::number(i + 1), u"10%1"_s.arg(upTo(99)),
                                   u"%1.000"_s.arg(lines[i].pieces), writeKopecks(lines[i].total)});
        }
        check.total = writeKopecks(gross);
        const QByteArray answer = deliver("precheck", document(check), 200);
        const auto granted = [&](size_t line, const char16_t* what) {
            const QString path = u"items/RawItem[%1]/awards/RawItemAwards/%2"_s.arg(line).arg(what);
            return readKopecks(valueAt(answer, path)).value_or(-1);
        };
        QHash<QString, QStringList> used;
        Kopecks discounts = 0;
        Kopecks points = 0;
        for (size_t i = 0; i < lines.size(); ++i) {
            const Kopecks discount = granted(i, u"discount") + granted(i, u"discountOnChange");
            lines[i].spent = upTo(static_cast<int>(granted(i, u"allowBonusInCurrency")));
            used.insert(QString::number(i + 1),
                        {writeKopecks(discount), writeKopecks(lines[i].spent)});
            discounts += discount;
            points += lines[i].spent;
        }
        for (size_t i = 0; i < lines.size() && gross > discounts; ++i) {
            lines[i].earned =
                rounded(granted(i, u"awardBonus"), gross - discounts - points, gross - discounts);
            balance += lines[i].earned;
        }
        balance -= points;
        const QByteArray body =
            confirmation(answer, used, writeKopecks(gross - discounts - points));
        deliver("paymenttry", body, 200);
        deliver("checkconfirm", body, 409);
        sales.emplace_back(check, lines);
    }

    void returnRandom(const QString& id)
    {
        auto& [sale, lines] = sales[random() % sales.size()];
        TextCheck check{id, card, {}, {}, sale.id};
        Kopecks sum = 0;
        for (size_t i = 0; i < lines.size(); ++i) {
            TillLine& line = lines[i];
            const int now = upTo(line.pieces - line.returned);
            if (now == 0) {
                continue;
            }
            const auto share = [&](Kopecks amount) {
                return rounded(amount, line.returned + now, line.pieces) -
                       rounded(amount, line.returned, line.pieces);
            };
            const Kopecks points = share(line.spent);
            balance += points - share(line.earned);
            sum += share(line.total);
            check.lines.push_back({sale.lines[i].id, sale.lines[i].sku, u"%1.000"_s.arg(now),
                                   writeKopecks(share(line.total)), u"0.00"_s,
                                   points == 0 ? QString() : writeKopecks(points)});
            line.returned += now;
        }
        check.total = writeKopecks(sum);
        const QByteArray body = document(check);
        deliver("precheck", body, 200);
        deliver("paymenttry", body, 200);
        deliver("checkconfirm", body, 409);
    }

    std::mt19937 random;
    const QString card = u"2200000000017"_s;
    Kopecks balance = 50'000;
    std::vector<std::pair<TextCheck, std::vector<TillLine>>> sales;
};

TEST_F(Story, ofRandomSalesAndReturnsEndsWithTheTillsFigures)
{
    const int given = qEnvironmentVariableIntValue("ORVA_TEST_SEED");
    const unsigned seed = given == 0 ? 11U : static_cast<unsigned>(given);
    std::cout << "seed " << seed << " (ORVA_TEST_SEED)\n";
    random.seed(seed);
    constexpr int checks = 150;
    for (int i = 0; i < checks && !HasFailure(); ++i) {
        const QString id = u"check-%1"_s.arg(i);
        if (sales.empty() || upTo(2) > 0) {
            sellRandom(id);
        } else {
            returnRandom(id);
        }
        ASSERT_EQ(account(card).balance, balance) << "after " << id.toStdString();
    }
    EXPECT_EQ(ledger().checks.size(), static_cast<size_t>(checks));
    EXPECT_EQ(ledger().wrongCard(), QString());
}

TEST_F(Story, ofGarbledRequestsIsAlwaysAnswered)
{
    const int given = qEnvironmentVariableIntValue("ORVA_TEST_SEED");
    const unsigned seed = given == 0 ? 13U : static_cast<unsigned>(given);
    std::cout << "seed " << seed << " (ORVA_TEST_SEED)\n";
    random.seed(seed);
    const QByteArray request = goldenFile(u"precheck-request.xml"_s);
    const QByteArray confirmed =
        confirmation(goldenFile(u"precheck-answer.xml"_s), {}, u"174.80"_s);
    const std::array<const char*, 3> endpoints{"precheck", "paymenttry", "checkconfirm"};
    const std::array<QByteArray, 8> pieces{
        "<", ">", "&", "-", "<a>", QByteArray(1, '\0'), "99999999999999", "\xff"};
    for (int run = 0; run < 3000; ++run) {
        QByteArray body = upTo(1) == 0 ? request : confirmed;
        for (int changes = 1 + upTo(3); changes > 0; --changes) {
            const qsizetype at = upTo(static_cast<int>(body.size()) - 1);
            switch (upTo(2)) {
            case 0:
                body.remove(at, 1 + upTo(30));
                break;
            case 1:
                body.insert(at, pieces[random() % pieces.size()]);
                break;
            default:
                body[at] = static_cast<char>(upTo(255));
            }
            if (body.isEmpty()) {
                break;
            }
        }
        const Answer answer = service->handle(post(endpoints[random() % 3], body));
        const std::array<int, 4> expected{200, 400, 409, 424};
        ASSERT_TRUE(std::find(expected.begin(), expected.end(), answer.status) != expected.end())
            << "seed " << seed << ", run " << run << ": " << answer.status << ' '
            << answer.reason.toStdString() << '\n'
            << body.toStdString();
        ASSERT_EQ(answer.reason.isEmpty(), answer.status == 200);
    }
    EXPECT_EQ(ledger().wrongCard(), QString());
}

} // namespace
} // namespace simulator::test
