// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/simulator/testchecks.h"

#include "simulator/rules/rulesreader.h"

#include <QDomDocument>
#include <QFile>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

QString lineXml(const TextLine& line, bool isReturn)
{
    const QString quantity = isReturn ? u"returnedQuantity"_s : u"quantity"_s;
    QString xml = u"  <RawItem>\n   <%1>%2</%1>\n"_s.arg(quantity, line.quantity);
    if (!line.givenBack.isEmpty()) {
        xml += u"   <returnedAwards><RawItemReturnedAwards><usedBonusInCurrency>%1"
               "</usedBonusInCurrency></RawItemReturnedAwards></returnedAwards>\n"_s.arg(
                   line.givenBack);
    }
    return xml + u"   <id>%1</id>\n   <sku>%2</sku>\n   <price>10</price>\n   <total>%3</total>\n"
                 "   <minTotal>%4</minTotal>\n   <weight>piece</weight>\n  </RawItem>\n"_s.arg(
                     line.id, line.sku, line.total, line.minTotal);
}

void appendText(QDomDocument& xml, QDomElement& parent, const QString& name, const QString& text)
{
    QDomElement element = xml.createElement(name);
    element.appendChild(xml.createTextNode(text));
    parent.appendChild(element);
}

} // namespace

QByteArray document(const TextCheck& check)
{
    const bool isReturn = !check.originalId.isEmpty();
    QString xml = u"<RawCheck>\n <id>%1</id>\n <number>117</number>\n <pos>3</pos>\n"
                  " <date>2024-03-05 14:20:31</date>\n"_s.arg(check.id);
    if (isReturn) {
        xml += u" <originalId>%1</originalId>\n"_s.arg(check.originalId);
    }
    xml += u" <chType>%1</chType>\n <merchantId>1042</merchantId>\n <total>%2</total>\n <items>\n"_s
               .arg(isReturn ? u"2"_s : u"1"_s, check.total);
    for (const TextLine& line : check.lines) {
        xml += lineXml(line, isReturn);
    }
    xml += u" </items>\n <cardNumber>%1</cardNumber>\n</RawCheck>\n"_s.arg(check.card);
    return xml.toUtf8();
}

QByteArray confirmation(const QByteArray& answer, const QHash<QString, QStringList>& used,
                        const QString& amount)
{
    QDomDocument xml;
    if (!xml.setContent(answer)) {
        ADD_FAILURE() << "the answer is no XML: " << answer.toStdString();
        return {};
    }
    QDomElement root = xml.documentElement();
    QDomElement item = root.firstChildElement(u"items"_s).firstChildElement();
    for (; !item.isNull(); item = item.nextSiblingElement()) {
        const QStringList amounts = used.value(item.firstChildElement(u"id"_s).text());
        if (amounts.isEmpty()) {
            continue;
        }
        QDomElement outer = xml.createElement(u"usedAwards"_s);
        QDomElement inner = xml.createElement(u"RawItemUsedAwards"_s);
        for (qsizetype i = 0; i < amounts.size(); ++i) {
            if (!amounts[i].isEmpty()) {
                appendText(xml, inner, i == 0 ? u"usedDiscount"_s : u"usedBonusInCurrency"_s,
                           amounts[i]);
            }
        }
        outer.appendChild(inner);
        item.appendChild(outer);
    }
    QDomElement payments = xml.createElement(u"payments"_s);
    QDomElement payment = xml.createElement(u"RawCheckPayment"_s);
    appendText(xml, payment, u"amount"_s, amount);
    appendText(xml, payment, u"atype"_s, u"cash"_s);
    payments.appendChild(payment);
    root.appendChild(payments);
    return xml.toByteArray(1);
}

QString valueAt(const QByteArray& xml, const QString& path)
{
    QDomDocument document;
    if (!document.setContent(xml)) {
        return u"(no XML)"_s;
    }
    QDomElement element = document.documentElement();
    for (const QString& step : path.split(u'/')) {
        const QString name = step.section(u'[', 0, 0);
        int index = step.contains(u'[') ? step.section(u'[', 1).chopped(1).toInt() : 0;
        element = element.firstChildElement(name);
        for (; index > 0 && !element.isNull(); --index) {
            element = element.nextSiblingElement(name);
        }
    }
    return element.isNull() ? u"(none)"_s : element.text();
}

Rules builtIn()
{
    return readRules(builtInRules(), u"built-in"_s);
}

Request post(const char* endpoint, const QByteArray& body)
{
    // the Base64 of till:e5e9fa1ba31ecd1ae84f75caaa474f3a663f05f4:demo
    return {"POST", QByteArray("/api/1.x/") + endpoint,
            "Basic dGlsbDplNWU5ZmExYmEzMWVjZDFhZTg0Zjc1Y2FhYTQ3NGYzYTY2M2YwNWY0OmRlbW8=", body};
}

QByteArray goldenFile(const QString& name)
{
    QFile file(QStringLiteral(ORVA_SIMULATOR_TEST_DATA) + u'/' + name);
    if (!file.open(QIODevice::ReadOnly)) {
        ADD_FAILURE() << "the expected file is missing: " << file.fileName().toStdString();
    }
    return file.readAll();
}

} // namespace simulator::test
