// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// The sentences of the host, by their codes, in every language that they can be said in.
namespace poshost::wordings {

/// A sentence. "%1" to "%9" are the places of what stands in it.
struct Wording
{
    const char* code;
    const char* russian; ///< UTF-8
    const char* english;
};

/// The sentence with a code; null when there is none.
const Wording* find(const QString& code);

} // namespace poshost::wordings
