// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/subject.h"

#include "host/xml/xmlutils.h"

#include <QDomDocument>
#include <QStringList>

#include <gtest/gtest.h>
#include <memory>

using namespace Qt::StringLiterals;

void contract::addXmlPromises() {}

namespace contract {
namespace {

using Operation = XmlWrapper::Operation;

const QString check = u"<check><items><line><id>1</id></line><other/><line><id>2</id>"
                      "<id>2b</id></line></items><line><id>9</id></line>"
                      "<items><line><id>3</id></line><line/></items></check>"_s;

QDomDocument parsed(const QString& xml)
{
    QDomDocument document;
    EXPECT_TRUE(document.setContent(xml)) << xml.toStdString();
    return document;
}

QStringList textsAt(const QList<QString>& path)
{
    const QDomDocument document = parsed(check);
    QStringList found;
    for (const QDomElement& element :
         subject().makeXmlWrapper()->extractElements(document.documentElement(), path)) {
        found.append(element.text());
    }
    return found;
}

TEST(XmlContract, ExtractsAllElementsOfAPathInDocumentOrder)
{
    EXPECT_EQ(textsAt({u"items"_s, u"line"_s, u"id"_s}),
              (QStringList{u"1"_s, u"2"_s, u"2b"_s, u"3"_s}));
    EXPECT_EQ(textsAt({u"line"_s}), QStringList{u"9"_s});
}

TEST(XmlContract, ExtractsNothingWhereThePathLeadsNowhere)
{
    EXPECT_TRUE(textsAt({u"Items"_s}).isEmpty()) << "case counts";
    EXPECT_TRUE(textsAt({u"items"_s, u"id"_s}).isEmpty()) << "no level is skipped";
    EXPECT_TRUE(textsAt({u"check"_s}).isEmpty()) << "the path starts below the parent";
}

TEST(XmlContract, ExtractsTheFirstElementOfAPath)
{
    const QDomDocument document = parsed(check);
    QStringList missing;
    const QDomElement found = subject().makeXmlWrapper()->extractElement(
        document.documentElement(), {u"items"_s, u"line"_s, u"id"_s},
        [&missing](const QString& name) { missing.append(name); });
    EXPECT_EQ(found.text(), u"1"_s);
    EXPECT_TRUE(missing.isEmpty());
}

TEST(XmlContract, NamesTheFirstElementThatIsMissingOnceAndGivesNone)
{
    const QDomDocument document = parsed(u"<a><b/><b><c>2</c></b></a>"_s);
    QStringList missing;
    const QDomElement found = subject().makeXmlWrapper()->extractElement(
        document.documentElement(), {u"b"_s, u"c"_s, u"d"_s},
        [&missing](const QString& name) { missing.append(name); });
    EXPECT_TRUE(found.isNull());
    EXPECT_EQ(missing, QStringList{u"c"_s}) << "the first \"b\" counts, and it has no \"c\"";
}

TEST(XmlContract, WithoutACallbackAMissingElementIsNullAndNothingElse)
{
    const QDomDocument document = parsed(u"<a/>"_s);
    const auto wrapper = subject().makeXmlWrapper();
    EXPECT_TRUE(wrapper->extractElement(document.documentElement(), {u"b"_s}).isNull());
}

class XmlInsertionContract : public ::testing::TestWithParam<Operation>
{
protected:
    static QString inserted(const QString& xml, const QList<QString>& path,
                            const QStringList& newTexts)
    {
        QDomDocument document = parsed(xml);
        QDomElement root = document.documentElement();
        for (const QString& text : newTexts) {
            subject().makeXmlWrapper()->insertElement(
                root, path, xmlutils::createTextElement(document, u"new"_s, text), GetParam());
        }
        return document.toString(-1);
    }
};

INSTANTIATE_TEST_SUITE_P(BothOperations, XmlInsertionContract,
                         ::testing::Values(Operation::Payment, Operation::Award));

TEST_P(XmlInsertionContract, MakesEachMissingElementAsLastChild)
{
    EXPECT_EQ(inserted(u"<a><x/></a>"_s, {u"b"_s, u"c"_s}, {u"1"_s}),
              u"<a><x/><b><c><new>1</new></c></b></a>"_s);
}

TEST_P(XmlInsertionContract, JoinsThePathThatIsThere)
{
    EXPECT_EQ(inserted(u"<a><b><c><old/></c></b><b/></a>"_s, {u"b"_s, u"c"_s}, {u"1"_s, u"2"_s}),
              u"<a><b><c><old/><new>1</new><new>2</new></c></b><b/></a>"_s);
}

TEST_P(XmlInsertionContract, TakesANodeOfAnotherDocument)
{
    QDomDocument document = parsed(u"<a/>"_s);
    QDomElement root = document.documentElement();
    auto other = std::make_unique<QDomDocument>();
    const QDomElement node = xmlutils::createTextElement(*other, u"new"_s, u"1"_s);
    subject().makeXmlWrapper()->insertElement(root, {u"b"_s}, node, GetParam());
    other.reset();
    EXPECT_EQ(document.toString(-1), u"<a><b><new>1</new></b></a>"_s);
}

TEST(XmlContract, TheOperationsHaveTheNumbersThatPlugInsRelyOn)
{
    EXPECT_EQ(int(Operation::Payment), 0);
    EXPECT_EQ(int(Operation::Award), 1);
}

TEST(XmlContract, ATextElementHoldsOneTextNodeAndIsNotAttached)
{
    QDomDocument document;
    for (const QString& text : {u"1.50 & <б>"_s, QString()}) {
        const QDomElement element = xmlutils::createTextElement(document, u"name"_s, text);
        EXPECT_EQ(element.tagName(), u"name"_s);
        ASSERT_EQ(element.childNodes().size(), 1);
        EXPECT_TRUE(element.firstChild().isText());
        EXPECT_EQ(element.text(), text);
        EXPECT_EQ(element.ownerDocument(), document);
        EXPECT_TRUE(element.parentNode().isNull());
    }
}

} // namespace
} // namespace contract
