// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/scenario/crash/scene.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdio>
#include <mutex>

struct MatrixOptions
{
    Programs programs;
    QString folder;      ///< for the scenes
    QString list;        ///< file for the crash points; empty for none
    QStringList flows;   ///< names; empty for all
    QStringList actors;  ///< "till", "server"
    QStringList ways;    ///< "kill", "cut", "tear"
    int every = 1;       ///< something is stopped at every so-manieth call only
    int cutEvery = 1;    ///< the power is cut at every so-manieth of the calls on the disk
    int repetitions = 1; ///< of what a flow does
    quint64 seed = 1;
    int jobs = 8; ///< more than processors: most of the time a scene waits
    /// Goes through the stops in a random order and ends with the first one that goes wrong.
    bool firstProblemOnly = false;
};

/// Plays every flow undisturbed, which tells its calls, and then once for each call and way of
/// being stopped there.
class Matrix
{
public:
    explicit Matrix(const MatrixOptions& matrixOptions);

    /// Prints what it does and finds. @throws SceneError when a flow cannot be played at all or its
    /// books differ without any stop. @return the number of stops after which something was wrong
    int run();

    /// How many distinct calls of the flows something was stopped at.
    size_t points() const;

private:
    struct Task
    {
        const Flow* flow; ///< one of the matrix's own
        Stop stop;
    };
    struct Result
    {
        Task task;
        Outcome outcome;
    };

    QString folderOf(const Flow& flow) const;
    QList<Task> tasksOf(const Flow& flow, Actor actor);
    Outcome playOne(const Task& task, int number) const;
    void playAll(const QList<Task>& tasks);
    void note(const Task& task, const Outcome& outcome);
    void writeList() const;
    void printSummary(qint64 milliseconds) const;

    const MatrixOptions options;
    const QList<Flow> flows;
    std::mutex mutex;
    QList<Result> results; ///< of the scenes in which something was stopped
    int notReached = 0;    ///< calls that came in the first run only
    int wrong = 0;
};
