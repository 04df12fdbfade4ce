// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/config/keysheet.h"
#include "host/loyalty/loyaltysystems.h"
#include "tests/unit/plugin/orvatest.h"

using namespace Qt::StringLiterals;

namespace {

using namespace tests;

/// Notes the registration and answers as told.
class RegisteringOrva : public OpenOrva
{
public:
    bool answer = true;

    bool registerLoyaltySystem() override
    {
        Journal::note(u"orva.registerLoyaltySystem()"_s);
        return answer;
    }
};

class InitTest : public ::testing::Test
{
protected:
    InitTest() { orva.interface = interface; }

    void configureEverything()
    {
        config.values = {{u"Orva:serverUrl"_s, u"http://server.example/"_s},
                         {u"Orva:merchantId"_s, u"1042"_s},
                         {u"Orva:pos"_s, u"3"_s},
                         {u"Orva:timeout"_s, 25},
                         {u"Orva:user"_s, u"till"_s},
                         {u"Orva:password"_s, u"secret"_s},
                         {u"Orva:apikey"_s, u"key"_s}};
    }

    RecordingConfig config;
    const InSingleton<Config> configInPlace{&config};
    const QSharedPointer<RecordingInterface> interface =
        QSharedPointer<RecordingInterface>::create();
    RegisteringOrva orva;
    Journal journal;
};

TEST_F(InitTest, ReadsEachKeyAndHandsItOnInOrder)
{
    configureEverything();
    EXPECT_TRUE(orva.init());
    EXPECT_EQ(
        journal.entries(),
        (QStringList{
            u"config.getString(Orva:serverUrl, \"\")"_s,
            u"interface.setUrl(\"http://server.example/\")"_s,
            u"config.getString(Orva:merchantId, \"\")"_s, u"config.getString(Orva:pos, \"\")"_s,
            u"interface.setCashData(\"1042\", \"3\")"_s, u"config.getInt(Orva:timeout, 10)"_s,
            u"interface.setTimeout(25)"_s, u"config.getString(Orva:user, \"\")"_s,
            u"config.getString(Orva:password, \"\")"_s, u"config.getString(Orva:apikey, \"\")"_s,
            u"interface.setAuthData(\"till\", \"secret\", \"key\")"_s,
            u"orva.registerLoyaltySystem()"_s}));
}

TEST_F(InitTest, WithoutAnyKeyHandsOnTheDefaults)
{
    EXPECT_TRUE(orva.init());
    EXPECT_EQ(
        journal.entries().filter(u"interface."_s),
        (QStringList{u"interface.setUrl(\"\")"_s, u"interface.setCashData(\"\", \"\")"_s,
                     u"interface.setTimeout(10)"_s, u"interface.setAuthData(\"\", \"\", \"\")"_s}));
}

/// What a host is told of the plug-in's keys is what the plug-in does.
TEST_F(InitTest, AsksForTheKeysOfItsSheetWithTheirDefaults)
{
    QStringList expected;
    for (const poshost::ConfigKey& key : poshost::keysheet::read(QStringLiteral(ORVA_KEY_SHEET))) {
        const bool isNumber = key.kind == poshost::ConfigKey::Kind::Number;
        const QString otherwise = key.defaultValue.toString();
        expected.append((isNumber ? u"config.getInt(%1, %2)"_s : u"config.getString(%1, \"%2\")"_s)
                            .arg(key.name(), otherwise));
    }
    EXPECT_EQ(expected.size(), 7);
    EXPECT_TRUE(orva.init());
    EXPECT_EQ(journal.entries().filter(u"config."_s), expected);
}

TEST_F(InitTest, AnswersWhatTheRegistrationAnswers)
{
    EXPECT_TRUE(orva.init());
    orva.answer = false;
    EXPECT_FALSE(orva.init());
    EXPECT_EQ(journal.entries().count(u"orva.registerLoyaltySystem()"_s), 2);
}

TEST_F(InitTest, TakesTheTimeoutAsTheConfigurationReadsIt)
{
    for (const int timeout : {0, -5, 1, 2147483647}) {
        config.values = {{u"Orva:timeout"_s, timeout}};
        orva.init();
        EXPECT_TRUE(journal.taken().contains(u"interface.setTimeout(%1)"_s.arg(timeout)));
    }
    // A text that is no number is read by the configuration as it sees fit.
    config.values = {{u"Orva:timeout"_s, u"долго"_s}};
    orva.init();
    EXPECT_TRUE(journal.taken().contains(
        u"interface.setTimeout(%1)"_s.arg(config.getInt(u"Orva:timeout"_s, 10))));
}

TEST_F(InitTest, HandsOnValuesWithoutTouchingThem)
{
    config.values = {{u"Orva:serverUrl"_s, u" не адрес "_s},
                     {u"Orva:merchantId"_s, u" %1 "_s},
                     {u"Orva:pos"_s, u"%2"_s},
                     {u"Orva:user"_s, u"a:b"_s},
                     {u"Orva:password"_s, u"пароль"_s}};
    EXPECT_TRUE(orva.init());
    EXPECT_EQ(journal.entries().filter(u"interface."_s),
              (QStringList{u"interface.setUrl(\" не адрес \")"_s,
                           QStringLiteral("interface.setCashData(\" %1 \", \"%2\")"),
                           u"interface.setTimeout(10)"_s,
                           u"interface.setAuthData(\"a:b\", \"пароль\", \"\")"_s}));
}

TEST_F(InitTest, RunsAgainInTheSameWay)
{
    configureEverything();
    orva.init();
    const QStringList first = journal.taken();
    orva.init();
    EXPECT_EQ(journal.entries(), first);
    EXPECT_EQ(first.size(), 12);
}

TEST_F(InitTest, AnExceptionOfTheConfigurationPasses)
{
    config.onCall = [](const QString& call) {
        if (call.contains(u"Orva:pos")) {
            throw std::out_of_range("config");
        }
    };
    EXPECT_THROW(orva.init(), std::out_of_range);
    EXPECT_EQ(journal.entries().size(), 4);
    EXPECT_EQ(journal.entries().constLast(), u"config.getString(Orva:pos, \"\")"_s);
}

TEST_F(InitTest, AnExceptionOfTheClientPassesToo)
{
    interface->onCall = [](const QString&) {
        throw orva::Exception(tr::Tr(u"code"_s, u"текст"_s), u"подробно"_s);
    };
    EXPECT_THROW(orva.init(), orva::Exception);
    EXPECT_EQ(journal.entries(), (QStringList{u"config.getString(Orva:serverUrl, \"\")"_s,
                                              u"interface.setUrl(\"\")"_s}));
    EXPECT_TRUE(orva.lastError.isEmpty());
}

TEST(Init, MakesTheConfigurationWhereTheHostHasNone)
{
    const InSingleton<Config> none(nullptr);
    const auto interface = QSharedPointer<RecordingInterface>::create();
    OpenOrva orva;
    orva.interface = interface;
    const Journal journal;
    EXPECT_TRUE(orva.init());
    ASSERT_NE(Singleton<Config>::instance, nullptr);
    EXPECT_TRUE(Singleton<Config>::instance->fileName().isEmpty());
    EXPECT_EQ(
        journal.entries(),
        (QStringList{u"interface.setUrl(\"\")"_s, u"interface.setCashData(\"\", \"\")"_s,
                     u"interface.setTimeout(10)"_s, u"interface.setAuthData(\"\", \"\", \"\")"_s}));
}

TEST(Init, KeepsTheConfigurationThatIsThere)
{
    RecordingConfig config;
    const InSingleton<Config> inPlace(&config);
    OpenOrva orva;
    orva.interface = QSharedPointer<RecordingInterface>::create();
    orva.init();
    EXPECT_EQ(Singleton<Config>::instance, &config);
}

TEST(Init, RegistersWithTheHostUnderItsCode)
{
    const InSingleton<Config> none(nullptr);
    OpenOrva first;
    OpenOrva second;
    ASSERT_EQ(LoyaltySystems::find(15), nullptr);
    EXPECT_TRUE(first.init());
    EXPECT_EQ(LoyaltySystems::find(15), &first);
    EXPECT_FALSE(second.init()) << "the code is taken";
    EXPECT_EQ(LoyaltySystems::find(15), &first);
}

/// The real client with its settings in reach.
class OpenInterface : public orva::Interface
{
public:
    using Interface::headers;
    using Interface::merchantId;
    using Interface::pos;
    using Interface::serverUrl;
    using Interface::timeout;
};

TEST_F(InitTest, TheRealClientHoldsTheSettingsAfterwards)
{
    configureEverything();
    const auto client = QSharedPointer<OpenInterface>::create();
    orva.interface = client;
    EXPECT_TRUE(orva.init());
    EXPECT_EQ(client->serverUrl, QUrl(u"http://server.example/"_s));
    EXPECT_EQ(client->merchantId, u"1042"_s);
    EXPECT_EQ(client->pos, u"3"_s);
    EXPECT_EQ(client->timeout, 25);
    // base64 of "till:" + the SHA-1 of "secret" in hexadecimal digits + ":key"
    EXPECT_EQ(client->headers.value(u"Authorization"_s),
              u"Basic dGlsbDplNWU5ZmExYmEzMWVjZDFhZTg0Zjc1Y2FhYTQ3NGYzYTY2M2YwNWY0OmtleQ=="_s);
}

} // namespace
