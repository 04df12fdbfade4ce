// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The answers that doubles and benchmarks make up, against the schema.

#include "bench/checkdata.h"
#include "tests/scenario/protocol/schemacheck.h"
#include "tests/support/grantingserver.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

std::string objectionTo(const QByteArray& answer)
{
    return tests::objections(u"answer"_s, {{u"answer"_s, answer}}).first().toStdString();
}

} // namespace

TEST(CannedAnswers, ofTheTillsFakeServerFitTheSchema)
{
    tests::GrantingServer server;
    for (const QString& name : {u"sale-request.xml"_s, u"return-request.xml"_s}) {
        QFile request(QStringLiteral(ORVA_TEST_DATA "/client/") + name);
        ASSERT_TRUE(request.open(QIODevice::ReadOnly));
        server.post({}, request.readAll(), {});
        EXPECT_EQ(objectionTo(server.getResponse()), "");
    }
}

TEST(CannedAnswers, ofTheBenchmarksFitTheSchema)
{
    for (const int lines : {1, 100}) {
        EXPECT_EQ(objectionTo(bench::makeAnswer(lines)), "");
    }
}
