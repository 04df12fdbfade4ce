// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/casereport/slipsection_p.h"

#include "till/checks/amount.h"
#include "till/explain/explainview.h"
#include "till/screen/checkview.h"
#include "till/text.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

using amount::moneyText;
using Document = AmountSource::Document;

XmlPane* paneOf(Document document, const ShownDocuments& documents)
{
    switch (document) {
    case Document::Answer:
        return documents.answer;
    case Document::Confirmation:
        return documents.confirmation;
    case Document::SaleAnswer:
        break; // of another case, with a report of its own
    }
    return nullptr;
}

QString subjectOf(const Check& check, int position)
{
    const Line* const line = check.line(position);
    return line == nullptr ? Text::tr("the whole check")
                           : Text::tr("line %1, %2").arg(position).arg(line->name);
}

/// What stands in the row's last cell: where the amount comes from, how it follows, what is wrong.
void writeReasons(ReportPage& page, const ExplainedAmount& amount, const QString& rowId,
                  const QString& words, const ShownDocuments& documents)
{
    const ReportPage::Element cell(page, u"td"_s);
    for (const AmountSource& source : amount.sources) {
        const ReportPage::Element one(page, u"div"_s);
        page.text(explainview::nameOf(source.document) + u": "_s);
        XmlPane* const pane = paneOf(source.document, documents);
        const QString id = pane == nullptr ? QString() : pane->idOf(source.finding.path);
        const QString text = u"%1: %2"_s.arg(source.finding.path, source.finding.text);
        if (id.isEmpty()) {
            page.text(text);
        } else {
            page.link(id, text);
            pane->pointedFrom(source.finding.path, {rowId, words});
        }
    }
    if (!amount.rule.isEmpty()) {
        page.element(u"div"_s, u"= "_s + amount.rule);
    }
    for (const QString& problem : amount.problems) {
        page.element(u"div"_s, problem, u"wrong"_s);
    }
}

void writeAmount(ReportPage& page, const Check& check, const ExplainedAmount& amount, int number,
                 const ShownDocuments& documents)
{
    const QString id = u"amount-%1"_s.arg(number);
    const QString name = explainview::nameOf(amount.what);
    const QString value = amount.kopecks ? moneyText(*amount.kopecks) : amount.text;
    const ReportPage::Element row(page, u"tr"_s);
    page.attribute(u"id"_s, id);
    page.element(u"td"_s, subjectOf(check, amount.position));
    page.element(u"td"_s, name);
    page.element(u"td"_s, value, amount.kopecks ? u"number"_s : QString());
    writeReasons(page, amount, id, u"%1, %2"_s.arg(name, subjectOf(check, amount.position)),
                 documents);
}

} // namespace

void writeSlipSection(ReportPage& page, const Check& check, const Explanation& explanation,
                      const ShownDocuments& documents)
{
    page.element(u"h2"_s, Text::tr("The slip"));
    {
        const ReportPage::Element slip(page, u"pre"_s);
        page.lines(checkview::slip(check));
    }
    page.element(u"h2"_s, Text::tr("Where its amounts come from"));
    for (const QString& problem : explanation.problems) {
        page.element(u"p"_s, problem, u"wrong"_s);
    }
    const ReportPage::Element frame(page, u"div"_s, u"scroll"_s);
    const ReportPage::Element table(page, u"table"_s);
    page.row(u"th"_s, {Text::tr("Of"), Text::tr("What"), Text::tr("Amount"), Text::tr("From")});
    int number = 0;
    for (const ExplainedAmount& amount : explanation.amounts) {
        ++number;
        if (amount.kopecks != 0 || !amount.sources.isEmpty() || !amount.problems.isEmpty()) {
            writeAmount(page, check, amount, number, documents);
        }
    }
}

} // namespace till
