// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/printers.h"

#include "client/interface.h"
#include "tests/support/mocked.h"
#include "tests/unit/client/domlimits.h"
#include "tests/unit/client/hostilexml.h"

#include <algorithm>

namespace tests {

namespace {

/// Characters that are written as escapes.
int escapesIn(const QString& text, bool isValue)
{
    int count = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        const bool always = c == u'<' || c == u'&' || c == u'\r';
        const bool inValues = isValue && (c == u'"' || c == u'\n' || c == u'\t');
        const bool endsCdata =
            c == u'>' && i >= 2 && text.at(i - 1) == u']' && text.at(i - 2) == u']';
        count += always || inValues || endsCdata ? 1 : 0;
    }
    return count;
}

qint64 movesIn(const QString& text, bool isValue)
{
    return escapesIn(text, isValue) * qint64(text.size());
}

void measure(const QDomNode& node, DomSize& size)
{
    ++size.nodes;
    if (node.isText() && !node.isCDATASection()) {
        size.escapeMoves += movesIn(node.nodeValue(), false);
    }
    if (node.isElement()) {
        ++size.elements;
        const QDomNamedNodeMap attributes = node.attributes();
        size.attributes = std::max(size.attributes, attributes.count());
        for (int i = 0; i < attributes.count(); ++i) {
            size.escapeMoves += movesIn(attributes.item(i).nodeValue(), true);
        }
    }
}

} // namespace

DomSize sizeOf(const QDomDocument& document)
{
    DomSize size;
    size.hasDeclarations =
        !document.doctype().internalSubset().isEmpty() || document.doctype().entities().count() > 0;
    int level = 0;
    QDomNode node = document;
    while (!node.isNull()) {
        measure(node, size);
        size.levels = std::max(size.levels, node.isElement() ? level : 0);
        if (!node.firstChild().isNull()) {
            node = node.firstChild();
            ++level;
            continue;
        }
        while (!node.isNull() && node.nextSibling().isNull()) {
            node = node.parentNode();
            --level;
        }
        if (!node.isNull()) {
            node = node.nextSibling();
        }
    }
    return size;
}

::testing::AssertionResult isWithinLimits(const QDomDocument& document)
{
    const DomSize size = sizeOf(document);
    if (size.levels <= levelLimit && size.attributes <= attributeLimit &&
        size.escapeMoves <= escapeMoveLimit && size.nodes <= nodeLimit &&
        size.elements <= elementLimit && !size.hasDeclarations) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
           << size.levels << " levels, " << size.attributes << " attributes, " << size.escapeMoves
           << " escape moves, " << size.nodes << " nodes, " << size.elements << " elements, "
           << (size.hasDeclarations ? "declarations" : "no declarations");
}

QDomDocument received(const QByteArray& body)
{
    ::testing::NiceMock<MockRestClient> transport;
    const Registered<RestClient> registration(transport);
    ON_CALL(transport, getHttpStatusCode()).WillByDefault(::testing::Return(200));
    ON_CALL(transport, getResponse()).WillByDefault(::testing::Return(body));
    orva::Interface client;
    client.sendRequest(orva::Interface::RequestType::Precheck, QDomDocument());
    return client.getLastResponse();
}

} // namespace tests
