// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "contract/documentdata.h"

#include <QSharedPointer>
#include <QString>

namespace contract {

/// The code under which the suite's loyalty system stands in documents.
constexpr int systemCode = 15;

/// A goods line of one unit.
QSharedPointer<GoodsItem> goodsLine(int position, double sum);
QSharedPointer<DocumentCardRecord> cardRecord(const QString& number, int code = systemCode);
/// What a loyalty system has granted or spent on a line.
QSharedPointer<DocumentImpactDetail> detail(int position, double sum,
                                            const QSharedPointer<DocumentCardRecord>& record = {});

} // namespace contract
