// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "client/harmlessxml.h"
#include "tests/support/logcapture.h"
#include "tests/unit/client/domlimits.h"
#include "tests/unit/client/hostilexml.h"

#include <QStringEncoder>

#include <iterator>
#include <random>

using namespace tests;

namespace {

/// Puts texts together from pieces of markup, the same ones from the same seed. What the parser
/// makes of them, and where it stops, is its own business.
class RandomMarkup
{
public:
    explicit RandomMarkup(unsigned seed) : random(seed)
    {
        heavy = {nested(levelLimit), withAttributes(attributeLimit + 1),
                 withText(u"&amp;"_s, escapeLimit + 1)};
    }

    QString text()
    {
        QString built;
        for (int pieces = below(12) + 1; pieces > 0; --pieces) {
            built += below(4) == 0 ? heavy.at(below(static_cast<int>(heavy.size())))
                                   : light[below(static_cast<int>(std::size(light)))].toString();
        }
        return below(3) == 0 ? built : u"<r>"_s + built + u"</r>"_s;
    }
    QByteArray body()
    {
        const QString content = text();
        const char* name = encodings[below(static_cast<int>(std::size(encodings)))];
        const QString declaration =
            u"<?xml version='1.0' encoding='"_s + QString::fromLatin1(name) + u"'?>"_s;
        QStringEncoder encoder(name);
        const bool known = encoder.isValid();
        switch (below(4)) {
        case 0:
            return (declaration + content).toUtf8();
        case 1:
            return known ? declaration.toLatin1() + QByteArray(encoder(content)) : QByteArray();
        case 2:
            return known ? QByteArray(encoder(declaration + content)) : QByteArray();
        default:
            return content.toUtf8();
        }
    }

private:
    int below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

    static constexpr QStringView light[] = {u"<!--",
                                            u"-->",
                                            u"<![CDATA[",
                                            u"]]>",
                                            u"<?p ",
                                            u"?>",
                                            u"\"",
                                            u"'",
                                            u" x=\"",
                                            u" y='",
                                            u"='",
                                            u"<b>",
                                            u"</b>",
                                            u"<c/>",
                                            u"<c x='",
                                            u"<c x=\"",
                                            u"'>",
                                            u"\">",
                                            u"'/>",
                                            u"\"/>",
                                            u">",
                                            u"/",
                                            u"=",
                                            u"<!DOCTYPE r [",
                                            u"]>",
                                            u"<!DOCTYPE r>",
                                            u"<!ENTITY e 'x'>",
                                            u"<!",
                                            u"<",
                                            u"&lt;",
                                            u"&#60;",
                                            u"&e;",
                                            u"&",
                                            u"--",
                                            u"]]",
                                            u" ",
                                            u"\n",
                                            u"\r",
                                            u"\t",
                                            u"?",
                                            u"!",
                                            u"слово",
                                            u"<слово>",
                                            u"</слово>",
                                            u"<d:e f:g='h'>",
                                            u"<?xml version='1.0'?>"};
    static constexpr const char* encodings[] = {
        "UTF-8",  "UTF-7",  "UTF-16",       "UTF-16LE",    "UTF-16BE",    "UTF-32", "KOI8-R",
        "IBM037", "SCSU",   "windows-1251", "ISO-2022-JP", "ISO-2022-KR", "HZ",     "gb18030",
        "BOCU-1", "CESU-8", "Shift_JIS",    "ISO-8859-1",  "nothing"};

    std::mt19937 random;
    QStringList heavy;
};

} // namespace

TEST(AnyAnswer, leavesALastResponseWithinTheLimits)
{
    const LogSilence silence;
    RandomMarkup markup(20240305);
    int read = 0;
    for (int round = 0; round < 4000; ++round) {
        const QDomDocument answer = received(markup.body());
        ASSERT_TRUE(isWithinLimits(answer)) << "round " << round;
        read += answer.documentElement().isNull() ? 0 : 1;
    }
    // some are read and some are not, or nothing would have been tried
    EXPECT_GT(read, 100);
    EXPECT_LT(read, 3900);
}

TEST(AnyAnswer, thatIsHarmlessAsAStoredTextStaysWithinTheLimits)
{
    RandomMarkup markup(20240306);
    int read = 0;
    for (int round = 0; round < 4000; ++round) {
        const QString text = markup.text();
        if (!isHarmless(text)) {
            continue;
        }
        QDomDocument document;
        document.setContent(text);
        ASSERT_TRUE(isWithinLimits(document)) << "round " << round;
        read += document.documentElement().isNull() ? 0 : 1;
    }
    EXPECT_GT(read, 100);
}
