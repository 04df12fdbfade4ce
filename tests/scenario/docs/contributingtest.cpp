// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What CONTRIBUTING.md tells people to type exists. What it says of the linters and proofs is run
// by them.

#include "tests/scenario/docs/tree.h"

#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QString contributing()
{
    return tree::textOf(u"CONTRIBUTING.md"_s);
}

/// The command lines, as words, without what is said about them.
QList<QStringList> commands()
{
    QList<QStringList> found;
    const QStringList lines = tree::captured(contributing(), u"^(?: {4}| {8})([.a-z].*)$"_s);
    for (const QString& line : lines) {
        found.append(line.section(u" #"_s, 0, 0).split(u' ', Qt::SkipEmptyParts));
    }
    return found;
}

/// Those that begin so.
QList<QStringList> commandsOf(const QString& program)
{
    QList<QStringList> found = commands();
    found.removeIf([&](const QStringList& words) { return words.first() != program; });
    EXPECT_FALSE(found.isEmpty()) << qPrintable(program);
    return found;
}

void expectWordIn(const QString& word, const QStringList& known)
{
    EXPECT_TRUE(known.contains(word)) << qPrintable(word + u" is none of "_s + known.join(u", "_s));
}

} // namespace

TEST(Contributing, namesFilesThatAreThere)
{
    const QStringList named = tree::pathsIn(contributing());
    ASSERT_GE(named.size(), 10);
    for (const QString& path : named) {
        EXPECT_TRUE(tree::exists(path)) << qPrintable(path);
    }
    for (const QString& link : tree::captured(contributing(), u"\\]\\(([^)#]+)\\)"_s)) {
        EXPECT_TRUE(tree::exists(link)) << qPrintable(link);
    }
}

TEST(Contributing, startsProgramsOfTheTree)
{
    const QList<QStringList> all = commands();
    ASSERT_GE(all.size(), 15);
    for (const QStringList& words : all) {
        if (words.first() != u"cmake"_s) {
            const QFileInfo program(QStringLiteral(ORVA_TREE) + u'/' + words.first());
            EXPECT_TRUE(program.isExecutable()) << qPrintable(words.first());
        }
        for (const QString& word : words.mid(1)) {
            const bool isSource = word.endsWith(".cpp"_L1) || word.endsWith(".h"_L1);
            EXPECT_TRUE(!isSource || tree::exists(word)) << qPrintable(word);
        }
    }
}

TEST(Contributing, testsFoldersAndNamesThatThereAre)
{
    qsizetype names = 0;
    for (const QStringList& words : commandsOf(u"./test"_s)) {
        if (words.value(1) == "-R"_L1) {
            ++names;
            QStringList tests;
            for (const QString& source : tree::sourcesBelow(u"tests"_s)) {
                tests += tree::captured(
                    tree::textOf(source),
                    u"^TEST(?:_F|_P)?\\((\\w*%1\\w*|\\w+, \\w*%1\\w*)"_s.arg(words.value(2)));
            }
            EXPECT_FALSE(tests.isEmpty()) << qPrintable(words.value(2));
        } else if (words.size() > 1) {
            const QString folder = words.value(1) + u"/CMakeLists.txt"_s;
            EXPECT_TRUE(tree::exists(u"tests/unit/"_s + folder) ||
                        tree::exists(u"tests/scenario/"_s + folder))
                << qPrintable(folder);
        }
    }
    EXPECT_GE(names, 1);
}

TEST(Contributing, namesPresetsLintersProofsAndOptionsThatThereAre)
{
    const QStringList presets =
        tree::captured(tree::textOf(u"CMakePresets.json"_s), u"\"name\": \"([\\w-]+)\""_s);
    for (const QStringList& words : commandsOf(u"cmake"_s)) {
        expectWordIn(words.value(words.indexOf(u"--preset"_s) + 1), presets);
    }
    const QStringList named = tree::captured(
        contributing().section(u"presets besides:"_s, 1).section(u'.', 0, 0), u"`([\\w-]+)`"_s);
    EXPECT_GE(named.size(), 5);
    for (const QString& preset : named) {
        expectWordIn(preset, presets);
    }

    const QStringList linters =
        tree::captured(tree::textOf(u"scripts/lint"_s), u"^lint_(\\w+)\\(\\)"_s);
    for (const QStringList& words : commandsOf(u"scripts/lint"_s)) {
        expectWordIn(words.value(1), linters);
    }

    const QString prove = tree::textOf(u"scripts/prove"_s);
    const QStringList proofs = tree::captured(prove, u"^prove_([\\w-]+)\\(\\)"_s);
    const QStringList options = tree::captured(prove, u"^ +(--\\w+)\\)"_s);
    for (const QStringList& words : commandsOf(u"scripts/prove"_s)) {
        for (const QString& word : words.mid(1)) {
            if (!word.at(0).isDigit()) {
                expectWordIn(word, word.startsWith(u'-') ? options : proofs);
            }
        }
    }
    for (const QStringList& words : commandsOf(u"scripts/translations"_s)) {
        EXPECT_TRUE(tree::textOf(u"scripts/translations"_s).contains(words.value(1)));
    }
}
