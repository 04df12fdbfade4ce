// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What the till's database may hold as the content of a check, its digest left out: that would end
// every changed input at once, so the right one is put behind it here.

#include "tests/fuzz/fuzztarget.h"
#include "till/checks/checkcodec.h"
#include "till/failure.h"
#include "till/screen/checkjson.h"
#include "till/screen/checkview.h"

#include <QCryptographicHash>
#include <QJsonObject>

#include <cstdlib>

namespace {

constexpr qsizetype versionAt = 7; // the last byte of the format's version
const QString name = QStringLiteral("fuzzed");

/// A check that is taken can be counted, shown and stored again.
void use(const till::Check& check)
{
    if (check.goodsKopecks() < 0 || check.document->getGoodsItems().size() != check.lines.size()) {
        std::abort();
    }
    till::checkview::slip(check);
    till::checkview::forCashier(check, 0);
    till::checkjson::object(check, {});
    const till::Check again = till::checkcodec::decode(till::checkcodec::encode(check), name);
    if (again.lines != check.lines || again.id() != check.id()) {
        std::abort();
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size)
{
    QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    if (bytes.size() > versionAt && bytes.at(versionAt) >= 2) {
        bytes += QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
    }
    try {
        use(till::checkcodec::decode(bytes, name));
    } catch (const till::Failure& failure) {
        if (failure.text().isEmpty()) {
            std::abort(); // a damaged check is told so
        }
    }
    return 0;
}
