// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/machines/spreadings.h"

#include "client/interface.h"
#include "tests/support/logcapture.h"
#include "tests/support/stoppedclock.h"
#include "tests/unit/client/spendinganswer.h"

#include <QCryptographicHash>
#include <QtEndian>

#include <bit>
#include <random>

namespace machines {
namespace {

constexpr std::size_t mostLines = 8;

/// Numbers from a generator whose sequence the language fixes. Its distributions differ between
/// libraries, so there are none here.
class Chance
{
public:
    quint64 below(quint64 limit) { return generator() % limit; }

    double kopecks(quint64 limit) { return static_cast<double>(below(limit)) / 100.0; }

    /// Any double from a millionth to a million.
    double anything()
    {
        constexpr quint64 fractionBits = (1ULL << 52U) - 1;
        constexpr quint64 bias = 1023;
        const quint64 exponent = bias - 20 + below(40);
        return std::bit_cast<double>((exponent << 52U) | (generator() & fractionBits));
    }

private:
    std::mt19937_64 generator{1};
};

class Digest
{
public:
    template <typename Number>
    void add(Number number)
    {
        const Number littleEndian = qToLittleEndian(number);
        hash.addData(QByteArrayView(reinterpret_cast<const char*>(&littleEndian),
                                    static_cast<qsizetype>(sizeof(littleEndian))));
    }
    void add(double number) { add(std::bit_cast<quint64>(number)); }
    QByteArray text() const { return hash.result().toHex(); }

private:
    QCryptographicHash hash{QCryptographicHash::Sha256};
};

struct Question
{
    std::vector<tests::SpendingLine> lines;
    double amount = 0;
    double maximum = 0;
};

Question nextQuestion(Chance& chance)
{
    constexpr quint64 dearest = 1'000'000;
    const bool whole = chance.below(8) != 0;
    const auto sum = [&] { return whole ? chance.kopecks(dearest) : chance.anything(); };
    Question question;
    const quint64 count = 1 + chance.below(mostLines);
    for (quint64 i = 0; i < count; ++i) {
        // now and then two lines of one position
        const auto position = static_cast<int>(i + chance.below(16) / 15);
        question.lines.push_back({position, sum()});
        question.maximum += question.lines.back().allowance;
    }
    question.amount = sum();
    return question;
}

} // namespace

QByteArray digestOfSpreadings(int count)
{
    const tests::LogSilence silence;
    const StoppedClock clock;
    const auto record = QSharedPointer<DocumentCardRecord>::create();
    orva::Interface client;
    std::vector<tests::SpendingAnswer> answers;
    for (std::size_t lines = 0; lines <= mostLines; ++lines) {
        answers.emplace_back(lines);
    }
    Chance chance;
    Digest digest;
    for (int i = 0; i < count; ++i) {
        const Question question = nextQuestion(chance);
        tests::SpendingAnswer& answer = answers.at(question.lines.size());
        answer.set(question.lines);
        client.setLastResponse(answer.document());
        for (const auto& impact :
             client.generateBonusImpacts(record, question.amount, question.maximum)) {
            const auto sums = impact->getPositionSums();
            for (auto sum = sums.cbegin(); sum != sums.cend(); ++sum) {
                digest.add(static_cast<qint32>(sum.key()));
                digest.add(sum.value());
            }
        }
    }
    return digest.text();
}

} // namespace machines
