// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The committed translations: what a build cannot see by counting.

#include "tests/unit/console/russian.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

struct Message
{
    QString source;
    QStringList translations; ///< one, or one for each number form
    bool isPlural = false;
};

Message readMessage(QXmlStreamReader& xml)
{
    Message message;
    message.isPlural = xml.attributes().value(u"numerus"_s) == u"yes"_s;
    while (xml.readNextStartElement()) {
        if (xml.name() == u"source"_s) {
            message.source = xml.readElementText();
        } else if (xml.name() == u"translation"_s && message.isPlural) {
            while (xml.readNextStartElement()) {
                message.translations.append(xml.readElementText());
            }
        } else if (xml.name() == u"translation"_s) {
            message.translations.append(xml.readElementText());
        } else {
            xml.skipCurrentElement();
        }
    }
    return message;
}

QList<Message> messages(const QString& language)
{
    QFile file(QStringLiteral(ORVA_TRANSLATIONS "/orva_%1.ts").arg(language));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.errorString().toStdString();
    QXmlStreamReader xml(&file);
    QList<Message> found;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"message"_s) {
            found.append(readMessage(xml));
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return found;
}

/// The places for values, and what a file or a command line must be written like.
QStringList marks(const QString& text)
{
    static const QRegularExpression mark(
        u"%n|%[0-9]|\\n|--[a-z]+|\\[\\[?[a-z]+\\]?\\]|\\{%1\\}|49\\.90|12\\.50"_s);
    QStringList found;
    auto matches = mark.globalMatch(text);
    while (matches.hasNext()) {
        found.append(matches.next().captured());
    }
    found.sort();
    return found;
}

QString plural(int count)
{
    return QCoreApplication::translate(
        "Till", "%n messages go out with the configured credentials.", nullptr, count);
}

} // namespace

TEST(Translations, keepThePlacesOfValuesAndWhatIsTypedLiterally)
{
    for (const QString& language : {u"ru"_s, u"en"_s}) {
        const QList<Message> all = messages(language);
        EXPECT_GT(all.size(), language == u"ru"_s ? 200 : 0);
        for (const Message& message : all) {
            for (const QString& translation : message.translations) {
                EXPECT_EQ(marks(message.source), marks(translation))
                    << message.source.toStdString() << "\n"
                    << translation.toStdString();
            }
        }
    }
}

TEST(Translations, endAsTheirTextsEnd)
{
    const QList<Message> all = messages(u"ru"_s);
    ASSERT_GT(all.size(), 200);
    for (const Message& message : all) {
        ASSERT_FALSE(message.translations.isEmpty()) << message.source.toStdString();
        const QString translation = message.translations.first();
        for (const QString& end : {u"."_s, u"?"_s, u"\n"_s, u":"_s}) {
            EXPECT_EQ(message.source.endsWith(end), translation.endsWith(end))
                << message.source.toStdString() << "\n"
                << translation.toStdString();
        }
    }
}

TEST(Translations, haveEveryNumberForm)
{
    const QList<Message> russian = messages(u"ru"_s);
    ASSERT_GT(russian.size(), 200);
    for (const Message& message : russian) {
        EXPECT_EQ(message.translations.size(), message.isPlural ? 3 : 1)
            << message.source.toStdString();
    }
    const QList<Message> english = messages(u"en"_s); // plurals only
    ASSERT_FALSE(english.isEmpty());
    for (const Message& message : english) {
        EXPECT_TRUE(message.isPlural) << message.source.toStdString();
        EXPECT_EQ(message.translations.size(), 2) << message.source.toStdString();
    }
}

TEST(Translations, countInRussian)
{
    const Russian russian;
    const QString one = u" сообщение уйдёт с учётными данными из настроек."_s;
    const QString few = u" сообщения уйдут с учётными данными из настроек."_s;
    const QString many = u" сообщений уйдёт с учётными данными из настроек."_s;
    for (const int count : {1, 21, 101}) {
        EXPECT_EQ(plural(count), QString::number(count) + one);
    }
    for (const int count : {2, 3, 4, 22, 104}) {
        EXPECT_EQ(plural(count), QString::number(count) + few);
    }
    for (const int count : {0, 5, 11, 12, 14, 20, 111, 1000}) {
        EXPECT_EQ(plural(count), QString::number(count) + many);
    }
}

TEST(Translations, countInEnglish)
{
    QTranslator english;
    ASSERT_TRUE(english.load(u":/translations/orva_en"_s));
    QCoreApplication::installTranslator(&english);
    EXPECT_EQ(plural(1), u"1 message goes out with the configured credentials."_s);
    EXPECT_EQ(plural(2), u"2 messages go out with the configured credentials."_s);
    QCoreApplication::removeTranslator(&english);
}
