// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/rules/rulesreader.h"

#include "simulator/documents/messagetext.h"
#include "simulator/rules/answerreader.h"
#include "simulator/rules/configerror.h"
#include "simulator/rules/faultreader.h"
#include "simulator/rules/tablereader.h"
#include "simulator/text.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

Percentage readPercentage(const TableReader& table, const QStringList& furtherKeys = {})
{
    table.allowOnly(QStringList{u"percent"_s, u"sku"_s} + furtherKeys);
    Percentage result;
    result.general = table.percent("percent", 0);
    const TableReader bySku = table.table("sku");
    for (const QString& sku : bySku.keys()) {
        result.bySku.insert(sku, bySku.percent(sku.toUtf8().constData(), 0));
    }
    return result;
}

void readAuth(const TableReader& table, Rules& rules)
{
    table.allowOnly({u"user"_s, u"password"_s, u"apiKey"_s});
    rules.user = table.text("user", u"till"_s);
    rules.password = table.text("password", u"secret"_s);
    rules.apiKey = table.text("apiKey", u"demo"_s);
}

/// Certificate and key; names without a folder are looked up beside the file of rules.
void readTls(const TableReader& table, const QString& file, Rules& rules)
{
    table.allowOnly({u"certificate"_s, u"key"_s});
    if (table.keys().isEmpty()) {
        return;
    }
    const QDir folder = QFileInfo(file).absoluteDir();
    rules.certificateFile = folder.filePath(table.requiredText("certificate"));
    rules.keyFile = folder.filePath(table.requiredText("key"));
}

void readDiscount(const TableReader& table, Rules& rules)
{
    rules.discount = readPercentage(table, {u"roundDownTo"_s});
    rules.roundDownTo = table.kopecks("roundDownTo", 0);
    if (rules.roundDownTo < 0) {
        table.refuse("roundDownTo", Text::tr("must not be negative"));
    }
}

Card readCard(const TableReader& table, const Rules& rules)
{
    table.allowOnly({u"number"_s, u"name"_s, u"surname"_s, u"balance"_s});
    Card card;
    card.number = table.requiredText("number");
    if (rules.card(card.number) != nullptr) {
        table.refuse("number",
                     Text::tr("is \"%1\", which an earlier card has too").arg(card.number));
    }
    card.name = table.text("name");
    card.surname = table.text("surname");
    card.opening = table.kopecks("balance", 0);
    return card;
}

Message readMessage(const TableReader& table)
{
    table.allowOnly({u"channel"_s, u"text"_s});
    const QStringList channels{u"pos"_s, u"check"_s};
    Message message{table.choice("channel", channels), table.text("text")};
    const QString unknown = unknownPlaceholder(message.text);
    if (!unknown.isEmpty()) {
        table.refuse("text", Text::tr("has the unknown placeholder {%1}: known are {%2}")
                                 .arg(unknown, placeholders().join(u"}, {"_s)));
    }
    return message;
}

void readAnswers(const TableReader& root, const QString& file, Rules& rules)
{
    const QDir folder = QFileInfo(file).absoluteDir();
    for (const TableReader& table : root.tables("answer")) {
        rules.answers.push_back(readAnswer(table, folder, rules.answerFiles));
    }
    rules.isStrict = root.flag("strict", false);
    const QString refuse = u"refuse"_s;
    rules.refusesUnmatched = root.keys().contains(u"unmatched"_s) &&
                             root.choice("unmatched", {u"rules"_s, refuse}) == refuse;
}

} // namespace

Rules readRulesFile(const QString& path)
{
    return readRules(readTomlFile(path), path);
}

Rules readRules(const QByteArray& text, const QString& name)
{
    const toml::table parsed = parseToml(text, name);
    const TableReader root(parsed, name, {});
    root.allowOnly({u"auth"_s, u"tls"_s, u"discount"_s, u"earn"_s, u"spend"_s, u"card"_s,
                    u"message"_s, u"fault"_s, u"seed"_s, u"answer"_s, u"strict"_s, u"unmatched"_s});
    Rules rules;
    readAuth(root.table("auth"), rules);
    readTls(root.table("tls"), name, rules);
    readDiscount(root.table("discount"), rules);
    rules.earn = readPercentage(root.table("earn"));
    rules.spend = readPercentage(root.table("spend"));
    for (const TableReader& table : root.tables("card")) {
        rules.cards.push_back(readCard(table, rules));
    }
    for (const TableReader& table : root.tables("message")) {
        rules.messages.push_back(readMessage(table));
    }
    const quint64 seed = root.seed("seed", FaultRule().seed);
    for (const TableReader& table : root.tables("fault")) {
        rules.faults.push_back(readFault(table, seed));
    }
    readAnswers(root, name, rules);
    return rules;
}

} // namespace simulator
