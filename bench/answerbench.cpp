// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What any answer costs on its whole road: a sale with points, recording on, by the till's program.

#include "bench/costlyanswers.h"
#include "bench/loopbackserver.h"
#include "bench/rows.h"
#include "bench/suites.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <map>
#include <spawn.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr double mostSeconds = 2;
constexpr double mostMegabytes = 256;
/// So many of the fuzzers' costliest inputs.
constexpr int fuzzedRows = 5;

struct Cost
{
    double seconds = 0;
    double megabytes = 0;
    int exitCode = -1;
};

void write(const QString& fileName, const QString& content)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(content.toUtf8()) < 0 ||
        !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner)) {
        throw std::runtime_error("no file " + fileName.toStdString());
    }
}

double inSeconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

/// Runs the program to its end, its output thrown away.
Cost run(const std::vector<std::string>& arguments)
{
    std::vector<char*> pointers;
    for (const std::string& argument : arguments) {
        pointers.push_back(const_cast<char*>(argument.c_str()));
    }
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int failure =
        ::posix_spawn(&process, pointers.front(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage{};
    if (failure != 0 || ::wait4(process, &status, 0, &usage) != process) {
        throw std::runtime_error("the till does not start");
    }
    constexpr double kilobytesOfMegabyte = 1024;
    return {inSeconds(usage.ru_utime) + inSeconds(usage.ru_stime),
            static_cast<double>(usage.ru_maxrss) / kilobytesOfMegabyte,
            WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

/// A sale of three lines, paid with points, to which the server answers so.
Cost sell(const QByteArray& answer)
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
    return run({ORVA_TILL_FILE, "--config", folder.filePath(u"orva.toml"_s).toStdString(), "sell",
                folder.filePath(u"sale.toml"_s).toStdString(), "--points", "all"});
}

/// Of a few sales: the median of their times, the most memory, and the exit code of one that
/// failed.
Cost usualCost(const QByteArray& answer)
{
    std::array<Cost, 3> sales;
    std::generate(sales.begin(), sales.end(), [&answer] { return sell(answer); });
    std::sort(sales.begin(), sales.end(),
              [](const Cost& left, const Cost& right) { return left.seconds < right.seconds; });
    Cost usual = sales[sales.size() / 2];
    for (const Cost& sale : sales) {
        usual.megabytes = std::max(usual.megabytes, sale.megabytes);
        usual.exitCode = std::max(usual.exitCode, sale.exitCode < 0 ? 1 : sale.exitCode);
    }
    return usual;
}

struct Costs
{
    Cost floor; ///< with an answer that costs nothing
    Cost subject;
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
    if (subject.exitCode != 0) {
        state.SkipWithError("the till did not take the answer");
        return;
    }
    if (memory) {
        report(state, floor.megabytes, subject.megabytes, subject.megabytes,
               {.value = mostMegabytes, .isTime = false});
    } else {
        report(state, floor.seconds, subject.seconds, subject.seconds, {.value = mostSeconds});
    }
}

} // namespace

namespace {

void addRows(const CostlyAnswer& answer)
{
    for (const bool memory : {false, true}) {
        addRow("answer/" + answer.name + (memory ? "/MB" : "/seconds"), 1,
               [answer, memory](benchmark::State& state) { measure(state, answer, memory); });
    }
}

QByteArray fuzzed(int index)
{
    static const QList<QByteArray> worst =
        worstOfFuzzers(QStringLiteral(ORVA_FUZZ_CORPUS), fuzzedRows);
    return worst.at(index);
}

} // namespace

void addAnswerRows()
{
    for (const CostlyAnswer& answer : answersAtTheLimits()) {
        addRows(answer);
    }
    for (int index = 0; index < fuzzedRows; ++index) {
        addRows({"fuzzed-" + std::to_string(index + 1), [index] { return fuzzed(index); }});
    }
}

} // namespace bench
