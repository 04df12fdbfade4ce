// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/verify/cases.h"

namespace till::verify {

QList<Case> allCases()
{
    QList<Case> all;
    for (const auto& group : {connectionCases(), credentialCases(), answerCases(), transportCases(),
                              grantCases(), saleCases(), requestCases(), bookingCases(),
                              repeatCases(), refusalCases(), returnCases(), returnRefusalCases()}) {
        all.append(QList<Case>(group.begin(), group.end()));
    }
    return all;
}

} // namespace till::verify
