// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What a document may hold under the plug-in's name: the stored answer, then after a line of its
// own with "--" the stored records as JSON.

#include "client/loyaltysystemtype.h"
#include "host/core/basicexception.h"
#include "tests/fuzz/elementnames.h"
#include "tests/fuzz/fuzztarget.h"
#include "tests/fuzz/shopscene.h"
#include "tests/fuzz/treemutator.h"

#include <QJsonDocument>

#include <cstdlib>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

const QByteArray border = "\n--\n";

void restore(ShopScene& scene, const QVariant& answer, const QVariant& records)
{
    const auto check = scene.open(EDocumentType::Sale);
    check->setPluginValue(u"Orva"_s, u"lastResponse"_s, answer);
    check->setPluginValue(u"Orva"_s, u"bonusRecords"_s, records);
    OpenOrva orva;
    orva.init();
    orva.setDocument(check);
    if (!orva.restoreLoyaltySystem() || orva.bonusRecords.size() != records.toList().size()) {
        std::abort(); // a restore never fails and makes one record of each stored one
    }
    orva.updatePluginData();
    orva.setPointsForSpend(check, 100);
    orva.spendPoints();
    for (const auto& impact : orva.getBonusImpactsForSpend()) {
        check->addImpact(impact);
    }
    orva.recalculatePointsForEarn();
    orva.commit(check);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size)
{
    static ShopScene scene;
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const qsizetype end = bytes.indexOf(border);
    const QByteArray answer = end < 0 ? bytes : bytes.first(end);
    const QByteArray records = end < 0 ? QByteArray() : bytes.mid(end + border.size());
    try {
        restore(scene, QString::fromUtf8(answer), QJsonDocument::fromJson(records).toVariant());
    } catch (const BasicException&) {
        // the client may refuse what it cannot send
    }
    return 0;
}

size_t LLVMFuzzerCustomMutator(std::uint8_t* data, size_t size, size_t maximum, unsigned seed)
{
    static TreeMutator tree(elementNames());
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const qsizetype end = bytes.indexOf(border);
    if (end < 0 || seed % 3 == 0) {
        return LLVMFuzzerMutate(data, size, maximum);
    }
    const QByteArray rest = bytes.mid(end);
    const size_t length = tree.mutate(data, size_t(end), maximum - size_t(rest.size()), seed);
    if (length == 0) {
        return LLVMFuzzerMutate(data, size, maximum);
    }
    std::memcpy(data + length, rest.constData(), size_t(rest.size()));
    return length + size_t(rest.size());
}
