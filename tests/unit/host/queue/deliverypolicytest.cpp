// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/queue/deliverypolicy.h"

#include <QTimeZone>
#include <gtest/gtest.h>
#include <limits>
#include <map>

using namespace Qt::StringLiterals;
using namespace poshost::deliverypolicy;

namespace {

/// The table of answers, typed once more and independently.
Meaning expected(int status, bool attemptedBefore)
{
    static const std::map<int, Meaning> single{
        {401, Meaning::WrongAuthorization}, {403, Meaning::WrongAuthorization},
        {404, Meaning::WrongAddress},       {405, Meaning::WrongAddress},
        {408, Meaning::ServerAway},         {425, Meaning::ServerAway},
        {429, Meaning::ServerAway},
    };
    if (status == 409) {
        return attemptedBefore ? Meaning::StepDone : Meaning::Duplicate;
    }
    if (single.contains(status)) {
        return single.at(status);
    }
    switch (status / 100) {
    case 2:
        return Meaning::StepDone;
    case 3:
        return Meaning::WrongAddress;
    case 4:
        return Meaning::Refused;
    case 5:
        return Meaning::ServerError;
    default:
        return Meaning::ServerAway;
    }
}

TEST(DeliveryPolicy, EveryStatusMeansWhatTheTableSays)
{
    for (int status = 100; status <= 699; ++status) {
        for (const bool attemptedBefore : {false, true}) {
            EXPECT_EQ(meaningOf({false, false, status, attemptedBefore}),
                      expected(status, attemptedBefore))
                << status << attemptedBefore;
        }
    }
}

TEST(DeliveryPolicy, AFailedTransportMeansTheServerIsAwayUnlessTheStatusIsAnError)
{
    for (const int status : {0, 100, 200, 204, 302}) {
        EXPECT_EQ(meaningOf({true, false, status, true}), Meaning::ServerAway) << status;
    }
    for (int status = 400; status <= 599; ++status) {
        EXPECT_EQ(meaningOf({true, false, status, false}), expected(status, false)) << status;
    }
}

TEST(DeliveryPolicy, WhatCanNeverBeSentIsRefused)
{
    EXPECT_EQ(meaningOf({true, true, 0, false}), Meaning::Refused);
}

TEST(DeliveryPolicy, BackOffDoublesFromOneSecondToFiveMinutes)
{
    const qint64 seconds[] = {1, 2, 4, 8, 16, 32, 64, 128, 240, 240, 240};
    int failures = 0;
    for (const qint64 expectedSeconds : seconds) {
        ++failures;
        EXPECT_EQ(backOff(failures, 0), expectedSeconds * 1000) << failures;
        EXPECT_EQ(backOff(failures, 0.5), expectedSeconds * 1125) << failures;
        EXPECT_LE(backOff(failures, 1), expectedSeconds * 1250) << failures;
        EXPECT_LE(backOff(failures, 1), 5 * 60 * 1000) << failures;
    }
    EXPECT_EQ(backOff(std::numeric_limits<int>::max(), 1), 5 * 60 * 1000);
    EXPECT_EQ(backOff(0, 0), 1000);
}

TEST(DeliveryPolicy, RetryAfterIsReadAsSecondsOrDateUpToAnHour)
{
    const QDateTime now(QDate(2026, 3, 2), QTime(12, 0), QTimeZone::utc());
    const std::pair<QString, qint64> rows[] = {
        {u"0"_s, 0},
        {u"17"_s, 17'000},
        {u" 17 "_s, 17'000},
        {u"3600"_s, 3'600'000},
        {u"3601"_s, 3'600'000},
        {u"18446744073709551615"_s, 3'600'000},
        {u"Mon, 02 Mar 2026 12:00:30 GMT"_s, 30'000},
        {u"Mon, 02 Mar 2026 11:00:00 GMT"_s, 0},
        {u"Tue, 03 Mar 2026 12:00:00 GMT"_s, 3'600'000},
        {u""_s, 0},
        {u"-5"_s, 0},
        {u"1.5"_s, 0},
        {u"soon"_s, 0},
        {u"Mon, 32 Mar 2026 12:00:30 GMT"_s, 0},
        {u"99999999999999999999999"_s, 0},
    };
    for (const auto& [text, milliseconds] : rows) {
        EXPECT_EQ(retryAfter(text, now), milliseconds) << text.toStdString();
    }
    const QDateTime local = now.toTimeZone(QTimeZone(3 * 3600));
    EXPECT_EQ(retryAfter(u"Mon, 02 Mar 2026 12:00:30 GMT"_s, local), 30'000);
}

TEST(DeliveryPolicy, EveryMeaningIsExplainedWithItsStatus)
{
    EXPECT_TRUE(explain(Meaning::StepDone, 200, {}).isEmpty());
    for (const Meaning meaning : {Meaning::Duplicate, Meaning::WrongAuthorization,
                                  Meaning::WrongAddress, Meaning::Refused}) {
        EXPECT_TRUE(explain(meaning, 477, poshost::Message::plain(u"transport"_s))
                        .ru()
                        .contains(u"HTTP 477"_s));
    }
    EXPECT_EQ(explain(Meaning::ServerAway, 0, poshost::Message::plain(u"нет соединения"_s)).ru(),
              u"нет соединения"_s);
    EXPECT_EQ(explain(Meaning::ServerError, 503, {}).ru(), u"HTTP 503"_s);
    EXPECT_EQ(explain(Meaning::Refused, 0, poshost::Message::plain(u"нет адреса"_s)).ru(),
              u"нет адреса"_s);
}

} // namespace
