// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/database.h"
#include "tests/support/testfolder.h"

#include <QLoggingCategory>

using namespace Qt::StringLiterals;

namespace {

QStringList known;
QStringList loud;

/// Notes how a category stands by itself, before anybody's rules.
void note(QLoggingCategory* category)
{
    if (QByteArrayView(category->categoryName()).startsWith("poshost.")) {
        known.append(QString::fromLatin1(category->categoryName()));
        if (category->isDebugEnabled()) {
            loud.append(known.last());
        }
    }
}

} // namespace

TEST(HostLog, saysNothingOfItsDebugMessagesUnasked)
{
    const TestFolder folder;
    const QLoggingCategory::CategoryFilter former = QLoggingCategory::installFilter(note);
    const QString file = folder.write(u"open.sqlite"_s, {});
    QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther);
    {
        const poshost::Database database(file); // tells of the file's rights
    }
    QLoggingCategory::installFilter(former);
    EXPECT_TRUE(known.contains(u"poshost.database"_s)) << known.join(u'\n').toStdString();
    EXPECT_EQ(loud, QStringList());
}
