// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What any answer costs on its whole road: a sale with points, recording on, by the till's program.

#include "bench/costlyanswers.h"
#include "bench/loopbackserver.h"
#include "bench/programcost.h"
#include "bench/rows.h"
#include "bench/suites.h"
#include "till/exitcode.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr double mostSeconds = 2;
constexpr double mostMegabytes = 256;
/// So many of the fuzzers' inputs are sold with, the costliest as far as parser and writer tell;
/// so many of them, those that cost the till most, have a row.
constexpr int fuzzedSales = 20;
constexpr int fuzzedRows = 5;

void write(const QString& fileName, const QString& content)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(content.toUtf8()) < 0 ||
        !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner)) {
        throw std::runtime_error("no file " + fileName.toStdString());
    }
}

/// A sale of three lines, paid with points, to which the server answers so.
ProgramCost sell(const QByteArray& answer)
{
    const QTemporaryDir folder;
    const LoopbackServer server(answer);
    write(folder.filePath(u"orva.toml"_s),
          u"[Orva]\nserverUrl = \"%1\"\nmerchantId = \"1\"\npos = \"1\"\nuser = \"till\"\n"
          "password = \"secret\"\napikey = \"key\"\ntimeout = 300\n[till]\ndatabase = "
          "\"till.sqlite\"\n"
          "plugin = \"%2\"\n[recording]\nfolder = \"records\"\n"_s.arg(
              server.url(), QStringLiteral(ORVA_PLUGIN_FILE)));
    QString sale = u"type = \"sale\"\ncard = \"2200000000017\"\n"_s;
    for (int line = 1; line <= 3; ++line) {
        sale += u"[[line]]\ncode = \"%1\"\nname = \"Чай\"\nprice = 100\nquantity = 1\n"_s.arg(line);
    }
    write(folder.filePath(u"sale.toml"_s), sale);
    return costOfProgram({QStringLiteral(ORVA_TILL_FILE), u"--config"_s,
                          folder.filePath(u"orva.toml"_s), u"sell"_s,
                          folder.filePath(u"sale.toml"_s), u"--points"_s, u"all"_s});
}

/// Of a few sales: the median of their times, the most memory, and their exit code, -1 where they
/// ended differently.
ProgramCost usualCost(const QByteArray& answer)
{
    std::array<ProgramCost, 3> sales;
    std::generate(sales.begin(), sales.end(), [&answer] { return sell(answer); });
    std::sort(sales.begin(), sales.end(), [](const ProgramCost& left, const ProgramCost& right) {
        return left.seconds < right.seconds;
    });
    ProgramCost usual = sales[sales.size() / 2];
    for (const ProgramCost& sale : sales) {
        usual.megabytes = std::max(usual.megabytes, sale.megabytes);
        usual.exitCode = sale.exitCode == sales.front().exitCode ? usual.exitCode : -1;
    }
    return usual;
}

struct Costs
{
    ProgramCost floor; ///< with an answer that costs nothing
    ProgramCost subject;
};

/// Measured once for both rows of an answer: each sale takes seconds.
Costs costsOf(const CostlyAnswer& answer)
{
    static std::map<std::string, Costs> known;
    auto found = known.find(answer.name);
    if (found == known.end()) {
        const Costs costs{usualCost("<RawCheck/>"), usualCost(answer.make())};
        found = known.emplace(answer.name, costs).first;
    }
    return found->second;
}

void measure(benchmark::State& state, const CostlyAnswer& answer, bool memory)
{
    const auto [floor, subject] = costsOf(answer);
    for ([[maybe_unused]] const auto turn : state) {
        state.SetIterationTime(subject.seconds);
    }
    const auto expected =
        static_cast<int>(answer.isRefused ? till::ExitCode::WithoutLoyalty : till::ExitCode::Ok);
    if (subject.exitCode != expected) {
        const std::string problem = "the till ended with " + std::to_string(subject.exitCode) +
                                    " and not with " + std::to_string(expected);
        state.SkipWithError(problem.c_str());
        return;
    }
    if (memory) {
        report(state, floor.megabytes, subject.megabytes, subject.megabytes,
               {.value = mostMegabytes, .isTime = false});
    } else {
        report(state, floor.seconds, subject.seconds, subject.seconds, {.value = mostSeconds});
    }
}

void addRows(const CostlyAnswer& answer)
{
    for (const bool memory : {false, true}) {
        addRow("answer/" + answer.name + (memory ? "/MB" : "/seconds"), 1,
               [answer, memory](benchmark::State& state) { measure(state, answer, memory); });
    }
}

QByteArray requireAnswer(const QList<QByteArray>& answers, qsizetype index)
{
    if (index >= answers.size()) {
        throw std::runtime_error("too few inputs of the fuzzers in " ORVA_FUZZ_CORPUS);
    }
    return answers.at(index);
}

const FuzzedAnswers& fuzzed()
{
    static const FuzzedAnswers answers =
        worstOfFuzzers(QStringLiteral(ORVA_FUZZ_CORPUS), fuzzedSales);
    return answers;
}

/// What costs a till most, its time and its memory each as a share of what they may be.
QByteArray fuzzedTaken(qsizetype index)
{
    static const QList<QByteArray> worst = [] {
        std::multimap<double, QByteArray, std::greater<>> byCost;
        for (const QByteArray& answer : fuzzed().taken) {
            const ProgramCost cost = sell(answer);
            byCost.emplace(std::max(cost.seconds / mostSeconds, cost.megabytes / mostMegabytes),
                           answer);
        }
        QList<QByteArray> answers;
        for (const auto& [share, answer] : byCost) {
            answers.append(answer);
        }
        return answers;
    }();
    return requireAnswer(worst, index);
}

} // namespace

void addAnswerRows()
{
    for (const CostlyAnswer& answer : answersAtTheLimits()) {
        addRows(answer);
    }
    for (int index = 0; index < fuzzedRows; ++index) {
        addRows({"fuzzed-" + std::to_string(index + 1), [index] { return fuzzedTaken(index); }});
    }
    addRows({"refused-fuzzed", [] { return requireAnswer(fuzzed().refused, 0); }, true});
}

} // namespace bench
