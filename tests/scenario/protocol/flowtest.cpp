// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What the programs send each other in ordinary use, against the schemas.

#include "tests/scenario/protocol/schemacheck.h"
#include "tests/scenario/protocol/wireshop.h"

#include <QMap>

using namespace Qt::StringLiterals;

namespace tests {
namespace {

/// The schema that a request to an endpoint may be for.
QStringList requestSchemas(const QString& endpoint)
{
    return endpoint == u"precheck"_s ? QStringList{u"sale-request"_s, u"return-request"_s}
                                     : QStringList{u"sale-confirmation"_s, u"return-request"_s};
}

class WireFlow : public WireShop
{
protected:
    /// Every document that went over the wire and every stored message fits; returns how many
    /// there were of each schema.
    QMap<QString, int> expectAllToFit() const
    {
        QMap<QString, std::vector<WireDocument>> bySchema;
        const auto add = [&](const QString& name, const QByteArray& text,
                             const QStringList& expected) {
            const QString schema = schemaFor(text);
            EXPECT_TRUE(expected.contains(schema))
                << qPrintable(name) << " is a " << qPrintable(schema) << ":\n"
                << text.constData();
            bySchema[schema].push_back({name, text});
        };
        for (const Exchange& exchange : recorder->exchanges()) {
            EXPECT_EQ(exchange.status, 200) << exchange.answer.constData();
            EXPECT_EQ(exchange.contentType, QByteArray("application/xml"));
            add(exchange.endpoint, exchange.request, requestSchemas(exchange.endpoint));
            const bool isPrecheck = exchange.endpoint == u"precheck"_s;
            add(u"answer to "_s + exchange.endpoint, exchange.answer,
                {isPrecheck ? u"answer"_s : u"acknowledgement"_s});
        }
        for (const StoredMessage& message : storedMessages()) {
            add(u"stored message"_s, message.payload, requestSchemas(u"checkconfirm"_s));
        }
        QMap<QString, int> counts;
        for (auto it = bySchema.cbegin(); it != bySchema.cend(); ++it) {
            const QStringList said = objections(it.key(), it.value());
            for (qsizetype i = 0; i < said.size(); ++i) {
                const WireDocument& document = it.value()[static_cast<size_t>(i)];
                EXPECT_EQ(said[i].toStdString(), "") << qPrintable(document.name) << ":\n"
                                                     << document.text.constData();
            }
            counts[it.key()] = static_cast<int>(said.size());
        }
        return counts;
    }

    void expectOk(Program& till, const QString& line) const
    {
        const QString answer = till.command(line);
        EXPECT_TRUE(answer.endsWith(u"ok\n"_s)) << qPrintable(answer);
    }
};

} // namespace

TEST_F(WireFlow, ofSalesAndReturnsWithPointsFitsTheSchemas)
{
    done({u"check"_s, u"sale.toml"_s});
    done({u"sell"_s, u"sale.toml"_s, u"--points"_s, u"all"_s, u"--wait"_s, u"60"_s});
    done({u"return"_s, u"return.toml"_s, u"--wait"_s, u"60"_s});
    done({u"sell"_s, u"sale.toml"_s, u"--wait"_s, u"60"_s});

    const QMap<QString, int> counts = expectAllToFit();

    EXPECT_GE(counts.value(u"sale-request"_s), 3);
    EXPECT_GE(counts.value(u"return-request"_s), 3); // asked, tried, confirmed
    EXPECT_GE(counts.value(u"answer"_s), 4);
    EXPECT_GE(counts.value(u"sale-confirmation"_s), 4 + 2); // tried and confirmed, and as stored
    EXPECT_GE(counts.value(u"acknowledgement"_s), 6);
    EXPECT_EQ(undelivered(), 0); // a strict server has taken everything
}

TEST_F(WireFlow, ofASuspendedCheckAndASaleDeliveredLaterFitsTheSchemas)
{
    auto till = startTill();
    expectOk(*till, u"open sale.toml"_s);
    expectOk(*till, u"points 20"_s);
    expectOk(*till, u"suspend"_s);
    till->kill();
    till = startTill();
    expectOk(*till, u"restore last"_s);
    stopServer();
    expectOk(*till, u"close"_s);
    startServer();
    expectOk(*till, u"wait 60"_s);

    std::vector<StoredMessage> messages = storedMessages();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(objections(u"sale-confirmation"_s, {{u"stored"_s, messages[0].payload}}).first(),
              QString());
    const QByteArray sent = recorder->exchanges().back().request;
    EXPECT_EQ(sent, messages[0].payload);
    EXPECT_EQ(undelivered(), 0);
}

} // namespace tests
