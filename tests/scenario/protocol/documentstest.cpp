// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// The documents that stand in the tests against the schemas.

#include "tests/scenario/protocol/deviations.h"
#include "tests/scenario/protocol/sourcedocuments.h"

#include <QMap>

#include <algorithm>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using tests::Deviation;
using tests::WireDocument;

namespace {

/// A document with what xmllint says of it; whatever is no check at all is objected to as that.
struct Judged
{
    WireDocument document;
    QString objection;
};

std::vector<Judged> judged(const std::vector<WireDocument>& documents)
{
    std::vector<Judged> result;
    QMap<QString, std::vector<WireDocument>> bySchema;
    for (const WireDocument& document : documents) {
        const QString schema = tests::schemaFor(document.text);
        if (schema.isEmpty()) {
            result.push_back({document, u"the root is no RawCheck\n"_s});
        } else {
            bySchema[schema].push_back(document);
        }
    }
    for (auto it = bySchema.cbegin(); it != bySchema.cend(); ++it) {
        const QStringList said = tests::objections(it.key(), it.value());
        for (size_t i = 0; i < it.value().size(); ++i) {
            result.push_back({it.value()[i], said.at(static_cast<qsizetype>(i))});
        }
    }
    return result;
}

std::string shown(const Judged& entry)
{
    return entry.document.name.toStdString() + ":\n" + entry.document.text.toStdString() + "\n" +
           entry.objection.toStdString();
}

} // namespace

TEST(WireDocuments, ofTheTestsFitTheSchemasUnlessTheListOfDeviationsSaysWhyNot)
{
    const std::vector<Deviation> listed = tests::deviations();
    int fitting = 0;
    for (const Judged& entry : judged(tests::sourceDocuments())) {
        const bool isListed = std::any_of(listed.begin(), listed.end(), [&](const Deviation& row) {
            return row.covers(entry.document);
        });
        EXPECT_TRUE(entry.objection.isEmpty() || isListed)
            << "does not fit and is not in tests/scenario/protocol/deviations.toml: "
            << shown(entry);
        EXPECT_FALSE(entry.objection.isEmpty() && isListed)
            << "fits and must go from tests/scenario/protocol/deviations.toml: " << shown(entry);
        fitting += entry.objection.isEmpty() ? 1 : 0;
    }
    EXPECT_GE(fitting, 12); // the files alone: the search has found them
}

TEST(WireDocuments, everyDeviationThatIsListedIsThere)
{
    const std::vector<WireDocument> documents = tests::sourceDocuments();
    for (const Deviation& row : tests::deviations()) {
        EXPECT_TRUE(std::any_of(documents.begin(), documents.end(),
                                [&](const WireDocument& document) { return row.covers(document); }))
            << row.name().toStdString();
    }
}

TEST(WireDocuments, areFoundInSourcesWithJoinedAndEscapedTexts)
{
    const auto literals = tests::stringLiterals(
        u"f(u\"<a b=\\\"1\\\">\"\n  \"\\n\\u0416</a>\"_s, \"x\"); // \"no\"\nR\"(<b>\\n</b>)\"; '\"'"_s);
    ASSERT_EQ(literals.size(), 3U);
    EXPECT_EQ(literals[0], QByteArray("<a b=\"1\">\nЖ</a>"));
    EXPECT_EQ(literals[1], QByteArray("x"));
    EXPECT_EQ(literals[2], QByteArray("<b>\\n</b>"));
}
