// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/core/message.h"

#include "host/core/basicexception.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using poshost::Language;
using poshost::Message;

TEST(Message, isSaidInEitherLanguageWithWhatStandsInIt)
{
    const Message inside = Message::of("database.tooNew", 9, 4);
    const Message message = Message::of("database", u"/var/till.sqlite"_s, inside);
    EXPECT_EQ(message.code(), u"database"_s);
    EXPECT_EQ(message.arguments().size(), 2);
    EXPECT_EQ(message.ru(), u"База данных /var/till.sqlite: файл записан более новой программой "
                            "(схема 9, известна 4); обновите программу"_s);
    EXPECT_EQ(message.in(Language::English),
              u"Database /var/till.sqlite: the file was written by a newer program "
              "(schema 9, known is 4); update the program"_s);
}

TEST(Message, takesWhatStandsInItAsItIs)
{
    const Message message = Message::of("transport", u"%2"_s, u"%1 %2 %40"_s);
    EXPECT_EQ(message.in(Language::English), u"Server %2: %1 %2 %40"_s);
    EXPECT_TRUE(Message::of("address.at").ru().endsWith(u" пишется %40"_s));
}

TEST(Message, fromOutsideIsTheSameInEveryLanguage)
{
    const Message message = Message::plain(u"Connection refused"_s);
    EXPECT_TRUE(message.code().isEmpty());
    EXPECT_EQ(message.ru(), message.in(Language::English));
    EXPECT_EQ(message.stored(), u"Connection refused"_s);
    EXPECT_TRUE(Message().isEmpty());
    EXPECT_TRUE(Message::fromStored(QString()).isEmpty());
}

TEST(Message, isTakenUpAsItWasStored)
{
    const Message message =
        Message::of("queue.notStored", Message::of("database", u"[\"a\"] \\ %1"_s,
                                                   Message::of("database.busy", u"\u0001"_s)));
    const Message read = Message::fromStored(message.stored());
    EXPECT_TRUE(read == message) << message.stored().toStdString();
    EXPECT_EQ(read.in(Language::English), message.in(Language::English));
}

TEST(Message, ofAnEarlierVersionIsItsText)
{
    for (const QString& text :
         {u"HTTP 503"_s, u"[] нет"_s, u"[1, 2]"_s, u"{\"a\": 1}"_s, u"[\"\"]"_s}) {
        EXPECT_EQ(Message::fromStored(text).ru(), text) << text.toStdString();
        EXPECT_TRUE(Message::fromStored(text).code().isEmpty()) << text.toStdString();
    }
}

TEST(Message, ofALaterVersionIsItsCodeWithWhatStandsInIt)
{
    EXPECT_EQ(Message::fromStored(u"[\"later.one\",\"a\",\"7\"]"_s).in(Language::English),
              u"later.one: a, 7"_s);
    const QString deep = QString(100'000, u'[') + QString(100'000, u']');
    EXPECT_EQ(Message::fromStored(deep).ru(), deep);
}

TEST(Message, isKeptByAnErrorBesideItsRussianText)
{
    const BasicException error(
        tr::Tr(u"queueError"_s, Message::of("queue", Message::of("queue.noKey"))));
    EXPECT_EQ(error.tr().id(), u"queueError"_s);
    EXPECT_EQ(error.tr().ru(), u"Очередь отправки: ключ с файлом базы данных не зарегистрирован"_s);
    EXPECT_EQ(error.tr().message().in(Language::English),
              u"Outgoing queue: the key for the database file is not registered"_s);
    EXPECT_EQ(tr::Tr(u"code"_s, u"Карта не найдена"_s).message().in(Language::English),
              u"Карта не найдена"_s);
}
