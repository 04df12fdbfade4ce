// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Answers in every encoding that Qt reads, from the pre-check to the confirmation of the sale, with
// another parser than Qt's on the other side.

#include "client/harmlessxml.h"
#include "contract/rawserver.h"
#include "host/services/outgoingqueue.h"
#include "host/services/queuedelivery.h"
#include "tests/host/services/testfolder.h"
#include "till/workplace.h"

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

/// Names of encodings that Qt knows by itself or, where it was built with it, through ICU.
QStringList encodingNames()
{
    return QStringLiteral(
               "UTF-8 UTF-16 UTF-16BE UTF-16LE UTF-32 UTF-32BE UTF-32LE ISO-8859-1 US-ASCII "
               "UTF-7 SCSU CESU-8 GB18030 GBK GB2312 EUC-JP EUC-KR EUC-TW Shift_JIS Big5 "
               "Big5-HKSCS KSC_5601 cp1363 TIS-620 ISO-2022-JP ISO-2022-JP-1 ISO-2022-JP-2 "
               "ISO-2022-CN ISO-2022-CN-EXT ISO-8859-2 ISO-8859-3 ISO-8859-4 ISO-8859-5 "
               "ISO-8859-6 ISO-8859-7 ISO-8859-8 ISO-8859-9 ISO-8859-10 ISO-8859-11 ISO-8859-13 "
               "ISO-8859-14 ISO-8859-15 windows-874 windows-1250 windows-1251 windows-1252 "
               "windows-1253 windows-1254 windows-1255 windows-1256 windows-1257 windows-1258 "
               "cp1251 cp1252 KOI8-R KOI8-U IBM437 IBM737 IBM775 IBM850 cp851 IBM852 IBM855 "
               "IBM857 IBM00858 IBM860 IBM861 IBM862 IBM863 IBM864 IBM865 IBM866 cp866 IBM868 "
               "IBM869 ibm-1124 ibm-1125 ibm-1129 ibm-1131 ibm-1133 macintosh x-mac-greek "
               "x-mac-cyrillic x-mac-centraleurroman x-mac-turkish hp-roman8 LMBCS-1")
        .split(u' ');
}

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
    for (const QString& name : encodingNames()) {
        const QByteArray encoding = name.toLatin1();
        QStringEncoder encoder(encoding.constData());
        if (encoder.isValid()) {
            const QString declaration = u"<?xml version='1.0' encoding='%1'?>"_s.arg(name);
            const QString text = answerText(declaration, withReferences(escaped(owner), encoding));
            answers.append({name, QByteArray(encoder(text))});
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

    QueueDelivery& delivery()
    {
        if (!deliverer) {
            deliverer = std::make_unique<QueueDelivery>(workplace->database(), 1);
        }
        return *deliverer;
    }

    QByteArray lastPayload()
    {
        OutgoingQueue queue(workplace->database());
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
    std::unique_ptr<QueueDelivery> deliverer;
};

} // namespace

TEST_F(EncodingRoad, leadsEveryReadableAnswerToAConfirmationInUtf8)
{
    const QList<Answer> answers = readableAnswers();
    QStringList files;
    QStringList names;
    QStringList refused;
    for (const Answer& one : answers) {
        const QList<QByteArray> bodies = sellAndDeliver(one.bytes);
        if (!orva::harmInXml(one.bytes).isEmpty()) {
            refused.append(one.name); // nothing of it was taken, so there is nothing to confirm
            EXPECT_TRUE(bodies.isEmpty()) << qPrintable(one.name);
            continue;
        }
        ASSERT_EQ(bodies.size(), 2) << qPrintable(one.name) << ": payment try and confirmation";
        EXPECT_EQ(bodies[0], bodies[1]);
        EXPECT_TRUE(lastPayload().startsWith("<?xml") == bodies[0].startsWith("<?xml"));
        names.append(one.name);
        files.append(folder.write(u"%1.xml"_s.arg(files.size()), bodies[0]));
    }
    RecordProperty("read", static_cast<int>(answers.size()));
    RecordProperty("refused", refused.join(u' ').toStdString());

    for (const QString& needed : {u"UTF-8"_s, u"ISO-8859-1"_s, u"nothing said"_s}) {
        EXPECT_TRUE(names.contains(needed)) << qPrintable(needed);
    }
    if (QStringDecoder("windows-1251").isValid()) { // Qt knows what ICU knows
        for (const QString& needed : {u"windows-1251"_s, u"KOI8-R"_s, u"IBM866"_s, u"ISO-8859-5"_s,
                                      u"windows-1252"_s, u"KOI8-U"_s}) {
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
