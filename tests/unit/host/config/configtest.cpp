// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/services/config.h"
#include "host/core/basicexception.h"
#include "tests/support/pluginkeys.h"
#include "tests/support/testfolder.h"
#include "tests/unit/input/hostiletoml.h"

#include <QFile>
#include <gmock/gmock.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

class ConfigFile : public ::testing::Test
{
protected:
    void load(const QByteArray& toml) { config.load(folder.write(u"orva.toml"_s, toml)); }

    /// The error's text, without the folder before the file's name.
    std::string errorOf(const QByteArray& toml)
    {
        try {
            load(toml);
        } catch (const BasicException& error) {
            EXPECT_EQ(error.tr().id(), u"configError"_s);
            return withoutFolder(error.tr().ru());
        }
        ADD_FAILURE() << "no error for: " << toml.toStdString();
        return {};
    }

    std::string withoutFolder(QString text) const
    {
        return text.remove(folder.file(QString()) + u'/').toStdString();
    }

    const PluginKeys keys{QStringLiteral(ORVA_PLUGIN_SOURCE)};
    TestFolder folder;
    Config config;
};

TEST_F(ConfigFile, AnEmptyConfigurationYieldsTheDefaults)
{
    EXPECT_EQ(config.getString(u"Orva:serverUrl"_s, u"default"_s), u"default"_s);
    EXPECT_EQ(config.getInt(u"Orva:timeout"_s, 10), 10);
    EXPECT_TRUE(config.warnings().isEmpty());
    EXPECT_TRUE(config.fileName().isEmpty());
}

TEST_F(ConfigFile, AllKnownKeysAreRead)
{
    load("[Orva]\n"
         "serverUrl = \"http://127.0.0.1:8080/\"\n"
         "merchantId = \"007\"\n"
         "pos = \"3\"\n"
         "timeout = 5\n"
         "user = \"касса\"\n"
         "password = 'p\\w'\n"
         "apikey = \"k\"\n"
         "[http]\n"
         "proxy = \"http://proxy:3128\"\n"
         "caFile = \"/etc/ca.pem\"\n"
         "maxAnswerBytes = 1_000\n"
         "[till]\n"
         "database = \"/var/lib/till.db\"\n"
         "plugin = \"/usr/lib/liborva.so\"\n"
         "name = \"Касса 1\"\n"
         "[queue]\n"
         "keepDeliveredDays = 7\n");
    const std::pair<QString, QString> texts[] = {
        {u"Orva:serverUrl"_s, u"http://127.0.0.1:8080/"_s},
        {u"Orva:merchantId"_s, u"007"_s},
        {u"Orva:pos"_s, u"3"_s},
        {u"Orva:user"_s, u"касса"_s},
        {u"Orva:password"_s, u"p\\w"_s},
        {u"Orva:apikey"_s, u"k"_s},
        {u"http:proxy"_s, u"http://proxy:3128"_s},
        {u"http:caFile"_s, u"/etc/ca.pem"_s},
        {u"till:database"_s, u"/var/lib/till.db"_s},
        {u"till:plugin"_s, u"/usr/lib/liborva.so"_s},
        {u"till:name"_s, u"Касса 1"_s},
    };
    for (const auto& [key, value] : texts) {
        EXPECT_EQ(config.getString(key, u"default"_s), value) << key.toStdString();
    }
    EXPECT_EQ(config.getInt(u"Orva:timeout"_s, 10), 5);
    EXPECT_EQ(config.getInt(u"http:maxAnswerBytes"_s, 0), 1000);
    EXPECT_EQ(config.getInt(u"queue:keepDeliveredDays"_s, 30), 7);
    EXPECT_TRUE(config.warnings().isEmpty()) << config.warnings().join(u'\n').toStdString();
    EXPECT_EQ(config.fileName(), folder.file(u"orva.toml"_s));
}

TEST_F(ConfigFile, ARelativePathStartsAtTheFilesFolder)
{
    load("[till]\ndatabase = \"data/till.db\"\nplugin = \"\"\n");
    EXPECT_EQ(config.getString(u"till:database"_s, {}), folder.file(u"data/till.db"_s));
    EXPECT_EQ(config.getString(u"till:plugin"_s, u"default"_s), QString());
}

TEST_F(ConfigFile, ATextIsNoNumberAndANumberNoText)
{
    load("[other]\ntext = \"5\"\nnumber = 5\nreal = 5.0\ntruth = true\nhuge = 3000000000\n");
    EXPECT_EQ(config.getInt(u"other:text"_s, 1), 1);
    EXPECT_EQ(config.getString(u"other:number"_s, u"default"_s), u"default"_s);
    EXPECT_EQ(config.getInt(u"other:number"_s, 1), 5);
    EXPECT_EQ(config.getInt(u"other:real"_s, 1), 1);
    EXPECT_EQ(config.getInt(u"other:truth"_s, 1), 1);
    EXPECT_EQ(config.getInt(u"other:huge"_s, 1), 1);
}

TEST_F(ConfigFile, AWrongTypeIsNamedWithFileLineAndKey)
{
    const std::pair<QByteArray, std::string> rows[] = {
        {"\n[Orva]\ntimeout = \"5\"\n",
         "orva.toml, строка 3, ключ Orva.timeout: ожидается целое число, а здесь строка"},
        {"[Orva]\ntimeout = 5.5\n",
         "orva.toml, строка 2, ключ Orva.timeout: ожидается целое число, а здесь дробное число"},
        {"[Orva]\ntimeout = 99999999999\n",
         "orva.toml, строка 2, ключ Orva.timeout: ожидается целое число от -2147483648 до "
         "2147483647"},
        {"[Orva]\npos = \"1\"\nmerchantId = 7\n",
         "orva.toml, строка 3, ключ Orva.merchantId: ожидается строка, а здесь целое число; "
         "возьмите значение в кавычки"},
        {"[Orva]\npos = 3\n",
         "orva.toml, строка 2, ключ Orva.pos: ожидается строка, а здесь целое число; возьмите "
         "значение в кавычки"},
        {"[Orva]\npassword = true\n",
         "orva.toml, строка 2, ключ Orva.password: ожидается строка, а здесь true или false; "
         "возьмите значение в кавычки"},
        {"[Orva]\nuser = [\"a\"]\n",
         "orva.toml, строка 2, ключ Orva.user: ожидается строка, а здесь список; возьмите "
         "значение в кавычки"},
        {"[Orva.user]\na = 1\n",
         "orva.toml, строка 1, ключ Orva.user: ожидается строка, а здесь таблица; возьмите "
         "значение в кавычки"},
        {"[Orva]\napikey = 2024-01-01\n",
         "orva.toml, строка 2, ключ Orva.apikey: ожидается строка, а здесь дата или время; "
         "возьмите значение в кавычки"},
        {"\nOrva = 5\n",
         "orva.toml, строка 2, ключ Orva: ожидается таблица [Orva], а здесь целое число"},
        {"[[http]]\nproxy = \"\"\n",
         "orva.toml, строка 1, ключ http: ожидается таблица [http], а здесь список"},
        {"[http]\nmaxAnswerBytes = 0\n",
         "orva.toml, строка 2, ключ http.maxAnswerBytes: ожидается целое число от 1 до "
         "2147483647"},
        {"[queue]\nkeepDeliveredDays = -1\n",
         "orva.toml, строка 2, ключ queue.keepDeliveredDays: ожидается целое число от 0 до "
         "2147483647"},
    };
    for (const auto& [toml, text] : rows) {
        EXPECT_EQ(errorOf(toml), text);
    }
}

TEST_F(ConfigFile, ASyntaxErrorIsNamedWithFileLineAndKey)
{
    EXPECT_EQ(errorOf("[Orva]\nserverUrl = http://host/\n"),
              "orva.toml, строка 2, столбец 13, ключ serverUrl: не по правилам TOML; проверьте "
              "кавычки и знак равенства");
    EXPECT_THAT(
        errorOf("[Orva]\nmerchantId = 007\n"),
        AllOf(HasSubstr("orva.toml, строка 2, столбец "), HasSubstr(", ключ merchantId: ")));
    EXPECT_THAT(errorOf("[Orva\n"), HasSubstr("orva.toml, строка 1, "));
    EXPECT_THAT(errorOf("[Orva]\n\nuser = \"a\"\nuser = \"b\"\n"), HasSubstr("строка 4"));
    EXPECT_THAT(errorOf("[Orva]\nuser = \"\xff\"\n"), HasSubstr("строка 2"));
}

TEST_F(ConfigFile, ASyntaxErrorDoesNotShowThePassword)
{
    for (const char* value :
         {"truecanary", "canary", "\"canary", "1canary", "\"ca\" canary", "'canary\n"}) {
        EXPECT_THAT(errorOf(QByteArray("[Orva]\npassword = ") + value + "\n"),
                    Not(HasSubstr("canary")));
    }
}

TEST_F(ConfigFile, AFileThatIsMissingIsNamed)
{
    try {
        config.load(folder.file(u"absent.toml"_s));
        FAIL() << "no error";
    } catch (const BasicException& error) {
        EXPECT_EQ(error.tr().id(), u"configError"_s);
        EXPECT_THAT(withoutFolder(error.tr().ru()),
                    HasSubstr("absent.toml: файл настроек не читается"));
    }
    EXPECT_THROW(config.load(folder.file(QString())), BasicException) << "a folder";
}

TEST_F(ConfigFile, AFailedLoadKeepsWhatWasHeld)
{
    load("[Orva]\nuser = \"first\"\nusr = \"\"\n");
    const QString loaded = config.fileName();
    EXPECT_THROW(config.load(folder.write(u"second.toml"_s, "[Orva]\nuser = 1\n")), BasicException);
    EXPECT_EQ(config.getString(u"Orva:user"_s, {}), u"first"_s);
    EXPECT_EQ(config.warnings().size(), 1);
    EXPECT_EQ(config.fileName(), loaded);
}

TEST_F(ConfigFile, ASecondLoadReplacesEverything)
{
    load("[Orva]\nuser = \"first\"\nusr = \"\"\n");
    load("[Orva]\npos = \"1\"\n");
    EXPECT_EQ(config.getString(u"Orva:user"_s, u"default"_s), u"default"_s);
    EXPECT_TRUE(config.warnings().isEmpty());
}

TEST_F(ConfigFile, UnknownNamesAreWarnedAboutWithTheNearestKnownOne)
{
    const std::pair<QByteArray, std::string> rows[] = {
        {"[Orva]\nserverURL = \"a\"\n", "orva.toml, строка 2: ключ Orva.serverURL неизвестен и не "
                                        "используется; возможно, имелось в виду serverUrl"},
        {"[Orva]\n\napi_key = \"a\"\n", "orva.toml, строка 3: ключ Orva.api_key неизвестен и не "
                                        "используется; возможно, имелось в виду apikey"},
        {"[Orva]\ntime_out = 5\n", "orva.toml, строка 2: ключ Orva.time_out неизвестен и не "
                                   "используется; возможно, имелось в виду timeout"},
        {"[http]\ncafile = \"a\"\n", "orva.toml, строка 2: ключ http.cafile неизвестен и не "
                                     "используется; возможно, имелось в виду caFile"},
        {"[orva]\n", "orva.toml, строка 1: таблица orva неизвестна и не используется; возможно, "
                     "имелось в виду Orva"},
        {"[records]\nfolder = \"a\"\n",
         "orva.toml, строка 1: таблица records неизвестна и не используется"},
        {"[recordin]\n", "orva.toml, строка 1: таблица recordin неизвестна и не используется; "
                         "возможно, имелось в виду recording"},
        {"[http]\ncolour = 1\n",
         "orva.toml, строка 2: ключ http.colour неизвестен и не используется"},
        {"serverUrl = \"a\"\n",
         "orva.toml, строка 1: ключ serverUrl стоит вне таблицы и не используется"},
    };
    for (const auto& [toml, text] : rows) {
        load(toml);
        ASSERT_EQ(config.warnings().size(), 1) << toml.toStdString();
        EXPECT_EQ(withoutFolder(config.warnings().first()), text);
    }
}

TEST_F(ConfigFile, AByteOrderMarkAndWindowsLineEndsAreAccepted)
{
    load("\xEF\xBB\xBF[Orva]\r\nuser = \"u\"\r\n");
    EXPECT_EQ(config.getString(u"Orva:user"_s, {}), u"u"_s);
}

TEST_F(ConfigFile, ASecretMayStandInAFileOfItsOwn)
{
    const std::pair<QByteArray, QString> rows[] = {
        {"s3cret", u"s3cret"_s},
        {"s3cret\n", u"s3cret"_s},
        {"s3cret\r\n", u"s3cret"_s},
        {" пароль \n", u" пароль "_s},
        {"", u""_s},
    };
    for (const auto& [content, secret] : rows) {
        folder.write(u"password"_s, content);
        load("[Orva]\npassword = { file = \"password\" }\napikey = { file = \"" +
             folder.file(u"password"_s).toUtf8() + "\" }\n");
        EXPECT_EQ(config.getString(u"Orva:password"_s, u"default"_s), secret);
        EXPECT_EQ(config.getString(u"Orva:apikey"_s, u"default"_s), secret);
        EXPECT_TRUE(config.warnings().isEmpty()) << config.warnings().join(u'\n').toStdString();
    }
}

TEST_F(ConfigFile, AnUnusableSecretFileIsNamedWithoutItsContent)
{
    folder.write(u"two"_s, "s3cret\nsecond\n");
    folder.write(u"latin"_s, "s3cret\xff");
    folder.write(u"long"_s, QByteArray(4097, 's'));
    const std::pair<QByteArray, std::string> rows[] = {
        {"{ file = \"absent\" }", "файл absent не читается"},
        {"{ file = \"two\" }", "в файле two больше одной строки"},
        {"{ file = \"latin\" }", "файл latin не в кодировке UTF-8"},
        {"{ file = \"long\" }", "файл long длиннее 4096 байт"},
        {"{ file = 5 }", "ожидается строка или { file = \"путь\" }"},
        {"{ path = \"two\" }", "ожидается строка или { file = \"путь\" }"},
        {"{ file = \"two\", more = 1 }", "ожидается строка или { file = \"путь\" }"},
    };
    for (const auto& [value, text] : rows) {
        EXPECT_THAT(errorOf("[Orva]\n\npassword = " + value + '\n'),
                    AllOf(HasSubstr("orva.toml, строка 3, ключ Orva.password: " + text),
                          Not(HasSubstr("s3cret"))));
    }
}

TEST_F(ConfigFile, LevelsThatTheParserCannotBearAreNamedWithFileAndLine)
{
    for (const QByteArray& deep : tests::deepToml()) {
        EXPECT_THAT(errorOf("[Orva]\n" + deep),
                    HasSubstr("orva.toml, строка 2: таблицы и списки вложены глубже 64 уровней"));
    }
}

TEST_F(ConfigFile, WhatIsNoRegularFileIsNamedAtOnce)
{
    const QString pipe = folder.file(u"pipe"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString& file : {u"/dev/zero"_s, pipe}) {
        const QList<ConfigFinding> findings = config.examine(file);
        ASSERT_EQ(findings.size(), 1);
        EXPECT_EQ(findings.first().kind, ConfigFinding::Kind::Unreadable);
        EXPECT_EQ(findings.first().text.ru(),
                  file + u": это не обычный файл; укажите файл настроек"_s);
    }
    for (const QByteArray& file : {QByteArray("/dev/zero"), QByteArray("pipe")}) {
        EXPECT_THAT(errorOf("[Orva]\npassword = { file = \"" + file + "\" }\n"),
                    HasSubstr("orva.toml, строка 2, ключ Orva.password: " + file.toStdString() +
                              " не обычный файл; укажите файл с одной строкой"));
    }
}

TEST_F(ConfigFile, AFileThatIsLargerThanAnyConfigurationIsNamed)
{
    EXPECT_THAT(errorOf(QByteArray(4'194'305, '#')),
                HasSubstr("orva.toml: файл больше 4194304 байт"));
}

TEST_F(ConfigFile, OnlyASecretMayStandInAFileOfItsOwn)
{
    folder.write(u"user"_s, "till");
    EXPECT_THAT(errorOf("[Orva]\nuser = { file = \"user\" }\n"), HasSubstr("ожидается строка"));
}

TEST_F(ConfigFile, FilesWithASecretThatOthersMayReadAreReported)
{
    using Permission = QFile::Permission;
    const QString secret = folder.write(u"password"_s, "s3cret");
    const std::pair<QFile::Permissions, bool> rows[] = {
        {Permission::ReadOwner, false},
        {Permission::ReadOwner | Permission::WriteOwner | Permission::ReadGroup, false},
        {Permission::ReadOwner | Permission::WriteGroup, true},
        {Permission::ReadOwner | Permission::ReadOther, true},
        {Permission::ReadOwner | Permission::WriteOther, true},
    };
    for (const auto& [permissions, reported] : rows) {
        ASSERT_TRUE(QFile::setPermissions(secret, permissions));
        load("[Orva]\npassword = { file = \"password\" }\napikey = { file = \"password\" }\n");
        ASSERT_EQ(config.warnings().size(), reported ? 1 : 0);
        if (reported) {
            EXPECT_EQ(withoutFolder(config.warnings().first()),
                      "password: файл с паролем доступен другим пользователям; закройте доступ "
                      "(chmod g-w,o= password)");
        }
    }
}

TEST_F(ConfigFile, AConfigurationThatOthersMayReadIsReportedOnlyWithASecretInIt)
{
    const std::pair<QByteArray, bool> rows[] = {
        {"[Orva]\npassword = \"s3cret\"\n", true},
        {"[Orva]\napikey = \"s3cret\"\n", true},
        {"[Orva]\nuser = \"till\"\npassword = \"\"\n", false},
    };
    for (const auto& [toml, reported] : rows) {
        const QString file = folder.write(u"orva.toml"_s, toml);
        ASSERT_TRUE(QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadOther));
        config.load(file);
        EXPECT_EQ(config.warnings().size(), reported ? 1 : 0) << toml.toStdString();
    }
}

TEST_F(ConfigFile, AnExaminationFindsEverythingAtOnceAndKeepsWhatIsRight)
{
    using Kind = ConfigFinding::Kind;
    const QString file =
        folder.write(u"orva.toml"_s, "[Orva]\npos = 3\nuser = \"till\"\ntime_out = 5\n"
                                     "[http]\nmaxAnswerBytes = 0\n");
    QStringList found;
    for (const ConfigFinding& finding : config.examine(file)) {
        found.append(u"%1 %2.%3"_s.arg(int(finding.kind)).arg(finding.table, finding.key));
    }
    const QStringList expected{u"%1 Orva.pos"_s.arg(int(Kind::WrongValue)),
                               u"%1 Orva.time_out"_s.arg(int(Kind::UnknownName)),
                               u"%1 http.maxAnswerBytes"_s.arg(int(Kind::WrongValue))};
    EXPECT_EQ(found.join(u'\n').toStdString(), expected.join(u'\n').toStdString());
    EXPECT_EQ(config.getString(u"Orva:user"_s, {}), u"till"_s);
    EXPECT_FALSE(config.contains(u"Orva:pos"_s));
    EXPECT_FALSE(config.contains(u"http:maxAnswerBytes"_s));
}

TEST_F(ConfigFile, AnExaminationOfWhatCannotBeReadFindsOnlyThat)
{
    load("[Orva]\nuser = \"first\"\n");
    const QList<ConfigFinding> findings = config.examine(folder.file(u"absent.toml"_s));
    ASSERT_EQ(findings.size(), 1);
    EXPECT_EQ(findings.first().kind, ConfigFinding::Kind::Unreadable);
    EXPECT_FALSE(config.contains(u"Orva:user"_s)) << "what was held before belongs to another file";
}

} // namespace
