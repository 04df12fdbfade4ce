// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QTranslator>

/// The Russian texts for as long as it lives.
class Russian
{
public:
    Russian();
    ~Russian();
    Russian(const Russian&) = delete;
    Russian& operator=(const Russian&) = delete;

private:
    QTranslator texts;
};
