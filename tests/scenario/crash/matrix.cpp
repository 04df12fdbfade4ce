// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/crash/matrix.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QSet>

#include <algorithm>
#include <atomic>
#include <random>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

QString nameOf(Actor actor)
{
    return actor == Actor::Till ? u"till"_s : u"server"_s;
}

void print(const QString& line)
{
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

/// What a power cut before a call on the network or the screen takes away, it also takes before the
/// next call on the disk.
bool isOnDisk(const QString& call)
{
    return !call.endsWith(u" connection"_s) && !call.endsWith(u" output"_s);
}

QString describe(const QString& flow, const Stop& stop, const Outcome& outcome)
{
    return u"%1 | %2 | %3 | %4 | %5"_s.arg(flow, nameOf(stop.actor), QString::number(stop.call),
                                           outcome.at, stop.way);
}

} // namespace

Matrix::Matrix(const MatrixOptions& matrixOptions)
    : options(matrixOptions), flows(allFlows(options.repetitions))
{}

QString Matrix::folderOf(const Flow& flow) const
{
    return options.folder + u"/begin-"_s + QString(flow.name).replace(u' ', u'-');
}

Outcome Matrix::playOne(const Task& task, int number) const
{
    const QString folder = u"%1/scene-%2"_s.arg(options.folder).arg(number);
    Outcome outcome;
    {
        Scene scene(options.programs, folder);
        outcome = scene.play(*task.flow, folderOf(*task.flow), task.stop);
    }
    if (outcome.problems.isEmpty()) {
        QDir(folder).removeRecursively();
    } else {
        outcome.problems += u"see "_s + folder;
    }
    return outcome;
}

/// One task for each call of an undisturbed run and each way.
QList<Matrix::Task> Matrix::tasksOf(const Flow& flow, Actor actor)
{
    static int number = 0;
    const Task undisturbed{&flow, {.actor = actor}};
    const Outcome outcome = playOne(undisturbed, --number);
    if (!outcome.problems.isEmpty()) {
        throw SceneError(
            u"%1 goes wrong without any stop: %2"_s.arg(flow.name, outcome.problems.join(u"; "_s)));
    }
    print(u"%1, %2: %3 calls"_s.arg(flow.name, nameOf(actor)).arg(outcome.calls));
    if (quint64(outcome.trace.size()) != outcome.calls) {
        throw SceneError(
            u"%1: %2 of the calls are listed"_s.arg(flow.name).arg(outcome.trace.size()));
    }
    QList<Task> tasks;
    for (quint64 call = 1; call <= outcome.calls; ++call) {
        const quint64 place = call + options.seed;
        if (place % quint64(options.every) != 0) {
            continue;
        }
        for (const QString& way : options.ways) {
            const bool cuts = way != u"kill"_s;
            if (cuts && (!isOnDisk(outcome.trace.at(qsizetype(call) - 1)) ||
                         place / quint64(options.every) % quint64(options.cutEvery) != 0)) {
                continue;
            }
            tasks.append({&flow, {actor, call, way, options.seed * 1'000'003 + call}});
        }
    }
    return tasks;
}

void Matrix::note(const Task& task, const Outcome& outcome)
{
    const std::lock_guard guard(mutex);
    if (!outcome.stopped) {
        ++notReached;
    } else {
        results.append({task, outcome});
    }
    if (!outcome.problems.isEmpty()) {
        ++wrong;
        print(u"WRONG: %1: %2"_s.arg(describe(task.flow->name, task.stop, outcome),
                                     outcome.problems.join(u"; "_s)));
    }
}

void Matrix::playAll(const QList<Task>& tasks)
{
    std::atomic<int> next = 0;
    const auto work = [&] {
        for (int i = next++; i < tasks.size(); i = next++) {
            if (options.firstProblemOnly && wrong > 0) {
                return;
            }
            Outcome outcome;
            try {
                outcome = playOne(tasks.at(i), i);
            } catch (const std::exception& error) {
                outcome.problems += QString::fromUtf8(error.what());
            }
            note(tasks.at(i), outcome);
        }
    };
    std::vector<std::thread> workers;
    for (int i = 0; i < options.jobs; ++i) {
        workers.emplace_back(work);
    }
    for (std::thread& worker : workers) {
        worker.join();
    }
}

int Matrix::run()
{
    QElapsedTimer time;
    time.start();
    QList<Task> tasks;
    for (const Flow& flow : flows) {
        if (!options.flows.isEmpty() && !options.flows.contains(flow.name)) {
            continue;
        }
        Scene(options.programs, folderOf(flow)).prepare(flow);
        for (const Actor actor : {Actor::Till, Actor::Server}) {
            if (options.actors.contains(nameOf(actor))) {
                tasks += tasksOf(flow, actor);
            }
        }
    }
    if (options.firstProblemOnly) {
        std::shuffle(tasks.begin(), tasks.end(), std::mt19937_64(options.seed));
    }
    playAll(tasks);
    writeList();
    printSummary(time.elapsed());
    return wrong;
}

void Matrix::writeList() const
{
    if (options.list.isEmpty()) {
        return;
    }
    QFile file(options.list);
    if (!file.open(QFile::WriteOnly | QFile::Truncate)) {
        throw SceneError(u"%1: %2"_s.arg(options.list, file.errorString()));
    }
    file.write("flow | stopped | call | before | way | result\n");
    QStringList lines;
    for (const Result& result : results) {
        lines.append(describe(result.task.flow->name, result.task.stop, result.outcome) +
                     (result.outcome.problems.isEmpty() ? u" | right"_s : u" | WRONG"_s));
    }
    std::sort(lines.begin(), lines.end());
    file.write(lines.join(u'\n').toUtf8() + '\n');
}

size_t Matrix::points() const
{
    QSet<QString> distinct;
    for (const Result& result : results) {
        distinct.insert(u"%1|%2|%3"_s.arg(result.task.flow->name, nameOf(result.task.stop.actor))
                            .arg(result.task.stop.call));
    }
    return size_t(distinct.size());
}

void Matrix::printSummary(qint64 milliseconds) const
{
    QStringList ways;
    for (const QString& way : options.ways) {
        const auto count = std::count_if(results.cbegin(), results.cend(), [&way](const Result& r) {
            return r.task.stop.way == way;
        });
        ways.append(u"%1 by %2"_s.arg(count).arg(way));
    }
    print(u"crash points: %1 distinct; stops: %2 (%3); calls not reached again: %4; "
          "wrong afterwards: %5; seed %6; %7 s"_s.arg(points())
              .arg(results.size())
              .arg(ways.join(u", "_s))
              .arg(notReached)
              .arg(wrong)
              .arg(options.seed)
              .arg(milliseconds / 1000));
}
