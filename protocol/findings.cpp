// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "protocol/findings.h"

#include "host/document/money.h"
#include "protocol/names.h"
#include "protocol/xmltree.h"

#include <cmath>

namespace protocol {
namespace {

qint64 counted(Meaning meaning, double amount)
{
    const bool nothing = meaning == Meaning::Discount ? amount <= money::halfKopeck
                                                      : std::abs(amount) < money::halfKopeck;
    return nothing ? 0 : money::toKopecks(amount).value_or(0);
}

/// Collects what stands in one tree.
class Collector
{
public:
    Collector(const XmlTree& document, QList<Finding>& findings) : tree(document), found(findings)
    {}

    void collect()
    {
        for (const qsizetype items : tree.children(0, names::items)) {
            for (const qsizetype line : tree.children(items, names::rawItem)) {
                collectLine(line);
            }
        }
        const QList<QString> awards{names::awards, names::rawCheckAwards};
        add(Meaning::CheckAccrual, 0, 0, awards + QList<QString>{names::awardBonus});
        add(Meaning::CheckSpendingLimit, 0, 0, awards + QList<QString>{names::allowBonus});
        add(Meaning::Balance, 0, 0,
            {names::client, names::rawCheckClient, names::account, names::rawCheckAccount,
             names::balance});
        collectMessages();
        addEach(Meaning::Payment, 0, 0, {names::payments, names::rawCheckPayment}, names::amount);
    }

private:
    void collectLine(qsizetype line)
    {
        const qsizetype id = tree.find(line, {names::id});
        const int position = id < 0 ? 0 : tree.wholeText(id).toInt();
        const QList<QString> awards{names::awards, names::rawItemAwards};
        add(Meaning::Discount, position, line, awards + QList<QString>{names::discount});
        add(Meaning::Discount, position, line, awards + QList<QString>{names::discountOnChange});
        add(Meaning::Accrual, position, line, awards + QList<QString>{names::awardBonus});
        add(Meaning::SpendingLimit, position, line,
            awards + QList<QString>{names::allowBonusInCurrency});
        const QList<QString> used{names::usedAwards, names::rawItemUsedAwards};
        addEach(Meaning::UsedDiscount, position, line, used, names::usedDiscount);
        addEach(Meaning::UsedPoints, position, line, used, names::usedBonusInCurrency);
        addEach(Meaning::ReturnedPoints, position, line,
                {names::returnedAwards, names::rawItemReturnedAwards}, names::usedBonusInCurrency);
    }

    void collectMessages()
    {
        for (const qsizetype informing : tree.children(0, names::informing)) {
            for (const qsizetype message : tree.children(informing, names::rawCheckInforming)) {
                const qsizetype channel = tree.find(message, {names::communicationChannel});
                const QString name = channel < 0 ? QString() : tree.wholeText(channel);
                if (name == QLatin1StringView("pos")) {
                    add(Meaning::MessageToCashier, 0, message, {names::info});
                } else if (name == QLatin1StringView("check")) {
                    add(Meaning::MessageToCustomer, 0, message, {names::info});
                }
            }
        }
    }

    void add(Meaning meaning, int position, qsizetype below, const QList<QString>& way)
    {
        if (const qsizetype index = tree.find(below, way); index >= 0) {
            append(meaning, position, index);
        }
    }

    /// What a confirmation has used stands there once for each use.
    void addEach(Meaning meaning, int position, qsizetype below, const QList<QString>& way,
                 const QString& name)
    {
        if (const qsizetype parent = tree.find(below, way); parent >= 0) {
            for (const qsizetype index : tree.children(parent, name)) {
                append(meaning, position, index);
            }
        }
    }

    void append(Meaning meaning, int position, qsizetype index)
    {
        Finding finding{meaning, position, tree.path(index), tree.elements().at(index).line,
                        tree.wholeText(index)};
        finding.amount = finding.text.toDouble();
        finding.kopecks = counted(meaning, finding.amount);
        found.append(finding);
    }

    const XmlTree& tree;
    QList<Finding>& found;
};

} // namespace

Findings::Findings(const QByteArray& document)
{
    const XmlTree tree(document);
    error = tree.problem();
    if (!tree.elements().isEmpty()) {
        Collector(tree, found).collect();
    }
}

QList<Finding> Findings::of(Meaning meaning, int position) const
{
    QList<Finding> matching;
    for (const Finding& finding : found) {
        if (finding.meaning == meaning && finding.position == position) {
            matching.append(finding);
        }
    }
    return matching;
}

qint64 Findings::sum(const QList<Finding>& findings)
{
    qint64 total = 0;
    for (const Finding& finding : findings) {
        total += finding.kopecks;
    }
    return total;
}

} // namespace protocol
