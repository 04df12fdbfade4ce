// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// simulator/schema/rules.schema.json against the reader of the rules, which it must follow.

#include "simulator/fault.h"
#include "simulator/rules/configerror.h"
#include "simulator/rules/rulesreader.h"
#include "tests/unit/simulator/testchecks.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <sstream>
#include <stdexcept>
#include <toml++/toml.h>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

constexpr int schemaPatience = 60'000; // milliseconds; an upper bound, not a wait

const QString schemaPath = QStringLiteral(ORVA_RULES_SCHEMA);

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::invalid_argument("no file " + path.toStdString());
    }
    return file.readAll();
}

QByteArray asJson(const QByteArray& text)
{
    std::ostringstream json;
    json << toml::json_formatter(toml::parse(text.toStdString()));
    return QByteArray::fromStdString(json.str());
}

/// For each text of rules whether the schema takes it.
QList<bool> takenBySchema(const QList<QByteArray>& texts)
{
    const QTemporaryDir folder(QDir::tempPath() + u"/RulesSchema-XXXXXX"_s);
    QStringList arguments{u"-o"_s, u"pretty"_s};
    for (qsizetype i = 0; i < texts.size(); ++i) {
        QFile file(folder.filePath(u"%1.json"_s.arg(i)));
        if (!file.open(QIODevice::WriteOnly)) {
            throw std::runtime_error("cannot write");
        }
        file.write(asJson(texts[i]));
        arguments << u"-i"_s << file.fileName();
    }
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral(ORVA_JSONSCHEMA), arguments << schemaPath);
    if (!process.waitForFinished(schemaPatience)) {
        throw std::runtime_error("jsonschema: " + process.errorString().toStdString());
    }
    const QString printed = QString::fromUtf8(process.readAll());
    QList<bool> taken;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const QString about = u"(%1)==="_s.arg(folder.filePath(u"%1.json"_s.arg(i)));
        taken.append(printed.contains(u"===[SUCCESS]==="_s + about));
        if (taken.last() == printed.contains(u"===[ValidationError]==="_s + about)) {
            throw std::runtime_error("no verdict in:\n" + printed.toStdString());
        }
    }
    return taken;
}

QString schemaComplaintAbout(const QByteArray& text)
{
    try {
        readRules(text, u"shop.toml"_s);
    } catch (const ConfigError& error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}

/// The part of the schema that is for a table: "" for the whole file, otherwise a key of it.
QJsonObject tableSchema(const QString& name)
{
    const QJsonObject root = QJsonDocument::fromJson(bytesOf(schemaPath)).object();
    if (name.isEmpty()) {
        return root;
    }
    const QJsonObject table = root.value(u"properties"_s).toObject().value(name).toObject();
    return table.contains(u"items"_s) ? table.value(u"items"_s).toObject() : table;
}

/// The heading under which a key of a table is written.
QByteArray heading(const QString& name)
{
    if (name.isEmpty()) {
        return {};
    }
    const QJsonObject root = QJsonDocument::fromJson(bytesOf(schemaPath)).object();
    const bool isArray =
        root.value(u"properties"_s).toObject().value(name).toObject().contains(u"items"_s);
    return (isArray ? "[[" + name.toUtf8() + "]]\n" : "[" + name.toUtf8() + "]\n");
}

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

} // namespace

TEST(RulesSchema, knowsExactlyTheKeysThatTheReaderKnows)
{
    QStringList tables{QString()};
    const QJsonObject top = tableSchema({}).value(u"properties"_s).toObject();
    for (const QString& name : top.keys()) {
        const QString type = top.value(name).toObject().value(u"type"_s).toString();
        if (type == u"object"_s || type == u"array"_s) {
            tables.append(name);
        }
    }
    EXPECT_EQ(tables.size(), 10);
    for (const QString& table : tables) {
        SCOPED_TRACE(table.toStdString());
        const QJsonObject schema = tableSchema(table);
        // the reader lists what it knows when nothing it knows is near
        const QString complaint = schemaComplaintAbout(heading(table) + "zzzzzzzzzzzzzzzz = 1\n");
        const QString mark = u"is unknown: known here are "_s;
        ASSERT_TRUE(complaint.contains(mark)) << complaint.toStdString();
        const QString known = complaint.mid(complaint.indexOf(mark) + mark.size());
        EXPECT_EQ(sorted(schema.value(u"properties"_s).toObject().keys()),
                  sorted(known.split(u", "_s)));
        EXPECT_EQ(schema.value(u"additionalProperties"_s), QJsonValue(false));
    }
}

TEST(RulesSchema, knowsExactlyTheWordsThatTheReaderKnows)
{
    const QList<QPair<QString, QString>> keys{{u""_s, u"unmatched"_s},
                                              {u"message"_s, u"channel"_s},
                                              {u"fault"_s, u"kind"_s},
                                              {u"fault"_s, u"endpoint"_s},
                                              {u"answer"_s, u"endpoint"_s}};
    static const QRegularExpression quoted(u"\"([^\"]+)\""_s);
    for (const auto& [table, key] : keys) {
        SCOPED_TRACE((table + u'.' + key).toStdString());
        const QByteArray other = table == u"fault"_s && key != u"kind"_s ? "kind = 'delay'\n" : "";
        const QString complaint =
            schemaComplaintAbout(heading(table) + other + key.toUtf8() + " = 'zzzzzzzzzzzzzzzz'\n");
        const QString mark = u"it must be "_s;
        ASSERT_TRUE(complaint.contains(mark)) << complaint.toStdString();
        QStringList words;
        for (auto it = quoted.globalMatch(complaint.mid(complaint.indexOf(mark))); it.hasNext();) {
            words.append(it.next().captured(1));
        }
        QStringList inSchema;
        const QJsonArray listed = tableSchema(table)
                                      .value(u"properties"_s)
                                      .toObject()
                                      .value(key)
                                      .toObject()
                                      .value(u"enum"_s)
                                      .toArray();
        for (const auto& word : listed) {
            inSchema.append(word.toString());
        }
        EXPECT_EQ(sorted(inSchema), sorted(words));
    }
}

TEST(RulesSchema, fitsTheBuiltInRulesAndTheExamplesOfTheReadme)
{
    QByteArray withExamples = builtInRules();
    withExamples.replace("\n# ", "\n##").replace("\n#", "\n"); // sentences stay comments
    QList<QByteArray> texts{builtInRules(), withExamples};
    static const QRegularExpression block(u"```toml\\n(.*?)```"_s,
                                          QRegularExpression::DotMatchesEverythingOption);
    const QString readme = QString::fromUtf8(bytesOf(QStringLiteral(ORVA_SIMULATOR_README)));
    for (auto it = block.globalMatch(readme); it.hasNext();) {
        texts.append(it.next().captured(1).toUtf8());
    }
    EXPECT_GE(texts.size(), 4);
    const QList<bool> taken = takenBySchema(texts);
    for (qsizetype i = 0; i < texts.size(); ++i) {
        EXPECT_TRUE(taken[i]) << texts[i].toStdString();
        EXPECT_EQ(schemaComplaintAbout(texts[i]), QString()) << texts[i].toStdString();
    }
}

TEST(RulesSchema, takesAndRefusesTheValuesThatTheReaderTakesAndRefuses)
{
    const QList<QByteArray> good{"",
                                 "strict = true\nunmatched = 'rules'\nseed = 0\n",
                                 "[auth]\nuser = ''\n",
                                 "[tls]\ncertificate = 'a'\nkey = 'b'\n",
                                 "[discount]\npercent = '12.50'\nroundDownTo = '0.10'\n",
                                 "[earn.sku]\n'1' = 100\n",
                                 "[[card]]\nnumber = '1'\nbalance = -5\n",
                                 "[[card]]\nnumber = '1'\nbalance = '-5.25'\n",
                                 "[[message]]\nchannel = 'pos'\n",
                                 "[[fault]]\nkind = 'status'\nstatus = 301\nbody = 'x'\n",
                                 "[[fault]]\nkind = 'delay'\nseconds = 0.5\nprobability = 1\n",
                                 "[[answer]]\n",
                                 "[[answer]]\nstatus = 503\nbody = 'x'\nrequest = 2\ntimes = 3\n"};
    const QList<QByteArray> bad{"strict = 'yes'\n",
                                "unmatched = 'maybe'\n",
                                "seed = -1\n",
                                "seed = 1.5\n",
                                "[auth]\nuser = 1\n",
                                "[auth]\nuzer = 'a'\n",
                                "auth = 1\n",
                                "[tls]\ncertificate = 'a'\n",
                                "[discount]\npercent = 101\n",
                                "[discount]\npercent = 'much'\n",
                                "[discount]\nroundDownTo = -1\n",
                                "[spend.sku]\n'1' = -1\n",
                                "[card]\nnumber = '1'\n",
                                "[[card]]\nname = 'x'\n",
                                "[[card]]\nnumber = ''\n",
                                "[[card]]\nnumber = '1'\nbalance = true\n",
                                "[[card]]\nnumber = '1'\nbalance = '1,5'\n",
                                "[[message]]\ntext = 'x'\n",
                                "[[message]]\nchannel = 'mail'\n",
                                "[[fault]]\nendpoint = 'precheck'\n",
                                "[[fault]]\nkind = 'refused-connection'\n",
                                "[[fault]]\nkind = 'reply-lost'\nstatus = 500\n",
                                "[[fault]]\nkind = 'reply-lost'\nbody = 'x'\n",
                                "[[fault]]\nkind = 'status'\nseconds = 1\n",
                                "[[fault]]\nkind = 'status'\nstatus = 99\n",
                                "[[fault]]\nkind = 'delay'\nseconds = 3601\n",
                                "[[fault]]\nkind = 'delay'\nprobability = 1.5\n",
                                "[[fault]]\nkind = 'delay'\nrequest = 0\n",
                                "[[answer]]\nendpoint = 'precheque'\n",
                                "[[answer]]\nstatus = 600\n",
                                "[[answer]]\nbody = ''\nfile = 'x'\n",
                                "[[answer]]\nprobability = 1\n"};
    const QList<bool> taken = takenBySchema(good + bad);
    for (qsizetype i = 0; i < taken.size(); ++i) {
        const QByteArray text = (good + bad)[i];
        EXPECT_EQ(taken[i], i < good.size()) << text.toStdString();
        EXPECT_EQ(schemaComplaintAbout(text).isEmpty(), i < good.size()) << text.toStdString();
    }
}

} // namespace simulator::test
