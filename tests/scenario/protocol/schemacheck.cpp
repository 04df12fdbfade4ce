// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/protocol/schemacheck.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QHash>
#include <QProcess>
#include <QTemporaryDir>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tests {
namespace {

constexpr int patience = 60'000; // milliseconds; an upper bound, not a wait

QString fileName(size_t number)
{
    return u"%1.xml"_s.arg(number);
}

void write(const QString& path, const QByteArray& text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        throw std::runtime_error("cannot write " + path.toStdString());
    }
}

/// What xmllint prints about the files of a folder.
QString lint(const QString& folder, const QStringList& arguments)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(u"xmllint"_s, arguments);
    if (!process.waitForFinished(patience) || process.exitStatus() != QProcess::NormalExit) {
        throw std::runtime_error("xmllint: " + process.errorString().toStdString());
    }
    return QString::fromUtf8(process.readAll());
}

} // namespace

QString schemaFile(const QString& schema)
{
    return QStringLiteral(ORVA_PROTOCOL_SCHEMA) + u'/' + schema + u".xsd"_s;
}

QString schemaFor(const QByteArray& document)
{
    QDomDocument xml;
    if (!xml.setContent(document) || xml.documentElement().tagName() != u"RawCheck"_s) {
        return {};
    }
    const auto has = [root = xml.documentElement()](const QString& name) {
        return !root.firstChildElement(name).isNull();
    };
    if (has(u"payments"_s)) {
        return u"sale-confirmation"_s;
    }
    if (has(u"client"_s)) {
        return u"answer"_s;
    }
    if (!has(u"items"_s)) {
        return u"acknowledgement"_s;
    }
    return has(u"originalId"_s) ? u"return-request"_s : u"sale-request"_s;
}

QStringList objections(const QString& schema, const std::vector<WireDocument>& documents)
{
    const QTemporaryDir folder(QDir::tempPath() + u"/orva-protocol-XXXXXX"_s);
    QStringList arguments{u"--noout"_s, u"--nonet"_s, u"--schema"_s, schemaFile(schema)};
    for (size_t i = 0; i < documents.size(); ++i) {
        write(folder.filePath(fileName(i)), documents[i].text);
        arguments.append(fileName(i));
    }
    const QString printed = lint(folder.path(), arguments);
    QHash<QString, QString> said;
    QHash<QString, bool> validates;
    for (const QString& line : printed.split(u'\n')) {
        const QString name = line.left(line.indexOf(u".xml"_s)) + u".xml"_s;
        validates[name] = validates[name] || line == name + u" validates"_s;
        said[name] += line + u'\n';
    }
    QStringList result;
    for (size_t i = 0; i < documents.size(); ++i) {
        const QString name = fileName(i);
        if (validates.value(name) == (said.value(name).count(u'\n') > 1)) {
            throw std::runtime_error("no verdict about " + documents[i].name.toStdString() +
                                     " in:\n" + printed.toStdString());
        }
        result.append(validates.value(name) ? QString() : said.value(name));
    }
    return result;
}

} // namespace tests
