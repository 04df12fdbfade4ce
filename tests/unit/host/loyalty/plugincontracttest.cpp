// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/loyalty/plugincontract.h"

#include "tests/support/testfolder.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;
using poshost::plugincontract::versionNeededBy;

namespace {

/// A file that asks for this host's library: this program.
QString askingFile()
{
    return QCoreApplication::applicationFilePath();
}

TEST(PluginContract, IsTheNumberInTheLibrarysName)
{
    EXPECT_EQ(versionNeededBy(askingFile()), poshost::plugincontract::version());
}

TEST(PluginContract, IsUnknownOfWhatAsksForNoHostLibrary)
{
    const TestFolder folder;
    EXPECT_EQ(versionNeededBy(QString::fromUtf8(ORVA_HOST_LIBRARY)), std::nullopt);
    EXPECT_EQ(versionNeededBy(folder.file(u"missing.so"_s)), std::nullopt);
    EXPECT_EQ(versionNeededBy(folder.write(u"empty.so"_s, QByteArray())), std::nullopt);
    EXPECT_EQ(versionNeededBy(folder.write(u"text.so"_s, u"no library at all"_s)), std::nullopt);
}

/// Whatever a damaged file says of its places, nothing beside it is read: the sanitizers and the
/// end of the mapped pages would tell.
TEST(PluginContract, IsReadFromDamagedFilesWithoutHarm)
{
    const TestFolder folder;
    const QString name = folder.file(u"damaged.so"_s);
    ASSERT_TRUE(QFile::copy(askingFile(), name));
    QFile file(name);
    ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    constexpr int describing = 1024; // the header and the table of the segments
    const QByteArray sound = file.read(describing);
    ASSERT_EQ(sound.size(), describing);
    int stillKnown = 0;
    for (qsizetype place = 0; place < describing; ++place) {
        QByteArray damaged = sound;
        damaged[place] = static_cast<char>(~damaged[place]);
        ASSERT_TRUE(file.seek(0));
        ASSERT_EQ(file.write(damaged), describing);
        ASSERT_TRUE(file.flush());
        stillKnown += versionNeededBy(name).has_value() ? 1 : 0;
    }
    EXPECT_GT(stillKnown, 0);
    EXPECT_LT(stillKnown, describing);
}

TEST(PluginContract, IsReadFromCutFilesWithoutHarm)
{
    const TestFolder folder;
    const QString name = folder.file(u"cut.so"_s);
    ASSERT_TRUE(QFile::copy(askingFile(), name));
    const qint64 whole = QFileInfo(name).size();
    int known = 0;
    for (qint64 size = whole; size > 0; size -= whole / 300 + 1) {
        ASSERT_TRUE(QFile::resize(name, size));
        known += versionNeededBy(name).has_value() ? 1 : 0;
    }
    EXPECT_GT(known, 0);
    EXPECT_LT(known, 300);
}

} // namespace
