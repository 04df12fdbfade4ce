// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Counts the steps that the host takes through a document: the functions of Qt's DOM that take a
// step are defined here as well, so that the host library calls these, which count and pass on.
// Lists of nodes look their entries up one after another, so the host must not index them at all.

#include "host/xml/xmlutils.h"
#include "host/xml/xmlwrapper.h"
#include "tests/unit/client/printers.h"

#include <QDomDocument>

#include <cstdlib>
#include <dlfcn.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

struct Steps
{
    int downwards = 0;
    int sideways = 0;
    int intoLists = 0;
};

Steps counted;

template <typename Function>
Function* original(const char* mangledName)
{
    void* const address = dlsym(RTLD_NEXT, mangledName);
    if (address == nullptr) {
        std::abort();
    }
    return reinterpret_cast<Function*>(address);
}

using Walk = QDomElement(const QDomNode*, const QString&, const QString&);
using Item = QDomNode(const QDomNodeList*, int);

} // namespace

// The names in quotes are those that the compiler gives to the member functions of QDomNode and
// QDomNodeList; a member function takes its object as a hidden first argument.
Q_DECL_EXPORT QDomElement
countFirstChild(const QDomNode* node, const QString& name,
                const QString& space) __asm__("_ZNK8QDomNode17firstChildElementERK7QStringS2_");
Q_DECL_EXPORT QDomElement
countNextSibling(const QDomNode* node, const QString& name,
                 const QString& space) __asm__("_ZNK8QDomNode18nextSiblingElementERK7QStringS2_");
Q_DECL_EXPORT QDomNode countListItem(const QDomNodeList* list,
                                     int index) __asm__("_ZNK12QDomNodeList4itemEi");

QDomElement countFirstChild(const QDomNode* node, const QString& name, const QString& space)
{
    static auto* const next = original<Walk>("_ZNK8QDomNode17firstChildElementERK7QStringS2_");
    ++counted.downwards;
    return next(node, name, space);
}

QDomElement countNextSibling(const QDomNode* node, const QString& name, const QString& space)
{
    static auto* const next = original<Walk>("_ZNK8QDomNode18nextSiblingElementERK7QStringS2_");
    ++counted.sideways;
    return next(node, name, space);
}

QDomNode countListItem(const QDomNodeList* list, int index)
{
    static auto* const next = original<Item>("_ZNK12QDomNodeList4itemEi");
    ++counted.intoLists;
    return next(list, index);
}

namespace {

/// A check with that many lines, each with two other elements between it and the next.
QDomDocument checkOf(int lines)
{
    QDomDocument document;
    QDomElement root = document.createElement(u"check"_s);
    QDomElement items = document.createElement(u"items"_s);
    for (int i = 0; i < lines; ++i) {
        QDomElement line = document.createElement(u"line"_s);
        line.appendChild(xmlutils::createTextElement(document, u"id"_s, QString::number(i)));
        items.appendChild(line);
        items.appendChild(document.createElement(u"space"_s));
        items.appendChild(document.createElement(u"space"_s));
    }
    items.appendChild(document.createElement(u"last"_s));
    root.appendChild(items);
    document.appendChild(root);
    return document;
}

Steps stepsToExtractAll(int lines)
{
    const QDomDocument document = checkOf(lines);
    counted = {};
    const auto found =
        XmlWrapper().extractElements(document.documentElement(), {u"items"_s, u"line"_s, u"id"_s});
    const Steps steps = counted;
    EXPECT_EQ(found.size(), lines);
    return steps;
}

Steps stepsToExtractTheLast(int lines)
{
    const QDomDocument document = checkOf(lines);
    counted = {};
    const auto found =
        XmlWrapper().extractElement(document.documentElement(), {u"items"_s, u"last"_s});
    const Steps steps = counted;
    EXPECT_EQ(found.tagName(), u"last"_s);
    return steps;
}

Steps stepsToInsert(int lines)
{
    QDomDocument document = checkOf(lines);
    QDomElement root = document.documentElement();
    const auto node = xmlutils::createTextElement(document, u"new"_s, u"1"_s);
    counted = {};
    XmlWrapper().insertElement(root, {u"items"_s, u"last"_s, u"added"_s}, node,
                               XmlWrapper::Operation::Award);
    const Steps steps = counted;
    EXPECT_EQ(node.parentNode().parentNode().toElement().tagName(), u"last"_s);
    return steps;
}

TEST(XmlWalk, ExtractingAllLinesTakesOneStepSidewaysForEach)
{
    const int lines = 2000;
    const Steps steps = stepsToExtractAll(lines);
    // one element "items", then each line and each line's "id", and the end of each row of siblings
    EXPECT_EQ(steps.downwards, 1 + 1 + lines);
    EXPECT_EQ(steps.sideways, 1 + lines + lines);
    EXPECT_EQ(steps.intoLists, 0);
}

TEST(XmlWalk, FourTimesTheLinesTakeFourTimesTheSteps)
{
    const Steps few = stepsToExtractAll(500);
    const Steps many = stepsToExtractAll(2000);
    EXPECT_GE(few.sideways, 500) << "the steps are not counted";
    EXPECT_LE(many.sideways, 4 * few.sideways);
    EXPECT_LE(many.downwards, 4 * few.downwards);
    EXPECT_EQ(many.intoLists, 0);
}

TEST(XmlWalk, OneElementIsReachedInOneStepALevel)
{
    const Steps steps = stepsToExtractTheLast(2000);
    EXPECT_EQ(steps.downwards, 2);
    EXPECT_EQ(steps.sideways, 0);
    EXPECT_EQ(steps.intoLists, 0);
}

TEST(XmlWalk, AnInsertionGoesDownOneStepALevel)
{
    const Steps steps = stepsToInsert(2000);
    EXPECT_EQ(steps.downwards, 3);
    EXPECT_EQ(steps.sideways, 0);
    EXPECT_EQ(steps.intoLists, 0);
}

} // namespace
