// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/core/message.h"

#include <QString>

#include <stdexcept>

/// Files that hold a secret.
namespace poshost::secretfile {

/// A secret cannot be had. The reason never quotes the content.
class Error : public std::runtime_error
{
public:
    explicit Error(const Message& reason)
        : std::runtime_error(reason.ru().toStdString()), said(reason)
    {}

    Message message() const { return said; }

private:
    Message said;
};

/// The file's only line without its end. Waits for nobody. @throws Error when the file is no
/// regular one, cannot be read, is longer than a secret is, has several lines or is not UTF-8
QString read(const QString& fileName);

/// What is wrong with who may read or change the file, with the command that mends it; empty when
/// it is only its owner and, for reading, its group.
Message complaintAboutRights(const QString& fileName);

} // namespace poshost::secretfile
