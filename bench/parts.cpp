// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "bench/parts.h"

#include "bench/checkdata.h"
#include "bench/openorva.h"
#include "host/services/session.h"

using namespace Qt::StringLiterals;

namespace bench {

namespace {

/// An answer and a client to read it with.
class AnswerPart : public Part
{
protected:
    explicit AnswerPart(const QDomDocument& document)
        : card(makeCard()), answer(document), root(answer.documentElement())
    {}

    QSharedPointer<DocumentCardRecord> card;
    QDomDocument answer;
    QDomElement root;
    orva::Interface client;
};

class Discounts : public AnswerPart
{
public:
    explicit Discounts(int lines) : AnswerPart(parsedAnswer(lines)) {}
    void run() override { found = client.getDiscountImpacts(card, root); }
    void reset() override { found.clear(); }

private:
    QList<QSharedPointer<DocumentImpact>> found;
};

class Records : public AnswerPart
{
public:
    explicit Records(int lines) : AnswerPart(parsedAnswer(lines)) {}
    void run() override { found = client.getBonusRecords(card, root); }
    void reset() override { found.clear(); }

private:
    QList<DocumentBonusRecord> found;
};

class Messages : public AnswerPart
{
public:
    explicit Messages(int messages) : AnswerPart(manyMessages(messages)) {}
    void run() override { found = client.getMessages(root, u"check"_s); }
    void reset() override { found.clear(); }

private:
    QStringList found;
};

class Spending : public AnswerPart
{
public:
    explicit Spending(int lines) : AnswerPart(parsedAnswer(lines)), sum(lines * 15.0 + 0.05)
    {
        client.setLastResponse(answer);
    }
    void run() override { made = client.generateBonusImpacts(card, sum, 2 * sum); }
    void reset() override { made.clear(); }

private:
    double sum;
    QList<QSharedPointer<BonusImpact>> made;
};

class GoodsLines : public AnswerPart
{
public:
    GoodsLines(int lines, EDocumentType documentType)
        : AnswerPart({}), type(documentType), goods(makeSale(lines, card)->getGoodsItems())
    {
        for (const auto& item : std::as_const(goods)) {
            item->setBonusImpactSum(20);
        }
    }
    void run() override { made = client.getRequestItems(goods, type); }
    void reset() override { made = QDomElement(); }

private:
    EDocumentType type;
    QList<QSharedPointer<GoodsItem>> goods;
    QDomElement made;
};

class UsedImpacts : public AnswerPart
{
public:
    UsedImpacts(int lines, int perLine)
        : AnswerPart(parsedAnswer(lines)), impacts(makeUsedImpacts(lines, perLine, card))
    {}
    void run() override { client.insertUsedImpacts(root, impacts); }
    void reset() override
    {
        QDomElement line = root.firstChildElement(u"items"_s).firstChildElement();
        for (; !line.isNull(); line = line.nextSiblingElement()) {
            line.removeChild(line.lastChildElement(u"usedAwards"_s));
        }
    }

private:
    QList<QSharedPointer<DocumentImpact>> impacts;
};

class Payments : public AnswerPart
{
public:
    explicit Payments(int lines) : AnswerPart(parsedAnswer(lines)) {}
    void run() override { client.insertPayments(root, 100); }
    void reset() override { root.removeChild(root.lastChildElement(u"payments"_s)); }
};

class OfflineMessage : public AnswerPart
{
public:
    explicit OfflineMessage(int lines) : AnswerPart(parsedAnswer(lines)) {}
    void run() override
    {
        made = client.createOfflineRequestMessage(answer, orva::Interface::RequestType::PaymentTry);
    }
    void reset() override { made.clear(); }

private:
    QVariantMap made;
};

/// A loyalty system that has read its answer.
class StatePart : public Part
{
protected:
    explicit StatePart(int lines) : sale(makeSale(lines, makeCard()))
    {
        const QDomDocument answer = parsedAnswer(lines);
        orva.interface->setLastResponse(answer);
        orva.bonusRecords =
            orva.interface->getBonusRecords(sale->getCardRecord(15), answer.documentElement());
        orva.setDocument(sale);
    }
    void write()
    {
        Singleton<Session>::instance->setDocument(sale);
        orva.updatePluginData();
    }

    QSharedPointer<Document> sale;
    OpenOrva orva;
};

class WritingState : public StatePart
{
public:
    explicit WritingState(int lines) : StatePart(lines) {}
    void run() override { write(); }
    void reset() override { sale->setPluginData({}); }
};

class Restoring : public StatePart
{
public:
    explicit Restoring(int lines) : StatePart(lines)
    {
        write();
        reset();
    }
    void run() override { orva.restoreLoyaltySystem(); }
    void reset() override
    {
        orva.bonusRecords.clear();
        orva.interface->setLastResponse({});
    }
};

template <typename Kind, typename... Arguments>
NamedPart part(const std::string& name, Arguments... arguments)
{
    return {name, [=](int lines) { return std::make_unique<Kind>(lines, arguments...); }};
}

} // namespace

std::vector<NamedPart> allParts()
{
    return {part<Discounts>("discounts"),
            part<Records>("records"),
            part<Messages>("messages"),
            part<Spending>("spending impacts"),
            part<GoodsLines>("goods lines of a sale", EDocumentType::Sale),
            part<GoodsLines>("goods lines of a return", EDocumentType::ReturnBySale),
            part<UsedImpacts>("used impacts, one a line", 1),
            part<UsedImpacts>("used impacts, two a line", 2),
            part<Payments>("payments"),
            part<OfflineMessage>("offline message"),
            part<WritingState>("state writing"),
            part<Restoring>("restore")};
}

} // namespace bench
