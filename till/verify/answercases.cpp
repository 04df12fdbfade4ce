// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The shape of an answer: what comes back, in which form.

#include "till/text.h"
#include "till/verify/answerform.h"
#include "till/verify/bench.h"
#include "till/verify/cases.h"

using namespace Qt::StringLiterals;

namespace till::verify {
namespace {

namespace names = protocol::names;

constexpr qsizetype largestAnswer = 8'388'608;
constexpr int mostLevels = 512;

/// The amounts of a line that a server writes.
QList<Names> lineAmounts()
{
    return {{names::awards, names::rawItemAwards, names::discount},
            {names::awards, names::rawItemAwards, names::discountOnChange},
            {names::awards, names::rawItemAwards, names::awardBonus},
            {names::awards, names::rawItemAwards, names::allowBonusInCurrency}};
}

/// Those of the check.
QList<Names> checkAmounts()
{
    return {{names::awards, names::rawCheckAwards, names::allowBonus},
            {names::awards, names::rawCheckAwards, names::awardBonus},
            Reading::balancePath()};
}

void isAnAmount(Bench& bench, const Reading& answer, qsizetype element, const Names& names)
{
    const qsizetype found = answer.xml().find(element, names);
    if (found < 0) {
        return;
    }
    const QString text = answer.xml().elements().at(found).text;
    const QString& last = names.last();
    const bool mayBeNegative = last == names::awardBonus || last == names::balance;
    const std::optional<qint64> kopecks = readAmount(text);
    bench.expectThat(kopecks && (mayBeNegative || *kopecks >= 0), answer.path(element, names),
                     Text::tr("an amount such as 12.50"), u'"' + text + u'"');
}

void amountsHaveTheirForm(Bench& bench, const Reading& answer)
{
    const QList<Names> ofCheck = checkAmounts();
    for (const Names& names : ofCheck) {
        isAnAmount(bench, answer, 0, names);
    }
    const QList<Names> ofLine = lineAmounts();
    for (const qsizetype line : answer.lines()) {
        for (const Names& names : ofLine) {
            isAnAmount(bench, answer, line, names);
        }
    }
}

void fits(Bench& bench, const QString& schema, const QByteArray& body)
{
    const std::optional<FormObjection> objection = answerform::objectionTo(schema, body);
    if (objection) {
        bench.expectThat(false, objection->path, Text::tr("a document that fits %1").arg(schema),
                         objection->text);
    }
}

void linesComeBack(Bench& bench, const Draft& request)
{
    const Reading answer = bench.answered(request.bytes());
    bench.expectThat(answer.lines().size() == request.lineCount(), u"/RawCheck/items"_s,
                     QString::number(request.lineCount()), QString::number(answer.lines().size()));
    for (int line = 0; line < request.lineCount(); ++line) {
        const QString id = request.textInLine(line, {names::id});
        QStringList found;
        for (const qsizetype at : answer.lines()) {
            found.append(u'"' + answer.textIn(at, {names::id}) + u'"');
        }
        bench.expectThat(answer.line(id) >= 0, u"/RawCheck/items/RawItem/id"_s, u'"' + id + u'"',
                         found.join(u", "_s));
    }
}

void checkComesBack(Bench& bench)
{
    const Draft request = bench.freshRequest();
    const Reading answer = bench.answered(request.bytes());
    for (const Names& name :
         {Names{names::chType}, Names{names::cardNumber}, Names{names::total}}) {
        bench.expectText(answer.path(0, name), request.text(name), answer.text(name));
    }
    for (int line = 0; line < request.lineCount(); ++line) {
        const qsizetype found = answer.line(request.textInLine(line, {names::id}));
        for (const Names& name : {Names{names::sku}, Names{names::total}, Names{names::quantity}}) {
            bench.expectText(answer.path(found, name), request.textInLine(line, name),
                             found < 0 ? QString() : answer.textIn(found, name));
        }
    }
}

/// Asked before the schema is, which objects to a date with a time zone too.
void dateComesBack(Bench& bench)
{
    const Draft request = bench.freshRequest();
    const Reading answer = bench.answered(request.bytes());
    if (answer.has({names::date})) {
        bench.expectText(answer.path(0, {names::date}), request.text({names::date}),
                         answer.text({names::date}));
    }
}

void idComesBack(Bench& bench, const QString& id)
{
    const Reading answer = bench.answered(bench.freshRequest().set({names::id}, id).bytes());
    bench.expectText(u"/RawCheck/id"_s, id, answer.text({names::id}));
}

void balanceIsThere(Bench& bench, const QString& card)
{
    const Reading answer =
        bench.answered(bench.freshRequest().set({names::cardNumber}, card).bytes());
    const Names path = Reading::balancePath();
    bench.expectThat(answer.saysBalance(), answer.path(0, path),
                     Text::tr("an amount such as 12.50"), u'"' + answer.text(path) + u'"');
}

/// UTF-8 is what an answer without a declaration, or with one that names none, is in. One that
/// names another encoding must not hold the bytes of UTF-8 that came with the request.
void isEncodedAsItSays(Bench& bench)
{
    const QString code = u"Щётка"_s;
    const Reply reply =
        bench.precheck(bench.freshRequest().setInLine(1, {names::sku}, code).bytes());
    const QByteArray head = reply.body.left(200).toLower();
    const bool namesAnother =
        head.contains("<?xml") && head.contains("encoding") && !head.contains("utf-8");
    bench.expectThat(namesAnother || reply.body.isValidUtf8(), {}, u"UTF-8"_s,
                     Text::tr("bytes that are no UTF-8"));
    bench.expectThat(!namesAnother || !reply.body.contains(code.toUtf8()), {},
                     QString::fromLatin1(head.left(60)).simplified(), u"UTF-8"_s);
}

void staysBelowLimits(Bench& bench)
{
    const Reply reply = bench.precheck(bench.freshRequest().makeLines(1000).bytes());
    bench.expectThat(reply.body.size() <= largestAnswer, {}, QString::number(largestAnswer),
                     QString::number(reply.body.size()));
    bench.expectThat(!reply.body.contains("<!DOCTYPE") || !reply.body.contains("<!E"), {},
                     Text::tr("no declarations in a document type"), u"<!DOCTYPE"_s);
    const protocol::XmlTree tree(reply.body);
    int deepest = 0;
    for (const protocol::XmlTree::Element& element : tree.elements()) {
        int levels = 1;
        for (qsizetype at = element.parent; at >= 0; at = tree.elements().at(at).parent) {
            ++levels;
        }
        deepest = std::max(deepest, levels);
    }
    bench.expectThat(deepest <= mostLevels, {}, QString::number(mostLevels),
                     QString::number(deepest));
}

const Case rows[] = {
    {"answer-encoding.as-it-says", "answer-encoding", isEncodedAsItSays},
    {"balance-always.first-card", "balance-always",
     [](Bench& bench) { balanceIsThere(bench, bench.card()); }},
    {"balance-always.second-card", "balance-always",
     [](Bench& bench) { balanceIsThere(bench, bench.secondCard()); }},
    {"balance-always.empty-card", "balance-always",
     [](Bench& bench) {
         if (bench.emptyCard().isEmpty()) {
             Bench::cannot(Text::tr("no emptyCard is named in the table [verify]"));
         }
         balanceIsThere(bench, bench.emptyCard());
     }},
    {"number-form.sale", "number-form",
     [](Bench& bench) {
         amountsHaveTheirForm(bench, bench.answered(bench.freshRequest().bytes()));
     }},
    {"number-form.large", "number-form",
     [](Bench& bench) {
         Draft request = bench.freshRequest();
         request.setInLine(0, {names::total}, u"1234567.80"_s).makeLines(3);
         amountsHaveTheirForm(bench, bench.answered(request.bytes()));
     }},
    {"number-form.other-card", "number-form",
     [](Bench& bench) {
         amountsHaveTheirForm(
             bench, bench.answered(
                        bench.freshRequest().set({names::cardNumber}, bench.secondCard()).bytes()));
     }},
    {"id-carried-back.usual", "id-carried-back",
     [](Bench& bench) { idComesBack(bench, bench.freshRequest().text({names::id})); }},
    {"id-carried-back.longest", "id-carried-back",
     [](Bench& bench) {
         idComesBack(bench, bench.freshRequest().text({names::id}).leftJustified(256, u'x'));
     }},
    {"id-carried-back.capitals", "id-carried-back",
     [](Bench& bench) { idComesBack(bench, bench.freshRequest().text({names::id}).toUpper()); }},
    {"lines-carried-back.usual", "lines-carried-back",
     [](Bench& bench) { linesComeBack(bench, bench.freshRequest()); }},
    {"lines-carried-back.gaps", "lines-carried-back",
     [](Bench& bench) {
         linesComeBack(bench, bench.freshRequest()
                                  .setInLine(0, {names::id}, u"7"_s)
                                  .setInLine(2, {names::id}, u"1042"_s));
     }},
    {"check-carried-back.fields", "check-carried-back", checkComesBack},
    {"date-has-no-zone.today", "date-has-no-zone", dateComesBack},
    {"answer-fits-schema.sale", "answer-fits-schema",
     [](Bench& bench) {
         const Reply reply = bench.precheck(bench.freshRequest().bytes());
         fits(bench, u"answer"_s, reply.body);
     }},
    {"answer-fits-schema.other-card", "answer-fits-schema",
     [](Bench& bench) {
         const Reply reply = bench.precheck(
             bench.freshRequest().set({names::cardNumber}, bench.secondCard()).bytes());
         fits(bench, u"answer"_s, reply.body);
     }},
    {"answer-limits.thousand-lines", "answer-limits", staysBelowLimits},
};

} // namespace

std::span<const Case> answerCases()
{
    return rows;
}

} // namespace till::verify
