// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "client/harmlessxml.h"
#include "client/interface.h"
#include "host/document/client.h"
#include "tests/support/logcapture.h"
#include "tests/unit/client/domlimits.h"
#include "tests/unit/client/hostilexml.h"

#include <QStringEncoder>

using namespace tests;

namespace {

const QString answerText =
    u"<a><client><RawCheckClient><name>Анна</name><surname>Ё</surname></RawCheckClient></client>"
    "</a>"_s;

QString clientName(const QByteArray& body)
{
    const orva::Interface client;
    const QDomDocument answer = received(body);
    return client.getClient(answer.documentElement())->getName();
}

struct Encoding
{
    const char* name;
    QStringConverter::Encoding encoding;
    QByteArray mark;
};

QList<Encoding> wide()
{
    return {{"UTF-16LE with mark", QStringConverter::Utf16LE, QByteArray("\xFF\xFE", 2)},
            {"UTF-16BE with mark", QStringConverter::Utf16BE, QByteArray("\xFE\xFF", 2)},
            {"UTF-16LE", QStringConverter::Utf16LE, QByteArray()},
            {"UTF-16BE", QStringConverter::Utf16BE, QByteArray()},
            {"UTF-32LE with mark", QStringConverter::Utf32LE, QByteArray("\xFF\xFE\0\0", 4)},
            {"UTF-32BE with mark", QStringConverter::Utf32BE, QByteArray("\0\0\xFE\xFF", 4)},
            {"UTF-32LE", QStringConverter::Utf32LE, QByteArray()},
            {"UTF-32BE", QStringConverter::Utf32BE, QByteArray()}};
}

QByteArray encoded(const Encoding& encoding, const QString& text)
{
    QStringEncoder encoder(encoding.encoding);
    return encoding.mark + QByteArray(encoder(text));
}

QByteArray declared(const QByteArray& encoding)
{
    return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?>";
}

} // namespace

TEST(Encodings, readUtf8WithAndWithoutDeclarationAndMark)
{
    const QByteArray body = answerText.toUtf8();
    EXPECT_EQ(clientName(body), u"Анна Ё"_s);
    EXPECT_EQ(clientName(declared("UTF-8") + body), u"Анна Ё"_s);
    EXPECT_EQ(clientName(declared("utf-8") + body), u"Анна Ё"_s);
    EXPECT_EQ(clientName("\xEF\xBB\xBF" + declared("UTF-8") + body), u"Анна Ё"_s);
}

TEST(Encodings, readUtf16WithAByteOrderMark)
{
    EXPECT_EQ(clientName(encoded(wide().at(0), answerText)), u"Анна Ё"_s);
    EXPECT_EQ(clientName(encoded(wide().at(1), answerText)), u"Анна Ё"_s);
    const QString declaration = u"<?xml version=\"1.0\" encoding=\"UTF-16\"?>"_s;
    EXPECT_EQ(clientName(encoded(wide().at(0), declaration + answerText)), u"Анна Ё"_s);
}

TEST(Encodings, readWindows1251WhereQtKnowsItAndNothingElsewhere)
{
    // "Анна Ё" in windows-1251
    const QByteArray body = declared("windows-1251") +
                            "<a><client><RawCheckClient><name>\xC0\xED\xED\xE0</name>"
                            "<surname>\xA8</surname></RawCheckClient></client></a>";
    const bool known = QStringDecoder("windows-1251").isValid();
    EXPECT_EQ(clientName(body), known ? u"Анна Ё"_s : u" "_s);
}

TEST(Encodings, readLatin1)
{
    EXPECT_EQ(clientName(declared("ISO-8859-1") +
                         "<a><client><RawCheckClient><name>J\xF6rg</name></RawCheckClient>"
                         "</client></a>"),
              u"Jörg "_s);
}

TEST(Encodings, thatNobodyKnowsLeaveTheResponseEmpty)
{
    EXPECT_TRUE(received(declared("no-such-encoding") + "<a/>").documentElement().isNull());
}

TEST(Encodings, invalidUtf8NeverCrashesAndKeepsNothingBehindTheError)
{
    const auto withText = [](const QByteArray& bytes) {
        return received("<a><b>1</b><c>" + bytes + "</c><d>2</d></a>");
    };
    const QString valid = withText("\xD1\x8F").toString(-1);
    ASSERT_EQ(valid.trimmed(), u"<a><b>1</b><c>я</c><d>2</d></a>"_s);
    for (const QByteArray& bytes :
         {QByteArray("\xFF"), QByteArray("\xC0\x80"), QByteArray("\xED\xA0\x80"),
          QByteArray("\xF8\x88\x80\x80\x80"), QByteArray("\xD0"), QByteArray("\0", 1),
          QByteArray("\xC0\xED\xED\xE0")}) {
        // Qt's parser keeps what came before the error or nothing at all, by version and error
        const QString kept = withText(bytes).toString(-1).trimmed();
        EXPECT_TRUE(kept.isEmpty() || kept == u"<a><b>1</b><c/></a>"_s)
            << bytes.toHex().constData() << ": " << qPrintable(kept);
    }
}

TEST(Encodings, wideOnesHideNoDepth)
{
    const QList<Encoding> encodings = wide();
    for (const Encoding& encoding : encodings) {
        EXPECT_FALSE(isHarmless(encoded(encoding, nested(levelLimit + 1)))) << encoding.name;
        EXPECT_TRUE(isWithinLimits(received(encoded(encoding, nested(levelLimit + 1)))))
            << encoding.name;
        EXPECT_TRUE(isWithinLimits(received(encoded(encoding, nested(levelLimit)))))
            << encoding.name;
    }
    EXPECT_EQ(sizeOf(received(encoded(wide().at(0), nested(levelLimit)))).levels, levelLimit);
    EXPECT_EQ(sizeOf(received(encoded(wide().at(1), nested(levelLimit)))).levels, levelLimit);
}

TEST(Encodings, wideOnesHideNeitherDeclarationNorAttributesNorEscapes)
{
    const QList<Encoding> encodings = wide();
    for (const Encoding& encoding : encodings) {
        for (const QString& text :
             {u"<!DOCTYPE a []><a/>"_s, withAttributes(attributeLimit + 1),
              withText(u"&amp;"_s, escapeLimit + 1), withValue(u"\""_s, escapeLimit + 1, u'\'')}) {
            const QByteArray body = encoded(encoding, text);
            EXPECT_FALSE(isHarmless(body)) << encoding.name << qPrintable(text.left(20));
            EXPECT_TRUE(received(body).documentElement().isNull()) << encoding.name;
        }
    }
}

TEST(Encodings, asciiBytesDeclaredAsWideHideNothing)
{
    for (const char* name : {"UTF-16", "UTF-16LE", "UTF-16BE", "UTF-32", "ucs2"}) {
        const QDomDocument answer = received(declared(name) + nested(levelLimit + 1).toLatin1());
        EXPECT_TRUE(isWithinLimits(answer)) << name;
    }
}

TEST(Encodings, utf7HidesNoMarkup)
{
    // "+ADw-a+AD4-" is "<a>"
    for (const char* name : {"UTF-7", "utf-7", "unicode-1-1-utf-7", "IMAP-mailbox-name"}) {
        QByteArray body = declared(name) + "<r>";
        body += QByteArray("+ADw-a+AD4-").repeated(levelLimit + 88);
        body += QByteArray("+ADw-/a+AD4-").repeated(levelLimit + 88) + "</r>";
        EXPECT_TRUE(isWithinLimits(received(body))) << name;
    }
}

TEST(Encodings, ebcdicHidesNoMarkup)
{
    // "<a>" and "</a>" in EBCDIC
    for (const char* name : {"IBM037", "ibm-37", "cp037", "IBM500", "IBM1047", "ebcdic-cp-us"}) {
        QByteArray body = declared(name);
        body += QByteArray("\x4C\x81\x6E").repeated(levelLimit + 88);
        body += QByteArray("\x4C\x61\x81\x6E").repeated(levelLimit + 88);
        EXPECT_TRUE(isWithinLimits(received(body))) << name;
    }
}

TEST(Encodings, escapeSequencesHideNoMarkup)
{
    // In the two-byte sets the bytes of "<!--" are two characters, and what follows is no comment.
    const QByteArray deep = nested(levelLimit + 88).toLatin1();
    const QList<QPair<QByteArray, QByteArray>> shifts{{"ISO-2022-JP", "\x1B$B<!--\x1B(B"},
                                                      {"ISO-2022-KR", "\x1B$)C\x0E<!--\x0F"},
                                                      {"ISO-2022-CN", "\x1B$)A\x0E<!--\x0F"},
                                                      {"HZ-GB-2312", "~{<!--~}"},
                                                      {"HZ", "~{<!--~}"},
                                                      {"SCSU", "\x0E<!--"},
                                                      {"UTF-8", ""}};
    for (const auto& [name, shift] : shifts) {
        const QDomDocument answer =
            received(declared(name) + "<r>" + shift + deep + "<!-- --></r>");
        EXPECT_TRUE(isWithinLimits(answer)) << name.toStdString();
    }
}

TEST(Encodings, longDeclarationHidesNoEncoding)
{
    const QByteArray open = QByteArray("+ADw-a+AD4-").repeated(levelLimit + 88);
    const QByteArray close = QByteArray("+ADw-/a+AD4-").repeated(levelLimit + 88);
    for (const int blanks : {1, 100, 200, 255, 256, 300, 5000}) {
        for (const QByteArray& blank : {QByteArray(" "), QByteArray("\n")}) {
            const QByteArray space = blank.repeated(blanks);
            const QByteArray name = "encoding=\"UTF-7\"";
            for (const QByteArray& declaration :
                 {"<?xml" + space + "version=\"1.0\" " + name + "?>",
                  "<?xml version=\"1.0\"" + space + name + "?>",
                  "<?xml version=\"1.0\" encoding" + space + "=\"UTF-7\"?>",
                  "<?xml version=\"1.0\" " + name + space + "?>"}) {
                EXPECT_TRUE(isWithinLimits(received(declaration + "<r>" + open + close + "</r>")))
                    << blanks << " blanks";
            }
        }
    }
}

TEST(Encodings, wideDeclarationOfTheOtherByteOrderHidesNothing)
{
    for (const int blanks : {1, 300}) {
        const QString start = u"<?xml version=\"1.0\""_s + u" "_s.repeated(blanks);
        const QString deep = nested(levelLimit + 88);
        const QByteArray little = encoded(wide().at(0), start + u"encoding=\"UTF-16BE\"?>"_s) +
                                  encoded(wide().at(3), deep);
        const QByteArray big = encoded(wide().at(1), start + u"encoding=\"UTF-16LE\"?>"_s) +
                               encoded(wide().at(2), deep);
        EXPECT_TRUE(isWithinLimits(received(little))) << blanks << " blanks";
        EXPECT_TRUE(isWithinLimits(received(big))) << blanks << " blanks";
        // without a mark
        EXPECT_TRUE(isWithinLimits(received(little.mid(2)))) << blanks << " blanks";
        EXPECT_TRUE(isWithinLimits(received(big.mid(2)))) << blanks << " blanks";
    }
}

TEST(Encodings, ofOneByteThatAreUsualHereAreHarmless)
{
    for (const char* name : {"windows-1251", "Windows-1251", "cp1251", "KOI8-R", "koi8-r", "KOI8-U",
                             "ISO-8859-5", "iso-8859-1", "IBM866", "cp866", "US-ASCII", "utf-8",
                             "utf8", "ascii", "latin1", "cp1252"}) {
        EXPECT_TRUE(isHarmless(declared(name) + "<a b='1'>\xC0\xED</a>")) << name;
        EXPECT_FALSE(isHarmless(declared(name) + nested(levelLimit + 1).toLatin1())) << name;
    }
}

TEST(Encodings, thatQtReadsOrDoesNotKnowAreNotRefused)
{
    for (const char* name :
         {"UTF-7", "utf", "utf-16", "windows-12", "windows-1200", "cp1200", "cp12", "iso-8859",
          "koi8-", "koi8", "ibm86", "cp86", "us-asci", "latin", "latin2", "asci", ""}) {
        EXPECT_TRUE(isHarmless(declared(name) + "<a/>")) << name;
        EXPECT_TRUE(isHarmless("\xEF\xBB\xBF" + declared(name) + "<a/>")) << name;
    }
}

TEST(Encodings, areNamedByTheDeclarationOnly)
{
    // what is markup in UTF-7 is none here
    const QByteArray deep = QByteArray("+ADw-a+AD4-").repeated(levelLimit + 1);
    for (const char* text :
         {"<a encoding='UTF-7'>", "<?xml version='1.0'?><a encoding='UTF-7'>",
          "<?xm encoding='UTF-7'?><a>", "<?xml version='1.0'?><?p encoding='UTF-7'?><a>"}) {
        EXPECT_TRUE(isHarmless(text + deep)) << text;
    }
    EXPECT_FALSE(isHarmless("<?xml version='1.0' encoding='UTF-7'?>" + deep));
    // the parser resolves references first
    EXPECT_FALSE(isHarmless("<?xml version='1.0' encoding='UT&#70;-7'?>" + deep));
    EXPECT_FALSE(isHarmless("<?xml version='1.0' encoding='utf-8' encoding='UTF-7'?>" + deep));
}

TEST(Encodings, ofTwoBytesAreNamedByTheDeclarationOnlyToo)
{
    for (const QString& text :
         {u"<?xm encoding='UTF-7'?><a/>"_s, u"<?xml version='1.0'?><a encoding='UTF-7'/>"_s}) {
        for (const Encoding& encoding : wide()) {
            EXPECT_TRUE(isHarmless(encoded(encoding, text)))
                << encoding.name << ' ' << qPrintable(text);
        }
    }
}

TEST(Encodings, ofTwoBytesMayBeDeclaredAsAnything)
{
    for (const Encoding& encoding : wide()) {
        for (const QString& name : {u"UTF-16"_s, u"utf-16"_s, u"UTF-8"_s, u"UTF-16LE"_s}) {
            const QString text = u"<?xml version='1.0' encoding='%1'?><a/>"_s.arg(name);
            EXPECT_TRUE(isHarmless(encoded(encoding, text))) << encoding.name << qPrintable(name);
        }
    }
}

TEST(Encodings, namedByNobodyHereHideNoDepthEither)
{
    for (const char* name :
         {"windows-1252",    "x-mac-cyrillic",   "macintosh",       "TIS-620",    "Big5",
          "Big5-HKSCS",      "EUC-JP",           "EUC-KR",          "GB18030",    "GBK",
          "Shift_JIS",       "BOCU-1",           "CESU-8",          "UTF-EBCDIC", "IBM273",
          "IBM424",          "IBM1025",          "IBM1026",         "x-iscii-de", "LMBCS-1",
          "ISO-10646-UCS-2", "UTF-16,version=1", "no-such-encoding"}) {
        const QString deep = nested(levelLimit + 1);
        EXPECT_TRUE(isWithinLimits(received(declared(name) + deep.toLatin1()))) << name;
        QStringEncoder body(name);
        QStringEncoder whole(name);
        if (body.isValid()) {
            EXPECT_TRUE(isWithinLimits(received(declared(name) + QByteArray(body(deep))))) << name;
            const QString declaration = QString::fromLatin1(declared(name));
            EXPECT_TRUE(isWithinLimits(received(whole(declaration + deep)))) << name;
        }
    }
}
