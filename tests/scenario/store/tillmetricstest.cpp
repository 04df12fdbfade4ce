// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What a monitoring sees of a till: right, whole, and nobody's name.

#include "tests/support/shop.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QThread>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

class TillMetrics : public Shop
{
protected:
    QString metrics() const
    {
        const RunResult result = till({u"metrics"_s, path(u"orva.prom"_s)});
        EXPECT_EQ(result.exitCode, 0) << qPrintable(result.output);
        return readFile(u"orva.prom"_s);
    }

    static double valueOf(const QString& text, const QString& figure)
    {
        const QString rest = text.section(u'\n' + figure + u' ', 1);
        EXPECT_FALSE(rest.isEmpty()) << qPrintable(figure + u" in:\n"_s + text);
        return rest.section(u'\n', 0, 0).toDouble();
    }
};

} // namespace

TEST_F(TillMetrics, tellWhatWasDeliveredWhatFailedAndHowLongItTook)
{
    EXPECT_EQ(till({u"sell"_s, u"sale.toml"_s, u"--wait"_s, u"60"_s}).exitCode, 0);
    QString text = metrics();
    EXPECT_EQ(valueOf(text, u"orva_till_delivered_total"_s), 1);
    EXPECT_EQ(valueOf(text, u"orva_till_queue_messages{state=\"waiting\"}"_s), 0);
    EXPECT_GE(valueOf(text, u"orva_till_precheck_seconds_count"_s), 1);
    EXPECT_EQ(valueOf(text, u"orva_till_precheck_seconds_bucket{le=\"+Inf\"}"_s),
              valueOf(text, u"orva_till_precheck_seconds_count"_s));
    EXPECT_GT(valueOf(text, u"orva_till_precheck_seconds_sum"_s), 0);
    EXPECT_GT(valueOf(text, u"orva_till_database_bytes"_s), 1000);
    {
        const auto working = startTill();
        working->command(u"open sale.toml"_s);
        working->command(u"request"_s);
        stopServer();
        working->command(u"close"_s);
        working->kill();
    }
    till({u"queue"_s, u"deliver"_s});
    text = metrics();
    EXPECT_EQ(valueOf(text, u"orva_till_queue_messages{state=\"waiting\"}"_s), 1);
    EXPECT_EQ(valueOf(text, u"orva_till_queue_failed{reason=\"no_answer\"}"_s), 1);
    EXPECT_EQ(valueOf(text, u"orva_till_delivered_total"_s), 1);
    const RunResult checked = runProgram(
        u"sh"_s, {u"-c"_s, u"promtool check metrics <'%1'"_s.arg(path(u"orva.prom"_s))}, folder());
    EXPECT_EQ(checked.output, QString());
    static const QRegularExpression known(
        u"^(# (HELP|TYPE) .*|orva_till_[a-z_]+(\\{(state|reason|le)=\"[a-z_0-9.+I]+[nf]*\"\\})? "
        "[0-9.e+-]+|)$"_s);
    for (const QString& line : text.split(u'\n')) {
        EXPECT_TRUE(known.match(line).hasMatch()) << qPrintable(line);
    }
    EXPECT_FALSE(text.contains(u"2200000000017"_s));
}

TEST_F(TillMetrics, tornDurationsBeginAnew)
{
    EXPECT_EQ(till({u"sell"_s, u"sale.toml"_s, u"--wait"_s, u"60"_s}).exitCode, 0);
    const QString counts = u"till.sqlite.prechecks"_s;
    QFile file(path(counts));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const QByteArray whole = file.readAll();
    ASSERT_GT(whole.size(), 16);
    ASSERT_TRUE(file.resize(whole.size() - 5));
    EXPECT_EQ(valueOf(metrics(), u"orva_till_precheck_seconds_count"_s), 0);
    QByteArray changed = whole;
    changed[9] = char(changed.at(9) + 1);
    file.seek(0);
    file.write(changed);
    file.close();
    EXPECT_EQ(valueOf(metrics(), u"orva_till_precheck_seconds_count"_s), 0);
    EXPECT_EQ(till({u"sell"_s, u"sale.toml"_s, u"--wait"_s, u"60"_s}).exitCode, 0);
    EXPECT_GE(valueOf(metrics(), u"orva_till_precheck_seconds_count"_s), 1);
}

TEST_F(TillMetrics, theFileIsReplacedWholeOrStaysAndEverybodyMayReadIt)
{
    writeFile(u"orva.prom"_s, u"former\n"_s);
    EXPECT_TRUE(metrics().startsWith(u"# HELP "_s));
    struct stat found
    {};
    ASSERT_EQ(::stat(QFile::encodeName(path(u"orva.prom"_s)).constData(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777U, 0644U);
    ASSERT_TRUE(QDir(folder()).mkpath(u"taken.prom/in"_s)); // a name that no file can take
    EXPECT_NE(till({u"metrics"_s, path(u"taken.prom"_s)}).exitCode, 0);
    EXPECT_NE(till({u"metrics"_s, path(u"none/orva.prom"_s)}).exitCode, 0);
    EXPECT_EQ(QDir(folder()).entryList({u"*.prom?*"_s}), QStringList()) << "nothing is left";
}

TEST_F(TillMetrics, theServiceWritesThemWhereTheSettingsNameAFile)
{
    writeFile(u"orva.toml"_s,
              readFile(u"orva.toml"_s)
                  .replace(u"[till]\n"_s, u"[till]\nmetricsFile = \"service.prom\"\n"_s));
    Program service(QStringLiteral(ORVA_TILL), {u"queue"_s, u"deliver"_s, u"--watch"_s}, folder());
    const QDeadlineTimer deadline(20'000);
    while (!QFile::exists(path(u"service.prom"_s)) && !deadline.hasExpired()) {
        QThread::msleep(20);
    }
    EXPECT_TRUE(readFile(u"service.prom"_s).endsWith(u'\n'));
    service.terminate();
    EXPECT_EQ(service.waitForEnd(), 0);
}
