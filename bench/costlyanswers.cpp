// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "bench/costlyanswers.h"

#include "bench/checkdata.h"
#include "bench/rows.h"
#include "client/harmlessxml.h"
#include "client/repeatedlines.h"
#include "client/xmllimits.h"
#include "host/xml/xmlwrapper.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>

#include <algorithm>

namespace bench {

namespace {

namespace limit = orva::xmllimit;

/// What a till needs before it goes on.
constexpr QByteArrayView head =
    "<RawCheck><client><RawCheckClient><name>A</name><surname>B</surname><account><RawCheckAccount>"
    "<balance>250.50</balance></RawCheckAccount></account></RawCheckClient></client><awards>"
    "<RawCheckAwards><allowBonus>60.00</allowBonus><awardBonus>8.25</awardBonus></RawCheckAwards>"
    "</awards>";
constexpr QByteArrayView tail = "</RawCheck>";

/// Far above what any limit lets pass, and below the bytes that a transport takes.
constexpr qsizetype mostBytes = 8 * 1024 * 1024;

QByteArray answerOf(const QByteArray& before, const QByteArray& piece, qsizetype count,
                    const QByteArray& behind)
{
    return head.toByteArray() + before + piece.repeated(count) + behind + tail.toByteArray();
}

/// The piece as often as the limits allow, between the other two.
QByteArray grown(const QByteArray& piece, const QByteArray& before = {},
                 const QByteArray& behind = {}, qsizetype bytes = mostBytes)
{
    qsizetype least = 0;
    qsizetype most =
        (bytes - head.size() - before.size() - behind.size() - tail.size()) / piece.size();
    if (orva::harmInXml(answerOf(before, piece, most, behind)).isEmpty()) {
        return answerOf(before, piece, most, behind);
    }
    while (most - least > 1) {
        const qsizetype middle = (least + most) / 2;
        const bool passes = orva::harmInXml(answerOf(before, piece, middle, behind)).isEmpty();
        (passes ? least : most) = middle;
    }
    return answerOf(before, piece, least, behind);
}

QByteArray elementWith(int attributes, const QByteArray& prefix)
{
    QByteArray text = "<a";
    for (int i = 0; i < attributes; ++i) {
        text += ' ' + prefix + QByteArray::number(i) + "='1'";
    }
    return text + "/>";
}

QByteArray levelsOf(const QByteArray& tag)
{
    return tag.repeated(limit::levels - 2);
}

/// Declarations that are in force for everything within them.
QByteArray nestedNamespaces()
{
    constexpr int levels = 200;
    constexpr int eachLevel = 60;
    QByteArray text;
    for (int level = 0; level < levels; ++level) {
        text += "<x";
        for (int i = level * eachLevel; i < (level + 1) * eachLevel; ++i) {
            text += " xmlns:p" + QByteArray::number(i) + "='u'";
        }
        text += '>';
    }
    return text;
}
QByteArray nestedEnds()
{
    return QByteArray("</x>").repeated(200);
}

/// Nearly all nodes that an answer may have.
QByteArray manyElements()
{
    return QByteArray("<a>1</a>").repeated(limit::nodes / 2 - 20);
}

/// Nearly all elements that an answer may have, named so that they are nearly all of its
/// characters as well.
QByteArray longNames()
{
    constexpr qsizetype nameLength = 16;
    return "<" + QByteArray(nameLength, 'n') + "/>";
}

/// As many goods lines as an answer may have, each granted everything on a position of its own,
/// or all on one.
QByteArray manyLines(bool isOnOne = false)
{
    QByteArray lines;
    for (int number = 1; number <= limit::entries; ++number) {
        lines += "<RawItem><id>" + QByteArray::number(isOnOne ? 1 : number) +
                 "</id><awards><RawItemAwards><discount>1</discount><discountOnChange>1"
                 "</discountOnChange><awardBonus>1</awardBonus><allowBonusInCurrency>1"
                 "</allowBonusInCurrency></RawItemAwards></awards></RawItem>";
    }
    return lines;
}

/// What an input of the fuzzers costs that has grown to the limits.
struct JudgedInput
{
    QByteArray content; ///< what was repeated: all the answers would be a gigabyte
    double cost = 0;    ///< seconds that the parser and the writer take with the answer
    bool isRefused = false;
};

JudgedInput judge(const QByteArray& content)
{
    JudgedInput judged{content};
    // at the limits, and not at a part of them: which of them stops it decides its cost
    const QByteArray answer = grown(content);
    judged.cost = seconds(Clock::OwnWork, [&answer, &judged] {
        QDomDocument document;
        document.setContent(answer);
        const auto xml = QSharedPointer<XmlWrapper>::create();
        judged.isRefused = !orva::harmInLines(xml, document.documentElement()).isEmpty();
        document.toString(1);
    });
    return judged;
}

QList<QByteArray> costliest(std::vector<JudgedInput> inputs, qsizetype count)
{
    std::sort(inputs.begin(), inputs.end(),
              [](const auto& left, const auto& right) { return left.cost > right.cost; });
    QList<QByteArray> answers;
    for (const JudgedInput& input : inputs) {
        if (answers.size() < count) {
            answers.append(grown(input.content));
        }
    }
    return answers;
}

/// What stands within the input's root; empty where there is none.
QByteArray contentOf(const QByteArray& input)
{
    QDomDocument document;
    if (!orva::harmInXml(input).isEmpty() || !document.setContent(input)) {
        return {};
    }
    const QByteArray whole = document.toByteArray(-1);
    const QByteArray name = document.documentElement().tagName().toUtf8();
    const qsizetype begin = whole.indexOf('>', whole.indexOf('<' + name)) + 1;
    const qsizetype end = whole.lastIndexOf("</" + name);
    return end > begin ? whole.mid(begin, end - begin) : QByteArray();
}

} // namespace

std::vector<CostlyAnswer> answersAtTheLimits()
{
    const QByteArray message = "<RawCheckInforming><communicationChannel>check"
                               "</communicationChannel><info>x</info></RawCheckInforming>";
    // as the costliest of what the fuzzers found has them
    const QByteArray unknown =
        "<pos date='-1e308' total='0x10'><chType>1</chType><RawCheck name='1'"
        " date='2'>9223372036854775808</RawCheck></pos>";
    const QByteArray escapes = "<a>" + QByteArray("&lt;").repeated(6'000);
    return {
        {"ordinary-10000", [] { return makeAnswer(10'000); }},
        {"lines", [] { return answerOf("<items>", manyLines(), 1, "</items>"); }},
        {"unknown", [=] { return grown(unknown); }},
        {"lines-and-unknown", [=] { return grown(unknown, "<items>" + manyLines() + "</items>"); }},
        {"escaped-values", [] { return grown("<a b='&lt;&quot;&#9;' c='&amp;'/>"); }},
        {"messages", [=] { return grown(message, "<informing>", "</informing>"); }},
        {"elements", [] { return grown("<a>1</a>"); }},
        {"long-names", [] { return grown(longNames()); }},
        {"names-and-cdata",
         [] { return grown("<![CDATA[x]]>", longNames().repeated(limit::elements - 20)); }},
        {"mixed", [] { return grown("<a/>x"); }},
        {"attributes", [] { return grown(elementWith(limit::attributes, "x")); }},
        {"attribute-tables", [] { return grown("<a b=''/>"); }},
        {"namespaces", [] { return grown("<p0:a/>", nestedNamespaces(), nestedEnds()); }},
        {"namespace-each", [] { return grown("<a:b xmlns:b='v'/>"); }},
        {"comments", [] { return grown("<!---->"); }},
        {"cdata", [] { return grown("<![CDATA[x]]>"); }},
        {"text", [] { return grown("x", "<a>", "</a>"); }},
        {"cyrillic", [] { return grown("ю", "<a>", "</a>"); }},
        {"value", [] { return grown("x", "<a b='", "'/>"); }},
        {"quotes", [] { return grown("<a b='" + QByteArray("\"").repeated(100) + "'/>"); }},
        {"escapes", [] { return grown("<a>" + QByteArray("&lt;").repeated(100) + "</a>"); }},
        {"moves", [=] { return grown("x", escapes, "</a>"); }},
        {"deep", [] { return grown("<b/>", levelsOf("<a>"), levelsOf("</a>")); }},
        {"everything", [] { return grown("x", manyElements() + "<a>", "</a>"); }},
        {"refused-lines", [=] { return grown(unknown, "<items>" + manyLines(true) + "</items>"); },
         true},
        {"refused-nodes", [] { return answerOf({}, "<!---->", limit::nodes, {}); }, true}};
}

FuzzedAnswers worstOfFuzzers(const QString& folder, qsizetype count)
{
    std::vector<JudgedInput> taken;
    std::vector<JudgedInput> refused;
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo& info : files) {
        QFile file(info.filePath());
        const QByteArray content = file.open(QIODevice::ReadOnly) ? contentOf(file.readAll()) : "";
        if (!content.isEmpty() && content.size() < mostBytes / 2) {
            const JudgedInput judged = judge(content);
            (judged.isRefused ? refused : taken).push_back(judged);
        }
    }
    return {costliest(std::move(taken), count), costliest(std::move(refused), count)};
}

} // namespace bench
