// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/casereport/xmlpane_p.h"

#include "host/queue/xmltext.h"
#include "protocol/xmltree.h"
#include "till/text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till {

using protocol::XmlTree;

namespace {

/// Where a document leads deeper, nobody could read the indentation.
constexpr int deepest = 30;

void writeElement(ReportPage& page, const XmlTree::Element& element, int depth)
{
    page.lines(QString(2 * std::min(depth, deepest), u' '));
    page.element(u"span"_s, element.name, u"element"_s);
    if (!element.attributes.isEmpty()) {
        page.element(u"span"_s, element.attributes, u"attribute"_s);
    }
    const QString text = element.text.trimmed();
    if (!text.isEmpty()) {
        page.text(u": "_s + text);
    }
}

void writeAsItIs(ReportPage& page, const QByteArray& document)
{
    const ReportPage::Element plain(page, u"pre"_s);
    page.lines(document.isEmpty() ? Text::tr("(empty)") : poshost::xmltext::decoded(document));
}

} // namespace

XmlPane::XmlPane(const QByteArray& document, const QString& shownAs)
    : content(document), prefix(shownAs)
{
    const XmlTree tree(content);
    for (qsizetype i = 0; i < tree.elements().size(); ++i) {
        indexes.insert(tree.path(i), i);
    }
}

QString XmlPane::idOf(const QString& path) const
{
    const auto found = indexes.constFind(path);
    return found == indexes.constEnd() ? QString() : u"%1-%2"_s.arg(prefix).arg(*found);
}

void XmlPane::pointedFrom(const QString& path, const PointedFrom& where)
{
    if (const auto found = indexes.constFind(path); found != indexes.constEnd()) {
        back[*found].append(where);
    }
}

void XmlPane::write(ReportPage& page) const
{
    const XmlTree tree(content);
    if (tree.elements().isEmpty()) {
        writeAsItIs(page, content);
        return;
    }
    {
        const ReportPage::Element list(page, u"ul"_s, u"xml"_s);
        QList<int> depths(tree.elements().size());
        for (qsizetype i = 0; i < tree.elements().size(); ++i) {
            const XmlTree::Element& element = tree.elements().at(i);
            depths[i] = element.parent < 0 ? 0 : depths.at(element.parent) + 1;
            const ReportPage::Element line(page, u"li"_s);
            page.attribute(u"id"_s, u"%1-%2"_s.arg(prefix).arg(i));
            writeElement(page, element, depths.at(i));
            for (const PointedFrom& where : back.value(i)) {
                page.text(u"  "_s);
                page.link(where.id, u"← "_s + where.words);
            }
        }
    }
    if (!tree.problem().isEmpty()) {
        page.element(u"p"_s, tree.problem(), u"wrong"_s);
        writeAsItIs(page, content); // the rest of it too
    }
}

} // namespace till
