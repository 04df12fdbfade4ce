// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/verify/report.h"

#include "till/failure.h"
#include "till/verify/run.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using till::verify::Outcome;
using till::verify::Results;
using till::verify::State;
namespace report = till::verify::report;

namespace {

Outcome brokenCase(const QString& name, const QString& requirement)
{
    Outcome outcome{name, requirement, State::Broken};
    outcome.complaint = {{},
                         {QUrl(u"http://127.0.0.1:1/"_s), "<RawCheck/>", {}},
                         u"/RawCheck/id"_s,
                         u"\"a\""_s,
                         u"\"b\""_s};
    return outcome;
}

Results someResults(const QString& requirement)
{
    Results results;
    Outcome untried{u"tls.certificate"_s, u"tls"_s};
    untried.reason = u"no https"_s;
    results.outcomes = {untried, Outcome{u"number-form.sale"_s, u"number-form"_s, State::Held},
                        brokenCase(requirement + u".a"_s, requirement),
                        brokenCase(requirement + u".b"_s, requirement)};
    return results;
}

} // namespace

TEST(VerifyCases, haveUniqueNamesAndRequirementsOfThePage)
{
    QSet<QString> known;
    const QList<till::verify::Case> cases = till::verify::allCases();
    ASSERT_GE(cases.size(), 60);
    for (const till::verify::Case& played : cases) {
        const QString name = QLatin1StringView(played.name);
        const QString requirement = QLatin1StringView(played.requirement);
        EXPECT_FALSE(known.contains(name)) << played.name;
        known.insert(name);
        EXPECT_TRUE(name.startsWith(requirement + u'.')) << played.name;
        EXPECT_FALSE(till::verify::Requirement::named(requirement).sentence.isEmpty())
            << played.name;
    }
}

TEST(VerifyCases, coverEveryRequirementOrSayWhyNot)
{
    Results results;
    for (const till::verify::Case& played : till::verify::allCases()) {
        results.outcomes.append(Outcome{QLatin1StringView(played.name),
                                        QLatin1StringView(played.requirement), State::Held});
    }
    results.outcomes.append(Outcome{u"retry-after.whenever-busy"_s, u"retry-after"_s, State::Held});
    EXPECT_EQ(results.verdicts().size(), till::verify::Requirement::all().size());
    for (const till::verify::Verdict& verdict : results.verdicts()) {
        EXPECT_TRUE(verdict.state == State::Held || !verdict.reason.isEmpty())
            << qPrintable(verdict.requirement.name);
    }
}

TEST(VerifyCases, areChosenByTheirNameOrTheirRequirement)
{
    EXPECT_EQ(till::verify::Run::chosen({u"book-once.lost-reply"_s}).size(), 1);
    EXPECT_GT(till::verify::Run::chosen({u"book-once"_s}).size(), 2);
    EXPECT_THROW(static_cast<void>(till::verify::Run::chosen({u"book-ones"_s})), till::Failure);
}

TEST(VerifyResults, aBrokenMustIsBadAndABrokenShouldOnlyWhenStrict)
{
    EXPECT_FALSE(someResults(u"book-once"_s).isGood(false));
    EXPECT_TRUE(someResults(u"keep-alive"_s).isGood(false));
    EXPECT_FALSE(someResults(u"keep-alive"_s).isGood(true));
    EXPECT_EQ(someResults(u"book-once"_s).broken(), QStringList{u"book-once"_s});
}

TEST(VerifyReport, saysToPeopleWhatIsBrokenAndWhatThePageSays)
{
    const QString text = report::text(someResults(u"book-once"_s), false, 100);
    for (const QString& part :
         {u"book-once.a"_s, u"/RawCheck/id"_s, u"\"b\""_s, u"A check is booked once"_s,
          u"held: number-form\n"_s, u"tls.certificate"_s, u"no https"_s}) {
        EXPECT_TRUE(text.contains(part)) << qPrintable(part) << "\n" << qPrintable(text);
    }
}

TEST(VerifyReport, saysToProgramsTheSame)
{
    const Results results = someResults(u"book-once"_s);
    const QJsonObject json =
        QJsonDocument::fromJson(report::json(results, false).toUtf8()).object();
    EXPECT_FALSE(json.value("good"_L1).toBool(true));
    EXPECT_EQ(json.value("broken"_L1).toVariant().toStringList(), QStringList{u"book-once"_s});

    const QString tap = report::tap(results, false);
    EXPECT_TRUE(tap.startsWith(u"TAP version 13\n1..4\n"_s)) << qPrintable(tap);
    EXPECT_TRUE(tap.contains(u"ok 1 - tls.certificate # SKIP no https\n"_s)) << qPrintable(tap);
    EXPECT_TRUE(tap.contains(u"not ok 3 - book-once.a\n"_s)) << qPrintable(tap);
    EXPECT_TRUE(report::tap(someResults(u"keep-alive"_s), false)
                    .contains(u"not ok 3 - keep-alive.a # TODO should\n"_s));

    QXmlStreamReader xml(report::junit(results, false));
    int failures = 0;
    int skipped = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        failures += xml.isStartElement() && xml.name() == "failure"_L1 ? 1 : 0;
        skipped += xml.isStartElement() && xml.name() == "skipped"_L1 ? 1 : 0;
    }
    EXPECT_FALSE(xml.hasError()) << qPrintable(xml.errorString());
    EXPECT_EQ(failures, 2);
    EXPECT_EQ(skipped, 1);
}
