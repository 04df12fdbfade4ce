// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/sharing/sharedreading.h"

#include "till/checks/checkcodec.h"
#include "till/failure.h"
#include "till/reason.h"
#include "till/text.h"

namespace till {

using orvastore::KeptCheck;

namespace {

void requireDone(const orvastore::StoreResult& result)
{
    if (result.end != orvastore::StoreEnd::Done) {
        throw Failure(said(result.error));
    }
}

} // namespace

void SharedReading::forEachCheck(const QString& before, const Take& take) const
{
    requireDone(store.books().forEachCheck(store.shop(), before, take));
}

void SharedReading::forEachLeft(const std::function<void(const orvastore::LeftCheck&)>& take) const
{
    requireDone(store.books().forEachLeft(store.shop(), take));
}

std::optional<KeptCheck> SharedReading::find(const QString& which) const
{
    QList<KeptCheck> found;
    requireDone(store.books().findChecks(store.shop(), which, found));
    if (found.size() > 1) {
        throw Failure(
            Text::tr("Several checks have the number %1; name the check by its identifier.")
                .arg(which),
            ExitCode::Usage);
    }
    return found.isEmpty() ? std::nullopt : std::optional(found.first());
}

std::optional<SharedReading::Origin> SharedReading::originOf(const Check& back) const
{
    const orvastore::SaleToReturn answer =
        store.books().saleToReturn(store.shop(), back.document->getSaleDocumentId());
    requireDone(answer.result);
    if (answer.sales.size() != 1) {
        return std::nullopt;
    }
    Origin found{checkOf(answer.sales.first()), {}};
    for (const KeptCheck& kept : answer.returns) {
        if (kept.identifier == back.id()) {
            return found;
        }
        found.earlier.append(checkOf(kept));
    }
    return std::nullopt;
}

void SharedReading::rewrite(const Check& check) const
{
    requireDone(store.books().rewrite(store.shop(), check.id(), checkcodec::encode(check)));
}

Check SharedReading::checkOf(const KeptCheck& kept)
{
    Check check = checkcodec::decode(kept.content, kept.identifier);
    if (check.id() != kept.identifier) {
        throw Failure(checkcodec::damagedText(kept.identifier));
    }
    return check;
}

} // namespace till
