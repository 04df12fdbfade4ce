// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// docs/protocol.md holds what the schemas say and what the programs send: its tables are made from
// the schemas, its examples by running the programs. ORVA_UPDATE_PROTOCOL=1 writes it anew.

#include "tests/scenario/protocol/schemacheck.h"
#include "tests/scenario/protocol/schematable.h"
#include "tests/scenario/protocol/wireshop.h"

#include <QDomDocument>
#include <QFile>
#include <QMap>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tests {
namespace {

const QString protocolFile = QStringLiteral(ORVA_PROTOCOL);

QString block(const QString& language, const QByteArray& text)
{
    return u"```%1\n%2\n```\n"_s.arg(language, QString::fromUtf8(text).trimmed());
}

/// The document with its generated blocks replaced. Each stands between "<!-- generated: NAME -->"
/// and "<!-- end -->". Names without a block and blocks without a name fail the test.
QString filled(const QString& document, QMap<QString, QString> blocks)
{
    static const QRegularExpression mark(u"(<!-- generated: ([^\\n]+) -->\\n).*?(<!-- end -->)"_s,
                                         QRegularExpression::DotMatchesEverythingOption);
    QString result;
    qsizetype done = 0;
    for (auto it = mark.globalMatch(document); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        const QString name = match.captured(2);
        EXPECT_TRUE(blocks.contains(name)) << "nothing is generated as " << qPrintable(name);
        result += document.mid(done, match.capturedStart() - done) + match.captured(1) +
                  blocks.take(name) + match.captured(3);
        done = match.capturedEnd();
    }
    for (auto it = blocks.cbegin(); it != blocks.cend(); ++it) {
        ADD_FAILURE() << "docs/protocol.md has no place for " << qPrintable(it.key());
    }
    return result + document.mid(done);
}

class Protocol : public WireShop
{
protected:
    /// What differs from run to run is replaced by what a reader may expect: the identifiers, which
    /// are made by chance, the times and the recorder's port.
    QByteArray steady(const QByteArray& text)
    {
        static const QRegularExpression identifier(
            u"[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}"_s);
        static const QRegularExpression time(u"<date>[^<]*</date>"_s);
        QString result = QString::fromUtf8(text);
        for (auto it = identifier.globalMatch(result); it.hasNext();) {
            const QString found = it.next().captured();
            if (!identifiers.contains(found)) {
                identifiers.insert(found, u"7d0c2f6e-0000-4000-8000-%1"_s.arg(
                                              identifiers.size() + 1, 12, 10, QChar(u'0')));
            }
        }
        for (auto it = identifiers.cbegin(); it != identifiers.cend(); ++it) {
            result.replace(it.key(), it.value());
        }
        result.replace(time, u"<date>2024-03-05 14:20:31</date>"_s);
        return result.replace(recorder->address(), u"http://127.0.0.1:8710/"_s).toUtf8();
    }

    /// The only exchange with an endpoint whose request is for a schema.
    Exchange exchange(const QString& endpoint, const QString& schema) const
    {
        for (const Exchange& entry : recorder->exchanges()) {
            if (entry.endpoint == endpoint && schemaFor(entry.request) == schema) {
                return entry;
            }
        }
        ADD_FAILURE() << "no " << qPrintable(schema) << " was sent to " << qPrintable(endpoint);
        return {};
    }

    QMap<QString, QString> tables() const
    {
        return {
            {u"elements of sale-request"_s, schemaTable(u"sale-request"_s)},
            {u"elements of return-request"_s, schemaTable(u"return-request"_s, u"sale-request"_s)},
            {u"elements of answer"_s, schemaTable(u"answer"_s)},
            {u"elements of sale-confirmation"_s, schemaTable(u"sale-confirmation"_s, u"answer"_s)},
            {u"elements of acknowledgement"_s, schemaTable(u"acknowledgement"_s)}};
    }

    QMap<QString, QString> examples()
    {
        done({u"sell"_s, u"sale.toml"_s, u"--points"_s, u"50"_s, u"--wait"_s, u"60"_s});
        done({u"return"_s, u"return.toml"_s, u"--wait"_s, u"60"_s});
        const Exchange asked = exchange(u"precheck"_s, u"sale-request"_s);
        const Exchange confirmed = exchange(u"checkconfirm"_s, u"sale-confirmation"_s);
        const Exchange returned = exchange(u"precheck"_s, u"return-request"_s);
        const std::vector<StoredMessage> stored = storedMessages();
        EXPECT_EQ(stored.size(), 2U);
        const StoredMessage& sale = stored.at(0);
        const StoredMessage& back = stored.at(1);
        EXPECT_EQ(sale.payload, confirmed.request);
        EXPECT_EQ(sale.headers, back.headers);
        const QByteArray headers = "Content-Type: " + asked.contentType +
                                   "\nAccept: " + asked.accept +
                                   "\nAuthorization: " + asked.authorization;
        return {{u"headers"_s, block(u"text"_s, headers)},
                {u"sale-request"_s, block(u"xml"_s, steady(asked.request))},
                {u"answer"_s, block(u"xml"_s, steady(asked.answer))},
                {u"sale-confirmation"_s, block(u"xml"_s, steady(confirmed.request))},
                {u"return-request"_s, block(u"xml"_s, steady(returned.request))},
                {u"return-answer"_s, block(u"xml"_s, steady(returned.answer))},
                {u"acknowledgement"_s, block(u"xml"_s, steady(confirmed.answer))},
                {u"stored headers"_s, block(u"json"_s, sale.headers)},
                {u"stored addresses of a sale"_s, block(u"json"_s, steady(sale.urls))},
                {u"stored addresses of a return"_s, block(u"json"_s, steady(back.urls))}};
    }

    QMap<QString, QString> identifiers;
};

} // namespace

TEST_F(Protocol, documentHoldsTheSchemasTablesAndWhatTheProgramsSend)
{
    QFile file(protocolFile);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString document = QString::fromUtf8(file.readAll());
    file.close();
    QMap<QString, QString> blocks = examples();
    blocks.insert(tables());

    const QString expected = filled(document, blocks);

    if (qEnvironmentVariableIsSet("ORVA_UPDATE_PROTOCOL") && !HasFailure()) {
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(expected.toUtf8());
        return;
    }
    const QStringList is = document.split(u'\n');
    const QStringList should = expected.split(u'\n');
    for (qsizetype i = 0; i < qMin(is.size(), should.size()); ++i) {
        ASSERT_EQ(is[i].toStdString(), should[i].toStdString())
            << "docs/protocol.md, line " << i + 1 << "; ORVA_UPDATE_PROTOCOL=1 writes it anew";
    }
    EXPECT_EQ(is.size(), should.size());
}

TEST_F(Protocol, columnsOfTheQueueThatTheDocumentNamesAreThere)
{
    done({u"sell"_s, u"sale.toml"_s});
    QFile file(protocolFile);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString document = QString::fromUtf8(file.readAll());
    static const QRegularExpression row(u"\\n\\| (`queue_[^|]+) \\|"_s);
    QStringList named;
    for (auto it = row.globalMatch(document); it.hasNext();) {
        const QStringList columns = it.next().captured(1).remove(u'`').split(u", "_s);
        const QString table = columns.first().section(u'.', 0, 0);
        for (const QString& column : columns) {
            named.append(table + u'.' + column.section(u'.', -1));
        }
    }
    const QStringList there = queueColumns();
    for (const QString& column : named) {
        EXPECT_TRUE(there.contains(column)) << qPrintable(column);
    }
    for (const QString& column : there) {
        // what is stored of the message itself is described in full
        EXPECT_TRUE(named.contains(column) || !column.startsWith(u"queue_bodies."_s) ||
                    column.endsWith(u".message_id"_s))
            << qPrintable(column);
    }
    EXPECT_GE(named.size(), 15);
}

TEST_F(Protocol, examplesOfTheDocumentFitTheSchemas)
{
    QFile file(protocolFile);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    static const QRegularExpression example(u"<!-- generated: ([a-z-]+) -->\\n```xml\\n(.*?)```"_s,
                                            QRegularExpression::DotMatchesEverythingOption);
    const QString document = QString::fromUtf8(file.readAll());
    int count = 0;
    for (auto it = example.globalMatch(document); it.hasNext(); ++count) {
        const QRegularExpressionMatch match = it.next();
        const QByteArray text = match.captured(2).toUtf8();
        const QString name = match.captured(1);
        // the answer to a return has the schema of all answers
        const QString schema = name == u"return-answer"_s ? u"answer"_s : name;
        EXPECT_EQ(objections(schema, {{name, text}}).first().toStdString(), "");
    }
    EXPECT_EQ(count, 6);
}

} // namespace tests
