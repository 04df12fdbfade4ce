// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Answers in every encoding that Qt reads, from the pre-check to the confirmation of the sale, with
// another parser than Qt's on the other side.

#include "contract/rawserver.h"
#include "host/queue/outgoingqueue.h"
#include "host/queue/queuedelivery.h"
#include "tests/support/encodingnames.h"
#include "tests/support/testfolder.h"
#include "till/commands/workplace.h"

#include <QDomDocument>
#include <QProcess>
#include <QStringDecoder>
#include <QStringEncoder>

#include <gtest/gtest.h>
#include <mutex>

using namespace Qt::StringLiterals;

namespace {

/// The owner's name: most encodings have some of these characters, hardly one has all.
const QString owner = u"Анна Ё Jörg 中 € 𝄞 <&>"_s;

/// An answer as a server sends it.
struct Answer
{
    QString name; ///< of the encoding, and how it is told
    QByteArray bytes;
};

/// The text with references in place of the characters that the encoding does not have.
QString withReferences(const QString& text, const QByteArray& encoding)
{
    QString result;
    for (const char32_t point : text.toUcs4()) {
        const QString character = QString::fromUcs4(&point, 1);
        QStringEncoder encoder(encoding.constData());
        QStringDecoder decoder(encoding.constData());
        const QByteArray bytes = encoder(character);
        const bool isThere = !encoder.hasError() && QString(decoder(bytes)) == character;
        result += isThere ? character : u"&#%1;"_s.arg(point);
    }
    return result;
}

QString answerText(const QString& declaration, const QString& name)
{
    return declaration +
           u"<RawCheck><items><RawItem><id>1</id><awards><RawItemAwards>"
           "<discount>10.00</discount><awardBonus>9.00</awardBonus>"
           "<allowBonusInCurrency>40.00</allowBonusInCurrency>"
           "</RawItemAwards></awards></RawItem></items><client><RawCheckClient><name>%1</name>"
           "<surname>&#x401;</surname><account><RawCheckAccount><balance>500.00</balance>"
           "</RawCheckAccount></account></RawCheckClient></client><awards><RawCheckAwards>"
           "<allowBonus>40.00</allowBonus><awardBonus>9.00</awardBonus></RawCheckAwards></awards>"
           "</RawCheck>"_s.arg(name);
}

QString escaped(const QString& text)
{
    return text.toHtmlEscaped();
}

/// Whether Qt reads the answer as it was meant.
bool isRead(const Answer& answer)
{
    QDomDocument document;
    return document.setContent(answer.bytes) &&
           document.elementsByTagName(u"name"_s).at(0).toElement().text() == owner;
}

/// With a byte order mark and without a declaration, and the other way round.
QList<Answer> unicodeAnswers()
{
    const QString plain = answerText({}, escaped(owner));
    const QString utf16 =
        answerText(u"<?xml version=\"1.0\" encoding=\"UTF-16\"?>"_s, escaped(owner));
    const QString utf8 =
        answerText(u"<?xml version='1.0' encoding='utf-8' standalone='yes'?>\n"_s, escaped(owner));
    QList<Answer> answers{{u"nothing said"_s, plain.toUtf8()},
                          {u"utf-8 with a mark"_s, "\xef\xbb\xbf" + utf8.toUtf8()},
                          {u"utf-8 by its mark"_s, "\xef\xbb\xbf" + plain.toUtf8()}};
    using Converter = QStringConverter;
    for (const auto encoding : {Converter::Utf16LE, Converter::Utf16BE}) {
        QStringEncoder marked(encoding, Converter::Flag::WriteBom);
        answers.append({u"UTF-16 with a mark, %1"_s.arg(encoding), QByteArray(marked(utf16))});
        QStringEncoder onlyMarked(encoding, Converter::Flag::WriteBom);
        answers.append({u"UTF-16 by its mark, %1"_s.arg(encoding), QByteArray(onlyMarked(plain))});
    }
    return answers;
}

QList<Answer> readableAnswers()
{
    QList<Answer> answers = unicodeAnswers();
    for (const QString& name : tests::encodingNames() + tests::ebcdicNames()) {
        const QByteArray encoding = name.toLatin1();
        QStringEncoder encoder(encoding.constData());
        if (encoder.isValid()) {
            const QString declaration = u"<?xml version='1.0' encoding='%1'?>"_s.arg(name);
            const QString text = answerText({}, withReferences(escaped(owner), encoding));
            const bool isEbcdic = tests::ebcdicNames().contains(name);
            answers.append({name, isEbcdic ? declaration.toLatin1() + QByteArray(encoder(text))
                                           : QByteArray(encoder(declaration + text))});
        }
    }
    answers.removeIf([](const Answer& answer) { return !isRead(answer); });
    return answers;
}

/// What xmllint says the files hold at a path, a line for each.
QStringList readByXmllint(const QString& path, const QStringList& files)
{
    QProcess process;
    process.start(u"xmllint"_s,
                  QStringList{u"--nonet"_s, u"--xpath"_s, u"string(%1)"_s.arg(path)} + files);
    EXPECT_TRUE(process.waitForFinished(60'000)) << qPrintable(process.errorString());
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed().split(u'\n');
}

/// A till with the built plug-in, and a server that answers pre-checks as a test says and keeps
/// what is sent to confirm a sale.
class EncodingRoad : public ::testing::Test
{
protected:
    EncodingRoad()
    {
        const QByteArray config = u"[Orva]\nserverUrl = \"http://127.0.0.1:%1/\"\n"
                                  "merchantId = \"1042\"\npos = \"3\"\nuser = \"till\"\n"
                                  "password = \"secret\"\napikey = \"demo\"\n"_s.arg(server.port())
                                      .toUtf8();
        options.configFile = folder.write(u"orva.toml"_s, config);
        options.database = folder.file(u"till.sqlite"_s);
        options.plugin = QStringLiteral(ORVA_PLUGIN_FILE);
        options.configNamed = true;
        workplace = std::make_unique<till::Workplace>(options);
        workplace->loadPlugin();
        till::Line line;
        line.position = 1;
        line.code = u"1001"_s;
        line.name = u"Чай"_s;
        line.priceKopecks = 100'00;
        line.thousandths = 1000;
        line.sumKopecks = 100'00;
        sale.lines = {line};
    }

    void serve(RawServer::Connection& connection)
    {
        while (const auto request = connection.readRequest()) {
            const std::lock_guard lock(mutex);
            const bool isPrecheck = request->starts_with("POST /api/1.x/precheck ");
            if (!isPrecheck) {
                sent.append(QByteArray::fromStdString(*request).mid(
                    static_cast<qsizetype>(request->find("\r\n\r\n")) + 4));
            }
            connection.send(RawServer::answer("200 OK", isPrecheck ? answer.toStdString() : ""));
        }
    }

    /// Sells with that answer and delivers. @return the bodies of payment try and confirmation
    QList<QByteArray> sellAndDeliver(const QByteArray& precheck)
    {
        {
            const std::lock_guard lock(mutex);
            answer = precheck;
            sent.clear();
        }
        till::CashDesk& desk = workplace->cashDesk();
        desk.openSale(sale);
        if (desk.presentCard(u"2200000000017"_s)) {
            desk.request();
        }
        desk.close();
        delivery().deliverDue();
        const std::lock_guard lock(mutex);
        return sent;
    }

    poshost::QueueDelivery& delivery()
    {
        if (!deliverer) {
            deliverer = std::make_unique<poshost::QueueDelivery>(workplace->database(), 1);
        }
        return *deliverer;
    }

    QByteArray lastPayload()
    {
        poshost::OutgoingQueue queue(workplace->database());
        return queue.show(queue.lastAddedId())->payload.toUtf8();
    }

    TestFolder folder;
    std::mutex mutex; ///< guards the next two
    QByteArray answer;
    QList<QByteArray> sent;
    RawServer server{[this](RawServer::Connection& connection) { serve(connection); }};
    till::Options options;
    till::CheckFile sale;
    std::unique_ptr<till::Workplace> workplace;
    std::unique_ptr<poshost::QueueDelivery> deliverer;
};

} // namespace

TEST_F(EncodingRoad, leadsEveryReadableAnswerToAConfirmationInUtf8)
{
    const QList<Answer> answers = readableAnswers();
    QStringList files;
    QStringList names;
    for (const Answer& one : answers) {
        const QList<QByteArray> bodies = sellAndDeliver(one.bytes);
        ASSERT_EQ(bodies.size(), 2) << qPrintable(one.name) << ": payment try and confirmation";
        EXPECT_EQ(bodies[0], bodies[1]);
        EXPECT_TRUE(lastPayload().startsWith("<?xml") == bodies[0].startsWith("<?xml"));
        names.append(one.name);
        files.append(folder.write(u"%1.xml"_s.arg(files.size()), bodies[0]));
    }
    RecordProperty("read", static_cast<int>(answers.size()));

    for (const QString& needed :
         {u"UTF-8"_s, u"ISO-8859-1"_s, u"UTF-16LE"_s, u"UTF-32"_s, u"nothing said"_s}) {
        EXPECT_TRUE(names.contains(needed)) << qPrintable(needed);
    }
    if (QStringDecoder("windows-1251").isValid()) { // Qt knows what ICU knows
        for (const QString& needed : {u"windows-1251"_s, u"KOI8-R"_s, u"IBM866"_s, u"ISO-8859-5"_s,
                                      u"windows-1252"_s, u"KOI8-U"_s, u"GB18030"_s, u"Shift_JIS"_s,
                                      u"UTF-7"_s, u"ISO-2022-JP"_s, u"ibm-37"_s}) {
            EXPECT_TRUE(names.contains(needed)) << qPrintable(needed);
        }
    }
    const QStringList owners = readByXmllint(u"/RawCheck/client/RawCheckClient/name"_s, files);
    ASSERT_EQ(owners.size(), names.size());
    for (qsizetype i = 0; i < owners.size(); ++i) {
        EXPECT_EQ(owners[i], owner) << qPrintable(names[i]);
    }
    const QStringList payments = readByXmllint(
        u"count(/RawCheck/payments/*) > 0 and /RawCheck/client//surname = 'Ё'"_s, files);
    EXPECT_EQ(payments, QStringList(names.size(), u"true"_s));
}

TEST_F(EncodingRoad, changesNothingButTheNameOfTheEncoding)
{
    const QByteArray precheck =
        answerText(u"<?xml version='1.0' encoding='ISO-8859-1' standalone='yes'?>"_s,
                   u"Jörg &#x4E2D;"_s)
            .toLatin1();
    const QList<QByteArray> bodies = sellAndDeliver(precheck);
    ASSERT_EQ(bodies.size(), 2);
    QByteArray stored = lastPayload();
    EXPECT_TRUE(stored.startsWith("<?xml version='1.0' encoding='ISO-8859-1' standalone='yes'?>"))
        << stored.constData();
    EXPECT_EQ(bodies[0], stored.replace("encoding='ISO-8859-1'", "encoding='UTF-8'"));
    EXPECT_EQ(bodies[1], bodies[0]);
}
