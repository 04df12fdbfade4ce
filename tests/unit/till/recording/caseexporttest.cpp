// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The page of a case, as the program writes it of a real sale.

#include "host/database/database.h"
#include "host/database/statement.h"
#include "tests/unit/till/recording/recordedshop.h"
#include "till/checks/checkcodec.h"
#include "till/checks/checkstore.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QMap>
#include <QSet>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {

const QString cardOnPage = u"2200000000017"_s;

/// An element of a page that has an identifier, with what is in it.
struct PageElement
{
    QString name;
    QString text;
    QStringList links;
};

/// A page taken apart as the XML that it is.
struct ParsedPage
{
    QHash<QString, PageElement> byId;
    QStringList links;
    QString style;
    QString text;
    QSet<QString> elements;
    QSet<QString> attributes;
    QString policy;
};

/// Fails the test where the page is no well-formed XML, or an identifier stands there twice.
class PageReader
{
public:
    explicit PageReader(const QByteArray& content) : reader(content)
    {
        while (!reader.atEnd()) {
            reader.readNext();
            if (reader.isStartElement()) {
                begin();
            } else if (reader.isCharacters()) {
                take(reader.text().toString());
            } else if (reader.isEndElement()) {
                open.removeLast();
            }
        }
        EXPECT_FALSE(reader.hasError())
            << qPrintable(reader.errorString()) << " in line " << reader.lineNumber();
    }

    ParsedPage page;

private:
    void begin()
    {
        const QString name = reader.name().toString();
        const QXmlStreamAttributes attributes = reader.attributes();
        const QString id = attributes.value("id"_L1).toString();
        page.elements.insert(name);
        for (const QXmlStreamAttribute& attribute : attributes) {
            page.attributes.insert(attribute.name().toString());
        }
        if (attributes.value("http-equiv"_L1) == "Content-Security-Policy"_L1) {
            page.policy = attributes.value("content"_L1).toString();
        }
        if (!id.isEmpty()) {
            EXPECT_FALSE(page.byId.contains(id)) << qPrintable(id) << " twice";
            page.byId[id].name = name;
        }
        open.append({name, id});
        const QString link = attributes.value("href"_L1).toString();
        if (name == "a"_L1) {
            page.links.append(link);
            forOpen([&](PageElement& element) { element.links.append(link); });
        }
    }
    void take(const QString& text)
    {
        (open.last().first == "style"_L1 ? page.style : page.text) += text;
        forOpen([&](PageElement& element) { element.text += text; });
    }
    template <typename Act>
    void forOpen(const Act& act)
    {
        for (const auto& [name, id] : std::as_const(open)) {
            if (!id.isEmpty()) {
                act(page.byId[id]);
            }
        }
    }

    QXmlStreamReader reader;
    QList<std::pair<QString, QString>> open;
};

class CaseExportTest : public RecordedShop
{
protected:
    QByteArray bytes(const QString& name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
        return file.readAll();
    }
    RunResult exported(const QStringList& more = {}) const
    {
        return till(QStringList{u"log"_s, u"export"_s, u"1"_s, u"--html"_s, u"case.html"_s} + more);
    }
    ParsedPage exportedPage(const QStringList& more = {}) const
    {
        const RunResult result = exported(more);
        EXPECT_EQ(result.exitCode, 0) << qPrintable(result.output);
        return PageReader(bytes(u"case.html"_s)).page;
    }
    /// Changes what the server answered, behind everybody's back.
    void changeRecord(const QString& what, const QString& to) const
    {
        const QString before = readFile(recordFile(1));
        QString after = before;
        after.replace(what, to);
        ASSERT_NE(after, before) << qPrintable(what) << " is not recorded";
        writeFile(recordFile(1), after);
    }
};

} // namespace

TEST_F(CaseExportTest, amountsLeadToTheAnswerAndBack)
{
    sellWithPoints();
    const ParsedPage page = exportedPage();
    for (const QString& link : page.links) {
        EXPECT_TRUE(link.startsWith(u'#') && page.byId.contains(link.sliced(1)))
            << qPrintable(link);
    }
    QMap<QString, int> led;
    for (auto it = page.byId.cbegin(); it != page.byId.cend(); ++it) {
        if (!it.key().startsWith("amount-"_L1)) {
            continue;
        }
        for (const QString& link : it->links) {
            if (!link.startsWith("#answer-"_L1) || !it->text.startsWith("line "_L1)) {
                continue;
            }
            EXPECT_TRUE(page.byId.value(link.sliced(1)).links.contains(u'#' + it.key()))
                << qPrintable(link) << " does not lead back to " << qPrintable(it.key());
            for (const QString& name : {u"Discount"_s, u"Points spent"_s, u"Points earned"_s}) {
                led[name] += it->text.contains(name) ? 1 : 0;
            }
        }
    }
    // tea and apples have each of them, the discount of the tea comes from two elements
    EXPECT_EQ(led.value(u"Discount"_s), 3);
    EXPECT_EQ(led.value(u"Points spent"_s), 2);
    EXPECT_EQ(led.value(u"Points earned"_s), 2);
}

TEST_F(CaseExportTest, showsAllOfTheCase)
{
    sellWithPoints();
    const ParsedPage page = exportedPage();
    for (const QString& part : {u"Чай чёрный, 100 г"_s, u"174.74"_s, u"identifyByCard"_s,
                                u"RawCheckInforming"_s, u"delivered "_s, u"calls, identical."_s}) {
        EXPECT_TRUE(page.text.contains(part)) << qPrintable(part);
    }
    EXPECT_TRUE(page.style.contains("color-scheme"_L1)) << "no style in it";
    EXPECT_TRUE(page.elements.contains(u"rect"_s)) << "no bars of durations";
    EXPECT_TRUE(page.text.contains(u"\n  "_s)) << "the slip's blanks are gone";
}

TEST_F(CaseExportTest, loadsAndRunsNothing)
{
    sellWithPoints();
    const ParsedPage page = exportedPage();
    EXPECT_EQ(page.policy, u"default-src 'none'; style-src 'unsafe-inline'"_s);
    const QSet<QString> loading{u"script"_s, u"link"_s,  u"img"_s,  u"iframe"_s, u"object"_s,
                                u"embed"_s,  u"video"_s, u"form"_s, u"base"_s,   u"use"_s};
    EXPECT_FALSE(page.elements.intersects(loading));
    EXPECT_FALSE(page.attributes.contains(u"src"_s) || page.attributes.contains(u"style"_s));
    for (const QString& attribute : page.attributes) {
        EXPECT_FALSE(attribute.startsWith("on"_L1)) << qPrintable(attribute);
    }
    EXPECT_FALSE(page.style.contains("url("_L1) || page.style.contains("@import"_L1));
}

TEST_F(CaseExportTest, givesNobodyAwayUnlessAsked)
{
    sellWithPoints();
    const QStringList secrets{cardOnPage, u"Соколова"_s, u"Анна"_s};
    const RunResult masked = exported();
    EXPECT_EQ(masked.exitCode, 0);
    EXPECT_EQ(masked.output, u"The page is case.html. Card numbers and names are masked.\n"_s);
    const QString page = QString::fromUtf8(bytes(u"case.html"_s));
    EXPECT_TRUE(page.contains(u"****0017"_s));
    for (const QString& secret : secrets) {
        EXPECT_FALSE(page.contains(secret)) << qPrintable(secret);
    }
    EXPECT_TRUE(QFile::remove(path(u"case.html"_s)));
    EXPECT_TRUE(exported({u"--with-cards"_s}).output.contains(u"whole card numbers"_s));
    const QString whole = QString::fromUtf8(bytes(u"case.html"_s));
    for (const QString& secret : secrets) {
        EXPECT_TRUE(whole.contains(secret)) << qPrintable(secret);
    }
}

TEST_F(CaseExportTest, hostileTextsStayTexts)
{
    writeFile(u"sale.toml"_s,
              readFile(u"sale.toml"_s)
                  .replace(u"Пакет"_s, u"<script>alert(1)</script> javascript:alert(2)"_s));
    sellWithPoints();
    // a message of the server, as it stands in a line of the record: JSON around XML
    changeRecord(u"<communicationChannel>pos<"_s,
                 u"<info a='&quot;&gt;'>&lt;img src=x onerror=alert(3)&gt; \\u202etxt \\u009b2J "
                 "\\uffff/*style*/</info><communicationChannel>pos<"_s);
    changeRecord(u"Соколова"_s, u"&lt;/title&gt;&lt;b onclick=x Соколова&gt;"_s);
    const ParsedPage page = exportedPage();
    EXPECT_TRUE(page.text.contains(u"<script>alert(1)</script> javascript:alert(2)"_s));
    EXPECT_TRUE(page.text.contains(u"<img src=x onerror=alert(3)> \\u202etxt \\u009b2J"_s))
        << qPrintable(page.text);
    EXPECT_TRUE(page.text.contains(u"2J \ufffd/*style*/"_s));
    const QSet<QString> foreign{u"script"_s, u"img"_s, u"b"_s, u"info"_s};
    EXPECT_FALSE(page.elements.intersects(foreign));
    EXPECT_FALSE(page.attributes.contains(u"onerror"_s) || page.attributes.contains(u"onclick"_s));
    for (const QString& link : page.links) {
        EXPECT_TRUE(link.startsWith(u'#')) << qPrintable(link);
    }
}

TEST_F(CaseExportTest, aTagHidesNobody)
{
    sellWithPoints();
    {
        poshost::Database database(path(u"till.sqlite"_s));
        till::CheckStore checks(QSharedPointer<poshost::Database>::create(path(u"till.sqlite"_s)));
        till::Check check = checks.findClosed(u"last"_s);
        check.cashierMessages = {u"<Анна Соколова>"_s};
        poshost::Statement write(database, u"UPDATE checks SET data = ? WHERE id = ?"_s);
        write.bind(till::checkcodec::encode(check)).bind(check.id()).execute();
    }
    const ParsedPage page = exportedPage();
    EXPECT_TRUE(page.text.contains(u"<*** ***>"_s)) << qPrintable(page.text.left(3000));
    EXPECT_FALSE(page.text.contains(u"Соколова"_s));
}

TEST_F(CaseExportTest, aDifferenceThatIsCutShowsNoHalfOfAName)
{
    sellWithPoints();
    changeRecord(u"<info>Анна Соколова: "_s, u"<info>\\uffff Анна Соколова: "_s);
    const ParsedPage page = exportedPage();
    const QString differences = page.text.section(u"What a replay does differently"_s, 1);
    EXPECT_TRUE(differences.contains(u"written otherwise"_s)) << qPrintable(differences);
    for (const QString& half : {u"Анн"_s, u"Соко"_s, u"лова"_s}) {
        EXPECT_FALSE(differences.contains(half)) << qPrintable(differences);
    }
}

TEST_F(CaseExportTest, tellsWhatAnotherPluginDoesDifferently)
{
    sellWithPoints();
    const ParsedPage page = exportedPage({u"--plugin"_s, QStringLiteral(ORVA_OTHER_PLUGIN)});
    EXPECT_FALSE(page.text.contains(u"identical"_s));
    EXPECT_TRUE(page.text.contains(u"2.001"_s)) << qPrintable(page.text.right(2000));
    EXPECT_TRUE(QFile::remove(path(u"case.html"_s)));
    const ParsedPage without = exportedPage({u"--plugin"_s, path(u"nothing.so"_s)});
    EXPECT_TRUE(without.text.contains(u"nothing.so"_s)) << "why there was no replay";
}

TEST_F(CaseExportTest, needsNothingButTheRecord)
{
    sellWithPoints();
    const QString withoutChecks = path(u"other.sqlite"_s);
    const ParsedPage page = exportedPage({u"--database"_s, withoutChecks});
    EXPECT_FALSE(QFileInfo::exists(withoutChecks)) << "a page makes no database";
    EXPECT_TRUE(page.text.contains(u"POST "_s));
    EXPECT_FALSE(page.byId.contains(u"amount-1"_s));
    EXPECT_TRUE(page.text.contains(u"calls, identical."_s));
    EXPECT_TRUE(QFile::remove(path(u"case.html"_s)));
    writeFile(u"broken.sqlite"_s, u"this is no database"_s.repeated(100));
    const RunResult broken = exported({u"--database"_s, path(u"broken.sqlite"_s)});
    EXPECT_EQ(broken.exitCode, 0);
    EXPECT_TRUE(broken.output.contains(u"Check and queue are left out"_s))
        << qPrintable(broken.output);
}

TEST_F(CaseExportTest, isAFileOfItsOwnersAndOverwritesNone)
{
    sellWithPoints();
    exportedPage();
    EXPECT_EQ(QFile::permissions(path(u"case.html"_s)) & 0x0777, QFile::Permissions(0x0600));
    const QByteArray before = bytes(u"case.html"_s);
    EXPECT_EQ(exported({u"--with-cards"_s}).exitCode, 1);
    EXPECT_EQ(bytes(u"case.html"_s), before);
}

TEST_F(CaseExportTest, showsOneRecordAndTakesOneFile)
{
    sellWithPoints();
    const auto refused = [this](const QStringList& arguments, int code) {
        const RunResult result = till(QStringList{u"log"_s, u"export"_s} + arguments);
        EXPECT_EQ(result.exitCode, code) << qPrintable(arguments.join(u' ') + result.output);
    };
    refused({u"all"_s, u"--html"_s, u"case.html"_s}, 2);
    refused({u"7"_s, u"--html"_s, u"case.html"_s}, 1);
    refused({u"1"_s}, 2);
    refused({u"1"_s, u"case.jsonl"_s, u"--html"_s, u"case.html"_s}, 2);
    refused({u"1"_s, u"case.jsonl"_s, u"--with-cards"_s}, 2);
    EXPECT_FALSE(QFileInfo::exists(path(u"case.html"_s)));
    EXPECT_FALSE(QFileInfo::exists(path(u"case.jsonl"_s)));
}
