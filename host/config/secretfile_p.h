// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <stdexcept>

/// Files that hold a secret.
namespace poshost::secretfile {

/// A secret cannot be had; what() is the reason in UTF-8 and never quotes the content.
class Error : public std::runtime_error
{
public:
    explicit Error(const QString& what) : std::runtime_error(what.toStdString()) {}
};

/// The file's only line without its end. Waits for nobody. @throws Error when the file is no
/// regular one, cannot be read, is longer than a secret is, has several lines or is not UTF-8
QString read(const QString& fileName);

/// What is wrong with who may read or change the file, with the command that mends it; empty when
/// it is only its owner and, for reading, its group.
QString complaintAboutRights(const QString& fileName);

} // namespace poshost::secretfile
