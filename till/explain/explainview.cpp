// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/explain/explainview.h"

#include "console/printable.h"
#include "till/checks/amount.h"
#include "till/screen/checkview.h"
#include "till/text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace till {
namespace {

namespace printable = console::printable;

using amount::moneyText;
using Document = AmountSource::Document;
using What = ExplainedAmount::What;

struct Words
{
    /// For programs.
    QString key;
    /// For people.
    QString text;
};

Words wordsFor(What what)
{
    switch (what) {
    case What::Discount:
        return {u"discount"_s, Text::tr("Discount")};
    case What::PointsSpent:
        return {u"pointsSpent"_s, Text::tr("Points spent")};
    case What::PointsEarned:
        return {u"pointsEarned"_s, Text::tr("Points earned")};
    case What::EarnedBySystem:
        return {u"earnedBySystem"_s, Text::tr("Points earned as the loyalty system counts")};
    case What::PointsGivenBack:
        return {u"pointsGivenBack"_s, Text::tr("Points given back")};
    case What::PointsTakenBack:
        return {u"pointsTakenBack"_s, Text::tr("Points taken back")};
    case What::Balance:
        return {u"balance"_s, Text::tr("Balance before this check")};
    case What::Paid:
        return {u"paid"_s, Text::tr("Money")};
    case What::MessageToCashier:
        return {u"messageToCashier"_s, Text::tr("To the cashier")};
    case What::MessageToCustomer:
        return {u"messageToCustomer"_s, Text::tr("To the customer")};
    }
    return {};
}

Words wordsFor(Document document)
{
    switch (document) {
    case Document::Answer:
        return {u"answer"_s, Text::tr("answer")};
    case Document::Confirmation:
        return {u"confirmation"_s, Text::tr("confirmation")};
    case Document::SaleAnswer:
        return {u"saleAnswer"_s, Text::tr("answer to the sale")};
    }
    return {};
}

bool isMessage(const ExplainedAmount& amount)
{
    return !amount.kopecks.has_value();
}

/// An amount of 0 that nothing speaks of is left out for people.
bool isWorthALine(const ExplainedAmount& amount)
{
    return amount.kopecks != 0 || !amount.sources.isEmpty() || !amount.problems.isEmpty();
}

QString amountText(const ExplainedAmount& amount)
{
    const Words words = wordsFor(amount.what);
    QString text = isMessage(amount)
                       ? u"  %1: \"%2\"\n"_s.arg(words.text, printable::line(amount.text))
                       : u"  %1: %2\n"_s.arg(words.text, moneyText(*amount.kopecks));
    for (const AmountSource& source : amount.sources) {
        text +=
            Text::tr("      %1, line %2: %3: \"%4\"\n")
                .arg(wordsFor(source.document).text)
                .arg(source.finding.line)
                .arg(printable::line(source.finding.path), printable::line(source.finding.text));
    }
    if (!amount.rule.isEmpty()) {
        text += u"      = %1\n"_s.arg(printable::line(amount.rule));
    }
    for (const QString& problem : amount.problems) {
        text += Text::tr("    ! Not explained: %1.\n").arg(printable::line(problem));
    }
    return text;
}

QString originText(const Check& check, const Exchange& exchange)
{
    if (!check.confirmed) {
        return Text::tr("Closed without the loyalty system; nothing on it comes from an answer.\n");
    }
    QString text = exchange.answer.isEmpty()
                       ? Text::tr("Answer: none; the server was not asked.\n")
                       : Text::tr("Answer: %1\n").arg(printable::line(exchange.answerOrigin));
    if (!exchange.answer.isEmpty() && !exchange.recorded) {
        text += Text::tr(
            "No readable answer to this check was recorded: paths and texts are those of the "
            "answer, the lines are not the server's. Name a folder in [recording] of "
            "the configuration to have answers kept as they came.\n");
    }
    text += exchange.confirmation.isEmpty()
                ? Text::tr("Confirmation: none is left; it is not compared.\n")
                : Text::tr("Confirmation: %1\n").arg(printable::line(exchange.confirmationOrigin));
    return text;
}

QString verdict(const Explanation& explanation)
{
    const qsizetype wrong = explanation.disagreements();
    if (wrong > 0) {
        return Text::tr("%n do not agree.\n", nullptr, int(wrong));
    }
    return Text::tr("All %1 amounts and messages are explained; the sums agree.\n")
        .arg(explanation.amounts.size());
}

QString titleOf(const Check& check, int position)
{
    const Line* const line = check.line(position);
    return line == nullptr ? Text::tr("The whole check\n")
                           : Text::tr("Line %1, %2, %3\n")
                                 .arg(position)
                                 .arg(printable::line(line->name), moneyText(line->sumKopecks));
}

QJsonObject sourceJson(const AmountSource& source)
{
    return {{u"document"_s, wordsFor(source.document).key},
            {u"path"_s, source.finding.path},
            {u"line"_s, source.finding.line},
            {u"text"_s, source.finding.text}};
}

QJsonObject amountJson(const ExplainedAmount& amount)
{
    QJsonArray sources;
    for (const AmountSource& source : amount.sources) {
        sources.append(sourceJson(source));
    }
    QJsonObject object{{u"what"_s, wordsFor(amount.what).key},
                       {u"explained"_s, amount.problems.isEmpty()},
                       {u"sources"_s, sources},
                       {u"rule"_s, amount.rule},
                       {u"problems"_s, QJsonArray::fromStringList(amount.problems)}};
    if (isMessage(amount)) {
        object.insert(u"text"_s, amount.text);
    } else {
        object.insert(u"amount"_s, moneyText(*amount.kopecks));
        object.insert(u"position"_s, amount.position);
    }
    return object;
}

} // namespace

QString explainview::nameOf(What what)
{
    return wordsFor(what).text;
}

QString explainview::nameOf(Document document)
{
    return wordsFor(document).text;
}

QString explainview::text(const Check& check, const Explanation& explanation)
{
    const QString kind = check.isReturn() ? Text::tr("Return") : Text::tr("Sale");
    QString text = Text::tr("%1 No %2, check %3\n")
                       .arg(kind)
                       .arg(check.number())
                       .arg(printable::line(check.id()));
    text += originText(check, explanation.exchange);
    std::optional<int> position;
    for (const ExplainedAmount& amount : explanation.amounts) {
        if (!isWorthALine(amount)) {
            continue;
        }
        if (position != amount.position) {
            position = amount.position;
            text += titleOf(check, *position);
        }
        text += amountText(amount);
    }
    for (const QString& problem : explanation.problems) {
        text += Text::tr("! %1.\n").arg(printable::line(problem));
    }
    return text + verdict(explanation);
}

QString explainview::json(const Check& check, const Explanation& explanation)
{
    QJsonArray amounts;
    for (const ExplainedAmount& amount : explanation.amounts) {
        amounts.append(amountJson(amount));
    }
    const Exchange& exchange = explanation.exchange;
    const QJsonObject object{
        {u"check"_s, check.id()},
        {u"number"_s, check.number()},
        {u"kind"_s, check.isReturn() ? u"return"_s : u"sale"_s},
        {u"card"_s,
         check.cardNumber().isEmpty() ? QString() : checkview::shortCard(check.cardNumber())},
        {u"recorded"_s, exchange.recorded},
        {u"answer"_s, exchange.answer.isEmpty() ? QString() : exchange.answerOrigin},
        {u"confirmation"_s, exchange.confirmationOrigin},
        {u"amounts"_s, amounts},
        {u"problems"_s, QJsonArray::fromStringList(explanation.problems)},
        {u"agrees"_s, explanation.disagreements() == 0}};
    return QString::fromUtf8(QJsonDocument(object).toJson());
}

} // namespace till
