// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Every encoding that Qt reads: what is beyond a limit is seen in it, and nothing else is refused.

#include "tests/unit/client/printers.h"

#include "tests/support/encodingnames.h"
#include "tests/unit/client/domlimits.h"
#include "tests/unit/client/hostilexml.h"

#include <QStringDecoder>
#include <QStringEncoder>

using namespace tests;

namespace {

/// How a server may write a text and say its encoding.
struct Writing
{
    QByteArray encoding;
    QByteArray prefix; ///< in ASCII
    QString start;     ///< in the encoding
    QByteArray bytes(const QString& text) const
    {
        QStringEncoder encoder(encoding.constData(), QStringConverter::Flag::Stateless);
        return prefix + QByteArray(encoder(start + text));
    }
};

bool isRead(const Writing& writing)
{
    const QDomElement root = [&writing] {
        QDomDocument document;
        document.setContent(writing.bytes(u"<a x='1'><b>2</b></a>"_s));
        return document.documentElement();
    }();
    return root.attribute(u"x"_s) == u"1" && root.text() == u"2";
}

/// All that the parser reads: declared in itself, declared in ASCII, and that with as many blanks
/// as the parser passes over when it counts the declaration's characters anew.
QList<Writing> readableWritings()
{
    QList<Writing> writings;
    for (const QString& name : encodingNames() + ebcdicNames()) {
        const QString declaration = u"<?xml version='1.0' encoding='%1'?>"_s.arg(name);
        const QByteArray ascii = declaration.toLatin1();
        const QByteArray blanks(3 * ascii.size(), ' ');
        if (QStringEncoder(name.toLatin1().constData()).isValid()) {
            writings.append({name.toLatin1(), {}, declaration});
            writings.append({name.toLatin1(), ascii, {}});
            writings.append({name.toLatin1(), ascii + blanks.first(ascii.size()), {}});
            writings.append({name.toLatin1(), ascii + blanks, {}});
        }
    }
    writings.removeIf([](const Writing& writing) { return !isRead(writing); });
    return writings;
}

QSet<QByteArray> namesOf(const QList<Writing>& writings)
{
    QSet<QByteArray> names;
    for (const Writing& writing : writings) {
        names.insert(writing.encoding);
    }
    return names;
}

} // namespace

TEST(EncodedHarm, isSeenInEveryEncodingThatIsRead)
{
    const QList<Writing> writings = readableWritings();
    ASSERT_GE(writings.size(), 8);
    const QString hostile[] = {nested(levelLimit + 1),
                               u"<r>"_s + nested(levelLimit + 88) + u"</r>"_s,
                               withAttributes(attributeLimit + 1),
                               u"<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>"_s,
                               withText(u"&amp;"_s, escapeLimit + 1),
                               u"<r>"_s + u"<RawItem/>"_s.repeated(entryLimit + 1) + u"</r>"_s};
    for (const Writing& writing : writings) {
        for (const QString& text : hostile) {
            EXPECT_FALSE(isHarmless(writing.bytes(text)))
                << writing.encoding.constData() << ' ' << writing.prefix.constData() << ' '
                << qPrintable(text.left(20));
        }
        EXPECT_TRUE(received(writing.bytes(hostile[1])).documentElement().isNull());
    }
}

TEST(EncodedHarm, refusesNoEncodingThatIsRead)
{
    const QList<Writing> writings = readableWritings();
    for (const Writing& writing : writings) {
        for (const QString& text :
             {nested(levelLimit), withAttributes(attributeLimit), u"<!DOCTYPE a><a>&lt;</a>"_s}) {
            EXPECT_EQ(orva::harmInXml(writing.bytes(text)), QString())
                << writing.encoding.constData() << ' ' << qPrintable(text.left(20));
        }
        EXPECT_EQ(sizeOf(received(writing.bytes(nested(levelLimit)))).levels, levelLimit)
            << writing.encoding.constData();
    }
    const QSet<QByteArray> names = namesOf(writings);
    for (const char* name : {"UTF-8", "UTF-16", "UTF-16LE", "UTF-32", "ISO-8859-1"}) {
        EXPECT_TRUE(names.contains(name)) << name;
    }
    if (QStringDecoder("windows-1251").isValid()) { // Qt knows what ICU knows
        EXPECT_GE(names.size(), 90);
        for (const char* name : {"GB18030", "Shift_JIS", "ISO-2022-JP", "UTF-7", "HZ", "ibm-37"}) {
            EXPECT_TRUE(names.contains(name)) << name;
        }
    }
}

TEST(EncodedHarm, isCountedInTheLinesThatTheServerWrote)
{
    QStringEncoder encoder("UTF-16LE");
    const QString text =
        u"<?xml version='1.0'\nencoding='UTF-16LE'?>\n"_s + withAttributes(attributeLimit + 1);
    EXPECT_EQ(orva::harmInXml(QByteArray(encoder(text))),
              u"больше 64 атрибутов у элемента, строка 3, элемент a"_s);
}

TEST(EncodedHarm, isADeclarationThatNamesManyEncodings)
{
    // the parser decodes the whole text for each of them
    const QString usual = u"<?xml version='1.0' encoding='UTF-8' standalone='yes'"_s;
    const QString many = u" encoding='UTF-8'"_s;
    for (const char* encoding : {"UTF-8", "UTF-16LE", "UTF-16BE", "UTF-32LE"}) {
        QStringEncoder encoder(encoding, QStringConverter::Flag::Stateless);
        EXPECT_TRUE(isHarmless(QByteArray(encoder(usual + u"?><a b='' c='' d='' e=''/>"_s))));
        EXPECT_FALSE(isHarmless(QByteArray(encoder(usual + many + u"?><a/>"_s)))) << encoding;
        // also where its end is missing, or stands behind other markup
        EXPECT_FALSE(isHarmless(QByteArray(encoder(usual + many.repeated(100))))) << encoding;
        EXPECT_FALSE(isHarmless(QByteArray(encoder(usual + many + u"<a?>"_s)))) << encoding;
        EXPECT_TRUE(isHarmless(QByteArray(encoder(usual + u"><a b='' c=''/>?>"_s)))) << encoding;
    }
}
