// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/rules/rulesfile.h"

#include "input/readfile.h"
#include "simulator/rules/configerror.h"
#include "simulator/rules/rulesreader.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

QByteArray bytesOf(const QString& path)
{
    try {
        return input::readFile(path, maximumAnswerFile);
    } catch (const input::FileError&) {
        return {"\0", 1};
    }
}

} // namespace

RulesFile::RulesFile(const QString& rulesPath)
    : path(rulesPath), firstRules(readRulesFile(rulesPath)), answerFiles(firstRules.answerFiles),
      known(content(answerFiles))
{}

void RulesFile::look(const Apply& apply, const Complain& complain)
{
    const std::scoped_lock lock(mutex);
    const QByteArray now = content(answerFiles);
    const bool isBroken = !complaint.isEmpty(); // what it lacks may be a file that is not known
    if ((now == known && !isBroken) || bytesOf(path).trimmed().isEmpty()) {
        return;
    }
    known = now;
    try {
        const Rules rules = readRulesFile(path);
        complaint.clear();
        answerFiles = rules.answerFiles;
        known = content(answerFiles);
        apply(rules);
    } catch (const ConfigError& error) {
        const QString what = QString::fromUtf8(error.what());
        if (what != std::exchange(complaint, what)) {
            complain(what);
        }
    }
}

/// Everything that the rules are read from. The bytes are compared rather than times, which are too
/// coarse for a test that writes the file twice in a row.
QByteArray RulesFile::content(const QStringList& further) const
{
    QByteArray all = bytesOf(path);
    for (const QString& file : further) {
        all += '\0' + bytesOf(file);
    }
    return all;
}

} // namespace simulator
