// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "tests/unit/client/fixtures.h"
#include "tests/unit/client/steps.h"

using namespace Qt::StringLiterals;

namespace {

QStringList messages(const QString& xml, const QString& channel)
{
    const orva::Interface client;
    const QDomDocument answer = tests::parse(xml);
    return client.getMessages(answer.documentElement(), channel);
}

/// An answer with one message for each content.
QString informing(const QStringList& contents)
{
    QString xml = u"<a><informing>"_s;
    for (const QString& content : contents) {
        xml += u"<RawCheckInforming>"_s + content + u"</RawCheckInforming>"_s;
    }
    return xml + u"</informing></a>"_s;
}

QString message(const QString& channel, const QString& info)
{
    return u"<communicationChannel>"_s + channel + u"</communicationChannel><info>"_s + info +
           u"</info>"_s;
}

} // namespace

TEST(Messages, areNoneInAnAnswerWithoutInforming)
{
    for (const QString& xml : {u"<a/>"_s, u"<a><informing/></a>"_s,
                               u"<a><RawCheckInforming><info>x</info></RawCheckInforming></a>"_s}) {
        for (const QString& channel : {u"pos"_s, u"check"_s, u""_s}) {
            EXPECT_EQ(messages(xml, channel), QStringList()) << qPrintable(xml);
        }
    }
}

TEST(Messages, areThoseOfTheChannelInDocumentOrder)
{
    const QString xml =
        informing({message(u"check"_s, u"второе"_s), message(u"pos"_s, u"кассе"_s),
                   message(u"email"_s, u"письмо"_s), message(u"check"_s, u"первое"_s)});
    EXPECT_EQ(messages(xml, u"check"_s), (QStringList{u"второе"_s, u"первое"_s}));
    EXPECT_EQ(messages(xml, u"pos"_s), QStringList{u"кассе"_s});
    EXPECT_EQ(messages(xml, u"sms"_s), QStringList());
}

TEST(Messages, areComparedByTheirChannelAsItStands)
{
    const QString xml = informing({message(u"POS"_s, u"1"_s), message(u" pos"_s, u"2"_s),
                                   message(u"pos "_s, u"3"_s), message(u"po"_s, u"4"_s),
                                   message(u"poss"_s, u"5"_s), message(u"pos\n"_s, u"6"_s)});
    EXPECT_EQ(messages(xml, u"pos"_s), QStringList());
    EXPECT_EQ(messages(xml, u" pos"_s), QStringList{u"2"_s});
}

TEST(Messages, areTakenUnchanged)
{
    EXPECT_EQ(
        messages(informing({message(u"pos"_s, u"  Скидка 5% &amp; &lt;бонус&gt;\n "_s)}), u"pos"_s),
        QStringList{u"  Скидка 5% & <бонус>\n "_s});
}

TEST(Messages, withoutATextAreEmpty)
{
    EXPECT_EQ(messages(informing({message(u"pos"_s, u""_s),
                                  u"<communicationChannel>pos</communicationChannel>"_s}),
                       u"pos"_s),
              (QStringList{u""_s, u""_s}));
}

TEST(Messages, withoutAChannelMatchOnlyTheEmptyOne)
{
    const QString xml = informing({u"<info>1</info>"_s, message(u""_s, u"2"_s)});
    EXPECT_EQ(messages(xml, u"pos"_s), QStringList());
    EXPECT_EQ(messages(xml, u""_s), (QStringList{u"1"_s, u"2"_s}));
}

TEST(Messages, areReadFromTheFirstChannelAndTheFirstText)
{
    const QString xml = informing({message(u"pos"_s, u"1"_s) + message(u"check"_s, u"2"_s)});
    EXPECT_EQ(messages(xml, u"pos"_s), QStringList{u"1"_s});
    EXPECT_EQ(messages(xml, u"check"_s), QStringList());
}

TEST(Messages, areFoundInEveryInformingElement)
{
    EXPECT_EQ(messages(u"<a><informing><RawCheckInforming>"_s + message(u"pos"_s, u"1"_s) +
                           u"</RawCheckInforming></informing><informing><RawCheckInforming>"_s +
                           message(u"pos"_s, u"2"_s) + u"</RawCheckInforming></informing></a>"_s,
                       u"pos"_s),
              (QStringList{u"1"_s, u"2"_s}));
}
