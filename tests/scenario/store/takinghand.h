// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/support/program.h"

#include <QString>

#include <memory>
#include <random>

/// A cashier at one of several tills of a shop who takes goods back, while the till's process dies
/// now and then: with a return open, being closed, or closed. Belongs to one thread at a time.
class TakingHand
{
public:
    /// @param shopFolder with the till's configuration
    /// @param tillName of it, without ".toml"
    TakingHand(QString shopFolder, QString tillName, quint64 seed)
        : folder(std::move(shopFolder)), name(std::move(tillName)), random(seed)
    {}

    /// One customer comes with some pieces of a sale; whatever goes wrong goes wrong.
    void serve(const QString& sale, int positions);
    /// Takes one piece after the other back until the till refuses: then nothing is left, or
    /// somebody else has it.
    void takeAllBack(const QString& sale, int positions);
    /// The till's process dies, if there is one.
    void die();

    /// One command of the till to its end.
    RunResult run(const QStringList& arguments) const;
    QString database() const { return folder + u'/' + name + QStringLiteral(".sqlite"); }
    int kills() const { return killed; }
    /// Returns that the till refused to open or to close.
    int refusals() const { return refused; }

private:
    Program& till();
    bool isOk(const QString& command);
    bool open(const QString& sale, int position, int pieces);
    int upTo(int most) { return std::uniform_int_distribution<>(0, most)(random); }

    QString folder;
    QString name;
    std::mt19937_64 random;
    std::unique_ptr<Program> working;
    int killed = 0;
    int refused = 0;
};
