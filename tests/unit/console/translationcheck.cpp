// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What the full build does about translations, on a tree of two texts.

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class TranslationCheck : public ::testing::Test
{
protected:
    TranslationCheck()
    {
        for (const QString& name : {u"scripts"_s, u"till"_s, u"translations"_s}) {
            EXPECT_TRUE(QDir(tree.path()).mkdir(name));
        }
        EXPECT_TRUE(QFile::copy(QStringLiteral(ORVA_TRANSLATIONS_SCRIPT), script()));
        QFile context(tree.filePath(u"till/text.h"_s));
        EXPECT_TRUE(context.open(QIODevice::WriteOnly));
        context.write("struct Text { Q_DECLARE_TR_FUNCTIONS(Till) };\n");
        context.close();
        writeTexts(u"tr(\"Open\"); tr(\"%n checks\", nullptr, 2);"_s);
        EXPECT_EQ(run(u"update"_s).exitCode, 0);
        replace(u"ru"_s, u"<translation type=\"unfinished\"></translation>"_s,
                u"<translation>Открыть</translation>"_s);
        for (const QString& language : {u"ru"_s, u"en"_s}) {
            replace(language, u"<translation type=\"unfinished\">"_s, u"<translation>"_s);
            replace(language, u"<numerusform></numerusform>"_s, u"<numerusform>x</numerusform>"_s);
        }
    }

    struct Outcome
    {
        int exitCode;
        QString output;
    };

    QString script() const { return tree.filePath(u"scripts/translations"_s); }

    void writeTexts(const QString& calls) const
    {
        QFile file(tree.filePath(u"till/texts.cpp"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(u"#include \"till/text.h\"\n"
                   "void texts() { Text::%1 }\n"_s
                       .arg(QString(calls).replace(u"; tr("_s, u"; Text::tr("_s))
                       .toUtf8());
    }

    void replace(const QString& language, const QString& what, const QString& by) const
    {
        QFile file(tree.filePath(u"translations/orva_%1.ts"_s.arg(language)));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        const QString text = QString::fromUtf8(file.readAll()).replace(what, by);
        file.resize(0);
        file.seek(0);
        file.write(text.toUtf8());
    }

    Outcome run(const QString& what) const
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(script(), {what});
        EXPECT_TRUE(process.waitForFinished());
        return {process.exitCode(), QString::fromUtf8(process.readAll())};
    }

    QTemporaryDir tree{QDir::tempPath() + u"/TranslationCheck-XXXXXX"_s};
};

} // namespace

TEST_F(TranslationCheck, passesWhenEverythingIsTranslated)
{
    const Outcome outcome = run(u"check"_s);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.output.toStdString();
}

TEST_F(TranslationCheck, failsOnATextWithoutATranslation)
{
    writeTexts(u"tr(\"Open\"); tr(\"%n checks\", nullptr, 2); tr(\"Close\");"_s);
    const Outcome outcome = run(u"check"_s);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.output.contains(u"translations/orva_ru.ts: not translated: Close"_s))
        << outcome.output.toStdString();
}

TEST_F(TranslationCheck, failsOnATranslationThatIsNotFinished)
{
    replace(u"ru"_s, u"<translation>Открыть"_s, u"<translation type=\"unfinished\">Открыть"_s);
    const Outcome outcome = run(u"check"_s);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.output.contains(u"not translated: Open"_s)) << outcome.output.toStdString();
}

TEST_F(TranslationCheck, failsOnATranslationOfNothing)
{
    writeTexts(u"tr(\"%n checks\", nullptr, 2);"_s);
    const Outcome outcome = run(u"check"_s);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.output.contains(u"no text of the programs any more: Open"_s))
        << outcome.output.toStdString();
}

TEST_F(TranslationCheck, failsOnAMissingNumberForm)
{
    replace(u"en"_s, u"<translation>"_s, u"<translation type=\"unfinished\">"_s);
    const Outcome outcome = run(u"check"_s);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.output.contains(u"orva_en.ts: not translated: %n checks"_s))
        << outcome.output.toStdString();
}

TEST_F(TranslationCheck, updatingTakesNewTextsOverAndDropsOldOnes)
{
    writeTexts(u"tr(\"Close\"); tr(\"%n checks\", nullptr, 2);"_s);
    EXPECT_EQ(run(u"update"_s).exitCode, 0);
    const Outcome outcome = run(u"check"_s);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.output.contains(u"not translated: Close"_s));
    EXPECT_FALSE(outcome.output.contains(u"Open"_s)) << outcome.output.toStdString();
}

TEST_F(TranslationCheck, failsOnATextWhoseContextIsNotSeen)
{
    writeTexts(u"tr(\"Open\"); tr(\"%n checks\", nullptr, 2); } toml::table f() { tr(\"Lost\");"_s);
    const Outcome outcome = run(u"check"_s);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.output.contains(u"the context \"toml\""_s)) << outcome.output.toStdString();
}
