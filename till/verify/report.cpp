// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What a run has found, for people.

#include "till/verify/report.h"
#include "console/printable.h"
#include "till/text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till::verify::report {
namespace {

constexpr qsizetype mostShown = 3000;
constexpr int widestBar = 40;

QString indented(const QByteArray& document)
{
    QString text = QString::fromUtf8(document.left(mostShown)).trimmed();
    if (document.size() > mostShown) {
        text += u"\n…"_s;
    }
    QStringList lines;
    for (const QString& line : text.split(u'\n')) {
        lines.append(u"      "_s + console::printable::line(line));
    }
    return lines.join(u'\n') + u'\n';
}

QString row(const QString& title, const QString& text)
{
    return text.isEmpty() ? QString()
                          : u"    "_s + title + u": "_s + console::printable::line(text) + u'\n';
}

QString levelOf(const Requirement& requirement)
{
    return requirement.isMust ? Text::tr("must") : Text::tr("should");
}

QString brokenText(const Outcome& outcome)
{
    const Complaint& complaint = outcome.complaint;
    QString text = u"  "_s + outcome.name + u'\n';
    text += row(Text::tr("element"), complaint.path);
    text += row(Text::tr("expected"), complaint.expected);
    text += row(Text::tr("got"), complaint.got);
    text += row(Text::tr("asked at"), complaint.exchange.url.toString(QUrl::RemoveUserInfo));
    text += u"    "_s + Text::tr("request") + u":\n"_s + indented(complaint.exchange.request);
    text += row(Text::tr("answer"), complaint.exchange.reply.shown()) +
            indented(complaint.exchange.reply.body);
    return text;
}

QString brokenRequirements(const Results& results)
{
    QString text;
    for (const QString& name : results.broken()) {
        const Requirement requirement = Requirement::named(name);
        text += Text::tr("BROKEN %1 (%2)").arg(name, levelOf(requirement)) + u'\n' +
                row(Text::tr("the protocol says"), requirement.sentence);
        for (const Outcome& outcome : results.outcomes) {
            if (outcome.requirement == name && outcome.state == State::Broken) {
                text += brokenText(outcome);
            }
        }
        text += u'\n';
    }
    return text;
}

QString notTried(const Results& results)
{
    QString text;
    for (const Verdict& verdict : results.verdicts()) {
        if (verdict.outcomes.isEmpty()) {
            text += Text::tr("not tried: %1 (%2)").arg(verdict.requirement.name, verdict.reason) +
                    u'\n';
        }
        for (const Outcome& outcome : verdict.outcomes) {
            if (outcome.state == State::NotTried) {
                text += Text::tr("not tried: %1 (%2)")
                            .arg(outcome.name, console::printable::line(outcome.reason)) +
                        u'\n';
            }
        }
    }
    return text;
}

QString held(const QList<Verdict>& verdicts)
{
    QStringList names;
    for (const Verdict& verdict : verdicts) {
        if (verdict.state == State::Held) {
            names.append(verdict.requirement.name);
        }
    }
    return names.isEmpty() ? QString() : Text::tr("held: %1").arg(names.join(u", "_s)) + u'\n';
}

QString timesText(const Times& times)
{
    if (times.answers.isEmpty()) {
        return {};
    }
    QString text = Text::tr("Pre-checks were answered within %1 ms in the middle, %2 ms for 95 of "
                            "100, %3 ms at most:")
                       .arg(times.share(50))
                       .arg(times.share(95))
                       .arg(times.answers.last()) +
                   u'\n';
    const QList<int> counts = times.histogram();
    const int most = *std::max_element(counts.begin(), counts.end());
    for (qsizetype i = 0; i < counts.size(); ++i) {
        const bool isLast = i == Times::limits().size();
        const QString limit = isLast ? Text::tr("more") : u"<= %1 ms"_s.arg(Times::limits().at(i));
        text += u"  %1 %2  %3\n"_s.arg(limit, 10)
                    .arg(counts.at(i), 5)
                    .arg(QString(counts.at(i) * widestBar / most, u'#'))
                    .replace(u"  \n"_s, u"\n"_s);
    }
    return text;
}

} // namespace

QString text(const Results& results, bool strict, int columns)
{
    const QList<Verdict> verdicts = results.verdicts();
    QString text = brokenRequirements(results) + held(verdicts) + notTried(results) + u'\n' +
                   timesText(results.times) + u'\n';
    const auto count = [&verdicts](State state) {
        return std::ranges::count(verdicts, state, &Verdict::state);
    };
    text += Text::tr("Requirements: %1 held, %2 broken, %3 not tried; cases: %4 held, %5 broken, "
                     "%6 not tried.")
                .arg(count(State::Held))
                .arg(results.broken().size())
                .arg(count(State::NotTried))
                .arg(results.count(State::Held))
                .arg(results.count(State::Broken))
                .arg(results.count(State::NotTried)) +
            u'\n';
    text += (results.left.isEmpty()
                 ? Text::tr("Left behind: checks that are returned whole, and pre-checks and "
                            "payment tries that were never confirmed.")
                 : Text::tr("Left behind in the books: %1").arg(results.left.join(u", "_s))) +
            u'\n';
    text += (results.isGood(strict) ? Text::tr("Nothing that a till relies on is broken.")
                                    : Text::tr("Tills cannot rely on this server.")) +
            u'\n';
    return console::printable::folded(text, columns);
}

QString list()
{
    QString text;
    for (const Requirement& requirement : Requirement::all()) {
        text += requirement.name + u" ("_s + levelOf(requirement) + u")\n"_s;
        for (const Case& known : allCases()) {
            if (requirement.name == QLatin1StringView(known.requirement)) {
                text += u"  "_s + QLatin1StringView(known.name) + u'\n';
            }
        }
    }
    return text;
}

} // namespace till::verify::report
