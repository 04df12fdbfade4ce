// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/year/year.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>

namespace {

void readCommandLine(CLI::App& line, year::Options& options, std::string& journal)
{
    const std::map<std::string, year::Plant> plants{{"none", year::Plant::None},
                                                    {"book-twice", year::Plant::BookTwice},
                                                    {"drop-one", year::Plant::DropOne},
                                                    {"drop-point", year::Plant::DropPoint},
                                                    {"refuse-one", year::Plant::RefuseOne}};
    line.add_option("--seed", options.seed, "all chance follows from it")->capture_default_str();
    line.add_option("--days", options.days, "length of the year")
        ->check(CLI::Range(1, 3660))
        ->capture_default_str();
    line.add_option("--events", options.eventsPerDay, "events a day")
        ->check(CLI::Range(1, 10'000))
        ->capture_default_str();
    line.add_option("--tills", options.tills)->check(CLI::Range(1, 20))->capture_default_str();
    line.add_option("--cards", options.cards)->check(CLI::Range(1, 10'000))->capture_default_str();
    line.add_option("--journal", journal, "file for the journal");
    line.add_option("--plant", options.plant, "a wrong booking that must be found")
        ->transform(CLI::CheckedTransformer(plants));
    line.add_option("--plant-at", options.plantAt, "the confirmation at which it is planted")
        ->check(CLI::PositiveNumber)
        ->capture_default_str();
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("TZ", "UTC"); // the journal must not depend on where it is written
    const QCoreApplication application(argc, argv);
    year::Options options;
    std::string journal;
    CLI::App line("A year at the till in one run, with every point accounted for after every "
                  "event.");
    readCommandLine(line, options, journal);
    CLI11_PARSE(line, argc, argv);
    options.journal = QString::fromStdString(journal);

    std::printf("Seed: %llu, days: %d, events a day: %d, tills: %d, cards: %d\n",
                static_cast<unsigned long long>(options.seed), options.days, options.eventsPerDay,
                options.tills, options.cards);
    std::fflush(stdout);
    try {
        QElapsedTimer timer;
        timer.start();
        const year::Outcome outcome = year::live(options);
        std::fputs(qUtf8Printable(outcome.report), outcome.sound ? stdout : stderr);
        std::printf("Took: %.1f s\n", static_cast<double>(timer.elapsed()) / 1000);
        return outcome.sound ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "orva-year: %s\n", error.what());
        return 1;
    }
}
