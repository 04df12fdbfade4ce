// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/verifycommand.h"

#include "host/config/knownkeys.h"
#include "host/services/config.h"
#include "till/commands/examination.h"
#include "till/commands/workplace.h"
#include "till/failure.h"
#include "till/keys.h"
#include "till/screen/output.h"
#include "till/screen/progress.h"
#include "till/text.h"
#include "till/verify/report.h"
#include "till/verify/run.h"

#include <QRandomGenerator>
#include <QSaveFile>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// A request that comes slowly on purpose takes more than ten seconds.
constexpr int longestSeconds = 30;

/// With the slash that tells a folder from the beginning of a name.
QUrl asFolder(const QString& text)
{
    return QUrl(text.endsWith(u'/') ? text : text + u'/');
}

QString requiredText(const Config& config, const QString& key, const Options& options)
{
    const QString text = config.getString(u"verify:"_s + key, QString());
    if (text.isEmpty()) {
        throw Failure(Text::tr("%1 names no %2; write it into the table [verify].")
                          .arg(options.configFile, key),
                      ExitCode::Usage);
    }
    return text;
}

} // namespace

ExitCode VerifyCommand::run()
{
    if (options.listsCases) {
        out.write(verify::report::list());
        return ExitCode::Ok;
    }
    if (QFile::exists(options.junitFile)) {
        throw Failure(Text::tr("%1 is there already; name a new file.").arg(options.junitFile),
                      ExitCode::Usage);
    }
    Config config = loadConfig(options);
    errors.notes(noticesOf(config));
    const verify::Results results = tried(config);
    show(results);
    return results.isGood(options.strict) ? ExitCode::Ok : ExitCode::Failed;
}

/// The address of the command line, which must be the one that the file marks and the one that the
/// plug-in will use: a run sells and returns, and nobody may do that to a shop's server by mistake.
QUrl VerifyCommand::markedAddress(const Config& config) const
{
    const QUrl asked = asFolder(options.address);
    const QString marked = config.getString(u"verify:testServer"_s, QString());
    if (marked.isEmpty() || asFolder(marked) != asked) {
        throw Failure(Text::tr("%1 does not mark %2 as meant for testing; if it is, write it as "
                               "testServer into the table [verify].")
                          .arg(options.configFile, asked.toDisplayString(QUrl::RemoveUserInfo)),
                      ExitCode::Usage);
    }
    const auto key = poshost::knownkeys::find(poshost::ConfigKey::Use::ServerAddress);
    if (key && asFolder(config.getString(key->name(), QString())) != asked) {
        throw Failure(Text::tr("%1 has another server in %2 of the table [%3] than the one for "
                               "testing; write the same address into both.")
                          .arg(options.configFile, key->key, key->table),
                      ExitCode::Usage);
    }
    return asked;
}

verify::Stock VerifyCommand::stockOf(const Config& config) const
{
    verify::Stock stock;
    stock.card = requiredText(config, u"card"_s, options);
    stock.secondCard = requiredText(config, u"secondCard"_s, options);
    stock.emptyCard = config.getString(u"verify:emptyCard"_s, QString());
    const QString goods =
        config.getString(u"verify:goods"_s, QString::fromUtf16(defaultTriedGoods));
    for (const QString& code : goods.split(u',', Qt::SkipEmptyParts)) {
        stock.codes.append(code.trimmed());
    }
    if (stock.card == stock.secondCard || stock.codes.isEmpty()) {
        throw Failure(Text::tr("%1: the table [verify] needs two different cards and at least one "
                               "goods code.")
                          .arg(options.configFile),
                      ExitCode::Usage);
    }
    return stock;
}

verify::Results VerifyCommand::tried(Config& config) const
{
    const QUrl marked = markedAddress(config);
    const verify::Stock stock = stockOf(config);
    const QList<verify::Case> cases = verify::Run::chosen(options.wantedCases);
    const examination::WithoutLog withoutLog(options.verbose);
    verify::Counter counter(config, pluginFile(options, config), marked);
    const verify::Wire wire(marked, config.getString(u"http:caFile"_s, QString()).toUtf8(),
                            config.getString(u"http:proxy"_s, QString()).toUtf8(), longestSeconds);
    verify::Bench bench(counter, wire, stock);
    verify::Run run(bench, cases);
    if (options.shuffle) {
        run.shuffle(options.seed != 0 ? options.seed
                                      : QRandomGenerator::global()->bounded(1U, 1'000'000'000U));
    }
    Progress progress(errors, Text::tr("Trying the server"));
    verify::Results results =
        run.play([&progress](qint64 done, qint64 all) { progress.show(done, all); });
    results.server = marked.toDisplayString(QUrl::RemoveUserInfo);
    return results;
}

void VerifyCommand::show(const verify::Results& results) const
{
    namespace report = verify::report;
    out.write(options.json    ? report::json(results, options.strict)
              : options.asTap ? report::tap(results, options.strict)
                              : report::text(results, options.strict, out.columns()));
    if (options.junitFile.isEmpty()) {
        return;
    }
    QSaveFile file(options.junitFile);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(report::junit(results, options.strict)) < 0 || !file.commit()) {
        throw Failure(Text::tr("%1 cannot be written (%2); name a new file.")
                          .arg(options.junitFile, reasonOf(file)));
    }
}

} // namespace till
