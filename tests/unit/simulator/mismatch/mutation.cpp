// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/simulator/mismatch/mutation.h"

#include "tests/unit/simulator/servicefixture.h"

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

const QString owner = u"2200000000017"_s;

/// Three lines that are worth their quantity at their price.
QByteArray saleDocument(const QString& id)
{
    QByteArray body = document({id,
                                owner,
                                u"176.07"_s,
                                {{u"1"_s, u"1000"_s, u"2.000"_s, u"99.80"_s},
                                 {u"2"_s, u"1001"_s, u"0.765"_s, u"68.77"_s},
                                 {u"3"_s, u"1009"_s, u"1.000"_s, u"7.50"_s}}});
    for (const char* price : {"49.9", "89.9", "7.5"}) {
        body.replace(body.indexOf("<price>10</price>"), 17,
                     QByteArray("<price>") + price + "</price>");
    }
    return body;
}

/// One of two pieces of the first line, which spent 20.00, and the second one, which spent 10.00.
QByteArray returnDocument(const QString& id, const QString& sale)
{
    QByteArray body =
        document({id,
                  owner,
                  u"118.67"_s,
                  {{u"1"_s, u"1000"_s, u"1.000"_s, u"49.90"_s, u"0.00"_s, u"10.00"_s},
                   {u"2"_s, u"1001"_s, u"0.765"_s, u"68.77"_s, u"0.00"_s, u"10.00"_s}},
                  sale});
    for (const char* price : {"49.9", "89.9"}) {
        body.replace(body.indexOf("<price>10</price>"), 17,
                     QByteArray("<price>") + price + "</price>");
    }
    return body;
}

void collect(const QDomElement& element, std::vector<QDomElement>& leaves)
{
    if (element.firstChildElement().isNull()) {
        leaves.push_back(element);
    }
    for (QDomElement at = element.firstChildElement(); !at.isNull(); at = at.nextSiblingElement()) {
        collect(at, leaves);
    }
}

QString pathTo(const QDomElement& element)
{
    QString path = element.tagName();
    QDomElement parent = element.parentNode().toElement();
    for (; parent.tagName() != u"RawCheck"_s; parent = parent.parentNode().toElement()) {
        QString step = parent.tagName();
        if (step == u"RawItem"_s) {
            int position = 1;
            for (QDomElement at = parent.previousSiblingElement(step); !at.isNull();
                 at = at.previousSiblingElement(step)) {
                ++position;
            }
            step += u"[%1]"_s.arg(position);
        }
        path = step + u'/' + path;
    }
    return path;
}

void setText(QDomElement element, const QString& text)
{
    while (!element.firstChild().isNull()) {
        element.removeChild(element.firstChild());
    }
    element.appendChild(element.ownerDocument().createTextNode(text));
}

int below(std::mt19937& random, size_t limit)
{
    return static_cast<int>(random() % limit);
}

/// Another amount with as many decimals, from 0 up.
void changeAmount(QDomElement leaf, std::mt19937& random, Mutation& mutation)
{
    const qint64 before = qRound64(leaf.text().toDouble() * 100);
    qint64 by = 1 + below(random, 300);
    if (by <= before && below(random, 2) == 0) {
        by = -by;
    }
    setText(leaf, writeKopecks(before + by));
    mutation.kind = u"another amount"_s;
    mutation.kopecks = by;
}

/// Another text of the same kind: one digit or letter is exchanged.
void changeText(QDomElement leaf, std::mt19937& random, Mutation& mutation)
{
    QString text = leaf.text();
    const qsizetype at = below(random, static_cast<size_t>(text.size()));
    text[at] = text[at] == u'7' ? u'4' : u'7';
    setText(leaf, text);
    mutation.kind = u"another text"_s;
}

bool isAmount(const QString& text)
{
    return text.size() > 3 && text[text.size() - 3] == u'.' && text.count(u'.') == 1;
}

} // namespace

Answer StrictStory::ask(const Step& step)
{
    return service.handle(post(step.endpoint, step.body));
}

void StrictStory::mustBeTaken(const Step& step)
{
    const Answer answer = ask(step);
    ASSERT_EQ(answer.status, 200) << step.endpoint << ": " << answer.reason.toStdString();
}

QByteArray StrictStory::confirmationOf(const QByteArray& answer)
{
    // 15.85 of discount on 176.07, 20.00 and 10.00 points
    const QString awards = u"items/RawItem[%1]/awards/RawItemAwards/%2"_s;
    QHash<QString, QStringList> used;
    Kopecks due = 17'607 - 3'000;
    for (int i = 0; i < 3; ++i) {
        const Kopecks discount =
            readKopecks(valueAt(answer, awards.arg(i).arg(u"discount"_s))).value_or(0) +
            readKopecks(valueAt(answer, awards.arg(i).arg(u"discountOnChange"_s))).value_or(0);
        due -= discount;
        used.insert(QString::number(i + 1), {discount > 0 ? writeKopecks(discount) : QString()});
    }
    used[u"1"_s].append(u"20.00"_s);
    used[u"2"_s].append(u"10.00"_s);
    used.remove(u"3"_s);
    return confirmation(answer, used, writeKopecks(due));
}

void StrictStory::book(const QString& id)
{
    const QByteArray body = confirmationOf(ask({"precheck", saleDocument(id)}).body);
    mustBeTaken({"paymenttry", body});
    mustBeTaken({"checkconfirm", body});
}

StrictStory::Step StrictStory::next(std::mt19937& random)
{
    const QString id = u"check-%1"_s.arg(++number);
    const int kind = below(random, 5);
    if (kind == 0) {
        return {"precheck", saleDocument(id)};
    }
    if (kind < 3) {
        const QByteArray body = confirmationOf(ask({"precheck", saleDocument(id)}).body);
        if (kind == 1) {
            return {"paymenttry", body};
        }
        mustBeTaken({"paymenttry", body});
        return {"checkconfirm", body};
    }
    const QString sale = u"sale-%1"_s.arg(number);
    book(sale);
    const QByteArray body = returnDocument(id, sale);
    if (kind == 3) {
        return {"precheck", body};
    }
    mustBeTaken({"precheck", body});
    mustBeTaken({"paymenttry", body});
    return {"checkconfirm", body};
}

Mutation mutated(const QByteArray& body, std::mt19937& random)
{
    QDomDocument document;
    EXPECT_TRUE(document.setContent(body));
    std::vector<QDomElement> leaves;
    collect(document.documentElement(), leaves);
    Mutation mutation;
    const int kind = below(random, 8);
    if (kind >= 4) { // half of the changes are of money
        std::erase_if(leaves, [](const QDomElement& leaf) { return !isAmount(leaf.text()); });
    }
    QDomElement leaf = leaves[random() % leaves.size()];
    mutation.path = pathTo(leaf);
    if (kind == 0) {
        leaf.parentNode().removeChild(leaf);
        mutation.kind = u"missing"_s;
    } else if (kind == 1) {
        leaf.setTagName(leaf.tagName() + u"s"_s);
        mutation.kind = u"misspelt"_s;
    } else if (kind == 2 && leaf.text().contains(u'.')) {
        setText(leaf, leaf.text().replace(u'.', u','));
        mutation.kind = u"with a comma"_s;
    } else if (isAmount(leaf.text())) {
        changeAmount(leaf, random, mutation);
    } else if (!leaf.text().isEmpty()) {
        changeText(leaf, random, mutation);
    }
    mutation.body = document.toByteArray(1);
    return mutation;
}

} // namespace simulator::test
