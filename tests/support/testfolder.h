// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <concepts>
#include <gtest/gtest.h>

/// A temporary folder that carries the running test's name.
class TestFolder
{
public:
    TestFolder() : folder(QDir::tempPath() + u'/' + name() + QLatin1StringView("-XXXXXX"))
    {
        EXPECT_TRUE(folder.isValid()) << folder.errorString().toStdString();
    }

    QString file(const QString& fileName) const { return folder.filePath(fileName); }

    /// Writes a file that only its owner may read and returns its path.
    QString write(const QString& fileName, const QByteArray& content) const
    {
        QFile written(file(fileName));
        EXPECT_TRUE(written.open(QIODevice::WriteOnly));
        EXPECT_EQ(written.write(content), content.size());
        written.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        return written.fileName();
    }
    template <std::same_as<QString> Text>
    QString write(const QString& fileName, const Text& content) const
    {
        return write(fileName, content.toUtf8());
    }

private:
    static QString name()
    {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        QString text =
            QString::fromUtf8(test->test_suite_name()) + u'.' + QString::fromUtf8(test->name());
        return text.replace(u'/', u'-');
    }

    QTemporaryDir folder;
};
