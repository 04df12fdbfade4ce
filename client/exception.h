// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/basicexception.h"

#include <QString>

namespace orva {

/// A failure of the loyalty server's client. Its codes and texts:
///
/// | Code                     | Condition                                                |
/// |--------------------------|----------------------------------------------------------|
/// | orvaRequestFormingError  | the request type is none of the three known ones; or the |
/// |                          | document, its card record or its card is missing and the |
/// |                          | detail says which                                        |
/// | orvaAuthorisationError   | the server answered 401                                  |
/// | orvaDuplicateCheckId     | the server answered 409                                  |
/// | orvaDataIntegrityError   | the server answered 424                                  |
/// | requestNoConnection      | the transport failed (NoConnectionException)             |
/// | requestIncorrectAnswer   | a required element of the answer is missing; detail says |
/// | orvaInvalidCheckType     | the document is neither a sale nor a return by sale      |
class Exception : public BasicException
{
public:
    /// Keeps copies of both. @param detailText a text for the log, empty in most cases
    Exception(const tr::Tr& message, const QString& detailText);
    Exception(const Exception&) = default;
    Exception& operator=(const Exception&) = default;
    ~Exception() override;

    /// A text for the log that says more than the message; usually empty.
    QString detail;
};

} // namespace orva
