// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The plug-in's client against the schemas: whatever numbers a till has, what is written fits; and
// what a schema leaves free means nothing to the readers.

#include "tests/unit/client/printers.h"

#include "client/interface.h"
#include "host/document/bonusimpact.h"
#include "host/document/document.h"
#include "simulator/documents/requestforms.h"
#include "simulator/documents/xmlreader.h"
#include "tests/scenario/protocol/mutations.h"
#include "tests/scenario/protocol/schemacheck.h"
#include "tests/unit/client/fixtures.h"

#include <QFile>

#include <cmath>
#include <random>

using namespace Qt::StringLiterals;

namespace tests {
namespace {

constexpr int documentsOfAKind = 120;
constexpr int linesOfADocument = 6;

/// Checks with numbers from the smallest that a till can have to the largest, by chance.
class AnyCheck
{
public:
    explicit AnyCheck(unsigned seed) : generator(seed) {}

    QSharedPointer<Document> document(EDocumentType type)
    {
        auto made = QSharedPointer<Document>::create();
        made->setDocumentId(u"check-%1"_s.arg(generator() % 1000));
        made->setCheckNumber(static_cast<int>(generator() % 2'147'483'648U));
        made->setDocumentType(type);
        made->setSaleDocumentId(u"sale"_s);
        made->setDateTime(QDateTime(
            QDate(2024, 1, 1).addDays(generator() % 20'000),
            QTime::fromMSecsSinceStartOfDay(static_cast<int>(generator() % 86'400'000U))));
        QList<QSharedPointer<GoodsItem>> goods;
        for (int position = 1; position <= linesOfADocument; ++position) {
            goods.append(line(position));
        }
        made->setGoodsItems(goods);
        return made;
    }

private:
    /// Evenly spread over the powers of ten.
    double between(double least, double most)
    {
        std::uniform_real_distribution<double> exponent(std::log10(least), std::log10(most));
        return std::pow(10, exponent(generator));
    }

    QSharedPointer<GoodsItem> line(int position)
    {
        const bool isFractional = generator() % 2 == 0;
        return goodsItem({.posnum = position,
                          .code = u"46%1"_s.arg(generator()),
                          .quantity = isFractional ? between(0.001, 1e5) : between(1, 1e5),
                          .price = generator() % 10 == 0 ? 0 : between(1e-5, 1e9),
                          .sumb = generator() % 10 == 0 ? 0 : between(0.01, 1e9),
                          .minPrice = between(0.01, 1e4),
                          .fractional = isFractional,
                          .quantBack = generator() % 2 == 0 ? QVariant() : between(0.001, 1e3),
                          .bonusImpactSum = generator() % 2 == 0 ? 0 : between(0.01, 1e8)});
    }

    std::mt19937 generator;
};

void expectAnyCheckToFit(EDocumentType type, const QString& schema, unsigned seed)
{
    orva::Interface client;
    client.setCashData(u"1042"_s, u"3"_s);
    AnyCheck checks(seed);
    std::vector<WireDocument> documents;
    for (int i = 0; i < documentsOfAKind; ++i) {
        const QDomDocument request =
            client.getRequestPayload(checks.document(type), cardRecord(u"7700000000017"_s));
        documents.push_back({u"check %1"_s.arg(i), request.toByteArray(1)});
        EXPECT_EQ(simulator::requestObjection(simulator::readXml(documents.back().text).root(),
                                              u"precheck"_s),
                  std::nullopt)
            << documents.back().text.toStdString();
    }
    const QStringList said = objections(schema, documents);
    for (int i = 0; i < documentsOfAKind; ++i) {
        EXPECT_EQ(said[i].toStdString(), "")
            << documents[static_cast<size_t>(i)].text.toStdString();
    }
}

/// Everything that the plug-in takes from an answer, in words.
QString reading(const QByteArray& answer)
{
    orva::Interface client;
    const QDomDocument xml = parse(QString::fromUtf8(answer));
    const QDomElement root = xml.documentElement();
    const auto record = cardRecord(u"7700000000017"_s);
    client.setLastResponse(xml);
    QString text = u"%1 %2 %3 %4\n"_s.arg(client.getClient(root)->getName())
                       .arg(client.getBalance(root))
                       .arg(client.getPointsForSpend(root))
                       .arg(client.getPointsForEarn(root));
    for (const auto& impact : client.getDiscountImpacts(record, root)) {
        text += u"discount %1 %2\n"_s.arg(impact->getTotals()->getPosition())
                    .arg(impact->getTotals()->getDiscountSum());
    }
    for (const auto& impact : client.generateBonusImpacts(record, 60, 75.5)) {
        text += u"points %1 %2\n"_s.arg(impact->getTotals()->getPosition())
                    .arg(impact->getTotals()->getDiscountSum());
    }
    for (const DocumentBonusRecord& bonus : client.getBonusRecords(record, root)) {
        text += u"bonus %1 %2\n"_s.arg(bonus.position.toInt()).arg(bonus.bonusAmount);
    }
    return text + client.getMessages(root, u"pos"_s).join(u'|') + u'\n' +
           client.getMessages(root, u"check"_s).join(u'|');
}

} // namespace

TEST(PluginOnTheWire, requestsForAnySaleFitTheSchema)
{
    expectAnyCheckToFit(EDocumentType::Sale, u"sale-request"_s, 20240305);
}

TEST(PluginOnTheWire, requestsForAnyReturnFitTheSchema)
{
    expectAnyCheckToFit(EDocumentType::ReturnBySale, u"return-request"_s, 20240306);
}

TEST(PluginOnTheWire, orderOfAnAnswerThatTheSchemaLeavesFreeMeansNothingToTheReaders)
{
    QFile file(QStringLiteral(ORVA_ANSWER));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray answer = file.readAll();
    const QString expected = reading(answer);
    EXPECT_TRUE(expected.contains(u"points 1 "_s)) << expected.toStdString();
    std::vector<WireDocument> swapped;
    for (const Mutation& mutation : mutationsOf(answer)) {
        if (mutation.kind == Mutation::Kind::Swapped) {
            swapped.push_back({mutation.name(), mutation.document});
        }
    }
    EXPECT_GT(swapped.size(), 30U);
    const QStringList said = objections(u"answer"_s, swapped);
    for (size_t i = 0; i < swapped.size(); ++i) {
        EXPECT_EQ(said.at(static_cast<qsizetype>(i)).toStdString(), "");
        EXPECT_EQ(reading(swapped[i].text).toStdString(), expected.toStdString())
            << swapped[i].name.toStdString();
    }
}

} // namespace tests
