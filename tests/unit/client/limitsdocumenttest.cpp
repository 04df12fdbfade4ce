// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// docs/protocol.md, which those who write servers read, names the limits that hold.

#include "tests/unit/client/printers.h"

#include "client/xmllimits.h"

#include <QFile>
#include <QLocale>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
namespace limit = orva::xmllimit;

TEST(Limits, ofAnAnswerStandInTheDocumentForServersAsTheyHold)
{
    QFile file(QStringLiteral(ORVA_PROTOCOL));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString document = QString::fromUtf8(file.readAll());
    const QString chapter =
        document.section(u"\n## Limits of an answer\n"_s, 1).section(u"\n## "_s, 0, 0);
    ASSERT_FALSE(chapter.isEmpty());
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    const std::pair<QString, qint64> rows[] = {
        {u"| levels of elements | %1 |"_s, limit::levels},
        {u"| attributes of an element | %1 |"_s, limit::attributes},
        {u"| elements | %1 |"_s, limit::elements},
        {u"| attributes of the XML declaration | %1 |"_s, limit::declarationAttributes},
        {u"in sum | %1 |"_s, limit::entries},
        {u"a missing `id` is 0) | %1 |"_s, limit::sameLines},
        {u"an element 7 more | %1 |"_s, limit::nodes},
        {u"counts 6 | %1 |"_s, limit::characters},
        {u"of them in sum | %1 |"_s, limit::escapeMoves}};
    for (const auto& [row, value] : rows) {
        const QString line = row.arg(english.toString(value));
        EXPECT_TRUE(chapter.contains(line)) << qPrintable(line);
    }
    EXPECT_TRUE(chapter.contains(
        u"an attribute %1, the first attribute of an element %2 more"_s.arg(limit::attributeNodes)
            .arg(limit::attributeTableNodes)));
    EXPECT_TRUE(chapter.contains(u"counts %1 |"_s.arg(limit::longestEscape)));
}
