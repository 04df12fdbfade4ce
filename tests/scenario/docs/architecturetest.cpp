// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What docs/architecture.md says about the tree is so.

#include "tests/scenario/docs/picture.h"
#include "tests/scenario/docs/tree.h"

#include <QFileInfo>
#include <QSet>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QString page()
{
    return tree::textOf(u"docs/architecture.md"_s);
}

/// What stands under a heading.
QString chapter(const QString& heading)
{
    const QString text = page().section(u"\n## "_s + heading + u'\n', 1).section(u"\n## "_s, 0, 0);
    EXPECT_FALSE(text.isEmpty()) << qPrintable(heading);
    return text;
}

/// What may use everything and is used by nothing, so that it has no place in the picture.
const QStringList& outside()
{
    static const QStringList houses{u"bench"_s, u"cmake"_s, u"docs"_s, u"tests"_s};
    return houses;
}

QStringList housesInside()
{
    QStringList houses = tree::houses();
    houses.removeIf([](const QString& house) { return outside().contains(house); });
    return houses;
}

const QList<Include>& includes()
{
    static const QList<Include> all = includesBelow(housesInside());
    return all;
}

void expectNothing(const QStringList& wrong)
{
    EXPECT_TRUE(wrong.isEmpty()) << qPrintable(wrong.join(u'\n'));
}

} // namespace

TEST(Architecture, everyIncludeBetweenRoomsIsAnArrowOfThePicture)
{
    ASSERT_GT(includes().size(), 1000);
    expectNothing(Picture(page()).forbidden(includes()));
}

TEST(Architecture, everyArrowOfThePictureIsAnIncludeAndLeadsAsItIsDrawn)
{
    const Picture picture(page());
    ASSERT_GT(picture.arrowCount(), 80);
    expectNothing(picture.unused(includes()));
    expectNothing(picture.misdrawn());
}

TEST(Architecture, everySourceStandsInARoomAndEveryRoomHasSources)
{
    const Picture picture(page());
    QStringList wrong;
    QSet<QString> seen;
    for (const QString& house : housesInside()) {
        for (const QString& source : tree::sourcesBelow(house)) {
            const QString room = picture.roomOf(source);
            seen.insert(room);
            if (room.isEmpty()) {
                wrong.append(source + u": give its folder a line in the picture"_s);
            }
        }
    }
    for (const QString& room : picture.rooms()) {
        if (!seen.contains(room)) {
            wrong.append(room + u": rub out the room, there is nothing in it"_s);
        }
    }
    expectNothing(wrong);
}

TEST(Architecture, theForbiddenIsSeen)
{
    const Picture picture(page());
    const QList<Include> planted{
        {u"till/desk/cashdesk.cpp"_s, u"client/interface.h"_s},
        {u"till/checks/check.h"_s, u"till/screen/output.h"_s},
        {u"plugin/orva.h"_s, u"host/http/operationbudget.h"_s},
        {u"client/precheck.cpp"_s, u"simulator/documents/check.h"_s},
        {u"host/document/document.h"_s, u"host/services/config.h"_s},
        {u"host/services/config.h"_s, u"host/config/configreader_p.h"_s},
        {u"till/desk/cashdesk.cpp"_s, u"tests/support/shop.h"_s},
        {u"till/basement/cellar.cpp"_s, u"till/text.h"_s},
        {u"till/desk/cashdesk.cpp"_s, u"../client/interface.h"_s},
    };
    for (const Include& include : planted) {
        EXPECT_EQ(picture.forbidden({include}).size(), 1)
            << qPrintable(include.source + u" includes "_s + include.header);
    }
    EXPECT_EQ(picture.forbidden({{u"plugin/orva.cpp"_s, u"client/exception.h"_s}}).size(), 0);
}

TEST(Architecture, whatIsDrawnWronglyIsSeen)
{
    const Picture picture(
        u"```rooms\nALL = a b\n  a --> b\n    ~~> c\n  b --> a\n  c --> d ALL\n```"_s);
    EXPECT_EQ(picture.rooms(), QStringList({u"a"_s, u"b"_s, u"c"_s}));
    // no ~~> is an arrow, a is above b, a and b are above c, and there is no d
    EXPECT_EQ(picture.misdrawn().size(), 5) << qPrintable(picture.misdrawn().join(u'\n'));
    EXPECT_EQ(picture.unused({{u"a/x.cpp"_s, u"b/x.h"_s}, {u"c/x.cpp"_s, u"b/x.h"_s}}).size(), 3);
}

TEST(Architecture, everyFileThatThePageNamesIsThere)
{
    const QStringList named = tree::pathsIn(page());
    ASSERT_GT(named.size(), 60);
    QStringList missing;
    for (const QString& path : named) {
        if (!tree::exists(path)) {
            missing.append(path);
        }
    }
    expectNothing(missing);
    // each step of a check names the files that take it
    const QStringList steps =
        tree::captured(chapter(u"A check, from the card to the confirmation"_s),
                       u"^\\| \\d+ \\|.*\\| ([^|]*) \\|$"_s);
    ASSERT_GE(steps.size(), 10);
    for (const QString& files : steps) {
        EXPECT_FALSE(tree::pathsIn(files).isEmpty()) << qPrintable(files);
    }
}

TEST(Architecture, everyThreadIsListed)
{
    const QStringList listed = tree::pathsIn(chapter(u"Threads"_s));
    QSet<QString> known;
    for (const QString& path : listed) {
        known.insert(path.section(u'.', 0, 0));
    }
    QStringList unlisted;
    qsizetype found = 0;
    for (const QString& house : housesInside()) {
        for (const QString& source : tree::sourcesBelow(house)) {
            const bool hasThread =
                !tree::captured(
                     tree::textOf(source),
                     u"(std::j?thread\\b(?!::)|std::async\\b|QThread::create|: public QThread)"_s)
                     .isEmpty();
            found += hasThread ? 1 : 0;
            if (hasThread && !known.contains(source.section(u'.', 0, 0))) {
                unlisted.append(source);
            }
        }
    }
    EXPECT_GE(found, 8);
    expectNothing(unlisted);
}

TEST(Architecture, everyLibraryHasItsReason)
{
    QStringList used;
    const QString call = u"^\\s*(?:find_package|pkg_check_modules)\\(([\\w-]+)"_s;
    QStringList builders{u"CMakeLists.txt"_s, u"cmake/OrvaLog4Qt.cmake"_s};
    for (const QString& house : housesInside()) {
        builders.append(house + u"/CMakeLists.txt"_s);
    }
    for (const QString& builder : builders) {
        used += tree::captured(tree::textOf(builder), call);
    }
    QStringList explained = tree::captured(chapter(u"Why each library"_s),
                                           u"^\\| `([\\w-]+)` \\| \\S.* \\| \\S.* \\|$"_s);
    ASSERT_GE(explained.size(), 5);
    used.sort();
    used.removeDuplicates();
    explained.sort();
    EXPECT_EQ(explained, used) << qPrintable(explained.join(u' ')) << '\n'
                               << qPrintable(used.join(u' '));
}
