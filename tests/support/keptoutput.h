// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/screen/output.h"

#include <QString>

namespace tests {

/// Keeps what the till writes.
class KeptOutput : public till::Output
{
public:
    KeptOutput() : Output(nullptr) {}
    void put(const QString& text) override { written += text; }

    QString written;
};

} // namespace tests
