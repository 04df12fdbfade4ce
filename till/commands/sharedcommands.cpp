// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/commands/sharedcommands.h"

#include "till/commands/workplace.h"
#include "till/failure.h"
#include "till/screen/jsonlist.h"
#include "till/screen/ledger.h"
#include "till/screen/output.h"
#include "till/screen/sharedlist.h"
#include "till/sharing/sharedreading.h"
#include "till/text.h"

namespace till {

using orvastore::KeptCheck;
using orvastore::LeftCheck;

namespace {

SharedStore& storeOf(Workplace& workplace, const Options& options)
{
    SharedStore* const store = workplace.sharedStore();
    if (store == nullptr) {
        throw Failure(
            Text::tr("%1 names no store; add a table [store] to it.").arg(options.configFile),
            ExitCode::Usage);
    }
    return *store;
}

SharedRow rowOf(const KeptCheck& check)
{
    return {check.identifier,
            check.number,
            check.till,
            !check.saleIdentifier.isEmpty(),
            check.isDelivered ? SharedRow::State::Delivered : SharedRow::State::Closed,
            check.closedAt};
}

SharedRow rowOf(const LeftCheck& check)
{
    return {check.identifier, check.number, check.till, false, SharedRow::State::Suspended,
            check.leftAt};
}

void forEachRow(SharedStore& store, const Options& options,
                const std::function<void(const SharedRow&)>& take)
{
    const SharedReading reading(store);
    if (options.before.isEmpty()) {
        reading.forEachLeft([&](const LeftCheck& check) { take(rowOf(check)); });
    }
    int taken = 0;
    reading.forEachCheck(options.before, [&](const KeptCheck& check) {
        take(rowOf(check));
        return options.all || ++taken != options.count;
    });
}

} // namespace

SharedCommands::SharedCommands(Workplace& place, const Options& given, Output& output)
    : workplace(place), store(storeOf(place, given)), options(given), out(output)
{}

ExitCode SharedCommands::checks()
{
    const auto write = [this](const QString& part) { out.write(part); };
    if (options.json) {
        JsonList list(write);
        forEachRow(store, options,
                   [&](const SharedRow& row) { list.add(SharedList::object(row)); });
        list.end();
    } else {
        SharedList list(out.columns(), write);
        forEachRow(store, options, [&](const SharedRow& row) { list.add(row); });
        list.end();
    }
    return ExitCode::Ok;
}

ExitCode SharedCommands::ledger()
{
    const Ledger ledger(
        [this](const std::function<void(const Check&)>& take) {
            SharedReading(store).forEachCheck({}, [&](const KeptCheck& check) {
                take(SharedReading::checkOf(check));
                return true;
            });
            workplace.checks().forEachClosed(take);
        },
        workplace.database());
    const auto write = [this](const QString& part) { out.write(part); };
    if (options.csv) {
        ledger.writeCsv(write);
    } else if (options.json) {
        ledger.writeJson(write);
    } else {
        ledger.writeTable(out.columns(), write);
    }
    return ExitCode::Ok;
}

} // namespace till
