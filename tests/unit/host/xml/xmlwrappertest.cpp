// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/xml/xmlwrapper.h"
#include "host/xml/xmlutils.h"
#include "tests/unit/client/printers.h"

#include <QDomDocument>
#include <QStringList>

#include <gtest/gtest.h>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

using Operation = XmlWrapper::Operation;

QDomDocument parsed(const QString& xml)
{
    QDomDocument document;
    EXPECT_TRUE(document.setContent(xml)) << xml.toStdString();
    return document;
}

QStringList texts(const QList<QDomElement>& elements)
{
    QStringList found;
    for (const auto& element : elements) {
        found.append(element.text());
    }
    return found;
}

/// Whether, and for which names, the callback was called.
class Missing
{
public:
    XmlWrapper::OnMissing callback()
    {
        return [this](const QString& name) { names.append(name); };
    }
    QStringList names;
};

const QString check = u"<check><items><line><id>1</id></line><other/><line><id>2</id>"
                      "<id>2b</id></line></items><line><id>9</id></line>"
                      "<items><line><id>3</id></line><line/></items></check>"_s;

TEST(XmlWrapper, ExtractsAllElementsOfAPathInDocumentOrder)
{
    const QDomDocument document = parsed(check);
    const XmlWrapper wrapper;
    EXPECT_EQ(texts(wrapper.extractElements(document.documentElement(),
                                            {u"items"_s, u"line"_s, u"id"_s})),
              (QStringList{u"1"_s, u"2"_s, u"2b"_s, u"3"_s}));
    EXPECT_EQ(wrapper.extractElements(document.documentElement(), {u"items"_s}).size(), 2);
    EXPECT_EQ(texts(wrapper.extractElements(document.documentElement(), {u"line"_s})),
              QStringList{u"9"_s});
}

TEST(XmlWrapper, ExtractsNothingWhereThePathLeadsNowhere)
{
    const QDomDocument document = parsed(check);
    const XmlWrapper wrapper;
    const QDomElement root = document.documentElement();
    EXPECT_TRUE(wrapper.extractElements(root, {u"Items"_s}).isEmpty()) << "case counts";
    EXPECT_TRUE(wrapper.extractElements(root, {u"items"_s, u"id"_s}).isEmpty())
        << "no level is skipped";
    EXPECT_TRUE(wrapper.extractElements(root, {u"check"_s}).isEmpty())
        << "the path starts below the parent";
    EXPECT_TRUE(wrapper.extractElements(root, {}).isEmpty());
    EXPECT_TRUE(wrapper.extractElements(QDomElement(), {u"items"_s}).isEmpty());
}

TEST(XmlWrapper, ExtractedElementsAreThoseOfTheDocument)
{
    const QDomDocument document = parsed(u"<a><b/></a>"_s);
    QDomElement found = XmlWrapper().extractElements(document.documentElement(), {u"b"_s}).at(0);
    found.setAttribute(u"seen"_s, u"yes"_s);
    EXPECT_EQ(document.documentElement().firstChildElement().attribute(u"seen"_s), u"yes"_s);
}

TEST(XmlWrapper, TakesTheFirstElementOfEachName)
{
    const QDomDocument document = parsed(check);
    Missing missing;
    const QDomElement id = XmlWrapper().extractElement(
        document.documentElement(), {u"items"_s, u"line"_s, u"id"_s}, missing.callback());
    EXPECT_EQ(id.text(), u"1"_s);
    EXPECT_TRUE(missing.names.isEmpty());
}

TEST(XmlWrapper, DoesNotTurnBackFromTheFirstElement)
{
    const QDomDocument document = parsed(u"<a><b/><b><c>2</c></b></a>"_s);
    Missing missing;
    const QDomElement found = XmlWrapper().extractElement(document.documentElement(),
                                                          {u"b"_s, u"c"_s}, missing.callback());
    EXPECT_TRUE(found.isNull());
    EXPECT_EQ(missing.names, QStringList{u"c"_s});
}

TEST(XmlWrapper, NamesTheFirstElementThatIsMissingOnce)
{
    const QDomDocument document = parsed(u"<a><client><account/></client></a>"_s);
    const QList<QString> path{u"client"_s, u"account"_s, u"record"_s, u"balance"_s};
    Missing missing;
    EXPECT_TRUE(
        XmlWrapper().extractElement(document.documentElement(), path, missing.callback()).isNull());
    EXPECT_EQ(missing.names, QStringList{u"record"_s});
    missing.names.clear();
    EXPECT_TRUE(XmlWrapper()
                    .extractElement(parsed(u"<a/>"_s).documentElement(), path, missing.callback())
                    .isNull());
    EXPECT_EQ(missing.names, QStringList{u"client"_s});
}

TEST(XmlWrapper, IsSilentAboutMissingElementsByDefault)
{
    const QDomDocument document = parsed(u"<a/>"_s);
    EXPECT_TRUE(XmlWrapper().extractElement(document.documentElement(), {u"b"_s}).isNull());
}

TEST(XmlWrapper, ANullParentMissesTheFirstName)
{
    Missing missing;
    const QDomElement found =
        XmlWrapper().extractElement(QDomElement(), {u"b"_s, u"c"_s}, missing.callback());
    EXPECT_TRUE(found.isNull());
    EXPECT_EQ(missing.names, QStringList{u"b"_s});
}

TEST(XmlWrapper, AnEmptyPathLeadsToTheParent)
{
    const QDomDocument document = parsed(u"<a/>"_s);
    Missing missing;
    EXPECT_EQ(
        XmlWrapper().extractElement(document.documentElement(), {}, missing.callback()).tagName(),
        u"a"_s);
    EXPECT_TRUE(missing.names.isEmpty());
}

class XmlInsertion : public ::testing::TestWithParam<Operation>
{
protected:
    /// The document after an element "new" of that text was inserted at the path below the root.
    static QString inserted(const QString& xml, const QList<QString>& path,
                            const QStringList& newTexts)
    {
        QDomDocument document = parsed(xml);
        QDomElement root = document.documentElement();
        QDomDocument scratch;
        for (const QString& text : newTexts) {
            XmlWrapper().insertElement(
                root, path, xmlutils::createTextElement(scratch, u"new"_s, text), GetParam());
        }
        return document.toString(-1);
    }
};

INSTANTIATE_TEST_SUITE_P(BothOperations, XmlInsertion,
                         ::testing::Values(Operation::Payment, Operation::Award));

TEST_P(XmlInsertion, MakesEachMissingElementAsLastChild)
{
    EXPECT_EQ(inserted(u"<a><x/></a>"_s, {u"b"_s, u"c"_s}, {u"1"_s}),
              u"<a><x/><b><c><new>1</new></c></b></a>"_s);
}

TEST_P(XmlInsertion, JoinsWhatIsThere)
{
    EXPECT_EQ(inserted(u"<a><b><c><old/></c></b><x/></a>"_s, {u"b"_s, u"c"_s}, {u"1"_s, u"2"_s}),
              u"<a><b><c><old/><new>1</new><new>2</new></c></b><x/></a>"_s);
}

TEST_P(XmlInsertion, CreatesOnlyWhatIsMissing)
{
    EXPECT_EQ(inserted(u"<a><b><x/></b><y/></a>"_s, {u"b"_s, u"c"_s}, {u"1"_s}),
              u"<a><b><x/><c><new>1</new></c></b><y/></a>"_s);
}

TEST_P(XmlInsertion, ASecondNodeJoinsTheFirst)
{
    EXPECT_EQ(inserted(u"<a/>"_s, {u"payments"_s, u"payment"_s}, {u"10.00"_s, u"cash"_s}),
              u"<a><payments><payment><new>10.00</new><new>cash</new></payment></payments></a>"_s);
}

TEST_P(XmlInsertion, GoesIntoTheFirstOfSeveral)
{
    EXPECT_EQ(inserted(u"<a><b><c/></b><b/></a>"_s, {u"b"_s, u"c"_s}, {u"1"_s}),
              u"<a><b><c><new>1</new></c></b><b/></a>"_s);
}

TEST_P(XmlInsertion, AnEmptyPathAttachesToTheParent)
{
    EXPECT_EQ(inserted(u"<a><x/></a>"_s, {}, {u"1"_s}), u"<a><x/><new>1</new></a>"_s);
}

TEST_P(XmlInsertion, TakesANodeOutOfTheDocumentThatMadeIt)
{
    QDomDocument document = parsed(u"<a/>"_s);
    QDomElement root = document.documentElement();
    auto scratch = std::make_unique<QDomDocument>();
    const QDomElement node = xmlutils::createTextElement(*scratch, u"new"_s, u"1"_s);
    XmlWrapper().insertElement(root, {u"b"_s}, node, GetParam());
    scratch.reset();
    EXPECT_EQ(document.toString(-1), u"<a><b><new>1</new></b></a>"_s);
}

TEST_P(XmlInsertion, WorksOnAParentThatIsNotAttachedYet)
{
    QDomDocument document = parsed(u"<a/>"_s);
    QDomElement parent = document.createElement(u"items"_s);
    QDomDocument scratch;
    XmlWrapper().insertElement(parent, {u"line"_s, u"awards"_s},
                               xmlutils::createTextElement(scratch, u"new"_s, u"1"_s), GetParam());
    document.documentElement().appendChild(parent);
    EXPECT_EQ(document.toString(-1),
              u"<a><items><line><awards><new>1</new></awards></line></items></a>"_s);
}

TEST_P(XmlInsertion, OfANullNodeStillMakesThePath)
{
    QDomDocument document = parsed(u"<a/>"_s);
    QDomElement root = document.documentElement();
    XmlWrapper().insertElement(root, {u"b"_s, u"c"_s}, QDomNode(), GetParam());
    EXPECT_EQ(document.toString(-1), u"<a><b><c/></b></a>"_s);
}

TEST_P(XmlInsertion, BelowANullParentChangesNothing)
{
    QDomElement parent;
    QDomDocument scratch;
    const QDomElement node = xmlutils::createTextElement(scratch, u"new"_s, u"1"_s);
    XmlWrapper().insertElement(parent, {u"b"_s}, node, GetParam());
    EXPECT_TRUE(parent.isNull());
    EXPECT_EQ(node.text(), u"1"_s);
}

TEST(XmlWrapper, OperationsHaveTheValuesThatPluginsRelyOn)
{
    EXPECT_EQ(static_cast<int>(Operation::Payment), 0);
    EXPECT_EQ(static_cast<int>(Operation::Award), 1);
}

TEST(XmlUtils, ATextElementHoldsOneTextNode)
{
    QDomDocument document;
    const QDomElement element = xmlutils::createTextElement(document, u"name"_s, u"1.50"_s);
    EXPECT_EQ(element.tagName(), u"name"_s);
    EXPECT_EQ(element.childNodes().size(), 1);
    EXPECT_TRUE(element.firstChild().isText());
    EXPECT_EQ(element.text(), u"1.50"_s);
    EXPECT_EQ(element.ownerDocument(), document);
    EXPECT_TRUE(element.parentNode().isNull()) << "not yet attached";
    EXPECT_FALSE(document.hasChildNodes());
}

TEST(XmlUtils, AnEmptyTextStillGivesATextNode)
{
    QDomDocument document;
    const QDomElement element = xmlutils::createTextElement(document, u"name"_s, QString());
    EXPECT_EQ(element.childNodes().size(), 1);
    EXPECT_TRUE(element.firstChild().isText());
    EXPECT_EQ(element.text(), QString());
}

TEST(XmlUtils, ATextIsEscapedWhenItIsWritten)
{
    QDomDocument document;
    document.appendChild(xmlutils::createTextElement(document, u"n"_s, u"<a> & \"б\""_s));
    EXPECT_EQ(document.toString(-1), u"<n>&lt;a> &amp; \"б\"</n>"_s);
    EXPECT_EQ(parsed(document.toString(-1)).documentElement().text(), u"<a> & \"б\""_s);
}

} // namespace
