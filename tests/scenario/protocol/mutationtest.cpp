// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Whether the schemas bite, and whether a strict simulator bites where they do.

#include "simulator/documents/rejection.h"
#include "simulator/documents/requestforms.h"
#include "simulator/documents/xmlreader.h"
#include "tests/scenario/protocol/mutations.h"
#include "tests/scenario/protocol/schemacheck.h"
#include "tests/unit/simulator/servicefixture.h"

#include <QFile>
#include <QRegularExpression>

#include <functional>
#include <stdexcept>

using namespace Qt::StringLiterals;
using tests::Mutation;

namespace simulator::test {
namespace {

using Kind = Mutation::Kind;

QByteArray clientFile(const QString& name)
{
    QFile file(QStringLiteral(ORVA_TEST_DATA "/client/") + name);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::invalid_argument("no file " + name.toStdString());
    }
    return file.readAll();
}

/// A confirmation with everything in it that one can have.
QByteArray fullConfirmation()
{
    return confirmation(goldenFile(u"precheck-answer.xml"_s),
                        {{u"1"_s, {u"5.30"_s, u"40.00"_s}}, {u"2"_s, {u"7.50"_s, u"1.00"_s}}},
                        u"121.00"_s);
}

/// What a document of a schema may lack and have more than once, and where the order is free.
struct Freedom
{
    QStringList optional;
    QStringList repeated;
    bool hasOrder;
};

const QStringList carriedBack{u"number"_s, u"pos"_s,        u"date"_s,
                              u"chType"_s, u"merchantId"_s, u"total"_s,
                              u"awards"_s, u"cardNumber"_s, u"informing"_s};
const QStringList lineCarriedBack{u"quantity"_s, u"sku"_s,    u"price"_s, u"total"_s,
                                  u"minTotal"_s, u"weight"_s, u"awards"_s};

QStringList below(const QString& path, const QStringList& names)
{
    QStringList paths;
    for (const QString& name : names) {
        paths.append(path + name);
    }
    return paths;
}

Freedom freedomOf(const QString& schema)
{
    const QStringList lists{u"items/RawItem"_s, u"informing/RawCheckInforming"_s};
    if (schema.endsWith(u"request"_s)) {
        return {{u"items/RawItem"_s, u"items/RawItem/returnedAwards"_s}, {}, true};
    }
    const QString awards = u"items/RawItem/awards/RawItemAwards/"_s;
    QStringList optional = lists + carriedBack + below(u"items/RawItem/"_s, lineCarriedBack) +
                           below(awards, {u"discount"_s, u"discountOnChange"_s, u"awardBonus"_s,
                                          u"allowBonusInCurrency"_s}) +
                           below(u"awards/RawCheckAwards/"_s, {u"allowBonus"_s, u"awardBonus"_s}) +
                           below(u"client/RawCheckClient/"_s, {u"name"_s, u"surname"_s});
    QStringList repeated{u"informing/RawCheckInforming"_s};
    if (schema == u"sale-confirmation"_s) {
        const QStringList used = below(u"items/RawItem/usedAwards/RawItemUsedAwards/"_s,
                                       {u"usedDiscount"_s, u"usedBonusInCurrency"_s});
        optional += used + QStringList{u"items/RawItem/usedAwards"_s};
        repeated += used;
    }
    return {optional, repeated, false};
}

/// Whether a schema may take a mutation: said here once more by hand, to be held against it.
bool mayFit(const Mutation& mutation, const Freedom& freedom)
{
    switch (mutation.kind) {
    case Kind::Removed:
        return freedom.optional.contains(mutation.path);
    case Kind::Doubled:
        return freedom.repeated.contains(mutation.path);
    case Kind::Swapped:
        return !freedom.hasOrder && !mutation.path.startsWith(u"payments"_s);
    default:
        return false;
    }
}

std::vector<tests::WireDocument> documentsOf(const std::vector<Mutation>& mutations)
{
    std::vector<tests::WireDocument> documents;
    for (const Mutation& mutation : mutations) {
        documents.push_back({mutation.name(), mutation.document});
    }
    return documents;
}

/// Holds what xmllint says of every mutation of a document against what is to be expected; hands
/// each with what was said to a further look.
using Look = std::function<void(const Mutation&, const QString&)>;
void expectToBite(const QString& schema, const QByteArray& document, const Look& look = {})
{
    ASSERT_EQ(tests::objections(schema, {{u"the document"_s, document}}).first(), QString());
    const Freedom freedom = freedomOf(schema);
    const std::vector<Mutation> mutations = tests::mutationsOf(document);
    const QStringList said = tests::objections(schema, documentsOf(mutations));
    int refused = 0;
    for (size_t i = 0; i < mutations.size(); ++i) {
        const QString& objection = said.at(static_cast<qsizetype>(i));
        SCOPED_TRACE(mutations[i].name().toStdString() + '\n' +
                     mutations[i].document.toStdString() + objection.toStdString());
        EXPECT_EQ(objection.isEmpty(), mayFit(mutations[i], freedom));
        refused += objection.isEmpty() ? 0 : 1;
        if (look) {
            look(mutations[i], objection);
        }
    }
    std::printf("%s: %zu mutations, %d refused\n", qPrintable(schema), mutations.size(), refused);
}

/// A service that refuses what does not fit.
class StrictService : public ServiceFixture
{
protected:
    StrictService()
    {
        Rules rules = builtIn();
        rules.isStrict = true;
        reopen(rules);
    }

    void expectToAgree(const QString& schema, const QByteArray& document, const char* endpoint)
    {
        expectToBite(schema, document, [&](const Mutation& mutation, const QString& objection) {
            if (objection.isEmpty()) {
                EXPECT_EQ(requestObjection(readXml(mutation.document).root(),
                                           QString::fromLatin1(endpoint)),
                          std::nullopt);
            } else {
                expectRefusal(mutation, endpoint);
            }
        });
    }

    void expectRefusal(const Mutation& mutation, const char* endpoint)
    {
        const Answer answer = service->handle(post(endpoint, mutation.document));
        if (mutation.kind == Kind::Doubled && mutation.path == u"items/RawItem"_s) {
            EXPECT_EQ(answer.status, 424);
            EXPECT_TRUE(answer.reason.contains(u"Two lines have the id"_s));
            return;
        }
        EXPECT_EQ(answer.status, 400);
        // the sentence begins with the path of the element or of what it stands in
        const QString path = answer.reason.section(u' ', 0, 0).remove(numbers);
        EXPECT_TRUE(mutation.path.startsWith(path.section(u'/', 0, -2)) || path == u"RawCheck"_s)
            << answer.reason.toStdString();
    }

    const QRegularExpression numbers{u"\\[[0-9]+\\]"_s};
};

TEST(WireSchema, ofAnAnswerRefusesMutatedOnes)
{
    expectToBite(u"answer"_s, goldenFile(u"precheck-answer.xml"_s));
}

TEST(WireSchema, ofAnAcknowledgementRefusesMutatedOnes)
{
    expectToBite(u"acknowledgement"_s, "<RawCheck><id>7d0c2f6e-0001</id></RawCheck>");
}

TEST_F(StrictService, andSchemaRefuseMutatedSaleRequests)
{
    expectToAgree(u"sale-request"_s, clientFile(u"sale-request.xml"_s), "precheck");
}

TEST_F(StrictService, andSchemaRefuseMutatedReturnRequests)
{
    expectToAgree(u"return-request"_s, clientFile(u"return-request.xml"_s), "precheck");
}

TEST_F(StrictService, andSchemaRefuseMutatedConfirmations)
{
    expectToAgree(u"sale-confirmation"_s, fullConfirmation(), "paymenttry");
}

TEST_F(StrictService, answersWithDocumentsThatFit)
{
    const Answer answer = precheck(document(saleOfTwo(u"sale"_s)));
    ASSERT_EQ(answer.status, 200) << answer.reason.toStdString();
    EXPECT_EQ(tests::objections(u"answer"_s, {{u"answer"_s, answer.body}}).first(), QString());
    sell(u"sale"_s);
    const TextCheck back{u"back"_s,
                         u"2200000000017"_s,
                         u"33.33"_s,
                         {{u"1"_s, u"1000"_s, u"1.000"_s, u"33.33"_s, u"0.00"_s, u"15.67"_s}},
                         u"sale"_s};
    const Answer returned = precheck(document(back));
    ASSERT_EQ(returned.status, 200) << returned.reason.toStdString();
    EXPECT_EQ(tests::objections(u"answer"_s, {{u"answer"_s, returned.body}}).first(), QString());
    const Answer tried = paymentTry(document(back));
    ASSERT_EQ(tried.status, 200) << tried.reason.toStdString();
    EXPECT_EQ(tests::objections(u"acknowledgement"_s, {{u"answer"_s, tried.body}}).first(),
              QString());
}

} // namespace
} // namespace simulator::test
