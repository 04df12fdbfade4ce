// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/rules/faultreader.h"

#include "simulator/rules/jsontable.h"
#include "simulator/rules/matchreader.h"
#include "simulator/text.h"

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

constexpr double longestSeconds = 3600;

/// What can be done about a fault that is no single request's.
QString adviceFor(FaultKind kind)
{
    switch (kind) {
    case FaultKind::WrongCertificate:
        return Text::tr("every connection meets it: give the server another certificate in [tls]");
    case FaultKind::HangingResolution:
        return Text::tr(
            "it happens at the till: let the till ask a name server that does not answer");
    default:
        return Text::tr("no running server makes it: stop this one");
    }
}

FaultKind readKind(const TableReader& table)
{
    const std::optional<FaultKind> kind = faultKind(table.requiredText("kind"));
    if (kind && describe(*kind).stage == FaultStage::Connecting) {
        table.refuse("kind", Text::tr("cannot be \"%1\" here; %2")
                                 .arg(QString::fromLatin1(describe(*kind).name), adviceFor(*kind)));
    }
    return *faultKind(table.choice("kind", requestFaultNames()));
}

/// Refuses parameters that would do nothing.
void requireMeaning(const TableReader& table, const char* key, bool means, const QString& kind)
{
    if (!means && table.keys().contains(QString::fromLatin1(key))) {
        table.refuse(key, Text::tr("means nothing for \"%1\"").arg(kind));
    }
}

Fault readParameters(const TableReader& table)
{
    Fault fault;
    fault.kind = readKind(table);
    const FaultDescription& about = describe(fault.kind);
    requireMeaning(table, "status", about.hasStatus, fault.name());
    requireMeaning(table, "body", about.hasStatus, fault.name());
    requireMeaning(table, "seconds", about.hasSeconds, fault.name());
    fault.status = readStatus(table, fault.status);
    fault.body = table.text("body").toUtf8();
    constexpr double inSecond = 1000;
    fault.duration = std::chrono::milliseconds(
        static_cast<qint64>(table.number("seconds", 0, 0, longestSeconds) * inSecond));
    return fault;
}

} // namespace

FaultRule readFault(const TableReader& table, quint64 seed)
{
    table.allowOnly(QStringList{u"kind"_s} + matchKeys() +
                    QStringList{u"probability"_s, u"seed"_s, u"status"_s, u"body"_s, u"seconds"_s});
    FaultRule rule;
    rule.fault = readParameters(table);
    readMatch(table, rule);
    rule.probability = table.number("probability", 1, 0, 1);
    rule.seed = table.seed("seed", seed);
    return rule;
}

FaultRule readFaultJson(const QByteArray& text, const QString& name)
{
    const toml::table parsed = parseJson(text, name);
    return readFault(TableReader(parsed, name, {}), FaultRule().seed);
}

} // namespace simulator
