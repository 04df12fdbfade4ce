// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/support/tararchive.h"

#include "tests/unit/till/tilltest.h"
#include "till/support/supportarchive.h"

#include <gtest/gtest.h>
#include <numeric>

using namespace Qt::StringLiterals;
using till::SupportArchive;
using till::TarMember;
namespace tararchive = till::tararchive;

namespace {

constexpr qsizetype block = 512;

QByteArray sample()
{
    return tararchive::written({{u"support.json"_s, "{}"}, {u"checks/1.check"_s, "abc"}},
                               QDateTime::currentDateTime());
}

/// The sample with other bytes in its first header, and a sum that fits them.
QByteArray forged(qsizetype at, const QByteArray& bytes)
{
    QByteArray archive = sample();
    archive.replace(at, bytes.size(), bytes);
    QByteArray header = archive.first(block);
    header.replace(148, 8, QByteArray(8, ' '));
    const int sum = std::accumulate(header.begin(), header.end(), 0, [](int all, char byte) {
        return all + static_cast<unsigned char>(byte);
    });
    archive.replace(148, 8,
                    QByteArray::number(sum, 8).rightJustified(6, '0') + QByteArray("\0 ", 2));
    return archive;
}

QByteArray named(const QByteArray& name)
{
    return forged(0, name.leftJustified(100, '\0'));
}

/// Why it is not read; empty when it is.
QString problemOf(const QByteArray& archive)
{
    try {
        static_cast<void>(tararchive::read(archive));
        return {};
    } catch (const tararchive::Unreadable& reason) {
        return QString::fromUtf8(reason.what());
    }
}

} // namespace

TEST(TarArchive, isReadAsItWasWritten)
{
    for (const qsizetype size : {0, 1, 511, 512, 513, 100'000}) {
        const QByteArray content(size, 'x');
        const QByteArray archive = tararchive::written(
            {{u"a/b-c_1.json"_s, content}, {u"d"_s, "e"}}, QDateTime::currentDateTime());
        EXPECT_EQ(archive.size() % block, 0);
        const QList<TarMember> members = tararchive::read(archive);
        ASSERT_EQ(members.size(), 2);
        EXPECT_EQ(members.first().name, u"a/b-c_1.json"_s);
        EXPECT_EQ(members.first().content, content);
        EXPECT_EQ(members.last().content, "e");
    }
    EXPECT_EQ(problemOf(named("support.json")), QString())
        << "what is forged here is otherwise sound";
}

TEST(TarArchive, withNamesThatLeadElsewhereIsRefused)
{
    for (const char* name : {"../orva.toml", "/etc/passwd", "a/../../b", "..", ".", "a//b", "a/",
                             "", "a\nb", "a b", ".ssh/config", "a\\b", "\xd1\x8f", "-rf"}) {
        EXPECT_TRUE(problemOf(named(name)).contains(u"is none that a till gives"_s)) << name;
    }
    EXPECT_TRUE(problemOf(forged(345, "../")).contains(u"is none that a till gives"_s));
}

TEST(TarArchive, withOtherThanPlainFilesIsRefused)
{
    for (const char kind : {'1', '2', '3', '4', '5', '6', '7', 'L', 'K', 'x', 'g', 'S'}) {
        EXPECT_TRUE(problemOf(forged(156, QByteArray(1, kind))).contains(u"no plain file"_s))
            << kind;
    }
}

TEST(TarArchive, withSizesThatCannotBeIsRefused)
{
    EXPECT_EQ(problemOf(forged(124, "77777777777")), u"it is cut off"_s);
    EXPECT_EQ(problemOf(forged(124, "-0000000001")), u"a number in it is damaged"_s);
    EXPECT_EQ(problemOf(forged(124, "9")), u"a number in it is damaged"_s);
    EXPECT_EQ(problemOf(forged(124, "\x80\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff")),
              u"a number in it is damaged"_s);
}

TEST(TarArchive, thatIsCutOrChangedIsRefusedWhereverItIs)
{
    const QByteArray whole = sample();
    int refused = 0;
    for (qsizetype size = 0; size + block < whole.size(); size += 64, ++refused) {
        EXPECT_NE(problemOf(whole.first(size)), QString()) << size;
    }
    EXPECT_GT(refused, 20);
    for (const qsizetype at : {0, 100, 130, 150, 156, 257, 300, 511}) {
        QByteArray changed = whole;
        changed[at] = char(changed.at(at) ^ 0x55);
        EXPECT_NE(problemOf(changed), QString()) << at;
    }
}

TEST(TarArchive, withANameTwiceIsRefused)
{
    const QByteArray archive =
        tararchive::written({{u"a"_s, "1"}, {u"a"_s, "2"}}, QDateTime::currentDateTime());
    EXPECT_TRUE(problemOf(archive).contains(u"there twice"_s));
}

TEST(SupportArchive, isKnownByItsFirstFile)
{
    const auto refusal = [](const QByteArray& bytes) {
        return tests::refusalOf(
            [&] { static_cast<void>(SupportArchive::parse(bytes, u"case.tar"_s)); });
    };
    EXPECT_TRUE(refusal(sample()).contains(u"a till has not made it"_s));
    SupportArchive archive;
    archive.members = {{u"doctor.txt"_s, "fine"}};
    EXPECT_EQ(SupportArchive::parse(archive.written(), u"case.tar"_s).content(u"doctor.txt"_s),
              "fine");
    const QByteArray newer =
        tararchive::written({{u"support.json"_s, R"({"format":"orva-till support","version":2})"}},
                            QDateTime::currentDateTime());
    EXPECT_TRUE(refusal(newer).contains(u"a newer till has made it"_s));
    EXPECT_TRUE(refusal("no archive").contains(u"case.tar is no support archive"_s));
}
